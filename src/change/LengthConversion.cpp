#include "change/LengthConversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace
{
constexpr double kMillimetresPerInch = 25.4;

// Digits that binary arithmetic keeps. Inches get one more, so that millimetres with 14 digits come back from them.
constexpr std::size_t kMetricDigits = 14;
constexpr std::size_t kInchDigits = 15;

// All are exact.
constexpr std::array<double, 23> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Rounded to so many digits; to 22 decimals where that is less.
double Rounded(double number, std::size_t digits) noexcept
{
    const double size = std::abs(number);
    std::size_t decimals = digits;
    while (decimals > 0 && size >= kPowersOfTen.at(digits - decimals))
        --decimals;
    if (decimals == 0 || !std::isfinite(number))
        return number;
    if (decimals == digits)
        while (decimals + 1 < kPowersOfTen.size() && size * kPowersOfTen.at(decimals + 1 - digits) < 1.0)
            ++decimals;
    const double power = kPowersOfTen.at(decimals);
    return std::nearbyint(number * power) / power; // both exact: the result is the double nearest to that decimal
}

double InInches(double millimetres) noexcept
{
    return Rounded(millimetres / kMillimetresPerInch, kInchDigits);
}

double InMillimetres(double inches) noexcept
{
    const double exact = inches * kMillimetresPerInch;
    for (const std::size_t digits : {kMetricDigits, kInchDigits})
        if (const double rounded = Rounded(exact, digits); InInches(rounded) == inches)
            return rounded;
    return exact;
}

// A decimal number: its digits, of which the last `decimals` are behind the point.
struct Decimal
{
    std::string digits; // without zeros in front or, behind the point, at the end; "" for 0
    std::ptrdiff_t decimals = 0;
    std::size_t zeros = 0; // taken from the end; a converted number that is exact gets them back
    bool isNegative = false;

    friend bool operator==(const Decimal& a, const Decimal& b)
    {
        return a.digits == b.digits && a.isNegative == b.isNegative && a.zeros == b.zeros &&
               (a.digits.empty() || a.decimals == b.decimals);
    }
};

void Normalise(Decimal& number)
{
    while (number.decimals > 0 && number.digits.ends_with('0'))
    {
        number.digits.pop_back();
        --number.decimals;
        ++number.zeros;
    }
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    if (number.digits.empty())
        number.decimals = 0;
}

bool AreDigits(std::string_view text)
{
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<Decimal> DecimalIn(std::string_view text)
{
    Decimal number;
    number.isNegative = text.starts_with('-');
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view behind = text.substr(std::min(point + 1, text.size()));
    if (text.size() <= (point < text.size() ? 1U : 0U) || !AreDigits(text.substr(0, point)) || !AreDigits(behind))
        return std::nullopt;
    number.digits.append(text.substr(0, point)).append(behind);
    number.decimals = static_cast<std::ptrdiff_t>(behind.size());
    Normalise(number);
    return number;
}

std::string TextOf(const Decimal& number)
{
    std::string text = number.digits;
    const auto decimals = static_cast<std::size_t>(std::max<std::ptrdiff_t>(number.decimals, 0));
    if (text.size() <= decimals)
        text.insert(0, decimals + 1 - text.size(), '0');
    if (decimals + number.zeros > 0)
        text.insert(text.size() - decimals, 1, '.');
    text.append(number.zeros, '0');
    return (number.isNegative && !number.digits.empty() ? "-" : "") + text;
}

// The first so many digits, rounded half up.
Decimal RoundedTo(const Decimal& number, std::size_t digits)
{
    Decimal rounded = number;
    if (number.digits.size() <= digits)
        return rounded;
    const auto cut = static_cast<std::ptrdiff_t>(number.digits.size() - digits);
    const bool isUp = number.digits[digits] >= '5';
    rounded.zeros = 0;
    rounded.digits.resize(digits);
    if (isUp)
    {
        std::size_t at = digits;
        while (at > 0 && rounded.digits[at - 1] == '9')
            rounded.digits[--at] = '0';
        if (at > 0)
            ++rounded.digits[at - 1];
        else
            rounded.digits.insert(0, 1, '1');
    }
    rounded.decimals -= cut;
    if (rounded.decimals < 0)
    {
        rounded.digits.append(static_cast<std::size_t>(-rounded.decimals), '0');
        rounded.decimals = 0;
    }
    Normalise(rounded);
    rounded.zeros = 0;
    return rounded;
}

Decimal Times254Tenths(const Decimal& number)
{
    constexpr unsigned kFactor = 254;
    Decimal product = number;
    unsigned carry = 0;
    for (std::size_t at = product.digits.size(); at-- > 0;)
    {
        char& digit = product.digits[at];
        const unsigned sum = static_cast<unsigned>(digit - '0') * kFactor + carry;
        digit = static_cast<char>('0' + sum % 10);
        carry = sum / 10;
    }
    for (; carry > 0; carry /= 10)
        product.digits.insert(0, 1, static_cast<char>('0' + carry % 10));
    ++product.decimals;
    Normalise(product);
    product.zeros = number.zeros;
    return product;
}

// Exact where that ends, else with 12 digits, or one more than the number has.
Decimal By254Tenths(const Decimal& number)
{
    constexpr unsigned kDivisor = 254;
    const std::size_t most = std::max<std::size_t>(12, number.digits.size() + 1);
    Decimal quotient = number;
    quotient.digits.clear();
    --quotient.decimals;
    unsigned rest = 0;
    std::size_t significant = 0;
    for (std::size_t at = 0; at < number.digits.size() || (rest != 0 && significant <= most); ++at)
    {
        const bool isThere = at < number.digits.size();
        rest = rest * 10 + (isThere ? static_cast<unsigned>(number.digits[at] - '0') : 0U);
        quotient.digits += static_cast<char>('0' + rest / kDivisor);
        quotient.decimals += isThere ? 0 : 1;
        rest %= kDivisor;
        significant += significant > 0 || quotient.digits.back() != '0' ? 1U : 0U;
    }
    if (quotient.decimals < 0)
    {
        quotient.digits += '0';
        quotient.decimals = 0;
    }
    Normalise(quotient);
    quotient.zeros = rest == 0 ? number.zeros : 0;
    return rest == 0 ? quotient : RoundedTo(quotient, most);
}

// The fewest digits from which the number of inches comes back, if they are 11 to 17, else the exact product.
Decimal InMillimetres(const Decimal& inches)
{
    constexpr std::size_t kFewest = 11;
    constexpr std::size_t kMost = 17;
    Decimal exact = Times254Tenths(inches);
    for (std::size_t digits = kFewest; digits <= kMost && digits < exact.digits.size(); ++digits)
        if (Decimal rounded = RoundedTo(exact, digits); By254Tenths(rounded) == inches)
            return rounded;
    return exact;
}

// A number with an exponent.
std::optional<std::string> ConvertedReal(std::string_view text, JOBXunit to)
{
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + (text.starts_with('+') ? 1 : 0), end, number);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(number))
        return std::nullopt;
    std::array<char, 400> digits{}; // the longest number below 2^1024 has 309, the smallest 325 and "-0."
    const auto printed = std::to_chars(digits.data(), digits.data() + digits.size(), ConvertedLength(number, to),
                                       std::chars_format::fixed);
    return std::string(digits.data(), printed.ptr);
}
} // namespace

double ConvertedLength(double length, JOBXunit to) noexcept
{
    return to == JOBXunit::Millimetre ? InMillimetres(length) : InInches(length);
}

std::optional<std::string> ConvertedNumber(std::string_view number, JOBXunit to)
{
    const std::optional<Decimal> decimal = DecimalIn(number);
    if (!decimal)
        return ConvertedReal(number, to);
    return TextOf(to == JOBXunit::Millimetre ? InMillimetres(*decimal) : By254Tenths(*decimal));
}

double RoundedSum(double length) noexcept
{
    const double size = std::abs(length);
    if (size >= 1e6 || !std::isfinite(length))
        return length;
    const double power = size < 1e3 ? 1e12 : 1e9;
    const double rounded = std::nearbyint(length * power) / power;
    return rounded == 0.0 ? 0.0 : rounded; // never -0
}
