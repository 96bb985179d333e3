#include "foundation/NumberPrint.h"

#include <charconv>

namespace number_print
{
namespace
{
// Below this a product with a million is off by a sixteenth at most.
constexpr double kExactLimit = 1e9;

// The nearest number of millionths, the even one of two that are equally near. The product's error is known exactly,
// and so is on which side of the middle the number lies.
std::int64_t NearestMillionths(double magnitude) noexcept
{
    const double product = magnitude * 1e6;
    const double error = std::fma(magnitude, 1e6, -product);
    const auto below = static_cast<std::int64_t>(product);
    const double overHalf = product - static_cast<double>(below) - 0.5;
    const bool isUp = overHalf > -error || (overHalf == -error && below % 2 != 0);
    return below + (isUp ? 1 : 0);
}
} // namespace

char* PrintLongInteger(char* at, std::uint32_t number) noexcept
{
    if (number >= 1'000'000)
        return std::to_chars(at, at + kLongest, number).ptr;
    return PrintPadded(PrintBelow1000(at, number / 1000), number % 1000);
}

char* PrintFixedSlowly(char* at, double value) noexcept
{
    const double magnitude = std::fabs(value);
    if (!(magnitude < kExactLimit))
        return std::to_chars(at, at + kLongest, value, std::chars_format::fixed, 6).ptr;
    *at = '-';
    return PrintMillionths(at + (std::signbit(value) ? 1 : 0), NearestMillionths(magnitude));
}
} // namespace number_print

char* PrintGeneral(char* at, double value) noexcept
{
    return std::to_chars(at, at + number_print::kLongest, value, std::chars_format::general, 6).ptr;
}
