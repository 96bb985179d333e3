#include "compact/CODBnetPt.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBnetPt*, CODBnetPt*>;

CODBnetPt::~CODBnetPt() = default;

CODBnetPt* CODBnetPt::clone() const
{
    return NewCopy(*this);
}

void CODBnetPt::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBnetPtArray* CODBnetPtArray::clone() const
{
    return NewCopy(*this);
}

CODBnetPt* CODBnetPtArray::pGetODBnetPtWithPt(const CPointD& point) const
{
    for (CODBnetPt& netPoint : Records())
        if (point == netPoint.m_ptPosition)
            return &netPoint;
    return nullptr;
}
