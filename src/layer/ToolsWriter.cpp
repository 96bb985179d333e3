#include "foundation/CTextWriter.h"
#include "foundation/corekit/CKUtility.h"
#include "layer/CJOBXtool.h"
#include "layer/ToolsFormat.h"

namespace
{
template <class Value>
void WriteToolKey(CTextWriter& out, const char* key, const Value& value)
{
    out << "      " << key << '=' << value << '\n';
}

// The eight lines of a record.
void WriteRecord(CTextWriter& out, const CJOBXtoolData& tool)
{
    WriteToolKey(out, tools_format::kNum, tool.m_nNum);
    WriteToolKey(out, tools_format::kType, tool.m_sType);
    WriteToolKey(out, tools_format::kType2, tool.m_sType2);
    WriteToolKey(out, tools_format::kMinTol, Fixed{tool.m_dMinTol});
    WriteToolKey(out, tools_format::kMaxTol, Fixed{tool.m_dMaxTol});
    WriteToolKey(out, tools_format::kBit, tool.m_sBit);
    WriteToolKey(out, tools_format::kFinishSize, Fixed{tool.m_dFinishSize});
    WriteToolKey(out, tools_format::kDrillSize, Fixed{tool.m_dDrillSize});
}

// Every tool's block, between two empty lines.
void WriteBlocks(CTextWriter& out, const CJOBXtoolDataArray& tools)
{
    for (const CJOBXtoolData& tool : tools.Records())
    {
        out << '\n' << tools_format::kBlock << '\n';
        WriteRecord(out, tool);
        out << "}\n\n";
    }
}
} // namespace

void CJOBXtoolData::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteRecord(out, *this);
}

void CJOBXtoolDataArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    WriteBlocks(out, *this);
}

void CJOBXtool::WriteODBData(const CString& directory) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    if (!utility.DoesFileOrDirExist(directory, __FILE__, __LINE__))
        return; // a missing folder is not made; intended
    CTextWriter out(utility.CKPathCombine(directory, tools_format::kTools, __FILE__, __LINE__), __FILE__, __LINE__);
    out << tools_format::kUnits << '=' << m_sUnits << '\n'
        << tools_format::kThickness << '=' << Fixed{m_dThickness} << '\n'
        << tools_format::kUserParams << '=' << m_sUserParams << '\n';
    WriteBlocks(out, m_arrToolData);
}
