#include "layer/ToolsReader.h"

#include "layer/CJOBXtool.h"
#include "layer/ToolsFormat.h"
#include "reading/CKeyLines.h"
#include "reading/ToolsMessageKinds.h"

#include <algorithm>
#include <map>
#include <memory>

namespace
{
constexpr CKeyKinds kToolsKinds{tools_message::kNotNumber, tools_message::kNotKey,    tools_message::kUnknown,
                                tools_message::kTwice,     tools_message::kNotClosed, tools_message::kNotOpen};

constexpr CKey<CJOBXtool> kToolsKeys[] = {
    {tools_format::kThickness, StoreKey<&CJOBXtool::m_dThickness>},
    {tools_format::kUserParams, StoreKey<&CJOBXtool::m_sUserParams>},
};

constexpr CKey<CJOBXtoolData> kToolKeys[] = {
    {tools_format::kNum, StoreKey<&CJOBXtoolData::m_nNum>},
    {tools_format::kType, StoreKey<&CJOBXtoolData::m_sType>},
    {tools_format::kType2, StoreKey<&CJOBXtoolData::m_sType2>},
    {tools_format::kMinTol, StoreKey<&CJOBXtoolData::m_dMinTol>},
    {tools_format::kMaxTol, StoreKey<&CJOBXtoolData::m_dMaxTol>},
    {tools_format::kBit, StoreKey<&CJOBXtoolData::m_sBit>},
    {tools_format::kFinishSize, StoreKey<&CJOBXtoolData::m_dFinishSize>},
    {tools_format::kDrillSize, StoreKey<&CJOBXtoolData::m_dDrillSize>},
    {tools_format::kID, StoreKeyAsID<CJOBXtoolData>},
};

constexpr std::string_view kToolTypes[] = {"PLATED", "NON_PLATED", "VIA"};

class CToolsReading
{
public:
    CToolsReading(const CReadingContext& context, CSourceFile& file, CJOBXtool& tools)
        : m_unit(file.Messages(), tools, context.job.unit),
          m_lines(file, kToolsKinds, &m_unit),
          m_messages(file.Messages()),
          m_tools(tools)
    {
    }

    void Read()
    {
        m_lines.ReadBlocks(
            m_tools, [this] { return Open(); }, [this] { Close(); },
            [this]
            {
                if (m_tool != nullptr)
                    m_lines.Store(kToolKeys, *m_tool);
                else
                    m_lines.Store(kToolsKeys, m_tools);
            });
        m_tools.m_sUnits = m_tools.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    bool Open()
    {
        m_toolLine = m_lines.Line();
        if (!m_lines.Begins(tools_format::kTool))
            return false;
        m_tool = m_tools.GetToolDataArray()->Own(std::make_unique<CJOBXtoolData>());
        m_tool->SetSourceLine(m_toolLine);
        return true;
    }

    void Close()
    {
        if (m_tool != nullptr)
            Check(*m_tool);
        m_tool = nullptr;
    }

    void Check(const CJOBXtoolData& tool)
    {
        const auto isType = [&](std::string_view type) { return AsciiEqualNoCase(type, tool.m_sType.View()); };
        if (std::none_of(std::begin(kToolTypes), std::end(kToolTypes), isType))
            m_messages.Say(tools_message::kUnknownWord, m_toolLine, "The type ", Quoted{tool.m_sType.View()},
                           " is not known.");
        if (const auto [first, isNew] = m_numbers.try_emplace(tool.m_nNum, m_toolLine); !isNew)
            m_messages.Say(tools_message::kSameNumber, m_toolLine, "The tool on line ", first->second,
                           " also has the number ", tool.m_nNum, ".");
    }

    CFileUnit m_unit;
    CKeyLines m_lines;
    CFileMessages& m_messages;
    CJOBXtool& m_tools;
    CJOBXtoolData* m_tool = nullptr; // of the open block
    int m_toolLine = 0;
    std::map<int, int> m_numbers; // with the line of the first
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXtool& tools)
{
    if (file.WasRead())
        CToolsReading(context, file, tools).Read();
}
