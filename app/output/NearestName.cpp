#include "output/NearestName.h"

#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

namespace
{
constexpr std::size_t kMostChanges = 3;

// Nobody types a longer name, and the time grows with the square of the length.
constexpr std::size_t kLongestName = 100;

char LowerLetter(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool AreSame(char a, char b)
{
    return LowerLetter(a) == LowerLetter(b);
}

// The number of changes between two names.
std::size_t Distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> current(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        current[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i)
    {
        beforeLast = std::exchange(last, current);
        current[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j)
        {
            const bool isSame = AreSame(a[i - 1], b[j - 1]);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && AreSame(a[i - 1], b[j - 2]) && AreSame(a[i - 2], b[j - 1]))
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
        }
    }
    return current[b.size()];
}
} // namespace

std::string_view NearestName(std::string_view typed, const std::vector<std::string>& names)
{
    std::string_view nearest;
    if (typed.size() < 2 || typed.size() > kLongestName)
        return nearest;
    std::size_t fewest = std::clamp<std::size_t>(typed.size() / 3, 1, kMostChanges) + 1;
    for (const std::string& name : names)
    {
        if (name.size() > typed.size() + kMostChanges)
            continue;
        const std::size_t distance = Distance(typed, name);
        if (distance >= fewest)
            continue;
        fewest = distance;
        nearest = name;
    }
    return nearest;
}

std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names)
{
    const std::string_view nearest = NearestName(typed, names);
    return nearest.empty() ? std::string() : fmt::format("; did you mean \"{}\"?", Printable(nearest));
}
