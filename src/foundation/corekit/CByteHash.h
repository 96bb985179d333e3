// A number that tells whether the bytes of a file have changed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The 64-bit hash of bytes that come in pieces. It does not depend on how they are cut.
// Source: XXH64 with seed 0, of the xxHash algorithm description by Y. Collet, version 0.1.1.
class CByteHash
{
public:
    void Add(std::string_view bytes) noexcept;
    // Of all bytes added so far.
    std::uint64_t Value() const noexcept;

    static std::uint64_t Of(std::string_view bytes) noexcept
    {
        CByteHash hash;
        hash.Add(bytes);
        return hash.Value();
    }

private:
    static constexpr std::size_t kStripe = 32;
    static constexpr std::uint64_t kPrime1 = 0x9E3779B185EBCA87U;
    static constexpr std::uint64_t kPrime2 = 0xC2B2AE3D27D4EB4FU;
    static constexpr std::uint64_t kPrime3 = 0x165667B19E3779F9U;
    static constexpr std::uint64_t kPrime4 = 0x85EBCA77C2B2AE63U;
    static constexpr std::uint64_t kPrime5 = 0x27D4EB2F165667C5U;

    static std::uint64_t Round(std::uint64_t lane, std::uint64_t word) noexcept;
    void TakeStripe(const char* stripe) noexcept;

    std::array<std::uint64_t, 4> m_lanes = {kPrime1 + kPrime2, kPrime2, 0, 0 - kPrime1};
    std::array<char, kStripe> m_rest{}; // bytes that do not fill a stripe
    std::uint64_t m_size = 0;
};
