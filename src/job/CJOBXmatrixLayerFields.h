#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "job/CJOBXmatrixLayer.h"

// The fields of CJOBXmatrixLayer.
template <>
struct jobx::Fields<CJOBXmatrixLayer>
{
    static constexpr RecordName kName{"matrixLayer", "A row of the matrix", "matrix layer", "layer"};
    static constexpr auto kList = std::tuple{
        Text("endName", "Last layer of its span", &CJOBXmatrixLayer::m_sEndName).Shown("end name", 7),
        Text("startName", "First layer of its span", &CJOBXmatrixLayer::m_sStartName).Shown("start name", 6),
        Text("polarity", "Polarity", &CJOBXmatrixLayer::m_sPolarity).Shown("polarity", 5),
        Text("name", "Name", &CJOBXmatrixLayer::m_sName).Shown("name", 1).AsNameInAnyCase(),
        Text("type", "Type", &CJOBXmatrixLayer::m_sType).Shown("type", 4),
        Text("context", "Context", &CJOBXmatrixLayer::m_sContext).Shown("context", 3),
        Text("addType", "Additional type", &CJOBXmatrixLayer::m_sAddType).Shown("add type", 9),
        Text("oldName", "Former name", &CJOBXmatrixLayer::m_sOldName).Shown("old name", 8),
        Text("color", "Colour", &CJOBXmatrixLayer::m_sColor).Shown("color", 10),
        Integer("row", "", &CJOBXmatrixLayer::m_nRow).Shown("row", 2),
        IDOf<CJOBXidentified>(),
        FurtherKeysOf(),
    };
};
