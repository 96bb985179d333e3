#include "layer/CJOBXtool.h"

#include "foundation/ScaleLengths.h"
#include "foundation/corekit/CKUtility.h"
#include "layer/CJOBXtoolFields.h"
#include "layer/ToolFile.h"

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

void CJOBXtool::WriteODBData(const CString& directory) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    if (!utility.DoesFileOrDirExist(directory, __FILE__, __LINE__))
        return; // a missing folder is not made: intended
    CTextWriter out(utility.CKPathCombine(directory, "tools", __FILE__, __LINE__), __FILE__, __LINE__);
    out << "UNITS=" << m_sUnits << "\nTHICKNESS=" << Fixed{m_dThickness} << "\nUSER_PARAMS=" << m_sUserParams << '\n';
    tool_file::WriteBlocks(out, m_arrToolData);
}

void CJOBXtool::UnitConvert(double factor)
{
    jobx::ScaleLengths(*this, factor);
}
