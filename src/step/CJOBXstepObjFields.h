#pragma once

#include "eda/CJOBXdataFields.h"
#include "eda/CJOBXeda.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXlayerFields.h"
#include "netlist/CJOBXnetlistFields.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdrFields.h"

namespace jobx
{
// The netlists beside "cadnet", which need not be there.
struct FurtherNetlists
{
    // A list to read; null for none.
    struct Found
    {
        const CJOBXnetlistArray* list;

        __int64 GetSize() const { return list == nullptr ? 0 : list->GetSize(); }
        const CJOBXnetlist* GetAt(__int64 index) const { return list->GetAt(index); }
    };

    Found operator()(const CJOBXstepObj& step) const { return {step.pGetFurtherNetlists()}; }
};
} // namespace jobx

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
        AttributeListOf(),
        Records("furtherNetlists", "Those beside cadnet, in the order of their folders", FurtherNetlists{})
            .OfCompleteReading(),
        Texts(
            "shorts", "The records of eda/shortf, each as its line",
            [](auto& step) -> auto& { return step.GetEda()->GetShorts(); })
            .OfCompleteReading(),
    };
};
