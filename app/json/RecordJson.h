// Writes any described record as JSON: its keys and their order come from its list of fields. kWay is the way of reading
// whose document it is.
#pragma once

#include "JOBXCLSDLL_fields.h"
#include "model/FieldWords.h"
#include "model/Glob.h"
#include "model/Sorted.h"
#include "output/JsonOutput.h"

#include <algorithm>
#include <type_traits>
#include <vector>

// What a document has of the layers of steps. Profiles and user symbols are always there in full.
struct LayerChoice
{
    bool withFeatures = true;
    std::vector<NameFilter> names; // a layer needs a name that passes one of them; all layers if there are none

    bool Passes(std::string_view name) const
    {
        return names.empty() ||
               std::any_of(names.begin(), names.end(), [&](const NameFilter& filter) { return filter.Passes(name); });
    }
};

// Whether a LayerChoice can leave out that member.
template <class Record>
constexpr bool CanBeLeftOut(std::string_view key)
{
    return std::is_same_v<Record, CJOBXlayer> && key == "features";
}

template <JOBXway kWay = JOBXway::Classic, class Record>
void WriteRecord(JsonOutput& json, const Record& record, const LayerChoice& choice = {});

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
void WriteRecords(JsonOutput& json, const List& list, const LayerChoice& choice)
{
    using Record = jobx::RecordOfList<List>;
    const auto write = [&](const Record& record)
    {
        if constexpr (std::is_same_v<Record, CJOBXlayer>)
            if (!choice.Passes(record.m_sName.View()))
                return;
        WriteRecord<kWay>(json, record, choice);
    };
    json.Array(
        [&]
        {
            if constexpr (Field::kField.isSorted)
                for (const Record* const record : SortedRecords<Record>(list, &SortingName<Record>))
                    write(*record);
            else
                jobx::ForEachRecord(list, write);
        });
}

template <JOBXway kWay = JOBXway::Classic, class Record>
void WriteFields(JsonOutput& json, const Record& record, const LayerChoice& choice = {});

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
void WriteField(JsonOutput& json, const Record& record, const LayerChoice& choice)
{
    if constexpr (Field::kKind == jobx::FieldKind::Class)
        Field::kField.access.Find(record, [&](const auto& classed) { WriteFields<kWay>(json, classed); });
    else
    {
        if (CanBeLeftOut<Record>(Field::kField.key) && !choice.withFeatures)
            return;
        if constexpr (!requires { jobx::Fields<Record>::kIsItsList; })
            json.Key(Field::kField.key);
        // The choice is for lists, as that of the layers; a part, such as a profile, is there in full.
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
            WriteRecords<kWay, Field>(json, Field::Get(record), choice);
        else
            WriteValue<kWay, Field>(json, record);
    }
}

// Writes the members of a record's object; the caller may add more.
template <JOBXway kWay, class Record>
void WriteFields(JsonOutput& json, const Record& record, const LayerChoice& choice)
{
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (jobx::IsInDocuments(decltype(field)::kField, kWay == JOBXway::Complete))
                WriteField<kWay, decltype(field)>(json, record, choice);
        });
}

template <JOBXway kWay, class Record>
void WriteRecord(JsonOutput& json, const Record& record, const LayerChoice& choice)
{
    if constexpr (std::is_same_v<Record, CJOBXlayObj> || std::is_same_v<Record, CJOBXdataNetObj>)
        json.DidRecord();
    if constexpr (requires { jobx::Fields<Record>::kIsItsList; })
        WriteFields<kWay>(json, record, choice);
    else
        json.Object([&] { WriteFields<kWay>(json, record, choice); });
}
