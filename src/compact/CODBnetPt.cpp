#include "compact/CODBnetPt.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBnetPt*, CODBnetPt*>;

CODBnetPt::~CODBnetPt() = default;

CODBnetPt* CODBnetPt::clone() const
{
    return NewCopy(*this);
}

void CODBnetPt::vRescale(double factor)
{
    m_dHeight *= factor;
    m_dWidth *= factor;
    m_ptPosition.ReScale(factor);
    m_ptStaggeredPosition.ReScale(factor);
    m_dRadius *= factor;
}

CODBnetPtArray* CODBnetPtArray::clone() const
{
    return NewCopy(*this);
}

CODBnetPt* CODBnetPtArray::pGetODBnetPtWithPt(const CPointD& point) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CODBnetPt* const netPoint = GetAt(i); netPoint != nullptr && point == netPoint->m_ptPosition)
            return netPoint;
    return nullptr;
}
