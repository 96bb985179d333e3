// The only place where numbers are read. Nothing here depends on a locale.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

// A number and the end of its text. If the text has no number, `end` is its start and the value is 0.
template <class T>
struct NumberRead
{
    T value;
    const char* end;
};

// Like atof in the C locale: leading white space, a sign, then digits with a point and an exponent, a hexadecimal
// number, "inf", "infinity" or "nan", in any letter case. The rest is ignored, and text without a number reads as 0.
// The result is the nearest double; beyond its range it is infinity or 0 with the sign.
NumberRead<double> ReadRealSlowly(const char* begin, const char* end) noexcept;

namespace number_text
{
// The powers of ten that a double holds exactly.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::uint64_t kSmallPowersOfTen[] = {1,       10,        100,        1'000,      10'000,
                                                      100'000, 1'000'000, 10'000'000, 100'000'000};
inline constexpr int kMaxFastDigits = 18; // always fits into 64 bits

constexpr bool IsDigit(char c) noexcept
{
    return static_cast<unsigned char>(c - '0') < 10;
}

// The value of eight digits, one per byte, the first in the lowest.
constexpr std::uint64_t ValueOfEightDigits(std::uint64_t digits) noexcept
{
    digits = (digits * (1 + (10U << 8U))) >> 8U;
    digits = ((digits & 0x00FF00FF00FF00FFU) * (1 + (std::uint64_t{100} << 16U))) >> 16U;
    return ((digits & 0x0000FFFF0000FFFFU) * (1 + (std::uint64_t{10'000} << 32U))) >> 32U;
}

// The end of a text in which something that is no digit, such as the end of a line, follows every number. So no search
// for the end of a number meets it, and only reading several characters at once compares with it.
struct FarEnd
{
    const char* end;
    friend constexpr bool operator==(const char* /*at*/, FarEnd /*end*/) noexcept { return false; }
    friend constexpr std::ptrdiff_t operator-(FarEnd from, const char* at) noexcept { return from.end - at; }
};

// Appends the digits from `at` on to `mantissa`, which may overflow; returns where they end. `End` is a pointer or FarEnd.
template <class End>
[[gnu::always_inline]] inline const char* AppendDigits(const char* at, End end, std::uint64_t& mantissa) noexcept
{
    if constexpr (std::endian::native == std::endian::little)
    {
        // Eight characters at once, finding the number of digits without a branch for each.
        while (end - at >= 8 && IsDigit(*at))
        {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, at, sizeof bytes);
            bytes ^= 0x3030303030303030U; // digits become 0 to 9, other characters 10 or more
            // The lowest marked byte is the first that is not a digit; carries only affect the bytes above it.
            const std::uint64_t others = (bytes | (bytes + 0x7676767676767676U)) & 0x8080808080808080U;
            const unsigned count = others != 0 ? static_cast<unsigned>(std::countr_zero(others)) / 8 : 8;
            mantissa = mantissa * kSmallPowersOfTen[count] + ValueOfEightDigits(bytes << (64 - 8 * count));
            at += count;
            if (count != 8)
                return at;
        }
    }
    for (; at != end && IsDigit(*at); ++at)
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
    return at;
}

// Reads a plain decimal number, with or without "-" before it, whatever follows it. If it is not plain, or needs more
// than the exact integers of a double, returns null and does not change `value`. An integer below 2^53 divided by an
// exact power of ten is correctly rounded (Clinger, "How to Read Floating Point Numbers Accurately", 1990).
template <class End>
[[gnu::always_inline]] inline const char* ReadDecimal(const char* begin, End end, double& value) noexcept
{
    const char* at = begin;
    const bool negative = at != end && *at == '-';
    at += negative ? 1 : 0;
    const char* const digits = at;
    std::uint64_t mantissa = 0;
    for (; at != end && IsDigit(*at); ++at) // usually one or two
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
    auto count = at - digits;
    std::ptrdiff_t fraction = 0;
    if (at != end && *at == '.')
    {
        const char* const point = ++at;
        at = AppendDigits(at, end, mantissa);
        fraction = at - point;
        count += fraction;
    }
    constexpr std::uint64_t kExact = 1ULL << 53U;
    if (count == 0 || count > kMaxFastDigits || mantissa > kExact)
        return nullptr;
    const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa)) / kPowersOfTen[fraction];
    value = negative ? -magnitude : magnitude;
    return at;
}

// The same where a letter behind the number may belong to it, as in an exponent or a hexadecimal or other number: then
// it is not plain.
inline const char* ReadPlainReal(const char* begin, const char* end, double& value) noexcept
{
    double decimal = 0.0;
    const char* const at = ReadDecimal(begin, end, decimal);
    if (at == nullptr || (at != end && (*at | 0x20) >= 'a'))
        return nullptr;
    value = decimal;
    return at;
}
} // namespace number_text

// Like ReadRealSlowly, with a fast path for plain decimal numbers.
inline NumberRead<double> ReadReal(const char* begin, const char* end) noexcept
{
    double value = 0.0;
    const char* const read = number_text::ReadPlainReal(begin, end, value);
    return read != nullptr ? NumberRead<double>{value, read} : ReadRealSlowly(begin, end);
}

// Like atoi: leading white space, a sign, digits. The rest is ignored, and text without a number reads as 0. A number
// outside 32 bits becomes the nearest one inside.
inline NumberRead<std::int32_t> ReadInteger(const char* begin, const char* end) noexcept
{
    using namespace number_text;
    const char* at = begin;
    while (at != end && (*at == ' ' || (*at >= '\t' && *at <= '\r')))
        ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    const char* const digits = at;
    constexpr std::int64_t kEnough = std::int64_t{1} << 33U;
    std::int64_t value = 0;
    for (; at != end && IsDigit(*at); ++at)
        if (value < kEnough)
            value = value * 10 + (*at - '0');
    if (at == digits)
        return {0, begin};
    value = negative ? -value : value;
    constexpr std::int64_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kHigh = std::numeric_limits<std::int32_t>::max();
    return {static_cast<std::int32_t>(value < kLow ? kLow : value > kHigh ? kHigh : value), at};
}

// The number at the start of a text.
inline double ParseReal(std::string_view text) noexcept
{
    return ReadReal(text.data(), text.data() + text.size()).value;
}

inline std::int32_t ParseInteger(std::string_view text) noexcept
{
    return ReadInteger(text.data(), text.data() + text.size()).value;
}
