#include "step/StephdrLines.h"

#include "saving/KeyedLines.h"
#include "step/CJOBXstephdr.h"
#include "step/StephdrFormat.h"

namespace
{
constexpr CSavedKey<CJOBXstephdr> kSavedHeadKeys[] = {
    {stephdr_format::kXDatum, ListKey<&CJOBXstephdr::m_ptDatum, &CPointD::x>},
    {stephdr_format::kYDatum, ListKey<&CJOBXstephdr::m_ptDatum, &CPointD::y>},
    {stephdr_format::kID, ListKeyOfID<CJOBXstephdr>},
    {stephdr_format::kXOrigin, ListKey<&CJOBXstephdr::m_ptOrigin, &CPointD::x>},
    {stephdr_format::kYOrigin, ListKey<&CJOBXstephdr::m_ptOrigin, &CPointD::y>},
};

constexpr CSavedKey<CJOBXstephdr> kSavedSettings[] = {
    {stephdr_format::kTopActive, ListKey<&CJOBXstephdr::m_sTopActive>},
    {stephdr_format::kBottomActive, ListKey<&CJOBXstephdr::m_sBottomActive>},
    {stephdr_format::kRightActive, ListKey<&CJOBXstephdr::m_sRightActive>},
    {stephdr_format::kLeftActive, ListKey<&CJOBXstephdr::m_sLeftActive>},
    {stephdr_format::kOnlineDrcName, ListKey<&CJOBXstephdr::m_sOnlineDrcName>},
    {stephdr_format::kOnlineDrcMode, ListKey<&CJOBXstephdr::m_sOnlineDrcMode>},
    {stephdr_format::kOnlineDrcStat, ListKey<&CJOBXstephdr::m_sOnlineDrcStat>},
    {stephdr_format::kOnlineDrcTime, ListKey<&CJOBXstephdr::m_sOnlineDrcTime>},
    {stephdr_format::kOnlineDrcBeepVol, ListKey<&CJOBXstephdr::m_sOnlineDrcBeepVol>},
    {stephdr_format::kOnlineDrcBeepTone, ListKey<&CJOBXstephdr::m_sOnlineDrcBeepTone>},
    {stephdr_format::kOnlineNetMode, ListKey<&CJOBXstephdr::m_sOnlineNetMode>},
    {stephdr_format::kOnlineNetStat, ListKey<&CJOBXstephdr::m_sOnlineNetStat>},
    {stephdr_format::kOnlineNetTime, ListKey<&CJOBXstephdr::m_sOnlineNetTime>},
    {stephdr_format::kOnlineNetBeepVol, ListKey<&CJOBXstephdr::m_sOnlineNetBeepVol>},
    {stephdr_format::kOnlineNetBeepTone, ListKey<&CJOBXstephdr::m_sOnlineNetBeepTone>},
    {stephdr_format::kAffectingBom, ListKey<&CJOBXstephdr::m_sAffectingBom>},
    {stephdr_format::kAffectingBomChanged, ListKey<&CJOBXstephdr::m_sAffectingBomChanged>},
};

constexpr CSavedKey<CJOBXstepRepeat> kSavedEntryKeys[] = {
    {stephdr_format::kName, ListKey<&CJOBXstepRepeat::m_sName>},
    {stephdr_format::kX, ListKey<&CJOBXstepRepeat::m_ptPosition, &CPointD::x>},
    {stephdr_format::kY, ListKey<&CJOBXstepRepeat::m_ptPosition, &CPointD::y>},
    {stephdr_format::kDX, ListKey<&CJOBXstepRepeat::m_ptPitch, &CPointD::x>},
    {stephdr_format::kDY, ListKey<&CJOBXstepRepeat::m_ptPitch, &CPointD::y>},
    {stephdr_format::kNX, ListKey<&CJOBXstepRepeat::m_ptCount, &CPointN::x>},
    {stephdr_format::kNY, ListKey<&CJOBXstepRepeat::m_ptCount, &CPointN::y>},
    {stephdr_format::kAngle, ListKey<&CJOBXstepRepeat::m_dAngle>},
    {stephdr_format::kMirror, ListKey<&CJOBXstepRepeat::m_sMirror>},
    {stephdr_format::kFlip, ListKey<&CJOBXstepRepeat::m_sFlip>},
    {stephdr_format::kID, ListKeyOfID<CJOBXstepRepeat>},
};
} // namespace

void ListLines(const CJOBXstephdr& header, CRecordLines& lines)
{
    ListUnits(header.GetUnit(), lines);
    ListKeys(kSavedHeadKeys, header, 0, lines);
    for (const CJOBXstepRepeat& entry : header.m_arrStepRepeats.Records())
        ListBlock(stephdr_format::kEntry, kSavedEntryKeys, entry, lines);
    ListKeys(kSavedSettings, header, 0, lines);
    ListFurtherKeysAndBlocks(header, lines);
}
