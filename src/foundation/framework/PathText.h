// Paths as texts.
#pragma once

#include <string_view>

// The separators of path components. Except on Windows, "\" is an ordinary character of names.
#if defined(_WIN32)
inline constexpr std::string_view kPathSeparators = "/\\";
#else
inline constexpr std::string_view kPathSeparators = "/";
#endif

inline bool IsPathSeparator(char character) noexcept
{
    return kPathSeparators.find(character) != std::string_view::npos;
}
