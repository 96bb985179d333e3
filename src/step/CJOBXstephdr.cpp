#include "step/CJOBXstephdr.h"

#include "foundation/CTextScanner.h"
#include "foundation/CTextWriter.h"
#include "foundation/KeywordTable.h"
#include "foundation/ScaleLengths.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"
#include "step/CJOBXstephdrFields.h"
#include "step/StephdrText.h"

#include <memory>

template class CExPtrArray<CJOBXstephdr*, CJOBXstephdr*>;

namespace
{
struct Reading
{
    CJOBXstephdr& header;
    std::unique_ptr<CJOBXstepRepeat> entry; // the open one; dropped unless its end comes
};

template <CPointD CJOBXstephdr::*Point, double CPointD::*Coordinate>
void OnPoint(Reading& reading, std::string_view line)
{
    reading.header.*Point.*Coordinate = ParseReal(KeyValue(line));
}

template <CString CJOBXstephdr::*Text>
void OnSetting(Reading& reading, std::string_view line)
{
    reading.header.*Text = KeyValue(line);
}

void OnEntry(Reading& reading, std::string_view /*line*/)
{
    reading.entry = std::make_unique<CJOBXstepRepeat>();
}

void OnEntryEnd(Reading& reading, std::string_view /*line*/)
{
    if (reading.entry != nullptr)
        reading.header.m_arrStepRepeats.Own(std::move(reading.entry));
}

// The keys of an entry; without an open one they are dropped.
template <CString CJOBXstepRepeat::*Text>
void OnEntryText(Reading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        *reading.entry.*Text = KeyValue(line);
}

template <CPointD CJOBXstepRepeat::*Point, double CPointD::*Coordinate>
void OnEntryPoint(Reading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        *reading.entry.*Point.*Coordinate = ParseReal(KeyValue(line));
}

template <int CPointN::*Coordinate>
void OnEntryCount(Reading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        reading.entry->m_ptCount.*Coordinate = ParseInteger(KeyValue(line));
}

void OnEntryAngle(Reading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        reading.entry->m_dAngle = ParseInteger(KeyValue(line)); // whole degrees: intended
}

using namespace stephdr_text;

// Tried from the top, first match wins, inside an entry and outside. The order is behaviour, and so is which keys count
// in capitals only.
constexpr Keyword<Reading> kKeywords[] = {
    {kXDatum, OnPoint<&CJOBXstephdr::m_ptDatum, &CPointD::x>},
    {kYDatum, OnPoint<&CJOBXstephdr::m_ptDatum, &CPointD::y>},
    {kXOrigin, OnPoint<&CJOBXstephdr::m_ptOrigin, &CPointD::x>},
    {kYOrigin, OnPoint<&CJOBXstephdr::m_ptOrigin, &CPointD::y>},
    {kAffectingBom, OnSetting<&CJOBXstephdr::m_sAffectingBom>, Letters::AsWritten}, // also takes the next key's lines
    {kAffectingBomChanged, OnSetting<&CJOBXstephdr::m_sAffectingBomChanged>},       // left: those not in capitals
    {kTopActive, OnSetting<&CJOBXstephdr::m_sTopActive>, Letters::AsWritten},
    {kBottomActive, OnSetting<&CJOBXstephdr::m_sBottomActive>},
    {kRightActive, OnSetting<&CJOBXstephdr::m_sRightActive>, Letters::AsWritten},
    {kLeftActive, OnSetting<&CJOBXstephdr::m_sLeftActive>},
    {kOnlineDrcName, OnSetting<&CJOBXstephdr::m_sOnlineDrcName>, Letters::AsWritten},
    {kOnlineDrcMode, OnSetting<&CJOBXstephdr::m_sOnlineDrcMode>},
    {kOnlineDrcStat, OnSetting<&CJOBXstephdr::m_sOnlineDrcStat>, Letters::AsWritten},
    {kOnlineDrcTime, OnSetting<&CJOBXstephdr::m_sOnlineDrcTime>},
    {kOnlineDrcBeepVol, OnSetting<&CJOBXstephdr::m_sOnlineDrcBeepVol>, Letters::AsWritten},
    {kOnlineDrcBeepTone, OnSetting<&CJOBXstephdr::m_sOnlineDrcBeepTone>, Letters::AsWritten},
    {kOnlineNetMode, OnSetting<&CJOBXstephdr::m_sOnlineNetMode>},
    {kOnlineNetStat, OnSetting<&CJOBXstephdr::m_sOnlineNetStat>},
    {kOnlineNetTime, OnSetting<&CJOBXstephdr::m_sOnlineNetTime>, Letters::AsWritten},
    {kOnlineNetBeepVol, OnSetting<&CJOBXstephdr::m_sOnlineNetBeepVol>},
    {kOnlineNetBeepTone, OnSetting<&CJOBXstephdr::m_sOnlineNetBeepTone>},
    {kEntryEnd, OnEntryEnd},
    {kEntryRead, OnEntry},
    {kName, OnEntryText<&CJOBXstepRepeat::m_sName>},
    {kX, OnEntryPoint<&CJOBXstepRepeat::m_ptPosition, &CPointD::x>},
    {kY, OnEntryPoint<&CJOBXstepRepeat::m_ptPosition, &CPointD::y>},
    {kDX, OnEntryPoint<&CJOBXstepRepeat::m_ptPitch, &CPointD::x>},
    {kDY, OnEntryPoint<&CJOBXstepRepeat::m_ptPitch, &CPointD::y>},
    {kNX, OnEntryCount<&CPointN::x>},
    {kNY, OnEntryCount<&CPointN::y>},
    {kAngle, OnEntryAngle},
    {kMirror, OnEntryText<&CJOBXstepRepeat::m_sMirror>},
    {kFlip, OnEntryText<&CJOBXstepRepeat::m_sFlip>},
};

void WriteSettings(CTextWriter& out, const CJOBXstephdr& header)
{
    const auto line = [&out](std::string_view key, const auto& value) { out << key << '=' << value << '\n'; };
    line(kTopActive, header.m_sTopActive);
    line(kBottomActive, header.m_sBottomActive);
    line(kRightActive, header.m_sRightActive);
    line(kLeftActive, header.m_sLeftActive);
    line(kOnlineDrcName, header.m_sOnlineDrcName);
    line(kOnlineDrcMode, header.m_sOnlineDrcMode);
    line(kOnlineDrcStat, header.m_sOnlineDrcStat);
    line(kOnlineDrcTime, header.m_sOnlineDrcTime);
    line(kOnlineDrcBeepVol, header.m_sOnlineDrcBeepVol);
    line(kOnlineDrcBeepTone, header.m_sOnlineDrcBeepTone);
    line(kOnlineNetMode, header.m_sOnlineNetMode);
    line(kOnlineNetStat, header.m_sOnlineNetStat);
    line(kOnlineNetTime, header.m_sOnlineNetTime);
    line(kOnlineNetBeepVol, header.m_sOnlineNetBeepVol);
    line(kOnlineNetBeepTone, ParseInteger(header.m_sOnlineNetBeepTone.View()));
}
} // namespace

