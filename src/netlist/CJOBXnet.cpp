#include "netlist/CJOBXnet.h"

#include "foundation/ScaleLengths.h"
#include "netlist/CJOBXnetFields.h"

template class CExPtrArray<CJOBXnet*, CJOBXnet*>;

CJOBXnet::CJOBXnet() = default;

CJOBXnet::~CJOBXnet() = default;

void CJOBXnet::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXnetArray::CJOBXnetArray() = default;

CJOBXnetArray::~CJOBXnetArray() = default;

void CJOBXnetArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXnet& net : Records())
        net.UnitConvert(by);
}
