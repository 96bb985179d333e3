#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "netlist/CJOBXnet.h"
#include "netlist/CJOBXnetPtFields.h"

// The fields of CJOBXnet.
template <>
struct jobx::Fields<CJOBXnet>
{
    static constexpr RecordName kName{"netlistNet", "A net of the netlist", "netlist net", "net"};
    static constexpr auto kList = std::tuple{
        Integer("number", "", &CJOBXnet::m_nNumber).Shown("number", 2),
        Text("name", "Name", &CJOBXnet::m_sName).Shown("name", 1).AsName(),
        Records("points", "", &CJOBXnet::m_arrPts).Shown(3),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
