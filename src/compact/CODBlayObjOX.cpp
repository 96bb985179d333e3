#include "compact/CODBlayObjOX.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

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
