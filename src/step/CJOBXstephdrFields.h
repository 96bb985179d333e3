#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "step/CJOBXstepRepeatFields.h"
#include "step/CJOBXstephdr.h"

// The fields of CJOBXstephdr.
template <>
struct jobx::Fields<CJOBXstephdr>
{
    static constexpr RecordName kName{"header", "The header of a step; settings are texts of the file", "header",
                                      "header"};
    static constexpr auto kList = std::tuple{
        Coordinate("datum", "Datum", &CJOBXstephdr::m_ptDatum).Shown("datum x", "datum y"),
        Coordinate("origin", "Origin", &CJOBXstephdr::m_ptOrigin).Shown("origin x", "origin y"),
        Text("topActive", "", &CJOBXstephdr::m_sTopActive).Shown("top active"),
        Text("bottomActive", "", &CJOBXstephdr::m_sBottomActive).Shown("bottom active"),
        Text("rightActive", "", &CJOBXstephdr::m_sRightActive).Shown("right active"),
        Text("leftActive", "", &CJOBXstephdr::m_sLeftActive).Shown("left active"),
        Text("onlineDrcName", "", &CJOBXstephdr::m_sOnlineDrcName).Shown("online DRC name"),
        Text("onlineDrcMode", "", &CJOBXstephdr::m_sOnlineDrcMode).Shown("online DRC mode"),
        Text("onlineDrcStat", "", &CJOBXstephdr::m_sOnlineDrcStat).Shown("online DRC state"),
        Text("onlineDrcTime", "", &CJOBXstephdr::m_sOnlineDrcTime).Shown("online DRC time"),
        Text("onlineDrcBeepVol", "", &CJOBXstephdr::m_sOnlineDrcBeepVol).Shown("online DRC beep volume"),
        Text("onlineDrcBeepTone", "", &CJOBXstephdr::m_sOnlineDrcBeepTone).Shown("online DRC beep tone"),
        Text("onlineNetMode", "", &CJOBXstephdr::m_sOnlineNetMode).Shown("online net mode"),
        Text("onlineNetStat", "", &CJOBXstephdr::m_sOnlineNetStat).Shown("online net state"),
        Text("onlineNetTime", "", &CJOBXstephdr::m_sOnlineNetTime).Shown("online net time"),
        Text("onlineNetBeepVol", "", &CJOBXstephdr::m_sOnlineNetBeepVol).Shown("online net beep volume"),
        Text("onlineNetBeepTone", "", &CJOBXstephdr::m_sOnlineNetBeepTone).Shown("online net beep tone"),
        Text("affectingBom", "", &CJOBXstephdr::m_sAffectingBom).Shown("affecting BOM"),
        Text("affectingBomChanged", "", &CJOBXstephdr::m_sAffectingBomChanged).Shown("affecting BOM changed"),
        Records("stepRepeats", "", &CJOBXstephdr::m_arrStepRepeats).Shown(),
        UnitOf(),
        IDOf<CJOBXidentified>(),
        FurtherKeysOf(),
    };
};
