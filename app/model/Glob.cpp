#include "model/Glob.h"

#include "output/ExitError.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>

namespace
{
constexpr char InCase(char letter, LetterCase letterCase) noexcept
{
    return letterCase == LetterCase::Ignored && letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a')
                                                                               : letter;
}
} // namespace

// Goes back only to the last "*", so the time is at most the product of both lengths.
bool MatchesGlob(std::string_view pattern, std::string_view text, LetterCase letterCase) noexcept
{
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string_view::npos;
    std::size_t covered = 0; // of the text, by the last star and all before it
    while (in < text.size())
    {
        if (at < pattern.size() && pattern[at] == '*')
        {
            star = at++;
            covered = in;
        }
        else if (at < pattern.size() &&
                 (pattern[at] == '?' || InCase(pattern[at], letterCase) == InCase(text[in], letterCase)))
        {
            ++at;
            ++in;
        }
        else if (star != std::string_view::npos)
        {
            at = star + 1;
            in = ++covered;
        }
        else
            return false;
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

NameFilter::NameFilter(const std::string& pattern, const char* kind, const std::vector<std::string>& names,
                       LetterCase letterCase)
    : m_pattern(pattern), m_letterCase(letterCase), m_isSet(true)
{
    const auto passes = [this](const std::string& name) { return Passes(name); };
    if (std::any_of(names.begin(), names.end(), passes))
        return;
    m_letterCase = LetterCase::Ignored;
    if (std::any_of(names.begin(), names.end(), passes))
        return;
    throw ExitError(ExitCode::WrongUsage,
                    fmt::format("the job has no {} \"{}\"{}", kind, Printable(pattern), DidYouMean(pattern, names)));
}
