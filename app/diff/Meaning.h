// What a record says, whatever the numbering of its file's tables and the unit of its file: lengths are in millimetres,
// symbols, nets, packages, pins and layers have their names, attributes are in the order of their names. Line numbers
// are no part of it.
#pragma once

#include "JOBXCLSDLL_fields.h"
#include "diff/StepTables.h"
#include "options/CommonOptions.h"
#include "output/Text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

struct Meaning
{
    std::string words;           // everything but numbers that may differ by rounding
    std::vector<double> numbers; // lengths and places in millimetres, in the order of the words
    __int64 id = -1;             // the unique number of the record; no part of what it says
};

// Adds what a record says.
template <class Record>
void AddMeaning(Meaning& meaning, const Record& record, const FileView& view);

// Names of attributes whose values are lengths in the unit of their file.
bool IsLengthAttribute(std::string_view name);

// The value of an attribute that is a length, in millimetres.
std::optional<double> LengthOfAttribute(const CJOBXProperty& attribute, double factor);

// The value of an attribute that is a number without a unit.
std::optional<double> PlainNumberOfAttribute(const CJOBXProperty& attribute);

// Whether a field only numbers records, names the unit of a file, or lists a table.
constexpr bool IsNumbering(std::string_view key)
{
    return key == "number" || key == "textNumber" || key == "units" || key == "layerNames" || key == "attributeNames" ||
           key == "attributeTexts" || key == "subnet";
}

// A length that is a share of the resolution of the job or of 12 mils, not a length in the unit of its file.
constexpr bool IsFreeOfUnit(std::string_view key)
{
    return key == "widthFactor";
}

// The name of what an index refers to.
template <class Record>
std::string NameOfIndex(jobx::FieldTable table, const Record& record, int index, const FileView& view)
{
    using Target = jobx::FieldTable;
    if (table == Target::Symbols && view.layer != nullptr)
        return index < 0 ? std::string()
                         : view.symbols->MetricName(view.layer->GetSymbolName(index),
                                                    view.layer->dGetSymbolFactorToMM(index) * 1000.0);
    if (view.step == nullptr)
        return std::to_string(index);
    if (table == Target::Nets)
        return view.step->Net(index);
    if (table == Target::Packages)
        return view.step->Package(index);
    if (table == Target::LayerNames)
        return view.step->Layer(index);
    if (table == Target::Pins && view.component != nullptr)
        return view.step->Pin(view.component->m_nPkgRef, index);
    if constexpr (std::is_same_v<Record, CJOBXdataNetObj>)
        if (table == Target::Features)
            return view.NumberOf(view.step->Layer(record.m_nLayerIndex), index);
    if constexpr (std::is_same_v<Record, CJOBXSnt>)
    {
        if (table == Target::Components)
            return view.step->Component(record.m_sSide, index);
        if (table == Target::Toeprints)
            return view.step->ToeprintOf(record.m_sSide, record.m_nComponentNumber, index);
    }
    return std::to_string(index);
}

inline void AddWord(Meaning& meaning, std::string_view word)
{
    meaning.words += word;
    meaning.words += '\0';
}

inline void AddNumber(Meaning& meaning, double number)
{
    meaning.numbers.push_back(number);
    meaning.words += '#'; // where it stands
}

template <class List>
void AddMeanings(Meaning& meaning, const List& list, const FileView& view)
{
    using Record = jobx::RecordOfList<List>;
    std::vector<Meaning> meanings;
    jobx::ForEachRecord(list, [&](const Record& record) { AddMeaning(meanings.emplace_back(), record, view); });
    if constexpr (std::is_same_v<Record, CJOBXProperty> || std::is_same_v<Record, CLProperty>)
        std::stable_sort(meanings.begin(), meanings.end(),
                         [](const Meaning& a, const Meaning& b) { return a.words < b.words; });
    AddWord(meaning, "(");
    for (const Meaning& each : meanings)
    {
        meaning.words += each.words;
        meaning.numbers.insert(meaning.numbers.end(), each.numbers.begin(), each.numbers.end());
    }
    AddWord(meaning, ")");
}

