// The only place where numbers are printed: the same characters as printf in the C locale, without a terminator.
// Nothing here depends on a locale.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace number_print
{
// The most that any of the printers below stores: "%lf" of the largest double has 317 characters.
inline constexpr std::size_t kLongest = 400;

// The numbers below 1000 with leading zeros, three characters each.
constexpr std::array<char[4], 1000> PaddedNumbers()
{
    std::array<char[4], 1000> table{};
    for (unsigned n = 0; n < table.size(); ++n)
    {
        table[n][0] = static_cast<char>('0' + n / 100);
        table[n][1] = static_cast<char>('0' + n / 10 % 10);
        table[n][2] = static_cast<char>('0' + n % 10);
    }
    return table;
}
inline constexpr auto kPadded = PaddedNumbers();

// Without leading zeros; the fourth byte is the number of characters.
constexpr std::array<char[4], 1000> ShortNumbers()
{
    std::array<char[4], 1000> table{};
    for (unsigned n = 0; n < table.size(); ++n)
    {
        const int length = n < 10 ? 1 : n < 100 ? 2 : 3;
        for (int i = 0; i < length; ++i)
            table[n][i] = kPadded[n][3 - length + i];
        table[n][3] = static_cast<char>(length);
    }
    return table;
}
inline constexpr auto kShort = ShortNumbers();

// Both store up to four characters, which may be more than they count.
inline char* PrintBelow1000(char* at, std::uint32_t number) noexcept
{
    const char* const entry = kShort[number];
    std::memcpy(at, entry, 4);
    return at + entry[3];
}

inline char* PrintPadded(char* at, std::uint32_t number) noexcept
{
    std::memcpy(at, kPadded[number], 4);
    return at + 3;
}

// Like PrintInteger, from 1000 on.
char* PrintLongInteger(char* at, std::uint32_t number) noexcept;
} // namespace number_print

// Like "%d".
inline char* PrintInteger(char* at, std::int32_t number) noexcept
{
    *at = '-';
    at += number < 0 ? 1 : 0;
    const auto bits = static_cast<std::uint32_t>(number);
    const std::uint32_t magnitude = number < 0 ? 0U - bits : bits;
    return magnitude < 1000 ? number_print::PrintBelow1000(at, magnitude)
                            : number_print::PrintLongInteger(at, magnitude);
}

// Like "%lf": six decimals. Not inline, to keep the many functions that print records small enough to be compiled in
// one piece.
char* PrintFixed(char* at, double value) noexcept;

// Like "%g": six significant digits in the shorter form.
char* PrintGeneral(char* at, double value) noexcept;
