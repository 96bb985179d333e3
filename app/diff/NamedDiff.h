// Compares the fields of records that have a partner in the other job.
#pragma once

#include "diff/DiffRecords.h"
#include "diff/MeaningMatch.h"

#include <cmath>
#include <string>
#include <unordered_map>
#include <vector>

// A record and its list position, or the pair of such.
template <class Record>
struct Listed
{
    const Record* record;
    std::int64_t index;
};

template <class List>
auto ListedOf(const List& list)
{
    using Record = jobx::RecordOfList<List>;
    std::vector<Listed<Record>> all;
    for (decltype(list.GetSize()) i = 0; i < list.GetSize(); ++i)
        if (const Record* const record = list.GetAt(i))
            all.push_back({record, static_cast<std::int64_t>(i)});
    return all;
}

// Lists whose order matters: contours and outlines.
template <class Record>
constexpr bool IsSequence()
{
    return std::is_same_v<Record, CJOBXdataPkgObj> || std::is_same_v<Record, CJOBXlayObjOX> ||
           std::is_same_v<Record, CJOBXlayObjSurfaceOB> || std::is_same_v<Record, CJOBXfontsStandardObj>;
}

// What is compared of components.
struct ComponentParts
{
    bool ownFields = true; // all but the nets of their pins
    bool pinNets = true;
};

class NamedDiff
{
public:
    NamedDiff(DiffCollector& collector, double tolerance, ComponentParts parts)
        : m_collector(collector), m_tolerance(tolerance), m_parts(parts)
    {
    }

    // The fields of two records with the same name.
    template <class Record>
    void Fields(const Record& a, const FileView& viewA, const Record& b, const FileView& viewB)
    {
        FileView ofA = viewA;
        FileView ofB = viewB;
        if constexpr (std::is_same_v<Record, CJOBXcmp>)
        {
            ofA.component = &a;
            ofB.component = &b;
        }
        if constexpr (std::is_same_v<Record, CJOBXProperty>)
            if (AreSameNumbers(a, ofA, b, ofB) || AddOtherLength(a, ofA, b, ofB))
                return;
        jobx::ForEachShownField<Record>([&](auto field) { OneField<decltype(field)>(a, ofA, b, ofB); });
    }

    // Records with the same name, in any order; `use` is called with each pair, `alone` with each of the other records.
    template <class Record, class Key, class Use, class Alone>
    static void PairUp(const std::vector<Listed<Record>>& a, const std::vector<Listed<Record>>& b, Key key, Use use,
                       Alone alone)
    {
        std::unordered_map<std::string, std::vector<std::size_t>> waiting; // the first at the end
        for (std::size_t i = b.size(); i-- > 0;)
            waiting[key(*b[i].record)].push_back(i);
        std::vector<bool> isPaired(b.size());
        for (const Listed<Record>& each : a)
        {
            std::vector<std::size_t>& partners = waiting[key(*each.record)];
            if (partners.empty())
            {
                alone(each, DiffChange::OnlyInA);
                continue;
            }
            isPaired[partners.back()] = true;
            use(*each.record, *b[partners.back()].record);
            partners.pop_back();
        }
        for (std::size_t i = 0; i < b.size(); ++i)
            if (!isPaired[i])
                alone(b[i], DiffChange::OnlyInB);
    }

    // Likewise; a record without a partner is a difference.
    template <class Record, class Key, class Use>
    void Pairs(const std::vector<Listed<Record>>& a, const std::vector<Listed<Record>>& b, Key key, Use use)
    {
        PairUp(a, b, key, use, [this](const Listed<Record>& each, DiffChange change) { AddOnly(each, change); });
    }

    // Likewise, each pair within its scope.
    template <class Record, class Key, class Use>
    void ScopedPairs(const std::vector<Listed<Record>>& a, const std::vector<Listed<Record>>& b, Key key, Use use)
    {
        std::unordered_map<const Record*, std::int64_t> positions;
        for (const Listed<Record>& each : a)
            positions[each.record] = each.index;
        Pairs(a, b, key,
              [&](const Record& recordA, const Record& recordB)
              {
                  const DiffScope scope(m_collector, PlaceOf(recordA), positions.at(&recordA));
                  use(recordA, recordB);
              });
    }

    // Records without names; returns which are equal.
    template <class List>
    MeaningMatch Unnamed(const List& a, const FileView& viewA, const List& b, const FileView& viewB)
    {
        const auto listedA = ListedOf(a);
        const auto listedB = ListedOf(b);
        MeaningMatch match = MatchMeanings(MeaningsOf(listedA, viewA), MeaningsOf(listedB, viewB), m_tolerance);
        Unmatched(listedA, listedB, match);
        return match;
    }

