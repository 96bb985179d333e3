#include "foundation/base/NumberText.h"

#include "foundation/framework/AsciiText.h"

#include <charconv>

namespace
{
// Whether a number outside the range of a double is too large, rather than too small, by its exponent; the parser only
// says that it does not fit. `begin` is its first digit, `end` the end of the number; `base` is 10 or 16.
bool IsHuge(const char* begin, const char* end, int base) noexcept
{
    constexpr long long kBound = 1'000'000'000'000;
    long long magnitude = 0; // position of the first digit other than 0, in digits before the point
    bool seen = false;
    bool point = false;
    const char* at = begin;
    for (; at != end; ++at)
    {
        const char c = AsciiLower(*at);
        if (c == '.')
            point = true;
        else if (c == (base == 16 ? 'p' : 'e'))
            break;
        else if (seen)
            magnitude += point ? 0 : 1;
        else if (c != '0')
        {
            seen = true;
            magnitude += point ? 0 : 1;
        }
        else
            magnitude -= point ? 1 : 0;
    }
    if (base == 16)
        magnitude *= 4;
    if (at != end)
    {
        const bool negative = at[1] == '-'; // the parser accepted the exponent, so it has a digit
        long long exponent = 0;
        for (++at; at != end; ++at)
            if (number_text::IsDigit(*at) && exponent < kBound)
                exponent = exponent * 10 + (*at - '0');
        magnitude += negative ? -exponent : exponent;
    }
    return magnitude > 0;
}

// The first digit of a number that begins with "0x", null if no hexadecimal digit follows.
const char* HexadecimalDigits(const char* at, const char* end) noexcept
{
    if (end - at < 3 || at[0] != '0' || AsciiLower(at[1]) != 'x')
        return nullptr;
    const auto isHex = [end](const char* c)
    { return c < end && (number_text::IsDigit(*c) || (AsciiLower(*c) >= 'a' && AsciiLower(*c) <= 'f')); };
    return isHex(at + 2) || (at[2] == '.' && isHex(at + 3)) ? at + 2 : nullptr;
}
} // namespace

NumberRead<double> ReadRealSlowly(const char* begin, const char* end) noexcept
{
    const char* at = begin;
    while (at != end && IsAsciiSpace(*at))
        ++at;
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    if (at == end || *at == '-') // two signs are not a number
        return {0.0, begin};
    const char* const hexadecimal = HexadecimalDigits(at, end);
    const char* const digits = hexadecimal != nullptr ? hexadecimal : at;
    double value = 0.0;
    const auto read = std::from_chars(digits, end, value,
                                      hexadecimal != nullptr ? std::chars_format::hex : std::chars_format::general);
    if (read.ec == std::errc::invalid_argument)
        return {0.0, begin};
    if (read.ec == std::errc::result_out_of_range)
        value =
            IsHuge(digits, read.ptr, hexadecimal != nullptr ? 16 : 10) ? std::numeric_limits<double>::infinity() : 0.0;
    return {negative ? -value : value, read.ptr};
}
