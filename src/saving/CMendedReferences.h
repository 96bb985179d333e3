// References between records as saving writes them.
#pragma once

#include <array>
#include <unordered_map>

// Records that refer to others by numbers that are no longer right, with the numbers that are. A record that is not
// here refers to what its own numbers say.
class CMendedReferences
{
public:
    struct Numbers
    {
        // FID: layer, feature. SNT TOP: component, toeprint. CMP: package. TOP: pin, net, subnet. Netlist point: net.
        std::array<int, 3> values{};
        bool isGone = false; // what the record refers to was deleted; the line is left out, or says "none"
    };

    void Set(const void* record, const Numbers& numbers) { m_numbers[record] = numbers; }
    // Null if the record's own numbers are right.
    const Numbers* Find(const void* record) const
    {
        if (m_numbers.empty())
            return nullptr;
        const auto found = m_numbers.find(record);
        return found != m_numbers.end() ? &found->second : nullptr;
    }
    bool IsEmpty() const noexcept { return m_numbers.empty(); }

private:
    std::unordered_map<const void*, Numbers> m_numbers;
};
