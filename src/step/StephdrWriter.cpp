#include "foundation/base/NumberText.h"
#include "foundation/corekit/CKUtility.h"
#include "step/CJOBXstephdr.h"
#include "step/StephdrFormat.h"

namespace
{
void WriteEntry(CTextWriter& out, const CJOBXstepRepeat& entry)
{
    const auto line = [&out](std::string_view key, const auto& value) { out << ' ' << key << '=' << value << '\n'; };
    out << stephdr_format::kEntryWritten << '\n';
    line(stephdr_format::kName, entry.m_sName);
    line(stephdr_format::kX, General{entry.m_ptPosition.x});
    line(stephdr_format::kY, General{entry.m_ptPosition.y});
    line(stephdr_format::kDX, General{entry.m_ptPitch.x});
    line(stephdr_format::kDY, General{entry.m_ptPitch.y});
    line(stephdr_format::kNX, entry.m_ptCount.x);
    line(stephdr_format::kNY, entry.m_ptCount.y);
    line(stephdr_format::kAngle, General{entry.m_dAngle});
    line(stephdr_format::kMirror, entry.m_sMirror);
    line(stephdr_format::kFlip, entry.m_sFlip);
    out << stephdr_format::kEntryEnd << '\n';
}

void WriteSettings(CTextWriter& out, const CJOBXstephdr& header)
{
    const auto line = [&out](std::string_view key, const auto& value) { out << key << '=' << value << '\n'; };
    line(stephdr_format::kTopActive, header.m_sTopActive);
    line(stephdr_format::kBottomActive, header.m_sBottomActive);
    line(stephdr_format::kRightActive, header.m_sRightActive);
    line(stephdr_format::kLeftActive, header.m_sLeftActive);
    line(stephdr_format::kOnlineDrcName, header.m_sOnlineDrcName);
    line(stephdr_format::kOnlineDrcMode, header.m_sOnlineDrcMode);
    line(stephdr_format::kOnlineDrcStat, header.m_sOnlineDrcStat);
    line(stephdr_format::kOnlineDrcTime, header.m_sOnlineDrcTime);
    line(stephdr_format::kOnlineDrcBeepVol, header.m_sOnlineDrcBeepVol);
    line(stephdr_format::kOnlineDrcBeepTone, header.m_sOnlineDrcBeepTone);
    line(stephdr_format::kOnlineNetMode, header.m_sOnlineNetMode);
    line(stephdr_format::kOnlineNetStat, header.m_sOnlineNetStat);
    line(stephdr_format::kOnlineNetTime, header.m_sOnlineNetTime);
    line(stephdr_format::kOnlineNetBeepVol, header.m_sOnlineNetBeepVol);
    line(stephdr_format::kOnlineNetBeepTone, ParseInteger(header.m_sOnlineNetBeepTone.View()));
}
} // namespace

void WriteStepRepeats(CTextWriter& out, const CJOBXstepRepeatArray& entries)
{
    for (const CJOBXstepRepeat& entry : entries.Records())
        WriteEntry(out, entry);
}

void CJOBXstepRepeatArray::WriteODBData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteStepRepeats(out, *this);
}

void CJOBXstephdr::WriteODBData(CString stepDir) const
{
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(stepDir, "stephdr", __FILE__, __LINE__), __FILE__,
                    __LINE__);
    const auto line = [&out](std::string_view key, double value) { out << key << '=' << General{value} << '\n'; };
    line(stephdr_format::kXDatum, m_ptDatum.x);
    line(stephdr_format::kYDatum, m_ptDatum.y);
    line(stephdr_format::kXOrigin, m_ptOrigin.x);
    line(stephdr_format::kYOrigin, m_ptOrigin.x); // from x: intended, hosts rely on it
    out << '\n';
    WriteStepRepeats(out, m_arrStepRepeats);
    out << '\n';
    WriteSettings(out, *this);
}

void CJOBXstephdrArray::WriteODBData(CString stepDir) const
{
    for (const CJOBXstephdr& header : Records())
        header.WriteODBData(stepDir);
}
