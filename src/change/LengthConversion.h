// Lengths in another unit, without the noise of binary arithmetic.
#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/corekit/CPointD.h"

#include <optional>
#include <string>
#include <string_view>

// The length in the other unit, inch or mm. A number with up to 14 digits, converted there and back, is the same number.
double ConvertedLength(double length, JOBXunit to) noexcept;

inline CPointD ConvertedPoint(const CPointD& point, JOBXunit to) noexcept
{
    return {ConvertedLength(point.GetX(), to), ConvertedLength(point.GetY(), to)};
}

// The same for a number as text, of any number of digits; nothing if the text is not a number. A decimal number in inch
// or mils, converted there and back, is the same number. The result has no exponent. It
// has as many zeros at its end as the number, and none if it is rounded.
std::optional<std::string> ConvertedNumber(std::string_view number, JOBXunit to);

// The length rounded to what a person writes: 12 decimals below 1000, fewer above.
double RoundedSum(double length) noexcept;

// The unit as units lines spell it: "MM" or "INCH".
constexpr const char* UnitsText(JOBXunit unit) noexcept
{
    return unit == JOBXunit::Millimetre ? "MM" : "INCH";
}

constexpr JOBXunit OtherUnit(JOBXunit unit) noexcept
{
    return unit == JOBXunit::Millimetre ? JOBXunit::Inch : JOBXunit::Millimetre;
}
