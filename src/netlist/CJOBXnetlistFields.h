#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "netlist/CJOBXnetFields.h"
#include "netlist/CJOBXnetlist.h"

// The fields of CJOBXnetlist.
template <>
struct jobx::Fields<CJOBXnetlist>
{
    static constexpr RecordName kName{"netlist", "The netlist of a step", "netlist", "netlist"};
    static constexpr auto kList = std::tuple{
        Text(
            "units", "INCH unless a host sets it", [](auto& netlist) -> auto& { return netlist.m_arrNets.m_sUnits; })
            .Shown("units"),
        Records("points", "Of no net; set by hosts", &CJOBXnetlist::m_arrPts).Shown(),
        Records("nets", "", &CJOBXnetlist::m_arrNets).Shown(),
        UnitOf(),
        Text("optimize", "The H line: y or n", &CJOBXnetlist::GetOptimize, &CJOBXnetlist::SetOptimize)
            .Shown("optimize")
            .OfCompleteReading(),
        Text("staggered", "The H line: y or n", &CJOBXnetlist::GetStaggered, &CJOBXnetlist::SetStaggered)
            .Shown("staggered")
            .OfCompleteReading(),
        Text("name", "Of its folder, such as cadnet", &CJOBXnetlist::GetName, &CJOBXnetlist::SetName)
            .AsNameInAnyCase()
            .OfCompleteReading(),
    };
};
