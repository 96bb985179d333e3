#include "saving/LineWeaver.h"

#include "foundation/framework/AsciiText.h"
#include "saving/LineFinder.h"
#include "saving/LinePatch.h"
#include "saving/LinePlaces.h"
#include "saving/SourceLines.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace
{
// Puts the lines of the new text together.
class CWovenText
{
public:
    CWovenText(const CSourceLines& source, const CRecordLines& before, const CRecordLines& now,
               const LinePlaces& places)
        : m_source(source), m_before(before), m_now(now), m_places(places)
    {
        FindIndentations();
    }

    std::string Weave()
    {
        SortLines();
        AddInserted(0);
        for (std::size_t line = 1; line <= m_source.Count(); ++line)
        {
            if (m_states[line] == State::Kept)
                Add(m_source.Whole(line));
            else if (m_states[line] == State::Changed)
                AddRecord(static_cast<std::size_t>(m_nowOfLine[line]));
            AddInserted(line);
        }
        if (m_source.Count() > 0 && !m_source.IsEnded() && m_text.ends_with(m_source.End()))
            m_text.resize(m_text.size() - m_source.End().size());
        return std::move(m_text);
    }

private:
    enum class State : unsigned char
    {
        Kept,
        Changed,
        Removed
    };

    void FindIndentations()
    {
        for (std::size_t i = 0; i < m_before.Lines().size(); ++i)
        {
            const auto depth = static_cast<std::size_t>(m_before.Lines()[i].depth);
            if (const int line = m_places.lineOfBefore[i]; line != kNoLine)
            {
                m_indentations.try_emplace(depth, m_source.Indentation(static_cast<std::size_t>(line)));
                const bool isInComment = m_source.Content(static_cast<std::size_t>(line)).starts_with('#');
                m_areTablesInComments |= isInComment && IsTableEntry(m_before.TextOf(m_before.Lines()[i]));
            }
        }
    }

    // An entry of an attribute table, which EDA files may have as a comment.
    static bool IsTableEntry(std::string_view text) { return text.starts_with('@') || text.starts_with('&'); }

    // What becomes of each line, and what is inserted behind which.
    void SortLines()
    {
        m_states.assign(m_source.Count() + 1, State::Kept);
        m_nowOfLine.assign(m_source.Count() + 1, kNoLine);
        for (const int line : m_places.lineOfBefore)
            if (line != kNoLine)
                m_states[static_cast<std::size_t>(line)] = State::Removed;
        for (std::size_t i = 0; i < m_places.ofNow.size(); ++i)
        {
            const LinePlaces::Place& place = m_places.ofNow[i];
            if (place.isInserted)
            {
                m_inserted.emplace_back(place.behind, i);
                RemoveFollowers(i);
            }
            else if (const int line = LineOf(i); line != kNoLine)
            {
                m_states[static_cast<std::size_t>(line)] = State::Changed;
                m_nowOfLine[static_cast<std::size_t>(line)] = static_cast<int>(i);
            }
        }
        std::stable_sort(m_inserted.begin(), m_inserted.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    }

    int LineOf(std::size_t now) const
    {
        const int before = m_places.ofNow[now].before;
        return before == kNoLine ? kNoLine : m_places.lineOfBefore[static_cast<std::size_t>(before)];
    }

    // The unknown lines directly behind a line that moves go with it.
    std::size_t EndOfFollowers(std::size_t line) const
    {
        std::size_t end = line + 1;
        while (end <= m_source.Count() && !m_places.isOfRecord[end] && !m_source.Content(end).empty() &&
               m_source.Content(end).front() != '#')
            ++end;
        return end;
    }
    void RemoveFollowers(std::size_t now)
    {
        if (const int line = LineOf(now); line != kNoLine)
            for (auto at = static_cast<std::size_t>(line); at < EndOfFollowers(static_cast<std::size_t>(line)); ++at)
                m_states[at] = State::Removed;
    }

    void AddInserted(std::size_t behind)
    {
        for (; m_at < m_inserted.size() && m_inserted[m_at].first == static_cast<int>(behind); ++m_at)
        {
            const std::size_t now = m_inserted[m_at].second;
            AddRecord(now);
            if (const int line = LineOf(now); line != kNoLine)
                for (auto at = static_cast<std::size_t>(line) + 1; at < EndOfFollowers(static_cast<std::size_t>(line));
                     ++at)
                    Add(m_source.Whole(at));
        }
    }

    void AddRecord(std::size_t now)
    {
        const CRecordLines::Line& listed = m_now.Lines()[now];
        const std::string_view text = m_now.TextOf(listed);
        const int line = LineOf(now);
        if (line == kNoLine)
        {
            const std::string_view mark = m_areTablesInComments && IsTableEntry(text) ? "#" : "";
            return Add(std::string(IndentationOf(listed)).append(mark).append(text).append(m_source.End()));
        }
        const auto at = static_cast<std::size_t>(line);
        const std::string_view before =
            m_before.TextOf(m_before.Lines()[static_cast<std::size_t>(m_places.ofNow[now].before)]);
        if (before == text)
            return Add(m_source.Whole(at));
        const std::string_view whole = m_source.Whole(at);
        const std::string_view content = m_source.Content(at);
        const auto begin = static_cast<std::size_t>(content.data() - whole.data());
        std::string changed(whole.substr(0, begin));
        changed += listed.isKeyValue ? PatchKeyLine(content, text) : PatchLine(content, before, text);
        Add(changed.append(whole.substr(begin + content.size())));
    }

    void Add(std::string_view whole)
    {
        if (!m_text.empty() && m_text.back() != m_source.End().back() && m_source.Count() > 0)
            m_text += m_source.End();
        m_text += whole;
    }

    std::string_view IndentationOf(const CRecordLines::Line& line) const
    {
        constexpr std::string_view kUsual = "                ";
        if (const auto found = m_indentations.find(static_cast<std::size_t>(line.depth)); found != m_indentations.end())
            return found->second;
        return line.isKeyValue ? kUsual.substr(0, 4 * static_cast<std::size_t>(line.depth)) : std::string_view();
    }

    const CSourceLines& m_source;
    const CRecordLines& m_before;
    const CRecordLines& m_now;
    const LinePlaces& m_places;
    std::map<std::size_t, std::string_view> m_indentations; // by depth
    std::vector<State> m_states;                            // by line
    std::vector<int> m_nowOfLine;                           // by line
    std::vector<std::pair<int, std::size_t>> m_inserted;    // behind which line, and which of those now
    std::size_t m_at = 0;                                   // among the inserted
    bool m_areTablesInComments = false;
    std::string m_text;
};
} // namespace

std::string WeaveLines(std::string_view source, const CRecordLines& before, const CRecordLines& now)
{
    const CSourceLines lines(source);
    const LinePlaces places = FindPlaces(lines, before, now);
    return CWovenText(lines, before, now, places).Weave();
}
