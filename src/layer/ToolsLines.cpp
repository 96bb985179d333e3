#include "layer/ToolsLines.h"

#include "layer/CJOBXtool.h"
#include "layer/ToolsFormat.h"
#include "saving/KeyedLines.h"

namespace
{
constexpr CSavedKey<CJOBXtool> kSavedToolsKeys[] = {
    {tools_format::kThickness, ListKey<&CJOBXtool::m_dThickness>},
    {tools_format::kUserParams, ListKey<&CJOBXtool::m_sUserParams>},
};

constexpr CSavedKey<CJOBXtoolData> kSavedToolKeys[] = {
    {tools_format::kNum, ListKey<&CJOBXtoolData::m_nNum>},
    {tools_format::kID, ListKeyOfID<CJOBXtoolData>},
    {tools_format::kType, ListKey<&CJOBXtoolData::m_sType>},
    {tools_format::kType2, ListKey<&CJOBXtoolData::m_sType2>},
    {tools_format::kMinTol, ListKey<&CJOBXtoolData::m_dMinTol>},
    {tools_format::kMaxTol, ListKey<&CJOBXtoolData::m_dMaxTol>},
    {tools_format::kBit, ListKey<&CJOBXtoolData::m_sBit>},
    {tools_format::kFinishSize, ListKey<&CJOBXtoolData::m_dFinishSize>},
    {tools_format::kDrillSize, ListKey<&CJOBXtoolData::m_dDrillSize>},
};
} // namespace

void ListLines(const CJOBXtool& tools, CRecordLines& lines)
{
    ListUnits(tools.GetUnit(), lines);
    ListKeys(kSavedToolsKeys, tools, 0, lines);
    ListFurtherKeysAndBlocks(tools, lines);
    for (const CJOBXtoolData& tool : tools.GetToolDataArray()->Records())
        ListBlock(tools_format::kTool, kSavedToolKeys, tool, lines);
}