inline void AddParameters(Meaning& meaning, const CStringArray& parameters, double factor)
{
    for (INT_PTR i = 0; i < parameters.GetSize(); ++i)
        if (const std::optional<double> number = NumberIn(std::string(parameters[i].View())))
            AddNumber(meaning, *number * factor);
        else
            AddWord(meaning, parameters[i].View());
}

template <class Field, class Record>
void AddField(Meaning& meaning, const Record& record, const FileView& view)
{
    using Kind = jobx::FieldKind;
    constexpr Kind kKind = Field::kKind;
    constexpr std::string_view kKey = Field::kField.key;
    if constexpr (kKind == Kind::Class)
        Field::kField.access.Find(record, [&](const auto& classed) { AddMeaning(meaning, classed, view); });
    else if constexpr (kKind == Kind::LineNumber || kKind == Kind::UniqueNumber || kKind == Kind::Unit ||
                       kKind == Kind::AttributeKind || kKind == Kind::Table || IsNumbering(kKey))
        return;
    else if constexpr (kKind == Kind::Records)
    {
        // Which features belong to a subnet is compared net by net.
        if constexpr (!std::is_same_v<Record, CJOBXSnt> || kKey != "objects")
            AddMeanings(meaning, Field::Get(record), view);
    }
    else if constexpr (kKind == Kind::Part)
        AddMeaning(meaning, Field::Get(record), view);
    else if constexpr (kKind == Kind::OptionalPart)
    {
        if (const auto* const part = Field::Get(record))
            AddMeaning(meaning, *part, view);
    }
    else if constexpr (kKind == Kind::Text)
        AddWord(meaning, Field::Get(record).View());
    else if constexpr (kKind == Kind::Integer)
        AddWord(meaning, std::to_string(Field::Get(record)));
    else if constexpr (kKind == Kind::Index)
        AddWord(meaning, NameOfIndex(Field::kField.table, record, static_cast<int>(Field::Get(record)), view));
    else if constexpr (kKind == Kind::Angle || (kKind == Kind::Length && IsFreeOfUnit(kKey)))
        AddWord(meaning, NumberText(Field::Get(record)).View());
    else if constexpr (kKind == Kind::Real || kKind == Kind::Length)
        AddNumber(meaning, Field::Get(record) * view.factor);
    else if constexpr (kKind == Kind::Coordinate)
    {
        const CPointD point = Field::Get(record);
        if constexpr (std::is_same_v<Record, CJOBXlayObjOX>)
            if (record.GetKind() == "OE" || (kKey == "centre" && record.GetKind() != "OC"))
                return; // the end has no point, and only an arc has a centre
        AddNumber(meaning, point.x * view.factor + (kKey == "size" ? 0.0 : view.shift.x));
        AddNumber(meaning, point.y * view.factor + (kKey == "size" ? 0.0 : view.shift.y));
    }
    else if constexpr (kKind == Kind::Count)
        AddWord(meaning, std::to_string(Field::Get(record).x) + "x" + std::to_string(Field::Get(record).y));
    else if constexpr (kKind == Kind::Texts)
        for (INT_PTR i = 0; i < Field::Get(record).GetSize(); ++i)
            AddWord(meaning, Field::Get(record)[i].View());
    else
    {
        static_assert(kKind == Kind::Parameters, "no meaning of fields of that kind");
        AddParameters(meaning, Field::Get(record), view.factor);
    }
}

template <class Record>
void AddMeaning(Meaning& meaning, const Record& record, const FileView& view)
{
    if constexpr (std::is_same_v<Record, CJOBXProperty>)
    {
        const std::optional<double> length = LengthOfAttribute(record, view.factor);
        const std::optional<double> number = PlainNumberOfAttribute(record);
        if (length || number)
        {
            AddWord(meaning, record.m_sName.View());
            if (length)
                AddNumber(meaning, *length);
            else
                AddWord(meaning, NumberText(*number).View());
            return;
        }
    }
    jobx::ForEachShownField<Record>([&](auto field) { AddField<decltype(field)>(meaning, record, view); });
}
