// Two ways to compare the fields of a pair of records: whether they are all equal, and which differ.
#pragma once

#include "diff/DiffRecords.h"

#include <algorithm>
#include <span>
#include <unordered_map>

struct DiffRules
{
    double tolerance = 0.0; // for coordinates and lengths, in the unit of the files
    bool ignoreLineNumbers = false;
};

bool AreEqualLengths(double a, double b, double tolerance);
bool AreEqualReals(double a, double b); // every nan equals every other
bool AreEqualTexts(const CStringArray& a, const CStringArray& b);
// Texts that may be lengths.
bool AreEqualParameters(const CStringArray& a, const CStringArray& b, double tolerance);
std::string JoinedWords(const CStringArray& texts);

// Finds out whether two records are equal, including their lists; line numbers and unique numbers are ignored.
class EqualityProbe
{
public:
    explicit EqualityProbe(double tolerance) : m_tolerance(tolerance) {}

    bool AreEqual() const noexcept { return m_isEqual; }

    void Text(std::string_view /*field*/, const CString& a, const CString& b) { Note(a.View() == b.View()); }
    void Number(std::string_view /*field*/, std::int64_t a, std::int64_t b) { Note(a == b); }
    void Real(std::string_view /*field*/, double a, double b) { Note(AreEqualReals(a, b)); }
    void Length(std::string_view /*field*/, double a, double b) { Note(AreEqualLengths(a, b, m_tolerance)); }
    void Point(std::string_view fieldX, std::string_view fieldY, const CPointD& a, const CPointD& b)
    {
        Length(fieldX, a.GetX(), b.GetX());
        Length(fieldY, a.GetY(), b.GetY());
    }
    void Counts(std::string_view fieldX, std::string_view fieldY, const CPointN& a, const CPointN& b)
    {
        Number(fieldX, a.x, b.x);
        Number(fieldY, a.y, b.y);
    }
    void Texts(std::string_view /*field*/, const CStringArray& a, const CStringArray& b)
    {
        Note(m_isEqual && AreEqualTexts(a, b));
    }
    void Parameters(std::string_view /*field*/, const CStringArray& a, const CStringArray& b)
    {
        Note(m_isEqual && AreEqualParameters(a, b, m_tolerance));
    }
    void Word(std::string_view /*field*/, std::string_view a, std::string_view b) { Note(a == b); }
    void LineNumber(std::string_view /*what*/, int /*a*/, int /*b*/) {}
    void UniqueNumber(std::string_view /*field*/, __int64 /*a*/, __int64 /*b*/) {}
    void OnlyPart(std::string_view /*part*/, bool /*isInA*/) { Note(false); }

    template <class List>
    void Ordered(const List& a, const List& b)
    {
        Note(a.GetSize() == b.GetSize());
        for (__int64 i = 0; m_isEqual && i < a.GetSize(); ++i)
        {
            const auto* const recordA = a.GetAt(i);
            const auto* const recordB = b.GetAt(i);
            if (recordA == nullptr || recordB == nullptr)
                Note(recordA == recordB);
            else
                CompareFields(*this, *recordA, *recordB);
        }
    }
    template <class List>
    void OrderedByKind(const List& a, const List& b)
    {
        Ordered(a, b);
    }
    template <class List>
    void Keyed(const List& a, const List& b)
    {
        Ordered(a, b);
    }

private:
    void Note(bool isEqual) noexcept { m_isEqual = m_isEqual && isEqual; }

    double m_tolerance;
    bool m_isEqual = true;
};

template <class Record>
struct DiffItem
{
    const Record* record;
    std::int64_t index; // in the original list
};

// The records of a list without nulls.
template <class List>
auto ItemsOf(const List& list)
{
    using Record = std::remove_const_t<std::remove_pointer_t<decltype(list.GetAt(0))>>;
    std::vector<DiffItem<Record>> items;
    items.reserve(static_cast<std::size_t>(list.GetSize()));
    for (__int64 i = 0; i < list.GetSize(); ++i)
        if (const Record* const record = list.GetAt(i))
            items.push_back({record, i});
    return items;
}

// Reports to a collector what differs between two records.
class DiffReport
{
public:
    DiffReport(DiffCollector& collector, const DiffRules& rules, std::string_view kind)
        : m_collector(collector), m_rules(rules), m_kind(kind)
    {
    }

