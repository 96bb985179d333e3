#pragma once

#include "eda/CJOBXdataPkgObjFields.h"
#include "eda/CJOBXdataPkgPin.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXdataPkgPin.
template <>
struct jobx::Fields<CJOBXdataPkgPin>
{
    static constexpr RecordName kName{"pin", "A pin of a package", "pin", "pin"};
    static constexpr auto kList = std::tuple{
        Integer("flag", "Set by hosts", &CJOBXdataPkgPin::m_nFlag).InMemoryOnly(),
        Text("name", "Name", &CJOBXdataPkgPin::m_sName).Shown("name").AsName(),
        Text("type", "T, B or S", &CJOBXdataPkgPin::m_sType).Shown("type"),
        Coordinate("centre", "Place in the package", &CJOBXdataPkgPin::m_ptCenter).Shown("x", "y"),
        Length("finishedHoleSize", "Hole size", &CJOBXdataPkgPin::m_dHoleSize).Shown("hole size").LeftByUnitChange(),
        Text("electricalType", "E, M or U", &CJOBXdataPkgPin::m_sElectricalType).Shown("electrical type"),
        Text("mountType", "Mount type and what follows it", &CJOBXdataPkgPin::m_sMountType).Shown("mount type"),
        Records("outlines", "", &CJOBXdataPkgPin::m_arrOutlines).Shown(),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
