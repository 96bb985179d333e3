// Remembers the attribute texts of a features file.
#pragma once

#include "foundation/CJOBXProperty.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Finds the list of an attribute text that was seen before, so that features with equal attributes share one list. The
// number of texts is bounded; a text that was evicted gets a new list.
class CPropertyIndex
{
public:
    // Call this when the tables have grown: lists made before are no longer used.
    void TablesChanged() noexcept
    {
        ++m_tables;
        m_used = 0;
    }

    // The list for `text` that the features borrow, null if it is empty. `make` makes the list if it is not known.
    template <class Make>
    const CJOBXPropertyArray* ListOf(std::string_view text, Make make)
    {
        const std::size_t hash = std::hash<std::string_view>{}(text);
        if (const Entry* const found = Find(hash, text))
            return found->list;
        const CJOBXPropertyArray* const list = make();
        if (m_used * 2 >= m_entries.size() && m_entries.size() < kMaxEntries)
            Grow();
        Entry& entry = m_entries[Place(hash)];
        entry = {hash, m_tables, list, std::string(text)};
        ++m_used;
        return list;
    }

private:
    struct Entry
    {
        std::size_t hash = 0;
        unsigned tables = 0; // 0: free
        const CJOBXPropertyArray* list = nullptr;
        std::string text;
    };
    static constexpr std::size_t kWays = 4; // entries that may contain a text
    static constexpr std::size_t kMaxEntries = 65536;

    const Entry* Find(std::size_t hash, std::string_view text) const noexcept
    {
        const std::size_t first = First(hash);
        for (std::size_t i = first; i < first + kWays; ++i)
            if (const Entry& entry = m_entries[i]; entry.tables == m_tables && entry.hash == hash && entry.text == text)
                return &entry;
        return nullptr;
    }
    std::size_t First(std::size_t hash) const noexcept { return (hash & (m_entries.size() / kWays - 1)) * kWays; }
    // A free or outdated entry, else the next one in turn.
    std::size_t Place(std::size_t hash) noexcept
    {
        const std::size_t first = First(hash);
        for (std::size_t i = first; i < first + kWays; ++i)
            if (m_entries[i].tables != m_tables)
                return i;
        return first + ++m_turn % kWays;
    }
    void Grow()
    {
        std::vector<Entry> entries(4 * m_entries.size());
        entries.swap(m_entries);
        m_used = 0;
        for (Entry& entry : entries)
            if (entry.tables == m_tables)
            {
                m_entries[Place(entry.hash)] = std::move(entry);
                ++m_used;
            }
    }

    std::vector<Entry> m_entries = std::vector<Entry>(64); // a power of two
    std::size_t m_used = 0;
    std::size_t m_turn = 0;
    unsigned m_tables = 1;
};
