#pragma once

#include "eda/CJOBXdataNetObj.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXdataNetObj.
template <>
struct jobx::Fields<CJOBXdataNetObj>
{
    static constexpr RecordName kName{"netObject", "A feature that belongs to a subnet", "net object", "object"};
    static constexpr auto kList = std::tuple{
        Index(FieldTable::Features, "feature", "Feature of the layer, -1 for none", &CJOBXdataNetObj::m_nFeatureIndex)
            .Shown("feature", 3),
        Index(FieldTable::LayerNames, "layer", "Position in layerNames, -1 for none", &CJOBXdataNetObj::m_nLayerIndex)
            .Shown("layer", 2),
        Text("kind", "C copper, L laminate, H hole, or FGR", &CJOBXdataNetObj::m_sKind).Shown("kind", 1),
        Text("second", "The rest of an FGR line", &CJOBXdataNetObj::m_sText).Shown("text", 4),
        LineNumber("line", "Line of the file", &CJOBXdataNetObj::m_nLineNumber).Shown(5),
    };
};
