#include "edit/LineDiff.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace
{
using TextLines = std::vector<std::string_view>; // each with its LF

// More changes than that are shown as one: all lines between the first and the last are replaced.
constexpr int kMostLineChanges = 2000;
constexpr std::size_t kAround = 3;

TextLines LinesIn(std::string_view text)
{
    TextLines lines;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

// Which lines are removed and which are added; all others are equal in pairs.
struct LineMarks
{
    std::vector<bool> removed;
    std::vector<bool> added;
};

// The shortest way from one text to the other, found with the greedy method: for each number of changes, how far each
// diagonal leads.
class CShortestWay
{
public:
    CShortestWay(const TextLines& before, const TextLines& after, LineMarks& marks)
        : m_before(before), m_after(after), m_marks(marks)
    {
    }

    // Compares the lines from `first` up to these ends.
    void Mark(std::size_t first, std::size_t endBefore, std::size_t endAfter)
    {
        m_first = first;
        m_sizeBefore = static_cast<int>(endBefore - first);
        m_sizeAfter = static_cast<int>(endAfter - first);
        const int changes = CountChanges();
        if (changes < 0)
        {
            std::fill_n(m_marks.removed.begin() + static_cast<std::ptrdiff_t>(first), m_sizeBefore, true);
            std::fill_n(m_marks.added.begin() + static_cast<std::ptrdiff_t>(first), m_sizeAfter, true);
            return;
        }
        Trace(changes);
    }

private:
    bool IsSame(int x, int y) const
    {
        return m_before[m_first + static_cast<std::size_t>(x)] == m_after[m_first + static_cast<std::size_t>(y)];
    }
    // Whether the last change to that diagonal added a line.
    static bool CameByAdding(const std::vector<int>& reach, int changes, int diagonal)
    {
        return diagonal == -changes ||
               (diagonal != changes && At(reach, changes, diagonal - 1) < At(reach, changes, diagonal + 1));
    }
    // `reach` has the diagonals from -changes - 1 on.
    static int At(const std::vector<int>& reach, int changes, int diagonal)
    {
        const int at = diagonal + changes + 1;
        return reach[static_cast<std::size_t>(at)];
    }

    // The number of changes; -1 if there are too many.
    int CountChanges()
    {
        std::vector<int> last = {0, 0, 0};
        for (int changes = 0; changes <= kMostLineChanges; ++changes)
        {
            const int diagonals = 2 * changes + 5;
            std::vector<int> reach(static_cast<std::size_t>(diagonals), 0);
            m_reached.push_back(last);
            for (int diagonal = -changes; diagonal <= changes; diagonal += 2)
            {
                int x = CameByAdding(last, changes, diagonal) ? At(last, changes, diagonal + 1)
                                                              : At(last, changes, diagonal - 1) + 1;
                while (x < m_sizeBefore && x - diagonal < m_sizeAfter && IsSame(x, x - diagonal))
                    ++x;
                const int at = diagonal + changes + 2;
                reach[static_cast<std::size_t>(at)] = x;
                if (x >= m_sizeBefore && x - diagonal >= m_sizeAfter)
                    return changes;
            }
            last = std::move(reach);
        }
        return -1;
    }
    void Trace(int changes)
    {
        int x = m_sizeBefore;
        int y = m_sizeAfter;
        for (; changes > 0; --changes)
        {
            const std::vector<int>& reach = m_reached[static_cast<std::size_t>(changes)];
            const int diagonal = x - y;
            const bool adding = CameByAdding(reach, changes, diagonal);
            x = At(reach, changes, adding ? diagonal + 1 : diagonal - 1);
            y = x - (adding ? diagonal + 1 : diagonal - 1);
            if (adding)
                m_marks.added[m_first + static_cast<std::size_t>(y)] = true;
            else
                m_marks.removed[m_first + static_cast<std::size_t>(x)] = true;
        }
    }

    const TextLines& m_before;
    const TextLines& m_after;
    LineMarks& m_marks;
    std::size_t m_first = 0;
    int m_sizeBefore = 0;
    int m_sizeAfter = 0;
    std::vector<std::vector<int>> m_reached; // before each change
};

LineMarks CompareLines(const TextLines& before, const TextLines& after)
{
    LineMarks marks{std::vector<bool>(before.size()), std::vector<bool>(after.size())};
    const auto [firstBefore, firstAfter] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto first = static_cast<std::size_t>(firstBefore - before.begin());
    std::size_t endBefore = before.size();
    std::size_t endAfter = after.size();
    while (endBefore > first && endAfter > first && before[endBefore - 1] == after[endAfter - 1])
    {
        --endBefore;
        --endAfter;
    }
    if (endBefore > first || endAfter > first)
        CShortestWay(before, after, marks).Mark(first, endBefore, endAfter);
    return marks;
}

void AppendLine(std::string& text, char mark, std::string_view line)
{
    text += mark;
    text += line;
    if (!line.ends_with('\n'))
        text += "\n\\ No newline at end of file\n";
}

// A range as the head of a hunk has it: from 1, and the line before it where it is empty.
std::string RangeText(std::size_t first, std::size_t count)
{
    return count == 1 ? std::to_string(first + 1) : fmt::format("{},{}", count == 0 ? first : first + 1, count);
}

class CHunks
{
public:
    CHunks(const TextLines& before, const TextLines& after)
        : m_before(before), m_after(after), m_marks(CompareLines(before, after))
    {
    }

    std::string Text()
    {
        while (FindChange())
            AppendHunk();
        return m_text;
    }

private:
    bool IsChange() const
    {
        return (m_x < m_before.size() && m_marks.removed[m_x]) || (m_y < m_after.size() && m_marks.added[m_y]);
    }
    bool FindChange()
    {
        while ((m_x < m_before.size() || m_y < m_after.size()) && !IsChange())
            Step();
        return m_x < m_before.size() || m_y < m_after.size();
    }
    void Step()
    {
        ++m_x;
        ++m_y;
    }
    void AppendHunk()
    {
        const std::size_t lead = std::min(kAround, m_x - m_done);
        const std::size_t firstX = m_x - lead;
        const std::size_t firstY = m_y - lead;
        std::string lines;
        for (std::size_t i = firstX; i < m_x; ++i)
            AppendLine(lines, ' ', m_before[i]);
        for (std::size_t equal = 0; equal <= 2 * kAround && (m_x < m_before.size() || m_y < m_after.size());)
        {
            if (IsChange())
            {
                equal = 0;
                AppendChanges(lines);
                continue;
            }
            if (equal == kAround && !HasChangeWithin(kAround + 1))
                break;
            AppendLine(lines, ' ', m_before[m_x]);
            Step();
            ++equal;
        }
        m_text += fmt::format("@@ -{} +{} @@\n", RangeText(firstX, m_x - firstX), RangeText(firstY, m_y - firstY));
        m_text += lines;
        m_done = m_x;
    }
    void AppendChanges(std::string& lines)
    {
        for (; m_x < m_before.size() && m_marks.removed[m_x]; ++m_x)
            AppendLine(lines, '-', m_before[m_x]);
        for (; m_y < m_after.size() && m_marks.added[m_y]; ++m_y)
            AppendLine(lines, '+', m_after[m_y]);
    }
    // Whether one of the next lines changes.
    bool HasChangeWithin(std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i)
            if ((m_x + i < m_before.size() && m_marks.removed[m_x + i]) ||
                (m_y + i < m_after.size() && m_marks.added[m_y + i]))
                return true;
        return false;
    }

    const TextLines& m_before;
    const TextLines& m_after;
    LineMarks m_marks;
    std::size_t m_x = 0; // in `before`
    std::size_t m_y = 0; // in `after`
    std::size_t m_done = 0;
    std::string m_text;
};
} // namespace

std::string UnifiedHunks(std::string_view before, std::string_view after)
{
    const TextLines linesBefore = LinesIn(before);
    const TextLines linesAfter = LinesIn(after);
    return CHunks(linesBefore, linesAfter).Text();
}
