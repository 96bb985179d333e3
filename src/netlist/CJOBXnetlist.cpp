#include "netlist/CJOBXnetlist.h"

#include "foundation/ScaleLengths.h"
#include "netlist/CJOBXnetlistFields.h"

CJOBXnetlist::CJOBXnetlist() = default;

CJOBXnetlist::~CJOBXnetlist() = default;

void CJOBXnetlist::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}
