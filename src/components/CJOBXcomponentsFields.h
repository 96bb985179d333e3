#pragma once

#include "components/CJOBXcmpFields.h"
#include "components/CJOBXcomponents.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXcomponents.
template <>
struct jobx::Fields<CJOBXcomponents>
{
    static constexpr RecordName kName{"components", "A components file", "components", "components"};
    static constexpr auto kList = std::tuple{
        Text("layerName", "Directory of the layer", &CJOBXcomponents::m_sLayerName).AsNameInAnyCase(),
        Text("relativePath", "The file below the step's layers", &CJOBXcomponents::m_sRelativePath),
        Text("units", "INCH unless a host sets it", &CJOBXcomponents::m_sUnits).Shown("units", 1),
        Records("components", "", &CJOBXcomponents::m_arrCmps).Shown(4),
        Texts("attributeNames", "Attribute names", &CJOBXcomponents::m_arrAttributeNames),
        Numbers("attributeNameNumbers", "Their numbers", &CJOBXcomponents::m_arrAttributeNameNumbers),
        Texts("attributeTexts", "Attribute texts", &CJOBXcomponents::m_arrAttributeTexts),
        Numbers("attributeTextNumbers", "Their numbers", &CJOBXcomponents::m_arrAttributeTextNumbers),
        Table(&CJOBXcomponents::m_arrAttributeNameNumbers, &CJOBXcomponents::m_arrAttributeNames)
            .Shown("attribute name", 2),
        Table(&CJOBXcomponents::m_arrAttributeTextNumbers, &CJOBXcomponents::m_arrAttributeTexts)
            .Shown("attribute text", 3),
        UnitOf(),
        AttributeListOf(),
    };
};
