#pragma once

#include "eda/CJOBXdataFgr.h"
#include "eda/CJOBXdataNetObjFields.h"
#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXdataFgr.
template <>
struct jobx::Fields<CJOBXdataFgr>
{
    static constexpr RecordName kName{"featureGroup", "Features that belong together but to no net", "feature group",
                                      "feature group"};
    static constexpr auto kList = std::tuple{
        Text("kind", "TEXT, COORD or as in the file", &CJOBXdataFgr::m_sKind).Shown("kind", 1).AsMark(),
        LineNumber("line", "Line of the file", &CJOBXdataFgr::m_nLineNumber).Shown(4),
        Records("objects", "", &CJOBXdataFgr::m_arrNetObjs).Shown(2),
        Records("properties", "", &CJOBXdataFgr::m_arrProperties).Shown(3),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
