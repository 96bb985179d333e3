#pragma once

#include "components/CJOBXcomponentsFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXlayObjFields.h"
#include "layer/CJOBXlayer.h"
#include "layer/CJOBXtoolFields.h"

// The fields of CJOBXlayer.
template <>
struct jobx::Fields<CJOBXlayer>
{
    static constexpr RecordName kName{"layer", "A features file", "layer", "layer"};
    static constexpr auto kList = std::tuple{
        Text("name", "Name of its directory; \"profile\" for a profile, empty for a symbol", &CJOBXlayer::m_sName)
            .AsNameInAnyCase(),
        Real("rescaleFactor", "1 unless a host sets it", &CJOBXlayer::m_dRescaleFactor),
        Text("units", "The units line as the reader keeps it, for example UNITS=MM", &CJOBXlayer::m_sUnits)
            .Shown("units", 1),
        Records(
            "features", "In the order of the file", [](auto& layer) -> auto& { return *layer.GetFeatures(); })
            .Shown(5),
        Texts("attributeTexts", "Attribute texts", &CJOBXlayer::m_arrAttributeTexts),
        Numbers("attributeTextNumbers", "Their numbers", &CJOBXlayer::m_arrAttributeTextNumbers),
        Texts("attributeNames", "Attribute names", &CJOBXlayer::m_arrAttributeNames),
        Numbers("attributeNameNumbers", "Their numbers", &CJOBXlayer::m_arrAttributeNameNumbers),
        Texts("symbolNames", "Symbol names", &CJOBXlayer::m_arrSymbolNames),
        Numbers("symbolNumbers", "Their numbers", &CJOBXlayer::m_arrSymbolNumbers),
        Texts("symbolSecondFields", "What follows the names on their lines", &CJOBXlayer::m_arrSymbolSecondFields),
        Table(&CJOBXlayer::m_arrSymbolNumbers, &CJOBXlayer::m_arrSymbolNames, &CJOBXlayer::m_arrSymbolSecondFields)
            .Shown("symbol name", 2),
        Table(&CJOBXlayer::m_arrAttributeNameNumbers, &CJOBXlayer::m_arrAttributeNames).Shown("attribute name", 3),
        Table(&CJOBXlayer::m_arrAttributeTextNumbers, &CJOBXlayer::m_arrAttributeTexts).Shown("attribute text", 4),
        Records(
            "components", "Set by hosts", [](auto& layer) -> auto& { return *layer.GetComponents(); })
            .Sorted(),
        Part(
            "tools", "", [](auto& layer) -> auto& { return *layer.GetTool(); })
            .Shown(),
        Integer("featureLineNo", "Set by hosts", &CJOBXlayer::m_nFeatureLineNo),
        Real("copperWeightOrDielectric", "Set by hosts", &CJOBXlayer::m_dCopperWeightOrDielectric).InMemoryOnly(),
        Integer("firstLineNo", "Set by hosts", &CJOBXlayer::m_nFirstLineNo).InMemoryOnly(),
        Integer("lastLineNo", "Set by hosts", &CJOBXlayer::m_nLastLineNo).InMemoryOnly(),
        UnitOf(),
        IDOf<CJOBXidentified>(),
        AttributeListOf(),
    };
};
