#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXProperty.
template <>
struct jobx::Fields<CJOBXProperty>
{
    static constexpr RecordName kName{"property", "An attribute or property with the numbers of its file's tables",
                                      "attribute", "attribute"};
    static constexpr auto kList = std::tuple{
        Text("name", "Attribute name", &CJOBXProperty::m_sName).Shown("name").AsName(),
        Index(FieldTable::AttributeNames, "number", "Of the name in the file's table, -1 for none",
              &CJOBXProperty::m_nNumber)
            .Shown("name number"),
        Text("value", "Attribute value", &CJOBXProperty::m_sValue).Shown("value").AsAttributeValue(),
        Index(FieldTable::AttributeTexts, "textNumber", "Of the value in the file's table, -1 for none",
              &CJOBXProperty::m_nTextNumber)
            .Shown("text number"),
        Texts("furtherValues", "Value words after the first", &CJOBXProperty::m_arrFurtherValues)
            .Shown("further values"),
        AttributeKind("kind", "Of the value: flag, integer, real, text, option or unknown", &CJOBXProperty::GetKind,
                      &CJOBXProperty::SetKind)
            .Shown("kind")
            .OfCompleteReading(),
    };
};
