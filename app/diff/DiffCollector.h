// Collects the differences between two jobs. It keeps only the counts and the first few of each group, so that memory
// does not grow with the jobs.
#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>
#include <vector>

enum class DiffChange
{
    OnlyInA,
    OnlyInB,
    Changed,
};

// One side of a change; empty if there is no value to show.
using DiffValue = std::variant<std::monostate, std::string, std::int64_t, double, CPointD>;
// As above with borrowed texts, for immediate use.
using DiffValueView = std::variant<std::monostate, std::string_view, std::int64_t, double, CPointD>;

// The start of a text to be shown: one of a file may be as long as the file.
std::string ShortenedText(std::string_view text);

// Identifies a record in its list. Differences are counted by kind; paths are made of words.
struct RecordPlace
{
    std::string_view kind;
    std::string_view word;
    std::string_view name; // borrowed from the record; empty for a record without a name, which its position identifies
    std::string_view mark; // shown in brackets; may be empty
};

struct DiffExample
{
    std::string path; // of the record, including its place
    DiffValue a;
    DiffValue b;
};

// The differences of one place (a layer, the matrix, ...) with the same kind, change and field.
struct DiffGroup
{
    std::string place;
    std::string_view kind;
    DiffChange change = DiffChange::Changed;
    std::string_view field; // empty for records that only one job has
    std::int64_t count = 0;
    std::vector<DiffExample> examples;
};

// Kinds and fields are texts that live as long as the program.
class DiffCollector
{
public:
    static constexpr std::size_t kExamples = 3; // in each group

    void Add(std::string_view kind, DiffChange change, std::string_view field = {}, const DiffValueView& a = {},
             const DiffValueView& b = {});

    const std::vector<DiffGroup>& Groups() const noexcept { return m_groups; } // in the order they were found
    std::int64_t Differences() const noexcept { return m_nDifferences; }
    std::int64_t Places() const noexcept { return static_cast<std::int64_t>(m_placesWithDifferences.size()); }

private:
    friend class DiffPlace;
    friend class DiffScope;

    struct Segment
    {
        RecordPlace place;
        std::int64_t index;
    };
    using GroupKey = std::tuple<std::string, std::string_view, DiffChange, std::string_view>;

    std::string Path() const;

    std::string m_place;
    std::vector<Segment> m_segments;
    std::map<GroupKey, std::size_t, std::less<>> m_positions; // of the groups in m_groups
    std::map<std::string, std::int64_t> m_placesWithDifferences;
    std::vector<DiffGroup> m_groups;
    std::int64_t m_nDifferences = 0;
};

// While it lives, differences are added to that place.
class DiffPlace
{
public:
    DiffPlace(DiffCollector& collector, std::string place) : m_collector(collector)
    {
        place.swap(collector.m_place);
        m_before = std::move(place);
    }
    DiffPlace(const DiffPlace&) = delete;
    DiffPlace& operator=(const DiffPlace&) = delete;
    ~DiffPlace() { m_collector.m_place.swap(m_before); }

private:
    DiffCollector& m_collector;
    std::string m_before;
};

// While it lives, differences are added to that record of the place, or of the record around it.
class DiffScope
{
public:
    DiffScope(DiffCollector& collector, const RecordPlace& place, std::int64_t index) : m_collector(collector)
    {
        collector.m_segments.push_back({place, index});
    }
    DiffScope(const DiffScope&) = delete;
    DiffScope& operator=(const DiffScope&) = delete;
    ~DiffScope() { m_collector.m_segments.pop_back(); }

private:
    DiffCollector& m_collector;
};
