#include "saving/LineFinder.h"

#include "foundation/CLineScanner.h"
#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace
{
constexpr int kNotFound = -1;
constexpr std::string_view kUnits = "UNITS";
constexpr std::string_view kEndsOfWord = " \t=;";

// Takes the next word from the front of a text; a comment's mark belongs to its first word.
std::string_view TakeWord(std::string_view& text)
{
    text = TrimmedLeft(text);
    const std::size_t end = std::min(text.find_first_of(kEndsOfWord), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

// A line of an attribute table may be a comment in EDA files: "#@0 .name". Returns the line without the mark.
std::string_view WithoutTableMark(std::string_view content)
{
    const std::string_view entry = content.starts_with('#') ? TrimmedLeft(content.substr(1)) : std::string_view();
    const bool isEntry = entry.size() > 1 && (entry[0] == '@' || entry[0] == '&') && number_text::IsDigit(entry[1]);
    return isEntry ? entry : content;
}

// "# NET 5" has the words "#", "NET" and "5", and so has "#NET 5".
std::string_view TakeFirstWord(std::string_view& text)
{
    text = TrimmedLeft(text);
    if (!text.starts_with('#'))
        return TakeWord(text);
    const std::string_view word = text.substr(0, 1);
    text.remove_prefix(1);
    return word;
}

// Whether the line is a comment such as the listed one: "# NET" with nothing but a number behind it.
bool IsAnnouncement(std::string_view content, std::string_view key)
{
    if (TakeFirstWord(content) != TakeFirstWord(key) || !AsciiEqualNoCase(TakeWord(content), TakeWord(key)))
        return false;
    const std::string_view number = Trimmed(content);
    return !number.empty() && std::all_of(number.begin(), number.end(), number_text::IsDigit);
}

bool HasKey(std::string_view content, std::string_view key, bool isKeyValue)
{
    if (isKeyValue)
    {
        const std::size_t equals = content.find('=');
        if (equals != std::string_view::npos)
            return AsciiEqualNoCase(TrimmedRight(content.substr(0, equals)), key);
        const std::string_view word = TakeWord(content); // of old files: "UNITS MM" or "U MM"
        return key == kUnits && (AsciiEqualNoCase(word, kUnits) || AsciiEqualNoCase(word, kUnits.substr(0, 1)));
    }
    content = WithoutTableMark(content);
    if (!AsciiEqualNoCase(TakeFirstWord(content), TakeFirstWord(key)))
        return false;
    while (!TrimmedLeft(key).empty())
        if (TakeWord(key) != TakeWord(content))
            return false;
        else if (!key.empty() && key.front() != ' ' && key.front() != '\t')
            key.remove_prefix(1);
    return true;
}

std::string IndexWord(std::string_view text)
{
    text = WithoutTableMark(text);
    std::string word(TakeFirstWord(text));
    std::transform(word.begin(), word.end(), word.begin(), AsciiLower);
    return word;
}

// The lines that no record has, by their first words.
class CFreeLines
{
public:
    explicit CFreeLines(const CSourceLines& source) : m_source(source), m_isFree(source.Count() + 1, true) {}

    void Take(std::size_t line) { m_isFree[line] = false; }
    bool IsFree(std::size_t line) const { return m_isFree[line]; }

    // The first free line with that key from `first` on and before `end`; 0 if there is none.
    std::size_t Find(std::string_view key, bool isKeyValue, std::size_t first, std::size_t end)
    {
        if (m_byWord.empty())
            MakeIndex();
        const std::size_t found = FindWord(IndexWord(key), key, isKeyValue, first, end);
        return found == 0 && key == kUnits ? FindWord("u", key, isKeyValue, first, end) : found;
    }

private:
    std::size_t FindWord(const std::string& word, std::string_view key, bool isKeyValue, std::size_t first,
                         std::size_t end)
    {
        const auto found = m_byWord.find(word);
        if (found == m_byWord.end())
            return 0;
        Lines& lines = found->second;
        auto at = static_cast<std::size_t>(std::lower_bound(lines.lines.begin(), lines.lines.end(), first) -
                                           lines.lines.begin());
        for (at = FirstFree(lines, at); at < lines.lines.size() && lines.lines[at] < end; at = FirstFree(lines, at + 1))
            if (HasKey(m_source.Content(lines.lines[at]), key, isKeyValue))
                return lines.lines[at];
        return 0;
    }

    struct Lines
    {
        std::vector<std::size_t> lines;
        std::vector<std::size_t> next; // where to look on for a free one
    };

    void MakeIndex()
    {
        for (std::size_t line = 1; line <= m_source.Count(); ++line)
        {
            const std::string_view content = m_source.Content(line);
            if (content.empty())
                continue;
            Lines& lines = m_byWord[IndexWord(content)];
            lines.next.push_back(lines.lines.size());
            lines.lines.push_back(line);
        }
    }
    // Taken lines are skipped in one go the next time.
    std::size_t FirstFree(Lines& lines, std::size_t at) const
    {
        std::size_t end = at;
        while (end < lines.lines.size() && (lines.next[end] != end || !m_isFree[lines.lines[end]]))
            end = std::max(lines.next[end], end + 1);
        while (at < end)
        {
            const std::size_t next = std::max(lines.next[at], at + 1);
            lines.next[at] = end;
            at = next;
        }
        return end;
    }

    const CSourceLines& m_source;
    std::vector<bool> m_isFree; // by line
    std::unordered_map<std::string, Lines> m_byWord;
};

class CLineFinding
{
public:
    CLineFinding(const CSourceLines& source, const CRecordLines& lines)
        : m_source(source), m_lines(lines), m_free(source), m_found(lines.Lines().size(), kNotFound)
    {
    }

    std::vector<int> Find()
    {
        TakeKnown();
        FindEnds();
        const std::vector<int> parents = FindParents(m_lines);
        std::size_t next = 1;
        for (std::size_t i = 0; i < m_found.size(); ++i)
        {
            const CRecordLines::Line& line = m_lines.Lines()[i];
            if (line.isAbove)
                FindAbove(i);
            else if (line.sourceLine == CRecordLines::kUnknownLine)
                FindOne(i, parents[i], next);
            if (m_found[i] != kNotFound)
                next = static_cast<std::size_t>(m_found[i]) + 1;
        }
        return std::move(m_found);
    }

private:
    void TakeKnown()
    {
        for (std::size_t i = 0; i < m_found.size(); ++i)
        {
            const int line = m_lines.Lines()[i].sourceLine;
            if (line <= 0 || static_cast<std::size_t>(line) > m_source.Count() ||
                !m_free.IsFree(static_cast<std::size_t>(line)))
                continue;
            m_free.Take(static_cast<std::size_t>(line));
            m_found[i] = line;
        }
    }

    // For each known record, the line of the next one that is not below it.
    void FindEnds()
    {
        m_ends.assign(m_found.size(), m_source.Count() + 1);
        std::vector<std::size_t> known;
        for (std::size_t i = 0; i < m_found.size(); ++i)
            if (m_found[i] != kNotFound)
                known.push_back(i);
        const auto isInOrder = [this](std::size_t a, std::size_t b) { return m_found[a] < m_found[b]; };
        if (!std::is_sorted(known.begin(), known.end(), isInOrder))
            std::sort(known.begin(), known.end(), isInOrder);
        std::reverse(known.begin(), known.end());
        std::vector<std::size_t> behind; // records with ever smaller depth, the nearest last
        for (const std::size_t at : known)
        {
            while (!behind.empty() && m_lines.Lines()[behind.back()].depth > m_lines.Lines()[at].depth)
                behind.pop_back();
            if (!behind.empty())
                m_ends[at] = static_cast<std::size_t>(m_found[behind.back()]);
            behind.push_back(at);
        }
    }

    // A comment above a record is among the comments and empty lines between it and the record before.
    void FindAbove(std::size_t i)
    {
        const std::string_view key = m_lines.KeyOf(m_lines.Lines()[i]);
        const int below = i + 1 < m_found.size() ? m_found[i + 1] : kNotFound;
        for (int line = below - 1; line > 0 && m_free.IsFree(static_cast<std::size_t>(line)); --line)
        {
            const std::string_view content = m_source.Content(static_cast<std::size_t>(line));
            if (!content.empty() && content.front() != '#')
                return;
            if (IsAnnouncement(content, key))
            {
                m_found[i] = line;
                m_free.Take(static_cast<std::size_t>(line));
                return;
            }
        }
    }

    // `next` is the line behind the one found last.
    void FindOne(std::size_t i, int parent, std::size_t next)
    {
        const auto above = static_cast<std::size_t>(std::max(parent, 0));
        const bool hasParent = parent != kNotFound && m_found[above] != kNotFound;
        if (parent != kNotFound && !hasParent)
            return;
        const std::size_t first = hasParent ? static_cast<std::size_t>(m_found[above]) + 1 : 1;
        const std::size_t end = hasParent ? m_ends[above] : m_source.Count() + 1;
        const CRecordLines::Line& line = m_lines.Lines()[i];
        const std::string_view key = m_lines.KeyOf(line).empty() ? m_lines.TextOf(line) : m_lines.KeyOf(line);
        const bool isComment = key.starts_with('#');
        while (next < end && (!m_free.IsFree(next) || m_source.Content(next).empty() ||
                              (!isComment && m_source.Content(next).front() == '#')))
            ++next;
        std::size_t found = next;
        if (next < first || next >= end || !HasKey(m_source.Content(next), key, line.isKeyValue))
            found = m_free.Find(key, line.isKeyValue, first, end);
        if (found == 0)
            return;
        m_found[i] = static_cast<int>(found);
        m_ends[i] = end;
        m_free.Take(found);
    }

    const CSourceLines& m_source;
    const CRecordLines& m_lines;
    CFreeLines m_free;
    std::vector<int> m_found;
    std::vector<std::size_t> m_ends; // behind the last line that may be below it
};
} // namespace

std::vector<int> FindLines(const CSourceLines& source, const CRecordLines& lines)
{
    return CLineFinding(source, lines).Find();
}

std::vector<int> FindParents(const CRecordLines& lines)
{
    std::vector<int> parents;
    std::vector<int> above; // the last line of each depth
    for (std::size_t i = 0; i < lines.Lines().size(); ++i)
    {
        const auto depth = static_cast<std::size_t>(lines.Lines()[i].depth);
        parents.push_back(depth > 0 && depth <= above.size() ? above[depth - 1] : kNotFound);
        above.resize(std::min(depth, above.size()));
        above.resize(depth, parents.back());
        above.push_back(static_cast<int>(i));
    }
    return parents;
}
