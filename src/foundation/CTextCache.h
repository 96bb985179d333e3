// How the readers store texts that repeat.
#pragma once

#include "foundation/framework/CString.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

// Remembers the last texts, so that equal ones share their characters. Most texts of a job that do not fit into the
// text object itself are names and numbers that already appeared in the file. The more texts it does not know, the more it
// remembers, up to a quarter of a million.
// Threads:   one thread at a time; the texts that it returned are independent of it.
class CTextCache
{
public:
    CString Of(std::string_view text)
    {
        if (text.size() < kShortest)
            return CString(text);
        CString& known = m_known[Slot(text)];
        if (known.View() == text)
            return known;
        if (--m_leftToGrowth == 0)
            return OfLarger(text);
        known = text;
        return known;
    }

private:
    static constexpr std::size_t kShortest = 8; // shorter texts are stored inside the object
    static constexpr unsigned kFirstSlotBits = 8;
    static constexpr unsigned kMostSlotBits = 18;
    static constexpr unsigned kGrowthBits = 2;

    // The slot of a text, from its length and its first and last four characters. Texts that compete for a slot only
    // share less.
    std::size_t Slot(std::string_view text) const noexcept
    {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
        const std::uint64_t mixed = ((std::uint64_t{first} << 32U | last) + text.size()) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(mixed >> (64U - m_slotBits));
    }

    // So many texts that were not known make it grow.
    static constexpr std::size_t LeftToGrowth(unsigned slotBits) noexcept { return std::size_t{1} << (slotBits - 1); }

    // The same as Of, with more slots.
    CString OfLarger(std::string_view text)
    {
        if (m_slotBits < kMostSlotBits)
        {
            std::vector<CString> known(m_known.size() << kGrowthBits);
            m_known.swap(known);
            m_slotBits += kGrowthBits;
            for (CString& one : known)
                if (!one.IsEmpty())
                    m_known[Slot(one.View())] = std::move(one);
        }
        m_leftToGrowth = LeftToGrowth(m_slotBits);
        return m_known[Slot(text)] = text;
    }

    unsigned m_slotBits = kFirstSlotBits;
    std::size_t m_leftToGrowth = LeftToGrowth(kFirstSlotBits);
    std::vector<CString> m_known = std::vector<CString>(std::size_t{1} << kFirstSlotBits);
};