CJOBXstephdr::CJOBXstephdr() = default;

CJOBXstephdr::~CJOBXstephdr() = default;

int CJOBXstephdr::ParseODBOfMFC(CString path)
{
    return Guarded(
        [&]
        {
            CTextScanner text(path, __FILE__, __LINE__);
            Reading reading{*this, nullptr};
            while (text.NextLine())
                Dispatch<kKeywords>(reading, text.Line());
            return text.WasRead() ? 1 : 0;
        });
}

void CJOBXstephdr::WriteODBData(CString stepDir) const
{
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(stepDir, "stephdr", __FILE__, __LINE__), __FILE__,
                    __LINE__);
    const auto line = [&out](std::string_view key, double value) { out << key << '=' << General{value} << '\n'; };
    line(kXDatum, m_ptDatum.x);
    line(kYDatum, m_ptDatum.y);
    line(kXOrigin, m_ptOrigin.x);
    line(kYOrigin, m_ptOrigin.x); // from x: intended, hosts rely on it
    out << '\n';
    WriteStepRepeats(out, m_arrStepRepeats);
    out << '\n';
    WriteSettings(out, *this);
}

void CJOBXstephdr::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXstephdrArray::CJOBXstephdrArray() = default;

CJOBXstephdrArray::~CJOBXstephdrArray() = default;

void CJOBXstephdrArray::WriteODBData(CString stepDir) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (const CJOBXstephdr* const header = GetAt(i))
            header->WriteODBData(stepDir);
}

void CJOBXstephdrArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXstephdr* const header = GetAt(i))
            header->UnitConvert(by);
}
