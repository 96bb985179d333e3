#include "foundation/corekit/CByteHash.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace
{
// Little-endian on every machine.
template <class Word>
std::uint64_t WordAt(const char* bytes) noexcept
{
    Word word = 0;
    if constexpr (std::endian::native == std::endian::little)
        std::memcpy(&word, bytes, sizeof word);
    else
        for (std::size_t i = sizeof word; i > 0; --i)
            word = static_cast<Word>((word << 8U) | static_cast<unsigned char>(bytes[i - 1]));
    return word;
}
} // namespace

std::uint64_t CByteHash::Round(std::uint64_t lane, std::uint64_t word) noexcept
{
    return std::rotl(lane + word * kPrime2, 31) * kPrime1;
}

void CByteHash::TakeStripe(const char* stripe) noexcept
{
    for (std::uint64_t& lane : m_lanes)
    {
        lane = Round(lane, WordAt<std::uint64_t>(stripe));
        stripe += sizeof lane;
    }
}

void CByteHash::Add(std::string_view bytes) noexcept
{
    const std::size_t used = m_size % kStripe;
    m_size += bytes.size();
    if (used != 0)
    {
        const std::size_t more = std::min(kStripe - used, bytes.size());
        bytes.copy(m_rest.data() + used, more);
        bytes.remove_prefix(more);
        if (used + more < kStripe)
            return;
        TakeStripe(m_rest.data());
    }
    for (; bytes.size() >= kStripe; bytes.remove_prefix(kStripe))
        TakeStripe(bytes.data());
    bytes.copy(m_rest.data(), bytes.size());
}

std::uint64_t CByteHash::Value() const noexcept
{
    std::uint64_t hash = kPrime5;
    if (m_size >= kStripe)
    {
        hash =
            std::rotl(m_lanes[0], 1) + std::rotl(m_lanes[1], 7) + std::rotl(m_lanes[2], 12) + std::rotl(m_lanes[3], 18);
        for (const std::uint64_t lane : m_lanes)
            hash = (hash ^ Round(0, lane)) * kPrime1 + kPrime4;
    }
    hash += m_size;
    const char* at = m_rest.data();
    const char* const end = at + m_size % kStripe;
    for (; end - at >= 8; at += 8)
        hash = std::rotl(hash ^ Round(0, WordAt<std::uint64_t>(at)), 27) * kPrime1 + kPrime4;
    for (; end - at >= 4; at += 4)
        hash = std::rotl(hash ^ (WordAt<std::uint32_t>(at) * kPrime1), 23) * kPrime2 + kPrime3;
    for (; at != end; ++at)
        hash = std::rotl(hash ^ (static_cast<unsigned char>(*at) * kPrime5), 11) * kPrime1;
    hash = (hash ^ (hash >> 33U)) * kPrime2;
    hash = (hash ^ (hash >> 29U)) * kPrime3;
    return hash ^ (hash >> 32U);
}
