#include "saving/LinePlaces.h"

#include "saving/LineFinder.h"

#include <algorithm>
#include <deque>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace
{
// For each line now, the line before that it was.
class CLinePairs
{
public:
    CLinePairs(const CRecordLines& before, const CRecordLines& now)
        : m_before(before), m_now(now), m_pairs(now.Lines().size(), kNoLine), m_isPaired(before.Lines().size(), false)
    {
    }

    std::vector<int> Find()
    {
        PairKnown();
        PairUnknown();
        PairAbove();
        return std::move(m_pairs);
    }

private:
    using Indexes = std::vector<std::size_t>;

    std::string_view TextBefore(std::size_t i) const { return m_before.TextOf(m_before.Lines()[i]); }
    std::string_view TextNow(std::size_t i) const { return m_now.TextOf(m_now.Lines()[i]); }

    void Pair(std::size_t now, std::size_t before)
    {
        m_pairs[now] = static_cast<int>(before);
        m_isPaired[before] = true;
    }

    // Of several records that say they come from one line, such as a record and its copy, the one that is unchanged
    // does, else the first.
    void PairKnown()
    {
        std::unordered_map<int, std::size_t> byLine;
        for (std::size_t i = 0; i < m_before.Lines().size(); ++i)
            if (const int line = m_before.Lines()[i].sourceLine; line > 0)
                byLine.try_emplace(line, i);
        for (const bool ifUnchanged : {true, false})
            for (std::size_t i = 0; i < m_pairs.size(); ++i)
            {
                const CRecordLines::Line& line = m_now.Lines()[i];
                if (line.sourceLine <= 0 || m_pairs[i] != kNoLine)
                    continue;
                const auto found = byLine.find(line.sourceLine);
                if (found == byLine.end() || m_isPaired[found->second] ||
                    m_before.Lines()[found->second].depth != line.depth)
                    continue;
                if (!ifUnchanged || TextNow(i) == TextBefore(found->second))
                    Pair(i, found->second);
            }
    }

    // Lines without a record of their own, by the line that they are below.
    static std::vector<std::pair<int, std::size_t>> UnknownByParent(const CRecordLines& lines)
    {
        const std::vector<int> parents = FindParents(lines);
        std::vector<std::pair<int, std::size_t>> unknown;
        for (std::size_t i = 0; i < parents.size(); ++i)
            if (lines.Lines()[i].sourceLine == CRecordLines::kUnknownLine && !lines.Lines()[i].isAbove)
                unknown.emplace_back(parents[i], i);
        std::stable_sort(unknown.begin(), unknown.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        return unknown;
    }

    // A line stands before those below it, so it is paired before them.
    void PairUnknown()
    {
        const auto before = UnknownByParent(m_before);
        const auto now = UnknownByParent(m_now);
        for (std::size_t at = 0; at < now.size();)
        {
            const int parent = now[at].first;
            Indexes children;
            for (; at < now.size() && now[at].first == parent; ++at)
                children.push_back(now[at].second);
            const int parentBefore = parent == kNoLine ? kNoLine : m_pairs[static_cast<std::size_t>(parent)];
            if (parent != kNoLine && parentBefore == kNoLine)
                continue;
            Indexes childrenBefore;
            for (auto child = std::lower_bound(before.begin(), before.end(), std::pair(parentBefore, std::size_t{0}));
                 child != before.end() && child->first == parentBefore; ++child)
                childrenBefore.push_back(child->second);
            PairChildren(childrenBefore, children);
        }
    }

    // A comment goes with the record below it.
    void PairAbove()
    {
        for (std::size_t i = 0; i + 1 < m_pairs.size(); ++i)
            if (const int below = m_pairs[i + 1]; m_now.Lines()[i].isAbove && below > 0)
                if (const auto above = static_cast<std::size_t>(below) - 1; m_before.Lines()[above].isAbove)
                    Pair(i, above);
    }

    void PairChildren(const Indexes& before, const Indexes& now)
    {
        const std::size_t most = std::min(before.size(), now.size());
        std::size_t first = 0;
        for (; first < most && TextBefore(before[first]) == TextNow(now[first]); ++first)
            Pair(now[first], before[first]);
        std::size_t last = 0;
        for (;
             last < most - first && TextBefore(before[before.size() - 1 - last]) == TextNow(now[now.size() - 1 - last]);
             ++last)
            Pair(now[now.size() - 1 - last], before[before.size() - 1 - last]);
        const auto part = [first, last](const Indexes& all) {
            return Indexes(all.begin() + static_cast<std::ptrdiff_t>(first),
                           all.end() - static_cast<std::ptrdiff_t>(last));
        };
        const Indexes partBefore = part(before);
        const Indexes partNow = part(now);
        PairBy(&CRecordLines::TextOf, partBefore, partNow);
        PairBy(&CRecordLines::KeyOf, partBefore, partNow);
    }

    void PairBy(std::string_view (CRecordLines::*what)(const CRecordLines::Line&) const, const Indexes& before,
                const Indexes& now)
    {
        std::unordered_map<std::string_view, std::deque<std::size_t>> free;
        for (const std::size_t i : before)
            if (!m_isPaired[i])
                free[(m_before.*what)(m_before.Lines()[i])].push_back(i);
        for (const std::size_t i : now)
        {
            const auto found = m_pairs[i] == kNoLine ? free.find((m_now.*what)(m_now.Lines()[i])) : free.end();
            if (found == free.end() || found->second.empty())
                continue;
            Pair(i, found->second.front());
            found->second.pop_front();
        }
    }

    const CRecordLines& m_before;
    const CRecordLines& m_now;
    std::vector<int> m_pairs;
    std::vector<bool> m_isPaired; // those before
};

// Which of the numbers, none of them twice, belong to their longest increasing sequence.
// Source: the patience sorting of C. Schensted, "Longest increasing and decreasing subsequences", 1961.
std::vector<bool> LongestIncreasing(const std::vector<int>& numbers)
{
    std::vector<bool> belongs(numbers.size(), true);
    if (std::is_sorted(numbers.begin(), numbers.end()))
        return belongs;
    std::vector<std::size_t> ends;                        // of the best sequence of each length
    std::vector<std::size_t> previous(numbers.size(), 0); // in the best sequence that ends there
    for (std::size_t i = 0; i < numbers.size(); ++i)
    {
        const auto at = std::lower_bound(ends.begin(), ends.end(), numbers[i],
                                         [&](std::size_t end, int number) { return numbers[end] < number; });
        previous[i] = at == ends.begin() ? i : *std::prev(at);
        if (at == ends.end())
            ends.push_back(i);
        else
            *at = i;
    }
    belongs.assign(numbers.size(), false);
    std::size_t i = ends.back();
    for (std::size_t left = ends.size(); left > 0; --left, i = previous[i])
        belongs[i] = true;
    return belongs;
}

// Follows the lines now from the first to the last: behind which line of the source a new one goes.
class CPositions
{
public:
    // Behind the sibling before it and all that is below that, else behind the line that it is below.
    int Behind(int depth) const
    {
        const auto at = static_cast<std::size_t>(depth);
        if (m_ends.empty())
            return 0;
        return at < m_ends.size() ? m_ends[at] : m_ends.back();
    }
    // The line at `depth` is at that position.
    void Put(int depth, int position)
    {
        const auto at = static_cast<std::size_t>(depth);
        m_ends.resize(at, Behind(depth));
        m_ends.push_back(position);
        for (int& end : m_ends)
            end = std::max(end, position);
    }

private:
    std::vector<int> m_ends; // for each depth, the last line of the last record of that depth
};
} // namespace

LinePlaces FindPlaces(const CSourceLines& source, const CRecordLines& before, const CRecordLines& now)
{
    LinePlaces places;
    places.lineOfBefore = FindLines(source, before);
    places.isOfRecord.assign(source.Count() + 1, false);
    for (const int line : places.lineOfBefore)
        if (line != kNoLine)
            places.isOfRecord[static_cast<std::size_t>(line)] = true;
    const std::vector<int> pairs = CLinePairs(before, now).Find();
    std::vector<int> found; // the lines before that are in the source, in the order of those now
    const auto isFound = [&](int pair)
    { return pair != kNoLine && places.lineOfBefore[static_cast<std::size_t>(pair)] != kNoLine; };
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(found), isFound);
    const std::vector<bool> isInOrder = LongestIncreasing(found);
    bool hasAbove = false; // whether the file has such comments
    for (std::size_t i = 0; i < before.Lines().size(); ++i)
        hasAbove = hasAbove || (before.Lines()[i].isAbove && places.lineOfBefore[i] != kNoLine);
    const auto isNeeded = [&](const CRecordLines::Line& line)
    { return source.Count() == 0 || (!line.isOptional && (hasAbove || !line.isAbove)); };
    CPositions positions;
    std::size_t at = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i)
    {
        const CRecordLines::Line& line = now.Lines()[i];
        LinePlaces::Place place{pairs[i], false, positions.Behind(line.depth)};
        const bool stands = isFound(pairs[i]) && isInOrder[at];
        at += isFound(pairs[i]) ? 1U : 0U;
        const auto isUnchanged = [&](int pair)
        { return before.TextOf(before.Lines()[static_cast<std::size_t>(pair)]) == now.TextOf(line); };
        const bool isLeftOut = pairs[i] != kNoLine && !isFound(pairs[i]) && (line.isAbove || isUnchanged(pairs[i]));
        place.isInserted = !stands && !isLeftOut && (isFound(pairs[i]) || isNeeded(line));
        positions.Put(line.depth, stands ? places.lineOfBefore[static_cast<std::size_t>(pairs[i])] : place.behind);
        places.ofNow.push_back(place);
    }
    return places;
}
