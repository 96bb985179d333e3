// Finds names that differ only in letter case.
#pragma once

#include "foundation/framework/AsciiText.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The names of one kind in one file, letter case ignored, each with the line on which it came first. A hash table that
// looks at a few slots for each name; a name that finds no room there goes into a tree, so no file can make it slow.
class CFirstNames
{
public:
    // The line of the first record of that name; 0 if this is the first.
    int LineBefore(std::string_view name, int line)
    {
        if (2 * m_count >= m_slots.size())
            Grow();
        const std::size_t begin = m_lower.size();
        const std::uint32_t hash = AppendLower(name);
        const std::string_view lower(m_lower.data() + begin, name.size());
        Slot* free = nullptr;
        for (std::size_t i = 0; i < kProbes && free == nullptr; ++i)
        {
            Slot& slot = At(hash, i);
            if (slot.line == kNoLine)
                free = &slot;
            else if (slot.hash == hash && NameIn(slot) == lower)
                return Known(begin, slot.line);
        }
        if (free == nullptr || !m_others.empty())
            if (const auto other = m_others.find(lower); other != m_others.end())
                return Known(begin, other->second);
        if (free != nullptr && m_lower.size() <= UINT32_MAX)
            *free = {hash, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(name.size()), line};
        else
            m_others.emplace(lower, line);
        ++m_count;
        return 0;
    }
    // Forgets all names.
    void Clear() noexcept
    {
        m_slots.clear();
        m_lower.clear();
        m_others.clear();
        m_count = 0;
    }

private:
    static constexpr int kNoLine = -1; // of a free slot
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t begin = 0; // of the name in the text of all
        std::uint32_t size = 0;
        int line = kNoLine;
    };
    static constexpr std::size_t kProbes = 16;
    static constexpr std::size_t kFirstSlots = 32;

    Slot& At(std::uint32_t hash, std::size_t probe) noexcept { return m_slots[(hash + probe) & (m_slots.size() - 1)]; }
    std::string_view NameIn(const Slot& slot) const noexcept { return {m_lower.data() + slot.begin, slot.size}; }
    // Appends the name in lower case and returns its hash.
    std::uint32_t AppendLower(std::string_view name)
    {
        std::uint64_t hash = 0xCBF29CE484222325U;
        const std::size_t begin = m_lower.size();
        m_lower.resize(begin + name.size());
        for (std::size_t i = 0; i < name.size(); ++i)
        {
            const char letter = AsciiLower(name[i]);
            m_lower[begin + i] = letter;
            hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
        }
        return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
    }
    // Of a name that came before: drops its characters, which were appended at `begin`.
    int Known(std::size_t begin, int line)
    {
        m_lower.resize(begin);
        return line;
    }
    void Grow()
    {
        std::vector<Slot> old(m_slots.empty() ? kFirstSlots : 2 * m_slots.size());
        old.swap(m_slots);
        for (const Slot& slot : old)
            if (slot.line != kNoLine)
                Put(slot);
    }
    void Put(const Slot& moved)
    {
        for (std::size_t i = 0; i < kProbes; ++i)
            if (Slot& slot = At(moved.hash, i); slot.line == kNoLine)
            {
                slot = moved;
                return;
            }
        m_others.emplace(NameIn(moved), moved.line);
    }

    std::vector<Slot> m_slots; // as many as a power of two, or none
    std::string m_lower;       // all names
    std::size_t m_count = 0;
    std::map<std::string, int, std::less<>> m_others;
};
