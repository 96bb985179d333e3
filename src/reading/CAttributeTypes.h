// The types of a job's attributes, by name.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/framework/AsciiText.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The types of a job's attributes; the letter case of their names is ignored.
// Threads:   filled before readers on several threads share it.
class CAttributeTypes
{
public:
    struct Type
    {
        JOBXattributeKind kind = JOBXattributeKind::Unknown;
        std::vector<std::string> options; // by number, for an option attribute
        std::string units{}; // what its numbers measure, such as INCH_MM; "" if the definition does not say
    };

    // The first definition of a name wins.
    void Add(std::string_view name, const Type& type) { m_types.try_emplace(std::string(name), type); }
    // Null if the job defines no attribute of that name.
    const Type* Find(std::string_view name) const
    {
        const auto found = m_types.find(name);
        return found != m_types.end() ? &found->second : nullptr;
    }
    // Calls `use` with the name and the type of each.
    template <class Use>
    void ForEach(Use use) const
    {
        for (const auto& [name, type] : m_types)
            use(name, type);
    }

private:
    struct LessInAnyCase
    {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const noexcept
        {
            return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                                [](char one, char other)
                                                { return AsciiLower(one) < AsciiLower(other); });
        }
    };

    std::map<std::string, Type, LessInAnyCase> m_types;
};
