// How the readers keep texts that repeat.
#pragma once

#include "foundation/framework/CString.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

// Knows the texts that were asked for last, so that equal ones share their characters. In the files of a job most texts
// that are too long for the text object itself are names and numbers that stood there a few lines before.
// Threads: one thread at a time; the texts that it gave are independent of it.
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
    static constexpr std::size_t kShortest = 7; // what is shorter lies in the object
    static constexpr unsigned kSlotBits = 8;

    // Where to keep a text: by its length, its first four and its last four characters. Others of the same place only
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
