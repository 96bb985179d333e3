// References between records as saving writes them.
#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

// Records that refer to others by numbers that are no longer right, with the numbers that are. A record that is not
// here refers to what its own numbers say.
class CMendedReferences
{
public:
    struct Numbers
    {
        // FID: layer, feature. SNT TOP: component, toeprint. CMP: package. TOP: pin, net, subnet.
        std::array<int, 3> values{};
        bool isGone = false; // what the record refers to was deleted; the line is left out, or says "none"
    };

    // `file` is the object whose file the record is in.
    void Set(const void* file, const void* record, const Numbers& numbers)
    {
        m_files.insert(file);
        m_numbers[record] = numbers;
    }
    // Null if the record's own numbers are right.
    const Numbers* Find(const void* record) const
    {
        if (m_numbers.empty())
            return nullptr;
        const auto found = m_numbers.find(record);
        return found != m_numbers.end() ? &found->second : nullptr;
    }

    // The layer names of the EDA data, where they differ from its own; null if they do not.
    void SetLayerNames(const void* eda, std::vector<std::string> names)
    {
        m_files.insert(eda);
        m_layerNames[eda] = std::move(names);
    }
    const std::vector<std::string>* FindLayerNames(const void* eda) const
    {
        const auto found = m_layerNames.find(eda);
        return found != m_layerNames.end() ? &found->second : nullptr;
    }

    // Whether any record of the file is here.
    bool IsAbout(const void* file) const { return m_files.contains(file); }

private:
    std::unordered_map<const void*, Numbers> m_numbers; // by record
    std::map<const void*, std::vector<std::string>> m_layerNames;
    std::set<const void*> m_files;
};
