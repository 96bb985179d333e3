// Writes any described record as JSON: its keys and their order come from its list of fields. kWay is the way of reading
// whose document it is.
#pragma once

#include "JOBXCLSDLL_fields.h"
#include "model/FieldWords.h"
#include "model/Sorted.h"
#include "output/JsonOutput.h"

template <JOBXway kWay = JOBXway::Classic, class Record>
void WriteRecord(JsonOutput& json, const Record& record);

// The text by which lists of such records are sorted.
template <class Record>
std::string_view SortingName(const Record& record)
{
    std::string_view name;
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (decltype(field)::kField.isName)
                name = field.Get(record).View();
        });
    return name;
}

template <JOBXway kWay, class Field, class List>
void WriteRecords(JsonOutput& json, const List& list)
{
    using Record = jobx::RecordOfList<List>;
    json.Array(
        [&]
        {
            if constexpr (Field::kField.isSorted)
                for (const Record* const record : SortedRecords<Record>(list, &SortingName<Record>))
                    WriteRecord<kWay>(json, *record);
            else
                jobx::ForEachRecord(list, [&](const Record& record) { WriteRecord<kWay>(json, record); });
        });
}

template <JOBXway kWay = JOBXway::Classic, class Record>
void WriteFields(JsonOutput& json, const Record& record);

template <JOBXway kWay, class Field, class Record>
void WriteValue(JsonOutput& json, const Record& record)
{
    using Kind = jobx::FieldKind;
    if constexpr (Field::kKind == Kind::UniqueNumber)
    {
        if (const __int64 number = Field::Get(record); number >= 0)
            json.Value(static_cast<std::int64_t>(number));
        else
            json.Null();
    }
    else if constexpr (Field::kKind == Kind::Unit || Field::kKind == Kind::AttributeKind)
        json.Value(WordFor(Field::Get(record)));
    else if constexpr (sizeof(Field::Get(record)) == sizeof(std::int64_t) && Field::kKind == Kind::Integer)
        json.Value(static_cast<std::int64_t>(Field::Get(record)));
    else if constexpr (Field::kField.isAttributeValue && kWay == JOBXway::Complete)
    {
        if (record.GetKind() == JOBXattributeKind::Flag)
            json.True();
        else
            json.Value(Field::Get(record));
    }
    else
        json.Value(Field::Get(record));
}

template <JOBXway kWay, class Field, class Record>
void WriteField(JsonOutput& json, const Record& record)
{
    if constexpr (Field::kKind == jobx::FieldKind::Class)
        Field::kField.access.Find(record, [&](const auto& classed) { WriteFields<kWay>(json, classed); });
    else
    {
        if constexpr (!requires { jobx::Fields<Record>::kIsItsList; })
            json.Key(Field::kField.key);
        if constexpr (Field::kKind == jobx::FieldKind::Part)
            WriteRecord<kWay>(json, Field::Get(record));
        else if constexpr (Field::kKind == jobx::FieldKind::OptionalPart)
        {
            if (const auto* const part = Field::Get(record))
                WriteRecord<kWay>(json, *part);
            else
                json.Null();
        }
        else if constexpr (Field::kKind == jobx::FieldKind::Records)
            WriteRecords<kWay, Field>(json, Field::Get(record));
        else
            WriteValue<kWay, Field>(json, record);
    }
}

// Writes the members of a record's object; the caller may add more.
template <JOBXway kWay, class Record>
void WriteFields(JsonOutput& json, const Record& record)
{
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (jobx::IsInDocuments(decltype(field)::kField, kWay == JOBXway::Complete))
                WriteField<kWay, decltype(field)>(json, record);
        });
}

template <JOBXway kWay, class Record>
void WriteRecord(JsonOutput& json, const Record& record)
{
    if constexpr (requires { jobx::Fields<Record>::kIsItsList; })
        WriteFields<kWay>(json, record);
    else
        json.Object([&] { WriteFields<kWay>(json, record); });
}
