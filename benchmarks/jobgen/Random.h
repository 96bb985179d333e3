// The same numbers for the same seed on every machine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

class Random
{
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    // One of 0 to count - 1; 0 for an empty range.
    std::uint32_t Below(std::uint32_t count)
    {
        return static_cast<std::uint32_t>(((Next() >> 32U) * static_cast<std::uint64_t>(count)) >> 32U);
    }

    // True in so many cases of a thousand.
    bool Chance(std::uint32_t perMille) { return Below(1000) < perMille; }

    // The position of one of the shares, whose sum is 1000.
    template <std::size_t Count>
    std::size_t Pick(const std::array<std::uint32_t, Count>& perMille)
    {
        std::uint32_t drawn = Below(1000);
        std::size_t at = 0;
        while (at + 1 < Count && drawn >= perMille[at])
            drawn -= perMille[at++];
        return at;
    }

private:
    std::uint64_t m_state;
};
