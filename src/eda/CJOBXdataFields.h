#pragma once

#include "eda/CJOBXdata.h"
#include "eda/CJOBXdataFgrFields.h"
#include "eda/CJOBXdataNetFields.h"
#include "eda/CJOBXdataPkgFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXdata.
template <>
struct jobx::Fields<CJOBXdata>
{
    static constexpr RecordName kName{"eda", "The EDA data of a step", "eda", "eda"};
    static constexpr auto kList = std::tuple{
        Text("header", "The HDR line", &CJOBXdata::m_sHeader).Shown("header", 1),
        Texts("layerNames", "The LYR line", &CJOBXdata::m_arrLayerNames).Shown("layer names", 5),
        Records("nets", "", &CJOBXdata::m_arrNets).Shown(7),
        Records("packages", "", &CJOBXdata::m_arrPkgs).Shown(8),
        Records("properties", "", &CJOBXdata::m_arrProperties).Shown(6),
        Text("units", "INCH unless a host sets it", &CJOBXdata::m_sUnits).Shown("units", 2),
        Texts("attributeNames", "Set by hosts", &CJOBXdata::m_arrAttributeNames).Shown("attribute names", 3),
        Texts("attributeTexts", "Set by hosts", &CJOBXdata::m_arrAttributeTexts).Shown("attribute texts", 4),
        UnitOf(),
        Records(
            "featureGroups", "FGR records behind the packages",
            [](auto& data) -> auto& { return *data.GetFeatureGroups(); })
            .Shown(9)
            .OfCompleteReading(),
        Numbers(
            "attributeNameNumbers", "Of the attribute names",
            [](auto& data) -> auto& { return *data.GetAttributeNameNumbers(); })
            .OfCompleteReading(),
        Numbers(
            "attributeTextNumbers", "Of the attribute texts",
            [](auto& data) -> auto& { return *data.GetAttributeTextNumbers(); })
            .OfCompleteReading(),
    };
};
