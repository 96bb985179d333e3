#include "foundation/KeywordTable.h"
#include "foundation/framework/Guarded.h"
#include "step/CJOBXstephdr.h"
#include "step/StephdrFormat.h"

#include <memory>

namespace
{
struct StephdrReading
{
    CJOBXstephdr& header;
    std::unique_ptr<CJOBXstepRepeat> entry; // the open one; dropped unless its end is found
};

template <CPointD CJOBXstephdr::*Point, double CPointD::*Coordinate>
void OnPoint(StephdrReading& reading, std::string_view line)
{
    reading.header.*Point.*Coordinate = ParseReal(KeyValue(line));
}

template <CString CJOBXstephdr::*Text>
void OnSetting(StephdrReading& reading, std::string_view line)
{
    reading.header.*Text = KeyValue(line);
}

void OnEntry(StephdrReading& reading, std::string_view /*line*/)
{
    reading.entry = std::make_unique<CJOBXstepRepeat>();
}

void OnEntryEnd(StephdrReading& reading, std::string_view /*line*/)
{
    if (reading.entry != nullptr)
        reading.header.m_arrStepRepeats.Own(std::move(reading.entry));
}

// The keys of an entry. Without an open entry they are dropped.
template <CString CJOBXstepRepeat::*Text>
void OnEntryText(StephdrReading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        *reading.entry.*Text = KeyValue(line);
}

template <CPointD CJOBXstepRepeat::*Point, double CPointD::*Coordinate>
void OnEntryPoint(StephdrReading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        *reading.entry.*Point.*Coordinate = ParseReal(KeyValue(line));
}

template <int CPointN::*Coordinate>
void OnEntryCount(StephdrReading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        reading.entry->m_ptCount.*Coordinate = ParseInteger(KeyValue(line));
}

void OnEntryAngle(StephdrReading& reading, std::string_view line)
{
    if (reading.entry != nullptr)
        reading.entry->m_dAngle = ParseInteger(KeyValue(line)); // whole degrees: intended
}

// Tried from the top, first match wins, inside an entry and outside. Both the order and the choice of keys that must be
// in capitals are behaviour.
constexpr Keyword<StephdrReading> kStephdrKeywords[] = {
    {stephdr_format::kXDatum, OnPoint<&CJOBXstephdr::m_ptDatum, &CPointD::x>},
    {stephdr_format::kYDatum, OnPoint<&CJOBXstephdr::m_ptDatum, &CPointD::y>},
    {stephdr_format::kXOrigin, OnPoint<&CJOBXstephdr::m_ptOrigin, &CPointD::x>},
    {stephdr_format::kYOrigin, OnPoint<&CJOBXstephdr::m_ptOrigin, &CPointD::y>},
    {stephdr_format::kAffectingBom, OnSetting<&CJOBXstephdr::m_sAffectingBom>,
     Letters::AsWritten}, // also matches the next key's lines
    {stephdr_format::kAffectingBomChanged,
     OnSetting<&CJOBXstephdr::m_sAffectingBomChanged>}, // only those not in capitals get here
    {stephdr_format::kTopActive, OnSetting<&CJOBXstephdr::m_sTopActive>, Letters::AsWritten},
    {stephdr_format::kBottomActive, OnSetting<&CJOBXstephdr::m_sBottomActive>},
    {stephdr_format::kRightActive, OnSetting<&CJOBXstephdr::m_sRightActive>, Letters::AsWritten},
    {stephdr_format::kLeftActive, OnSetting<&CJOBXstephdr::m_sLeftActive>},
    {stephdr_format::kOnlineDrcName, OnSetting<&CJOBXstephdr::m_sOnlineDrcName>, Letters::AsWritten},
    {stephdr_format::kOnlineDrcMode, OnSetting<&CJOBXstephdr::m_sOnlineDrcMode>},
    {stephdr_format::kOnlineDrcStat, OnSetting<&CJOBXstephdr::m_sOnlineDrcStat>, Letters::AsWritten},
    {stephdr_format::kOnlineDrcTime, OnSetting<&CJOBXstephdr::m_sOnlineDrcTime>},
    {stephdr_format::kOnlineDrcBeepVol, OnSetting<&CJOBXstephdr::m_sOnlineDrcBeepVol>, Letters::AsWritten},
    {stephdr_format::kOnlineDrcBeepTone, OnSetting<&CJOBXstephdr::m_sOnlineDrcBeepTone>, Letters::AsWritten},
    {stephdr_format::kOnlineNetMode, OnSetting<&CJOBXstephdr::m_sOnlineNetMode>},
    {stephdr_format::kOnlineNetStat, OnSetting<&CJOBXstephdr::m_sOnlineNetStat>},
    {stephdr_format::kOnlineNetTime, OnSetting<&CJOBXstephdr::m_sOnlineNetTime>, Letters::AsWritten},
    {stephdr_format::kOnlineNetBeepVol, OnSetting<&CJOBXstephdr::m_sOnlineNetBeepVol>},
    {stephdr_format::kOnlineNetBeepTone, OnSetting<&CJOBXstephdr::m_sOnlineNetBeepTone>},
    {stephdr_format::kEntryEnd, OnEntryEnd},
    {stephdr_format::kEntryRead, OnEntry},
    {stephdr_format::kName, OnEntryText<&CJOBXstepRepeat::m_sName>},
    {stephdr_format::kX, OnEntryPoint<&CJOBXstepRepeat::m_ptPosition, &CPointD::x>},
    {stephdr_format::kY, OnEntryPoint<&CJOBXstepRepeat::m_ptPosition, &CPointD::y>},
    {stephdr_format::kDX, OnEntryPoint<&CJOBXstepRepeat::m_ptPitch, &CPointD::x>},
    {stephdr_format::kDY, OnEntryPoint<&CJOBXstepRepeat::m_ptPitch, &CPointD::y>},
    {stephdr_format::kNX, OnEntryCount<&CPointN::x>},
    {stephdr_format::kNY, OnEntryCount<&CPointN::y>},
    {stephdr_format::kAngle, OnEntryAngle},
    {stephdr_format::kMirror, OnEntryText<&CJOBXstepRepeat::m_sMirror>},
    {stephdr_format::kFlip, OnEntryText<&CJOBXstepRepeat::m_sFlip>},
};

void ReadLines(CLineScanner& text, CJOBXstephdr& header)
{
    StephdrReading reading{header, nullptr};
    while (text.NextLine())
        Dispatch<kStephdrKeywords>(reading, text.Line());
}
} // namespace

int CJOBXstephdr::ParseODBOfMFC(CString path)
{
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, *this);
            return text.WasRead() ? 1 : 0;
        });
}
