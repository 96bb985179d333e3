#include "compact/CODBlayObjOX.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBlayObjOX*, CODBlayObjOX*>;

CODBlayObjOX::~CODBlayObjOX() = default;

CODBlayObjOX* CODBlayObjOX::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjOX::vRescale(double factor)
{
    m_ptCenter.ReScale(factor);
    m_ptPoint.ReScale(factor);
}

CODBlayObjOXArray* CODBlayObjOXArray::clone() const
{
    return NewCopy(*this);
}
