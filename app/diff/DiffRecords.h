// What a comparison sees of the records of a job: for each record its place, its key if it has one, and the fields that
// are shown to people. It leaves out what depends on the job's location or is set by hosts, and the positions of
// records in lists.
#pragma once

#include "JOBXCLSDLL_fields.h"
#include "diff/DiffCollector.h"
#include "model/FieldWords.h"

#include <string>
#include <vector>

std::string FoldedName(std::string_view name); // in ASCII lower case

// A line of a numbered table.
struct TableRow
{
    std::string_view kind;
    int number = 0;
    std::string label; // the number as a text
    CString text;
    CString second;
};
template <>
struct jobx::Fields<TableRow>
{
    static constexpr RecordName kName{"row", "", "row", "row"};
    static constexpr auto kList = std::make_tuple(Integer("number", "", &TableRow::number).Shown("number"),
                                                  Text("text", "", &TableRow::text).Shown("text"),
                                                  Text("second", "", &TableRow::second).Shown("second field"));
};

struct RowList
{
    std::vector<TableRow> rows;

    __int64 GetSize() const { return static_cast<__int64>(rows.size()); }
    const TableRow* GetAt(__int64 index) const { return &rows[static_cast<std::size_t>(index)]; }
};
RowList RowsOf(std::string_view kind, const CArrayN& numbers, const CStringArray& texts, const CStringArray* seconds);

template <class Record>
constexpr bool HasName()
{
    return std::apply([](const auto&... fields) { return (fields.isName || ...); }, jobx::Fields<Record>::kList);
}

template <class Record>
RecordPlace PlaceOf(const Record& record)
{
    constexpr const jobx::RecordName& kName = jobx::Fields<Record>::kName;
    RecordPlace place{kName.shown, kName.word, {}, {}};
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (decltype(field)::kField.isName)
                place.name = field.Get(record).View();
            else if constexpr (decltype(field)::kField.isMark)
                place.mark = field.Get(record).View();
        });
    return place;
}
// The lines of a file as rows that their texts identify.
RowList LinesOf(std::string_view kind, const CStringArray& lines);

RecordPlace PlaceOf(const CJOBXlayObj& feature);
inline RecordPlace PlaceOf(const TableRow& row)
{
    return {row.kind, row.kind, row.label, {}};
}

// The name that pairs records of two lists.
template <class Record>
std::string KeyOf(const Record& record)
{
    std::string key;
    jobx::ForEachField<Record>(
        [&](auto field)
        {
            if constexpr (decltype(field)::kField.isName)
                key = decltype(field)::kField.isNameInAnyCase ? FoldedName(field.Get(record).View())
                                                              : std::string(field.Get(record).View());
        });
    return key;
}
inline std::string KeyOf(const TableRow& row)
{
    return row.label;
}

// Lists whose records are identified by name, by position, or by position among those of their kind.
template <class Sink, class List>
void CompareLists(Sink& sink, const List& a, const List& b)
{
    using Record = jobx::RecordOfList<List>;
    if constexpr (std::is_same_v<Record, CJOBXlayObj>)
        sink.OrderedByKind(a, b);
    else if constexpr (HasName<Record>())
        sink.Keyed(a, b);
    else
        sink.Ordered(a, b);
}

template <class Field, class Sink, class Record>
void CompareField(Sink& sink, const Record& a, const Record& b);

// Passes the fields of a pair of records to a sink that compares them. The sink has the operations Text, Number, Real,
// Length, Point, Word and UniqueNumber for values, Texts and Parameters for lists of texts, LineNumber,
// OnlyPart for a part that only one of them has, and for lists of records Ordered
// (identified by position), OrderedByKind (by position among those of their kind) and Keyed (by key).
template <class Sink, class Record>
void CompareFields(Sink& sink, const Record& a, const Record& b)
{
    jobx::ForEachShownField<Record>([&](auto field) { CompareField<decltype(field)>(sink, a, b); });
}

// The additional fields of a pair of records of the same class.
template <class Field, class Sink, class Record>
void CompareClassed(Sink& sink, const Record& a, const Record& b)
{
    Field::kField.access.Find(a,
                              [&](const auto& classed)
                              {
                                  using Class = std::remove_cvref_t<decltype(classed)>;
                                  if (const auto* const partner = dynamic_cast<const Class*>(&b))
                                      CompareFields(sink, classed, *partner);
                              });
}

template <class Field, class Sink, class Record>
void CompareTables(Sink& sink, const Record& a, const Record& b)
{
    constexpr const auto& kTable = Field::kField.access;
    const auto rowsOf = [&](const Record& record)
    {
        return RowsOf(Field::kField.shown, record.*kTable.numbers, record.*kTable.texts,
                      kTable.seconds == nullptr ? nullptr : &(record.*kTable.seconds));
    };
    sink.Keyed(rowsOf(a), rowsOf(b));
}

// A part that only one of them has is one difference.
template <class Field, class Sink, class Record>
void CompareOptional(Sink& sink, const Record& a, const Record& b)
{
    const auto* const partA = Field::Get(a);
    const auto* const partB = Field::Get(b);
    if (partA != nullptr && partB != nullptr)
        CompareFields(sink, *partA, *partB);
    else if (partA != partB)
        sink.OnlyPart(Field::kField.shown, partA != nullptr);
}

template <class Field, class Sink, class Record>
void CompareField(Sink& sink, const Record& a, const Record& b)
{
    using Kind = jobx::FieldKind;
    constexpr Kind kKind = Field::kKind;
    constexpr std::string_view kShown = Field::kField.shown;
    constexpr std::string_view kShownY = Field::kField.shownY;
    if constexpr (kKind == Kind::Class)
        CompareClassed<Field>(sink, a, b);
    else if constexpr (kKind == Kind::Table)
        CompareTables<Field>(sink, a, b);
    else if constexpr (kKind == Kind::Records)
        CompareLists(sink, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Part)
        CompareFields(sink, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::OptionalPart)
        CompareOptional<Field>(sink, a, b);
    else if constexpr (kKind == Kind::LineNumber)
        sink.LineNumber(jobx::Fields<Record>::kName.shown, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Text)
        sink.Text(kShown, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Integer || kKind == Kind::Index)
        sink.Number(kShown, static_cast<std::int64_t>(Field::Get(a)), static_cast<std::int64_t>(Field::Get(b)));
    else if constexpr (kKind == Kind::Real || kKind == Kind::Angle)
        sink.Real(kShown, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Length)
        sink.Length(kShown, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Coordinate)
        sink.Point(kShown, kShownY, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Count)
        sink.Counts(kShown, kShownY, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::UniqueNumber)
        sink.UniqueNumber(kShown, Field::Get(a), Field::Get(b));
    else if constexpr (kKind == Kind::Unit || kKind == Kind::AttributeKind)
        sink.Word(kShown, WordFor(Field::Get(a)), WordFor(Field::Get(b)));
    else if constexpr (kKind == Kind::Texts)
        sink.Texts(kShown, Field::Get(a), Field::Get(b));
    else
    {
        static_assert(kKind == Kind::Parameters, "no comparison of fields of that kind");
        sink.Parameters(kShown, Field::Get(a), Field::Get(b));
    }
}