    // The records without a partner, and pairs whose unique numbers differ.
    template <class Record>
    void Unmatched(const std::vector<Listed<Record>>& a, const std::vector<Listed<Record>>& b,
                   const MeaningMatch& match)
    {
        Only(a, match.a, DiffChange::OnlyInA);
        Only(b, match.b, DiffChange::OnlyInB);
        OtherIDs(a, match.a, b, match.b);
    }

    template <class Record>
    static std::vector<Meaning> MeaningsOf(const std::vector<Listed<Record>>& records, const FileView& view)
    {
        std::vector<Meaning> meanings(records.size());
        for (std::size_t i = 0; i < records.size(); ++i)
        {
            AddMeaning(meanings[i], *records[i].record, view);
            meanings[i].id = IDOf(*records[i].record);
        }
        return meanings;
    }

    template <class List>
    void Lists(const List& a, const FileView& viewA, const List& b, const FileView& viewB)
    {
        using Record = jobx::RecordOfList<List>;
        if constexpr (IsSequence<Record>())
            Sequences(a, viewA, b, viewB);
        else if constexpr (std::is_same_v<Record, CJOBXcmpTop>)
            Toeprints(a, viewA, b, viewB);
        else if constexpr (std::is_same_v<Record, CJOBXtoolData>)
            ScopedPairs(
                ListedOf(a), ListedOf(b), [](const Record& tool) { return std::to_string(tool.m_nNum); },
                [&](const Record& toolA, const Record& toolB) { Fields(toolA, viewA, toolB, viewB); });
        else if constexpr (HasName<Record>())
            ScopedPairs(
                ListedOf(a), ListedOf(b), [](const Record& record) { return KeyOf(record); },
                [&](const Record& recordA, const Record& recordB) { Fields(recordA, viewA, recordB, viewB); });
        else
            Unnamed(a, viewA, b, viewB);
    }

    // A layer's fields without its features.
    void FieldsButFeatures(const CJOBXlayer& a, const FileView& viewA, const CJOBXlayer& b, const FileView& viewB)
    {
        jobx::ForEachShownField<CJOBXlayer>(
            [&](auto field)
            {
                if constexpr (decltype(field)::kField.key != "features")
                    OneField<decltype(field)>(a, viewA, b, viewB);
            });
    }

    void AttributeLists(const CJOBXattributeList* a, const CJOBXattributeList* b)
    {
        if (a != nullptr && b != nullptr)
            Parts(*a, {}, *b, {});
        else if (a != b)
            m_collector.Add("attribute list", a != nullptr ? DiffChange::OnlyInA : DiffChange::OnlyInB);
    }

    // Lines in any order.
    void Words(std::string_view kind, const CStringArray& a, const CStringArray& b)
    {
        const RowList rowsA = LinesOf(kind, a);
        const RowList rowsB = LinesOf(kind, b);
        Pairs(
            ListedOf(rowsA), ListedOf(rowsB), [](const TableRow& row) { return KeyOf(row); },
            [](const TableRow&, const TableRow&) {});
    }

private:
    // The unique number; -1 for a record that cannot have one.
    template <class Record>
    static __int64 IDOf(const Record& record)
    {
        if constexpr (requires { record.GetID(); })
            return record.GetID();
        return -1;
    }

    // Equal records with other unique numbers.
    template <class Record>
    void OtherIDs(const std::vector<Listed<Record>>& a, const std::vector<std::int64_t>& numbersA,
                  const std::vector<Listed<Record>>& b, const std::vector<std::int64_t>& numbersB)
    {
        std::unordered_map<std::int64_t, __int64> ids; // in the second job, by the number of the pair
        for (std::size_t i = 0; i < b.size(); ++i)
            if (numbersB[i] >= 0)
                ids[numbersB[i]] = IDOf(*b[i].record);
        for (std::size_t i = 0; i < a.size(); ++i)
            if (numbersA[i] >= 0 && ids.at(numbersA[i]) != IDOf(*a[i].record))
            {
                const RecordPlace place = PlaceOf(*a[i].record);
                const DiffScope scope(m_collector, place, a[i].index);
                m_collector.Add(place.kind, DiffChange::Changed, "id", static_cast<std::int64_t>(IDOf(*a[i].record)),
                                static_cast<std::int64_t>(ids.at(numbersA[i])));
            }
    }

    template <class Record>
    void Only(const std::vector<Listed<Record>>& records, const std::vector<std::int64_t>& numbers, DiffChange change)
    {
        for (std::size_t i = 0; i < records.size(); ++i)
            if (numbers[i] < 0)
                AddOnly(records[i], change);
    }

