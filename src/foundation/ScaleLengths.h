// The unit change of a record as its list of fields says: every length and coordinate is multiplied, but for those that
// are left alone, and so are lists and parts that can be.
#pragma once

#include "foundation/RecordFields.h"

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
        // A list without a unit change has no lengths in its records.
        if constexpr (requires { Field::Ref(record).UnitConvert(factor); })
            Field::Ref(record).UnitConvert(factor);
    }
}

// The factor is a copy, because it may come from a member of the record.
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
