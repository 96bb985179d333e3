#include "eda/CJOBXnetlist.h"

CJOBXnetlist::CJOBXnetlist() = default;

CJOBXnetlist::~CJOBXnetlist() = default;

void CJOBXnetlist::UnitConvert(const double& factor)
{
    m_arrPts.UnitConvert(factor);
    m_arrNets.UnitConvert(factor);
}
