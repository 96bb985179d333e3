// The types of a job's attributes, by name.
#pragma once

#include "foundation/CJOBXProperty.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// Threads:   filled before readers on several threads share it.
class CAttributeTypes
{
public:
    struct Type
    {
        JOBXattributeKind kind = JOBXattributeKind::Unknown;
        std::vector<std::string> options; // by number, for an option attribute
    };

    // The first definition of a name wins.
    void Add(std::string_view name, const Type& type) { m_types.try_emplace(std::string(name), type); }
    // Null if the job defines no attribute of that name.
    const Type* Find(std::string_view name) const
    {
        const auto found = m_types.find(name);
        return found != m_types.end() ? &found->second : nullptr;
    }

private:
    std::map<std::string, Type, std::less<>> m_types;
};
