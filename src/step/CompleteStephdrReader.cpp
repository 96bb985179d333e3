#include "reading/CKeyLines.h"
#include "reading/StephdrMessageKinds.h"
#include "step/CJOBXstephdr.h"
#include "step/StephdrFormat.h"
#include "step/StephdrReader.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr CKeyKinds kStephdrKinds{stephdr_message::kNotNumber, stephdr_message::kNotKey,    stephdr_message::kUnknown,
                                  stephdr_message::kTwice,     stephdr_message::kNotClosed, stephdr_message::kNotOpen};

constexpr CKey<CJOBXstephdr> kStephdrKeys[] = {
    {stephdr_format::kXDatum, StoreKey<&CJOBXstephdr::m_ptDatum, &CPointD::x>},
    {stephdr_format::kYDatum, StoreKey<&CJOBXstephdr::m_ptDatum, &CPointD::y>},
    {stephdr_format::kXOrigin, StoreKey<&CJOBXstephdr::m_ptOrigin, &CPointD::x>},
    {stephdr_format::kYOrigin, StoreKey<&CJOBXstephdr::m_ptOrigin, &CPointD::y>},
    {stephdr_format::kAffectingBom, StoreKey<&CJOBXstephdr::m_sAffectingBom>},
    {stephdr_format::kAffectingBomChanged, StoreKey<&CJOBXstephdr::m_sAffectingBomChanged>},
    {stephdr_format::kTopActive, StoreKey<&CJOBXstephdr::m_sTopActive>},
    {stephdr_format::kBottomActive, StoreKey<&CJOBXstephdr::m_sBottomActive>},
    {stephdr_format::kRightActive, StoreKey<&CJOBXstephdr::m_sRightActive>},
    {stephdr_format::kLeftActive, StoreKey<&CJOBXstephdr::m_sLeftActive>},
    {stephdr_format::kOnlineDrcName, StoreKey<&CJOBXstephdr::m_sOnlineDrcName>},
    {stephdr_format::kOnlineDrcMode, StoreKey<&CJOBXstephdr::m_sOnlineDrcMode>},
    {stephdr_format::kOnlineDrcStat, StoreKey<&CJOBXstephdr::m_sOnlineDrcStat>},
    {stephdr_format::kOnlineDrcTime, StoreKey<&CJOBXstephdr::m_sOnlineDrcTime>},
    {stephdr_format::kOnlineDrcBeepVol, StoreKey<&CJOBXstephdr::m_sOnlineDrcBeepVol>},
    {stephdr_format::kOnlineDrcBeepTone, StoreKey<&CJOBXstephdr::m_sOnlineDrcBeepTone>},
    {stephdr_format::kOnlineNetMode, StoreKey<&CJOBXstephdr::m_sOnlineNetMode>},
    {stephdr_format::kOnlineNetStat, StoreKey<&CJOBXstephdr::m_sOnlineNetStat>},
    {stephdr_format::kOnlineNetTime, StoreKey<&CJOBXstephdr::m_sOnlineNetTime>},
    {stephdr_format::kOnlineNetBeepVol, StoreKey<&CJOBXstephdr::m_sOnlineNetBeepVol>},
    {stephdr_format::kOnlineNetBeepTone, StoreKey<&CJOBXstephdr::m_sOnlineNetBeepTone>},
    {stephdr_format::kID, StoreKeyAsID<CJOBXstephdr>},
};

constexpr CKey<CJOBXstepRepeat> kStepRepeatKeys[] = {
    {stephdr_format::kName, StoreKey<&CJOBXstepRepeat::m_sName>},
    {stephdr_format::kX, StoreKey<&CJOBXstepRepeat::m_ptPosition, &CPointD::x>},
    {stephdr_format::kY, StoreKey<&CJOBXstepRepeat::m_ptPosition, &CPointD::y>},
    {stephdr_format::kDX, StoreKey<&CJOBXstepRepeat::m_ptPitch, &CPointD::x>},
    {stephdr_format::kDY, StoreKey<&CJOBXstepRepeat::m_ptPitch, &CPointD::y>},
    {stephdr_format::kNX, StoreKey<&CJOBXstepRepeat::m_ptCount, &CPointN::x>},
    {stephdr_format::kNY, StoreKey<&CJOBXstepRepeat::m_ptCount, &CPointN::y>},
    {stephdr_format::kAngle, StoreKey<&CJOBXstepRepeat::m_dAngle>},
    {stephdr_format::kMirror, StoreKey<&CJOBXstepRepeat::m_sMirror>},
    {stephdr_format::kFlip, StoreKey<&CJOBXstepRepeat::m_sFlip>},
    {stephdr_format::kID, StoreKeyAsID<CJOBXstepRepeat>},
};

class CCompleteStephdrReading
{
public:
    CCompleteStephdrReading(const CReadingContext& context, CSourceFile& file, CJOBXstephdr& header)
        : m_steps(context.job.steps),
          m_unit(file.Messages(), header, context.job.unit),
          m_lines(file, kStephdrKinds, &m_unit),
          m_messages(file.Messages()),
          m_header(header)
    {
    }

    void Read()
    {
        m_lines.ReadBlocks(
            m_header, [this] { return Open(); }, [this] { Close(); },
            [this]
            {
                if (m_entry != nullptr)
                    m_lines.Store(kStepRepeatKeys, *m_entry);
                else
                    m_lines.Store(kStephdrKeys, m_header);
            });
    }

private:
    bool Open()
    {
        m_entryLine = m_lines.Line();
        if (!m_lines.Begins(stephdr_format::kEntry))
            return false;
        m_entry = m_header.m_arrStepRepeats.Own(std::make_unique<CJOBXstepRepeat>());
        m_entry->SetSourceLine(m_entryLine);
        return true;
    }

    void Close()
    {
        if (m_entry != nullptr)
            Check(*m_entry);
        m_entry = nullptr;
    }

    void Check(const CJOBXstepRepeat& entry)
    {
        const auto isNamed = [&](const CString& step) { return AsciiEqualNoCase(step.View(), entry.m_sName.View()); };
        if (!m_steps.empty() && std::none_of(m_steps.begin(), m_steps.end(), isNamed))
            m_messages.Say(stephdr_message::kNoStep, m_entryLine, "The step ", Quoted{entry.m_sName.View()},
                           " is not in the matrix.");
        if (entry.m_ptCount.x < 1 || entry.m_ptCount.y < 1)
            m_messages.Say(stephdr_message::kBadCount, m_entryLine, "The entry has ", entry.m_ptCount.x,
                           " columns and ", entry.m_ptCount.y, " rows.");
        for (const CString* const word : {&entry.m_sMirror, &entry.m_sFlip})
            if (!word->IsEmpty() && !AsciiEqualNoCase(word->View(), "YES") && !AsciiEqualNoCase(word->View(), "NO"))
                m_messages.Say(stephdr_message::kUnknownWord, m_entryLine, "The word ", Quoted{word->View()},
                               " is neither YES nor NO.");
    }

    const std::vector<CString>& m_steps; // of the matrix
    CFileUnit m_unit;
    CKeyLines m_lines;
    CFileMessages& m_messages;
    CJOBXstephdr& m_header;
    CJOBXstepRepeat* m_entry = nullptr; // the open one
    int m_entryLine = 0;
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXstephdr& header)
{
    header.SetUnit(context.job.unit);
    if (file.WasRead())
        CCompleteStephdrReading(context, file, header).Read();
}
