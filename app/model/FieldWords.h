// How documents and people see the values that are not numbers or texts of a file.
#pragma once

#include "JOBXCLSDLL.h"

#include <array>
#include <cstddef>
#include <string_view>

inline constexpr std::array<std::string_view, 2> kUnitWords = {"inch", "mm"};
inline constexpr std::array<std::string_view, 6> kKindWords = {"unknown", "flag", "integer", "real", "text", "option"};

constexpr std::string_view WordFor(JOBXunit unit)
{
    return kUnitWords.at(static_cast<std::size_t>(unit));
}
constexpr std::string_view WordFor(JOBXattributeKind kind)
{
    return kKindWords.at(static_cast<std::size_t>(kind));
}
