#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXtool.h"

// The fields of CJOBXtoolData.
template <>
struct jobx::Fields<CJOBXtoolData>
{
    static constexpr RecordName kName{"tool", "A drill tool", "tool", "tool"};
    static constexpr auto kList = std::tuple{
        Integer("num", "", &CJOBXtoolData::m_nNum).Shown("number"),
        Text("type", "Plating", &CJOBXtoolData::m_sType).Shown("type"),
        Text("type2", "Use of the hole", &CJOBXtoolData::m_sType2).Shown("type 2"),
        Length("minTol", "Lower tolerance", &CJOBXtoolData::m_dMinTol).Shown("lower tolerance"),
        Length("maxTol", "Upper tolerance", &CJOBXtoolData::m_dMaxTol).Shown("upper tolerance"),
        Text("bit", "Drill bit", &CJOBXtoolData::m_sBit).Shown("bit"),
        Length("finishSize", "Finished size", &CJOBXtoolData::m_dFinishSize).Shown("finish size"),
        Length("drillSize", "Drilled size", &CJOBXtoolData::m_dDrillSize).Shown("drill size"),
        IDOf<CJOBXidentified>(),
        FurtherKeysOf(),
    };
};

// The fields of CJOBXtool.
template <>
struct jobx::Fields<CJOBXtool>
{
    static constexpr RecordName kName{"tools", "Drill tools of a layer", "tools", "tools"};
    static constexpr auto kList = std::tuple{
        Text("units", "Unit", &CJOBXtool::m_sUnits).Shown("units of the tools"),
        Length("thickness", "Of the board", &CJOBXtool::m_dThickness).Shown("thickness of the board"),
        Text("userParams", "User parameters", &CJOBXtool::m_sUserParams).Shown("user parameters"),
        Records("tools", "", &CJOBXtool::m_arrToolData).Shown(),
        UnitOf().Shown("unit of the tools"),
        FurtherKeysOf(),
    };
};
