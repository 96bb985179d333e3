// Finds names that differ only in letter case.
#pragma once

#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The names of one kind in one file, letter case ignored, each with the line on which it came first.
class CFirstNames
{
public:
    // The line of the first record of that name; 0 if this is the first.
    int LineBefore(std::string_view name, int line)
    {
        std::string lower(name);
        std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
        if (m_lines.empty())
        {
            const auto before =
                std::find_if(m_few.begin(), m_few.end(), [&](const Name& few) { return few.name == lower; });
            if (before != m_few.end())
                return before->line;
            if (m_few.size() < kFew)
            {
                m_few.push_back({std::move(lower), line});
                return 0;
            }
            for (Name& few : m_few)
                m_lines.try_emplace(std::move(few.name), few.line);
            m_few.clear();
        }
        const auto [found, isNew] = m_lines.try_emplace(std::move(lower), line);
        return isNew ? 0 : found->second;
    }
    // Forgets all names.
    void Clear() noexcept
    {
        m_few.clear();
        m_lines.clear();
    }

private:
    struct Name
    {
        std::string name;
        int line;
    };
    static constexpr std::size_t kFew = 16; // that a search one by one finds faster than a tree

    std::vector<Name> m_few; // while they are few
    std::map<std::string, int, std::less<>> m_lines;
};
