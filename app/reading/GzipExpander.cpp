#include "reading/GzipExpander.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>

namespace
{
constexpr int kGzipOnly = MAX_WBITS + 16;

// The state of zlib for one file.
class Inflation
{
public:
    Inflation() : m_isReady(::inflateInit2(&m_stream, kGzipOnly) == Z_OK) {}
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;
    ~Inflation()
    {
        if (m_isReady)
            ::inflateEnd(&m_stream);
    }

    // False if the data is damaged or cut short, or if the taker wants no more.
    bool Run(std::string_view data, CJOBXblockTaker& taker)
    {
        m_rest = data;
        int result = Z_OK;
        while (m_isReady && (result == Z_OK || (result == Z_STREAM_END && BeginsMember())))
            result = Step(taker);
        return result == Z_STREAM_END && m_isReady;
    }

private:
    // Whether another member follows the one that has ended.
    bool BeginsMember()
    {
        Feed();
        const auto* const next = m_stream.next_in;
        const bool isPadding = std::all_of(next, next + m_stream.avail_in, [](Bytef byte) { return byte == 0; });
        return !isPadding && ::inflateReset(&m_stream) == Z_OK;
    }

    void Feed()
    {
        if (m_stream.avail_in > 0 || m_rest.empty())
            return;
        const std::size_t size = std::min<std::size_t>(m_rest.size(), std::numeric_limits<uInt>::max());
        // zlib does not change its input.
        m_stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(m_rest.data()));
        m_stream.avail_in = static_cast<uInt>(size);
        m_rest.remove_prefix(size);
    }

    int Step(CJOBXblockTaker& taker)
    {
        Feed();
        m_stream.next_out = m_block.data();
        m_stream.avail_out = static_cast<uInt>(m_block.size());
        const int result = ::inflate(&m_stream, Z_NO_FLUSH);
        const std::size_t size = m_block.size() - m_stream.avail_out;
        if (size > 0 && !taker.Take({reinterpret_cast<const char*>(m_block.data()), size}))
            return Z_BUF_ERROR;
        return result;
    }

    z_stream m_stream{};
    std::string_view m_rest; // what zlib has not got yet
    std::array<Bytef, 65536> m_block{};
    bool m_isReady;
};
} // namespace

bool GzipExpander::Expand(std::string_view data, CJOBXblockTaker& taker)
{
    return Inflation().Run(data, taker);
}