    template <class Record>
    void AddOnly(const Listed<Record>& each, DiffChange change)
    {
        if constexpr (std::is_same_v<Record, CJOBXcmp> || std::is_same_v<Record, CJOBXcmpTop>)
            if (!m_parts.ownFields)
                return;
        const RecordPlace place = PlaceOf(*each.record);
        const DiffScope scope(m_collector, place, each.index);
        m_collector.Add(place.kind, change);
    }

    template <class List>
    void Sequences(const List& a, const FileView& viewA, const List& b, const FileView& viewB)
    {
        std::vector<Meaning> meanings(2);
        AddMeanings(meanings[0], a, viewA);
        AddMeanings(meanings[1], b, viewB);
        if (MatchMeanings({meanings[0]}, {meanings[1]}, m_tolerance).a.front() < 0)
            m_collector.Add(jobx::Fields<jobx::RecordOfList<List>>::kName.shown, DiffChange::Changed, "shape");
    }

    // Paired by the names of their pins.
    void Toeprints(const CJOBXcmpTopArray& a, const FileView& viewA, const CJOBXcmpTopArray& b, const FileView& viewB)
    {
        const auto pinOf = [](const FileView& view, const CJOBXcmpTop& toeprint)
        { return view.step->Pin(view.component->m_nPkgRef, toeprint.m_nPin); };
        std::unordered_map<const CJOBXcmpTop*, std::string> pins;
        for (const CJOBXcmpTop& toeprint : a.Records())
            pins[&toeprint] = pinOf(viewA, toeprint);
        for (const CJOBXcmpTop& toeprint : b.Records())
            pins[&toeprint] = pinOf(viewB, toeprint);
        ScopedPairs(
            ListedOf(a), ListedOf(b), [&](const CJOBXcmpTop& toeprint) { return pins.at(&toeprint); },
            [&](const CJOBXcmpTop& toeprintA, const CJOBXcmpTop& toeprintB)
            { Fields(toeprintA, viewA, toeprintB, viewB); });
    }

    bool AreSameNumbers(const CJOBXProperty& a, const FileView& viewA, const CJOBXProperty& b,
                        const FileView& viewB) const
    {
        const std::optional<double> lengthA = LengthOfAttribute(a, viewA.factor);
        const std::optional<double> lengthB = LengthOfAttribute(b, viewB.factor);
        if (lengthA && lengthB)
            return AreNear(*lengthA, *lengthB, m_tolerance);
        const std::optional<double> numberA = PlainNumberOfAttribute(a);
        const std::optional<double> numberB = PlainNumberOfAttribute(b);
        return numberA && numberB && AreNear(*numberA, *numberB, 0.0);
    }

    // The same text for another length, in files of different units.
    bool AddOtherLength(const CJOBXProperty& a, const FileView& viewA, const CJOBXProperty& b, const FileView& viewB)
    {
        const std::optional<double> lengthA = LengthOfAttribute(a, viewA.factor);
        const std::optional<double> lengthB = LengthOfAttribute(b, viewB.factor);
        if (!lengthA || !lengthB || a.m_sValue != b.m_sValue)
            return false;
        m_collector.Add("attribute", DiffChange::Changed, "value", Shown(*lengthA), Shown(*lengthB));
        return true;
    }

    void Numbers(std::string_view kind, std::string_view field, double a, double b)
    {
        if (!AreNear(a, b, m_tolerance))
            m_collector.Add(kind, DiffChange::Changed, field, Shown(a), Shown(b));
    }

    // Without the last digits, which come from the change to millimetres.
    static double Shown(double length)
    {
        constexpr double kSteps = 1e9;
        return std::isfinite(length) ? std::round(length * kSteps) / kSteps : length;
    }

    void Angles(std::string_view kind, std::string_view field, double a, double b)
    {
        if (!AreNear(a, b, 0.0))
            m_collector.Add(kind, DiffChange::Changed, field, a, b);
    }

    void Texts(std::string_view kind, std::string_view field, std::string_view a, std::string_view b)
    {
        if (a != b)
            m_collector.Add(kind, DiffChange::Changed, field, a, b);
    }

    template <class Field, class Record>
    void Optional(const Record& a, const FileView& viewA, const Record& b, const FileView& viewB)
    {
        const auto* const partA = Field::Get(a);
        const auto* const partB = Field::Get(b);
        if (partA != nullptr && partB != nullptr)
            Parts(*partA, viewA, *partB, viewB);
        else if (partA != partB)
            m_collector.Add(Field::kField.shown, partA != nullptr ? DiffChange::OnlyInA : DiffChange::OnlyInB);
    }

