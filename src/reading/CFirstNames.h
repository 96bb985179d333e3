// Finds names that differ only in letter case.
#pragma once

#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

// The names of one kind in one file, letter case ignored, each with the line on which it came first.
class CFirstNames
{
public:
    // The line of the first record of that name; 0 if this is the first.
    int LineBefore(std::string_view name, int line)
    {
        std::string lower(name);
        std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
        const auto [found, isNew] = m_lines.try_emplace(std::move(lower), line);
        return isNew ? 0 : found->second;
    }

private:
    std::map<std::string, int, std::less<>> m_lines;
};
