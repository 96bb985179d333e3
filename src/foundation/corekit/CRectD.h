#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

// An axis-parallel rectangle in double precision.
// Units:     the unit of its file, inch or millimetre; areas in that unit squared.
// Ownership: a plain value.
class JOBX_API CRectD : public CRaisingNew
{
public:
    CRectD() = default;
    // The bounds are kept as given, even if they are the wrong way round.
    CRectD(double left, double right, double bottom, double top)
        : m_dLeft(left), m_dRight(right), m_dBottom(bottom), m_dTop(top)
    {
    }
    CRectD(const CRectD&) = default;
    CRectD& operator=(const CRectD&) = default;
    virtual ~CRectD();
    virtual CRectD* clone() const; // the caller owns the copy

    // All four bounds are exactly equal, without tolerance; a rectangle always equals itself.
    bool operator==(const CRectD& other) const;
    bool operator!=(const CRectD& other) const { return !(*this == other); }

    void Init() { *this = CRectD(); } // all four bounds 0
    // Upper bound minus lower bound; negative if they are the wrong way round.
    double GetWidth() const { return m_dRight - m_dLeft; }
    double GetHeight() const { return m_dTop - m_dBottom; }
    double GetArea() const { return GetWidth() * GetHeight(); }

    double m_dLeft = 0.0;   // lower x bound
    double m_dRight = 0.0;  // upper x bound
    double m_dBottom = 0.0; // lower y bound
    double m_dTop = 0.0;    // upper y bound
};

extern template class JOBX_API CExPtrArray<CRectD*, CRectD*>;
extern template class JOBX_API CArray<CRectD, const CRectD&>;
extern template class JOBX_API CValueArray<CRectD>;

// A list of rectangles, by value.
class JOBX_API CArrayRectD : public CValueArray<CRectD>
{
public:
    CArrayRectD() = default;
    CArrayRectD(const CArrayRectD&) = default;
    CArrayRectD(CArrayRectD&&) noexcept = default;
    CArrayRectD& operator=(const CArrayRectD&) = default;
    CArrayRectD& operator=(CArrayRectD&&) noexcept = default;
    ~CArrayRectD() override;
    virtual CArrayRectD* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayRectD& other) const;
};
