#include "netlist/CJOBXnetlist.h"

#include "foundation/ScaleLengths.h"
#include "netlist/CJOBXnetlistFields.h"

template class CExPtrArray<CJOBXnetlist*, CJOBXnetlist*>;

CJOBXnetlist::CJOBXnetlist() = default;

CJOBXnetlist::~CJOBXnetlist() = default;

void CJOBXnetlist::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXnetlistArray::CJOBXnetlistArray() = default;

CJOBXnetlistArray::~CJOBXnetlistArray() = default;

void CJOBXnetlistArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    for (CJOBXnetlist& netlist : Records())
        netlist.UnitConvert(by);
}
