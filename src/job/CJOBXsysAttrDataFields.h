#pragma once

#include "foundation/base/RecordFields.h"
#include "job/CJOBXsysAttrData.h"

// The fields of CJOBXsysAttrData.
template <>
struct jobx::Fields<CJOBXsysAttrData>
{
    static constexpr RecordName kName{"sysAttr", "The definition of a system attribute", "system attribute",
                                      "attribute"};
    static constexpr auto kList = std::tuple{
        Texts("options", "Allowed values", &CJOBXsysAttrData::m_arrOptions),
        Text("name", "Name", &CJOBXsysAttrData::m_sName).AsName(),
    };
};
