#include "compact/CODBlayObjOX.h"

#include "compact/CompactFields.h"
#include "compact/NewCopy.h"

template class CExPtrArray<CODBlayObjOX*, CODBlayObjOX*>;

CODBlayObjOX::~CODBlayObjOX() = default;

CODBlayObjOX* CODBlayObjOX::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjOX::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjOXArray* CODBlayObjOXArray::clone() const
{
    return NewCopy(*this);
}
