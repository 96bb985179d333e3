// How the readers store texts that repeat.
#pragma once

#include "foundation/framework/CString.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

// Remembers the last texts, so that equal ones share their characters. Most texts of a job that do not fit into the
// text object itself are names and numbers that already appeared a few lines earlier.
// Threads:   one thread at a time; the texts that it returned are independent of it.
class CTextCache
{
public:
    CString Of(std::string_view text)
    {
        if (text.size() < kShortest)
            return CString(text);
        CString& known = m_known[Slot(text)];
        if (known.View() != text)
            known = text;
        return known;
    }

private:
    static constexpr std::size_t kShortest = 8; // shorter texts are stored inside the object
    static constexpr unsigned kSlotBits = 8;

    // The slot of a text, from its length and its first and last four characters. Texts that compete for a slot only
    // share less.
    static std::size_t Slot(std::string_view text) noexcept
    {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
        const std::uint64_t mixed = ((std::uint64_t{first} << 32U | last) + text.size()) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(mixed >> (64U - kSlotBits));
    }

    std::array<CString, std::size_t{1} << kSlotBits> m_known;
};
