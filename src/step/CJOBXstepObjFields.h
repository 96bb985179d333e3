#pragma once

#include "eda/CJOBXdataFields.h"
#include "eda/CJOBXeda.h"
#include "foundation/RecordFields.h"
#include "layer/CJOBXlayerFields.h"
#include "netlist/CJOBXnetlistFields.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdrFields.h"

// The fields of CJOBXstepObj.
template <>
struct jobx::Fields<CJOBXstepObj>
{
    static constexpr RecordName kName{"step", "A step", "step", "step"};
    static constexpr auto kList = std::tuple{
        Text("name", "As the matrix spells it", &CJOBXstepObj::m_sName).AsNameInAnyCase(),
        Part(
            "profile", "", [](auto& step) -> auto& { return *step.m_pProfile; }),
        Part(
            "header", "", [](auto& step) -> auto& { return *step.m_pHeader; }),
        Records("layers", "Sorted by name", &CJOBXstepObj::m_arrLayers).Sorted(),
        Records("components", "Sorted by layer name", &CJOBXstepObj::m_arrComponents).Sorted(),
        Part(
            "eda", "", [](auto& step) -> auto& { return *step.m_pEda->m_pData; }),
        Part(
            "netlist", "", [](auto& step) -> auto& { return *step.m_pNetlist; }),
    };
};
