// Writes any described record as JSON: its keys and their order come from its list of fields.
#pragma once

#include "JOBXCLSDLL_fields.h"
#include "model/Sorted.h"
#include "output/JsonOutput.h"

template <class Record>
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

template <class Field, class List>
void WriteRecords(JsonOutput& json, const List& list)
{
    using Record = jobx::RecordOfList<List>;
    json.Array(
        [&]
        {
            if constexpr (Field::kField.isSorted)
                for (const Record* const record : SortedRecords<Record>(list, &SortingName<Record>))
                    WriteRecord(json, *record);
            else
                jobx::ForEachRecord(list, [&](const Record& record) { WriteRecord(json, record); });
        });
}

template <class Record>
void WriteFields(JsonOutput& json, const Record& record);

template <class Field, class Record>
void WriteField(JsonOutput& json, const Record& record)
{
    if constexpr (Field::kKind == jobx::FieldKind::Class)
        Field::kField.access.Find(record, [&](const auto& classed) { WriteFields(json, classed); });
    else
    {
        if constexpr (!requires { jobx::Fields<Record>::kIsItsList; })
            json.Key(Field::kField.key);
        if constexpr (Field::kKind == jobx::FieldKind::Part)
            WriteRecord(json, Field::Get(record));
        else if constexpr (Field::kKind == jobx::FieldKind::Records)
            WriteRecords<Field>(json, Field::Get(record));
        else if constexpr (sizeof(Field::Get(record)) == sizeof(std::int64_t) &&
                           Field::kKind == jobx::FieldKind::Integer)
            json.Value(static_cast<std::int64_t>(Field::Get(record)));
        else
            json.Value(Field::Get(record));
    }
}

// Writes the members of a record's object; the caller may add more.
template <class Record>
void WriteFields(JsonOutput& json, const Record& record)
{
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (decltype(field)::kField.isInDocuments)
                WriteField<decltype(field)>(json, record);
        });
}

template <class Record>
void WriteRecord(JsonOutput& json, const Record& record)
{
    if constexpr (requires { jobx::Fields<Record>::kIsItsList; })
        WriteFields(json, record);
    else
        json.Object([&] { WriteFields(json, record); });
}
