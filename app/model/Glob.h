// Names with the wildcards "*", any characters, and "?", any one character.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class LetterCase
{
    Respected,
    Ignored, // of ASCII letters
};

// Whether the whole text matches.
bool MatchesGlob(std::string_view pattern, std::string_view text, LetterCase letterCase) noexcept;

// Chooses names of one list. Names of steps and layers are compared without their letter case. For others the case
// counts, unless no name of the list would match then.
class NameFilter
{
public:
    // Lets every name pass.
    NameFilter() = default;
    // What the names are, in messages: "net".
    // Results: raises ExitError, with the nearest name, if no name matches.
    NameFilter(const std::string& pattern, const char* kind, const std::vector<std::string>& names,
               LetterCase letterCase);

    bool IsSet() const noexcept { return m_isSet; }
    bool Passes(std::string_view name) const noexcept { return !m_isSet || MatchesGlob(m_pattern, name, m_letterCase); }

private:
    std::string m_pattern;
    LetterCase m_letterCase = LetterCase::Respected;
    bool m_isSet = false;
};
