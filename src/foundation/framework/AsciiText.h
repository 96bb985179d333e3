// Letters and white space of ASCII, whatever the locale of the process.
#pragma once

#include <algorithm>
#include <string_view>

inline constexpr const char* kAsciiSpace = " \t\n\v\f\r";

constexpr char AsciiUpper(char c) noexcept
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

constexpr char AsciiLower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool IsAsciiSpace(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Negative, 0 or positive as `a` sorts before, with or after `b`, with letters in lower case.
inline int AsciiCompareNoCase(std::string_view a, std::string_view b) noexcept
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (AsciiLower(a[i]) != AsciiLower(b[i]))
            return static_cast<unsigned char>(AsciiLower(a[i])) < static_cast<unsigned char>(AsciiLower(b[i])) ? -1 : 1;
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

inline bool AsciiEqualNoCase(std::string_view a, std::string_view b) noexcept
{
    return a.size() == b.size() && AsciiCompareNoCase(a, b) == 0;
}
