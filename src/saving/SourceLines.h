// The lines of a text that is saved again.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// A text split into lines as the readers split it: at LF, or at CR if the text has no LF. All are views of the text.
class CSourceLines
{
public:
    explicit CSourceLines(std::string_view text);

    // Lines are counted from 1.
    std::size_t Count() const noexcept { return m_begins.size() - 1; }
    // With its end.
    std::string_view Whole(std::size_t line) const noexcept
    {
        return m_text.substr(m_begins[line - 1], m_begins[line] - m_begins[line - 1]);
    }
    // Without its end and without white space around it.
    std::string_view Content(std::size_t line) const noexcept;
    // The white space before the content.
    std::string_view Indentation(std::size_t line) const noexcept;
    // How lines of the text end: that of the first, LF if there is none.
    std::string_view End() const noexcept { return m_end; }
    // Whether the last line has an end.
    bool IsEnded() const noexcept;

private:
    std::string_view m_text;
    std::vector<std::size_t> m_begins; // of each line, and where the text ends
    std::string_view m_end = "\n";
};
