#include "foundation/NumberPrint.h"

#include <charconv>
#include <cmath>

using namespace number_print;

namespace
{
// Below this, the rounding errors of the product with a million and of the sum with a half are less than two
// millionths.
constexpr double kShortLimit = 8000.0;
// So close to the middle of two numbers, the fast path cannot decide.
constexpr double kUncertain = 4e-6;
// Below this, the product is off by a sixteenth at most.
constexpr double kExactLimit = 1e9;

// Prints a number of millionths with its point.
char* PrintMillionths(char* at, std::int64_t millionths) noexcept
{
    constexpr std::int64_t kUnit = 1'000'000;
    const auto whole = static_cast<std::uint32_t>(millionths / kUnit);
    const auto decimals = static_cast<std::uint32_t>(millionths % kUnit);
    at = whole < 1000 ? PrintBelow1000(at, whole) : PrintLongInteger(at, whole);
    *at = '.';
    return PrintPadded(PrintPadded(at + 1, decimals / 1000), decimals % 1000);
}

// The nearest number of millionths, the even one if two are equally near. The product's error is known exactly, and so
// is the side of the middle on which the number lies.
std::int64_t NearestMillionths(double magnitude) noexcept
{
    const double product = magnitude * 1e6;
    const double error = std::fma(magnitude, 1e6, -product);
    const auto below = static_cast<std::int64_t>(product);
    const double overHalf = product - static_cast<double>(below) - 0.5;
    const bool isUp = overHalf > -error || (overHalf == -error && below % 2 != 0);
    return below + (isUp ? 1 : 0);
}

// For rare cases: large numbers and those close to the middle of two.
char* PrintFixedSlowly(char* at, double value) noexcept
{
    const double magnitude = std::fabs(value);
    if (!(magnitude < kExactLimit))
        return std::to_chars(at, at + kLongest, value, std::chars_format::fixed, 6).ptr;
    *at = '-';
    return PrintMillionths(at + (std::signbit(value) ? 1 : 0), NearestMillionths(magnitude));
}
} // namespace

char* number_print::PrintLongInteger(char* at, std::uint32_t number) noexcept
{
    if (number >= 1'000'000)
        return std::to_chars(at, at + kLongest, number).ptr;
    return PrintPadded(PrintBelow1000(at, number / 1000), number % 1000);
}

char* PrintFixed(char* at, double value) noexcept
{
    const double magnitude = std::fabs(value);
    if (!(magnitude < kShortLimit))
        return PrintFixedSlowly(at, value);
    const double scaled = magnitude * 1e6 + 0.5;
    const auto millionths = static_cast<std::int64_t>(scaled);
    const double rest = scaled - static_cast<double>(millionths);
    if (std::fabs(rest - 0.5) > 0.5 - kUncertain)
        return PrintFixedSlowly(at, value);
    *at = '-';
    return PrintMillionths(at + (std::signbit(value) ? 1 : 0), millionths);
}

char* PrintGeneral(char* at, double value) noexcept
{
    return std::to_chars(at, at + kLongest, value, std::chars_format::general, 6).ptr;
}
