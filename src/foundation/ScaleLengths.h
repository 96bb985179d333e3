// Unit change of a record by its list of fields: multiplies every length and coordinate except those marked as left
// alone, and converts lists and parts.
#pragma once

#include "foundation/base/RecordFields.h"

namespace jobx
{
template <class Field, class Record>
void ScaleField(Record& record, double factor)
{
    constexpr FieldKind kKind = Field::kKind;
    if constexpr (kKind == FieldKind::Length)
        Field::Set(record, Field::Get(record) * factor);
    else if constexpr (kKind == FieldKind::Coordinate)
    {
        auto point = Field::Get(record);
        point.ReScale(factor);
        Field::Set(record, point);
    }
    else if constexpr (kKind == FieldKind::Records || kKind == FieldKind::Part)
    {
        // Skips lists without UnitConvert: their records have no lengths.
        if constexpr (requires { Field::Ref(record).UnitConvert(factor); })
            Field::Ref(record).UnitConvert(factor);
    }
}

// `factor` is a copy, because it may come from a member of the record.
template <class Record>
void ScaleLengths(Record& record, double factor)
{
    ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (!decltype(field)::kField.isLeftByUnitChange)
                ScaleField<decltype(field)>(record, factor);
        });
}
} // namespace jobx
