#pragma once

#include "foundation/base/RecordFields.h"
#include "foundation/corekit/CLProperty.h"

// The fields of CLProperty.
template <>
struct jobx::Fields<CLProperty>
{
    static constexpr RecordName kName{"plainProperty", "A name and a value", "property", "property"};
    static constexpr auto kList = std::tuple{
        Text("name", "Name", &CLProperty::m_sName).Shown("name").AsName(),
        Text("value", "Value", &CLProperty::m_sValue).Shown("value"),
    };
};
