#include "output/NaturalOrder.h"

#include <algorithm>
#include <cstddef>

namespace
{
constexpr bool IsDecimalDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

constexpr unsigned char Folded(char character) noexcept
{
    return static_cast<unsigned char>(character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character);
}

// Takes the number at the front of the text, without its leading zeros.
std::string_view TakeNumber(std::string_view& text) noexcept
{
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

// Below 0 if `a` comes first, above 0 if `b` does.
int CompareFolded(std::string_view a, std::string_view b) noexcept
{
    while (!a.empty() && !b.empty())
    {
        if (IsDecimalDigit(a.front()) && IsDecimalDigit(b.front()))
        {
            const std::string_view numberA = TakeNumber(a);
            const std::string_view numberB = TakeNumber(b);
            if (numberA.size() != numberB.size())
                return numberA.size() < numberB.size() ? -1 : 1;
            if (const int order = numberA.compare(numberB); order != 0)
                return order;
            continue;
        }
        if (Folded(a.front()) != Folded(b.front()))
            return Folded(a.front()) < Folded(b.front()) ? -1 : 1;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}
} // namespace

bool IsNaturallyBefore(std::string_view a, std::string_view b) noexcept
{
    const int order = CompareFolded(a, b);
    return order != 0 ? order < 0 : a < b;
}
