#pragma once

#include "foundation/JobxExport.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"

class CArchive;
class CRectD;

// A rectangle along the axes, in single precision; the bounds mean the same as those of CRectD.
// Units:     the unit of the file it came from, inch or millimetre.
// Ownership: a plain value.
class JOBX_API CRectF : public CRaisingNew
{
public:
    CRectF() = default;
    // A rectangle with these bounds; they are kept as given, also the wrong way round.
    CRectF(float left, float right, float bottom, float top)
        : m_fLeft(left), m_fRight(right), m_fBottom(bottom), m_fTop(top)
    {
    }
    CRectF(const CRectD& rect); // each bound narrowed to single precision
    CRectF(const CRectF&) = default;
    CRectF& operator=(const CRectF&) = default;
    // Each bound narrowed to single precision.
    CRectF& operator=(const CRectD& rect);
    virtual ~CRectF();

    // Exact in all four bounds, without any tolerance; a rectangle always equals itself.
    bool operator==(const CRectF& other) const;
    bool operator!=(const CRectF& other) const { return !(*this == other); }

    // Stores or loads left, right, bottom and top, 32 bits each. Too short an archive raises CArchiveException.
    virtual void Serialize(CArchive& archive);

    float m_fLeft = 0.0F;   // lower x bound
    float m_fRight = 0.0F;  // upper x bound
    float m_fBottom = 0.0F; // lower y bound
    float m_fTop = 0.0F;    // upper y bound
};

extern template class JOBX_API CArray<CRectF, const CRectF&>;
extern template class JOBX_API CValueArray<CRectF>;

// A list of rectangles, held by value.
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

    // True where the elements differ.
    bool operator!=(const CArrayRectF& other) const;
};