    void Text(std::string_view field, const CString& a, const CString& b)
    {
        if (a.View() != b.View())
            Changed(field, a.View(), b.View());
    }
    void Number(std::string_view field, std::int64_t a, std::int64_t b)
    {
        if (a != b)
            Changed(field, a, b);
    }
    void Real(std::string_view field, double a, double b)
    {
        if (!AreEqualReals(a, b))
            Changed(field, a, b);
    }
    void Length(std::string_view field, double a, double b)
    {
        if (!AreEqualLengths(a, b, m_rules.tolerance))
            Changed(field, a, b);
    }
    void Point(std::string_view fieldX, std::string_view fieldY, const CPointD& a, const CPointD& b)
    {
        Length(fieldX, a.GetX(), b.GetX());
        Length(fieldY, a.GetY(), b.GetY());
    }
    void Counts(std::string_view fieldX, std::string_view fieldY, const CPointN& a, const CPointN& b)
    {
        Number(fieldX, a.x, b.x);
        Number(fieldY, a.y, b.y);
    }
    void Texts(std::string_view field, const CStringArray& a, const CStringArray& b)
    {
        if (!AreEqualTexts(a, b))
            Changed(field, JoinedWords(a), JoinedWords(b));
    }
    void Parameters(std::string_view field, const CStringArray& a, const CStringArray& b)
    {
        if (!AreEqualParameters(a, b, m_rules.tolerance))
            Changed(field, JoinedWords(a), JoinedWords(b));
    }
    void Word(std::string_view field, std::string_view a, std::string_view b)
    {
        if (a != b)
            Changed(field, a, b);
    }
    void UniqueNumber(std::string_view field, __int64 a, __int64 b)
    {
        if (a != b)
            Changed(field, std::int64_t{a}, std::int64_t{b});
    }
    void LineNumber(std::string_view what, int a, int b)
    {
        if (!m_rules.ignoreLineNumbers && a != b)
            m_collector.Add("line number", DiffChange::Changed, what, std::int64_t{a}, std::int64_t{b});
    }

    void OnlyPart(std::string_view part, bool isInA)
    {
        m_collector.Add(part, isInA ? DiffChange::OnlyInA : DiffChange::OnlyInB);
    }

    // Pairs records by position after leaving out the common start and end of both lists, so that one additional record
    // does not make all later ones differ.
    template <class List>
    void Ordered(const List& a, const List& b)
    {
        const auto itemsA = ItemsOf(a);
        const auto itemsB = ItemsOf(b);
        Sequence(std::span(itemsA), std::span(itemsB));
    }
    // As above for records of several kinds: only records of one kind form a pair.
    template <class List>
    void OrderedByKind(const List& a, const List& b);
    // Pairs records with the same key: the first of a key in one list with the first in the other, and so on.
    template <class List>
    void Keyed(const List& a, const List& b)
    {
        if (a.GetSize() == 0 && b.GetSize() == 0)
            return;
        const auto itemsA = ItemsOf(a);
        const auto itemsB = ItemsOf(b);
        KeyedItems(std::span(itemsA), std::span(itemsB));
    }

private:
    void Changed(std::string_view field, const DiffValueView& a, const DiffValueView& b)
    {
        m_collector.Add(m_kind, DiffChange::Changed, field, a, b);
    }
    template <class Record>
    bool AreEqual(const DiffItem<Record>& a, const DiffItem<Record>& b) const
    {
        EqualityProbe probe(m_rules.tolerance);
        CompareFields(probe, *a.record, *b.record);
        return probe.AreEqual();
    }
    template <class Record>
    void Pair(const DiffItem<Record>& a, const DiffItem<Record>& b)
    {
        const RecordPlace place = PlaceOf(*a.record);
        const DiffScope scope(m_collector, place, a.index);
        DiffReport inside(m_collector, m_rules, place.kind);
        CompareFields(inside, *a.record, *b.record);
    }
    template <class Record>
    void Only(const DiffItem<Record>& item, DiffChange change)
    {
        const RecordPlace place = PlaceOf(*item.record);
        const DiffScope scope(m_collector, place, item.index);
        m_collector.Add(place.kind, change);
    }
    struct Ends
    {
        std::size_t front = 0;
        std::size_t back = 0;
    };
    template <class Record>
    Ends EqualEnds(std::span<const DiffItem<Record>> a, std::span<const DiffItem<Record>> b) const
    {
        const std::size_t common = std::min(a.size(), b.size());
        Ends ends;
        while (ends.front < common && AreEqual(a[ends.front], b[ends.front]))
            ++ends.front;
        while (ends.back < common - ends.front && AreEqual(a[a.size() - 1 - ends.back], b[b.size() - 1 - ends.back]))
            ++ends.back;
        return ends;
    }
    template <class Record>
    void Sequence(std::span<const DiffItem<Record>> a, std::span<const DiffItem<Record>> b);
    template <class Record>
    void KeyedItems(std::span<const DiffItem<Record>> a, std::span<const DiffItem<Record>> b);

