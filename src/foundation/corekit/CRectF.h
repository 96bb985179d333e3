#pragma once

#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

class CArchive;
class CRectD;

// An axis-parallel rectangle in single precision; the bounds are as in CRectD.
// Units:     the unit of its file, inch or millimetre.
// Ownership: a plain value.
class JOBX_API CRectF : public CRaisingNew
{
public:
    CRectF() = default;
    // The bounds are kept as given, even if they are the wrong way round.
    CRectF(float left, float right, float bottom, float top)
        : m_fLeft(left), m_fRight(right), m_fBottom(bottom), m_fTop(top)
    {
    }
    CRectF(const CRectD& rect); // each bound rounded to single precision
    CRectF(const CRectF&) = default;
    CRectF& operator=(const CRectF&) = default;
    // Each bound rounded to single precision.
    CRectF& operator=(const CRectD& rect);
    virtual ~CRectF();

    // All four bounds are exactly equal, without tolerance; a rectangle always equals itself.
    bool operator==(const CRectF& other) const;
    bool operator!=(const CRectF& other) const { return !(*this == other); }

    // Stores or loads left, right, bottom and top, 32 bits each. A short archive raises CArchiveException.
    virtual void Serialize(CArchive& archive);

    float m_fLeft = 0.0F;   // lower x bound
    float m_fRight = 0.0F;  // upper x bound
    float m_fBottom = 0.0F; // lower y bound
    float m_fTop = 0.0F;    // upper y bound
};

extern template class JOBX_API CArray<CRectF, const CRectF&>;
extern template class JOBX_API CValueArray<CRectF>;

// A list of rectangles, by value.
class JOBX_API CArrayRectF : public CValueArray<CRectF>
{
public:
    CArrayRectF() = default;
    CArrayRectF(const CArrayRectF&) = default;
    CArrayRectF(CArrayRectF&&) noexcept = default;
    CArrayRectF& operator=(const CArrayRectF&) = default;
    CArrayRectF& operator=(CArrayRectF&&) noexcept = default;
    ~CArrayRectF() override;
    virtual CArrayRectF* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayRectF& other) const;
};
