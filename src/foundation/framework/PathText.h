// Paths as texts.
#pragma once

#include <string_view>

// What separates the components of a path. Elsewhere than on Windows "\" is a character of names.
#if defined(_WIN32)
inline constexpr std::string_view kPathSeparators = "/\\";
#else
inline constexpr std::string_view kPathSeparators = "/";
#endif

inline bool IsPathSeparator(char character) noexcept
{
    return kPathSeparators.find(character) != std::string_view::npos;
}