    DiffCollector& m_collector;
    const DiffRules& m_rules;
    std::string_view m_kind;
};

template <class Record>
void DiffReport::Sequence(std::span<const DiffItem<Record>> a, std::span<const DiffItem<Record>> b)
{
    const Ends ends = EqualEnds(a, b);
    for (std::size_t i = 0; i < ends.front; ++i) // equal records may come from other lines and have other numbers
        Pair(a[i], b[i]);
    const auto middleA = a.subspan(ends.front, a.size() - ends.front - ends.back);
    const auto middleB = b.subspan(ends.front, b.size() - ends.front - ends.back);
    const std::size_t paired = std::min(middleA.size(), middleB.size());
    for (std::size_t i = 0; i < paired; ++i)
        Pair(middleA[i], middleB[i]);
    for (const auto& item : middleA.subspan(paired))
        Only(item, DiffChange::OnlyInA);
    for (const auto& item : middleB.subspan(paired))
        Only(item, DiffChange::OnlyInB);
    for (std::size_t i = ends.back; i > 0; --i)
        Pair(a[a.size() - i], b[b.size() - i]);
}

template <class List>
void DiffReport::OrderedByKind(const List& a, const List& b)
{
    const auto itemsA = ItemsOf(a);
    const auto itemsB = ItemsOf(b);
    using Items = std::remove_const_t<decltype(itemsA)>;
    using Span = std::span<const typename Items::value_type>;
    const Span allA(itemsA);
    const Span allB(itemsB);
    const auto ends = EqualEnds(allA, allB);
    for (std::size_t i = 0; i < ends.front; ++i)
        Pair(allA[i], allB[i]);

    const Span middleA = allA.subspan(ends.front, allA.size() - ends.front - ends.back);
    const Span middleB = allB.subspan(ends.front, allB.size() - ends.front - ends.back);
    std::map<std::string_view, std::pair<Items, Items>> kinds;
    for (const auto& item : middleA)
        kinds[PlaceOf(*item.record).kind].first.push_back(item);
    for (const auto& item : middleB)
        kinds[PlaceOf(*item.record).kind].second.push_back(item);
    bool isReordered =
        middleA.size() == middleB.size() &&
        !std::equal(middleA.begin(), middleA.end(), middleB.begin(),
                    [](const auto& x, const auto& y) { return PlaceOf(*x.record).kind == PlaceOf(*y.record).kind; });
    for (const auto& [kind, items] : kinds)
    {
        isReordered = isReordered && items.first.size() == items.second.size();
        Sequence(Span(items.first), Span(items.second));
    }
    if (isReordered)
        Changed("order of kinds", {}, {});

    for (std::size_t i = ends.back; i > 0; --i)
        Pair(allA[allA.size() - i], allB[allB.size() - i]);
}

template <class Record>
void DiffReport::KeyedItems(std::span<const DiffItem<Record>> a, std::span<const DiffItem<Record>> b)
{
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    // The first position in `b` of each key without a partner yet, and the next one of the same key.
    std::unordered_map<std::string, std::size_t> firstOfKey;
    std::vector<std::size_t> next(b.size(), kNone);
    for (std::size_t i = b.size(); i > 0; --i)
    {
        const auto [position, isNew] = firstOfKey.try_emplace(KeyOf(*b[i - 1].record), i - 1);
        if (!isNew)
        {
            next[i - 1] = position->second;
            position->second = i - 1;
        }
    }
    std::vector<bool> hasPartner(b.size());
    std::size_t lastPartner = 0;
    bool isReordered = false;
    for (const auto& item : a)
    {
        const auto position = firstOfKey.find(KeyOf(*item.record));
        if (position == firstOfKey.end() || position->second == kNone)
        {
            Only(item, DiffChange::OnlyInA);
            continue;
        }
        const std::size_t partner = position->second;
        position->second = next[partner];
        hasPartner[partner] = true;
        isReordered = isReordered || partner < lastPartner;
        lastPartner = partner;
        Pair(item, b[partner]);
    }
    for (std::size_t i = 0; i < b.size(); ++i)
        if (!hasPartner[i])
            Only(b[i], DiffChange::OnlyInB);
    if (isReordered)
        m_collector.Add(PlaceOf(*a.front().record).kind, DiffChange::Changed, "order");
}