    // A part may be in a file of its own.
    template <class Part>
    void Parts(const Part& a, FileView viewA, const Part& b, FileView viewB)
    {
        if constexpr (requires { a.dGetFactorToMM(); })
        {
            viewA.factor = a.dGetFactorToMM();
            viewB.factor = b.dGetFactorToMM();
        }
        Fields(a, viewA, b, viewB);
    }

    template <class Field, class Record>
    void Values(const Record& a, const FileView& viewA, const Record& b, const FileView& viewB)
    {
        using Kind = jobx::FieldKind;
        constexpr std::string_view kKind = jobx::Fields<Record>::kName.shown;
        constexpr std::string_view kShown = Field::kField.shown;
        if constexpr (Field::kKind == Kind::Text)
            Texts(kKind, kShown, Field::Get(a).View(), Field::Get(b).View());
        else if constexpr (Field::kKind == Kind::Index)
            Texts(kKind, kShown, NameOfIndex(Field::kField.table, a, static_cast<int>(Field::Get(a)), viewA),
                  NameOfIndex(Field::kField.table, b, static_cast<int>(Field::Get(b)), viewB));
        else if constexpr (Field::kKind == Kind::Angle)
            Angles(kKind, kShown, Field::Get(a), Field::Get(b));
        else if constexpr (Field::kKind == Kind::Real || Field::kKind == Kind::Length)
            Numbers(kKind, kShown, Field::Get(a) * viewA.factor, Field::Get(b) * viewB.factor);
        else if constexpr (Field::kKind == Kind::Coordinate)
        {
            const CPointD pointA = Field::Get(a);
            const CPointD pointB = Field::Get(b);
            Numbers(kKind, kShown, pointA.x * viewA.factor + viewA.shift.x, pointB.x * viewB.factor + viewB.shift.x);
            Numbers(kKind, Field::kField.shownY, pointA.y * viewA.factor + viewA.shift.y,
                    pointB.y * viewB.factor + viewB.shift.y);
        }
        else if constexpr (Field::kKind == Kind::Integer || Field::kKind == Kind::UniqueNumber)
        {
            if (Field::Get(a) != Field::Get(b))
                m_collector.Add(kKind, DiffChange::Changed, kShown, static_cast<std::int64_t>(Field::Get(a)),
                                static_cast<std::int64_t>(Field::Get(b)));
        }
        else
            Others<Field>(a, viewA, b, viewB);
    }

    // Fields of which only whether they are equal is of interest.
    template <class Field, class Record>
    void Others(const Record& a, const FileView& viewA, const Record& b, const FileView& viewB)
    {
        std::vector<Meaning> meanings(2);
        AddField<Field>(meanings[0], a, viewA);
        AddField<Field>(meanings[1], b, viewB);
        if (meanings[0].words != meanings[1].words || meanings[0].numbers != meanings[1].numbers)
            m_collector.Add(jobx::Fields<Record>::kName.shown, DiffChange::Changed, Field::kField.shown);
    }

    template <class Record>
    bool IsLeftOut([[maybe_unused]] std::string_view key) const
    {
        if constexpr (std::is_same_v<Record, CJOBXcmp>)
            return !m_parts.ownFields && key != "toeprints";
        else if constexpr (std::is_same_v<Record, CJOBXcmpTop>)
            return key == "net" ? !m_parts.pinNets : !m_parts.ownFields;
        else
            return false;
    }

    template <class Field, class Record>
    void OneField(const Record& a, const FileView& viewA, const Record& b, const FileView& viewB)
    {
        if (IsLeftOut<Record>(Field::kField.key))
            return;
        using Kind = jobx::FieldKind;
        constexpr Kind kKind = Field::kKind;
        constexpr std::string_view kKey = Field::kField.key;
        if constexpr (kKind == Kind::LineNumber || kKind == Kind::Unit || kKind == Kind::AttributeKind ||
                      kKind == Kind::Table || IsNumbering(kKey) || kKey == "row" || kKey == "column")
            return;
        else if constexpr (kKind == Kind::Records)
            Lists(Field::Get(a), viewA, Field::Get(b), viewB);
        else if constexpr (kKind == Kind::Part)
            Parts(Field::Get(a), viewA, Field::Get(b), viewB);
        else if constexpr (kKind == Kind::OptionalPart)
            Optional<Field>(a, viewA, b, viewB);
        else
            Values<Field>(a, viewA, b, viewB);
    }

    DiffCollector& m_collector;
    double m_tolerance;
    ComponentParts m_parts;
};
