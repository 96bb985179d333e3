#pragma once

#include "foundation/RecordFields.h"
#include "layer/CJOBXtool.h"

// The fields of CJOBXtoolData.
template <>
struct jobx::Fields<CJOBXtoolData>
{
    static constexpr RecordName kName{"tool", "A drill tool", "tool", "tool"};
    static constexpr auto kList = std::tuple{
        Integer("num", "", &CJOBXtoolData::m_nNum),
        Text("type", "Plating", &CJOBXtoolData::m_sType),
        Text("type2", "Use of the hole", &CJOBXtoolData::m_sType2),
        Length("minTol", "Lower tolerance", &CJOBXtoolData::m_dMinTol),
        Length("maxTol", "Upper tolerance", &CJOBXtoolData::m_dMaxTol),
        Text("bit", "Drill bit", &CJOBXtoolData::m_sBit),
        Length("finishSize", "Finished size", &CJOBXtoolData::m_dFinishSize),
        Length("drillSize", "Drilled size", &CJOBXtoolData::m_dDrillSize),
    };
};

// The fields of CJOBXtool.
template <>
struct jobx::Fields<CJOBXtool>
{
    static constexpr RecordName kName{"tools", "Drill tools of a layer", "tools", "tools"};
    static constexpr auto kList = std::tuple{
        Text("units", "Unit", &CJOBXtool::m_sUnits),
        Length("thickness", "Of the board", &CJOBXtool::m_dThickness),
        Text("userParams", "User parameters", &CJOBXtool::m_sUserParams),
        Records("tools", "", &CJOBXtool::m_arrToolData),
    };
};
