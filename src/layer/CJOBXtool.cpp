#include "layer/CJOBXtool.h"

#include "foundation/ScaleLengths.h"
#include "layer/CJOBXtoolFields.h"

CJOBXtool::CJOBXtool() = default;

CJOBXtool::CJOBXtool(const CJOBXtool& other) = default;

CJOBXtool& CJOBXtool::operator=(const CJOBXtool& other) = default;

CJOBXtool::~CJOBXtool() = default;

bool CJOBXtool::operator==(const CJOBXtool& other) const
{
    return this == &other || (m_sUnits == other.m_sUnits && m_dThickness == other.m_dThickness &&
                              m_sUserParams == other.m_sUserParams && m_arrToolData == other.m_arrToolData);
}

bool CJOBXtool::operator!=(const CJOBXtool& other) const
{
    return !(*this == other);
}

void CJOBXtool::SetToolDataArray(const CJOBXtoolDataArray* tools)
{
    if (tools != nullptr)
        m_arrToolData = *tools;
    else
        m_arrToolData.DeleteAll();
}

void CJOBXtool::UnitConvert(double factor)
{
    jobx::ScaleLengths(*this, factor);
}
