#include "foundation/corekit/LzwDecoder.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace
{
constexpr unsigned kMinWidth = 9;
constexpr unsigned kMaxWidth = 16;
constexpr unsigned kLiterals = 256;
constexpr unsigned kClear = 256;
constexpr unsigned kNoCode = ~0U;

constexpr std::string_view kMagic = "\x1F\x9D";
constexpr std::size_t kHeaderSize = 3;
constexpr unsigned kWidthMask = 0x1F;
constexpr unsigned kBlockMode = 0x80;

// Reads codes of changing width from the data.
class CCodeReader
{
public:
    explicit CCodeReader(std::string_view data) noexcept
        : m_data(reinterpret_cast<const unsigned char*>(data.data())),
          m_size(data.size()),
          m_end(std::uint64_t{data.size()} * 8)
    {
    }

    unsigned Width() const noexcept { return m_width; }
    void SetWidth(unsigned width) noexcept
    {
        const std::uint64_t group = std::uint64_t{m_width} * 8;
        m_at = m_start = m_start + (m_at - m_start + group - 1) / group * group;
        m_width = width;
    }

    // False if less than a whole code is left.
    bool Next(unsigned& code) noexcept
    {
        if (m_at + m_width > m_end)
            return false;
        const auto byte = static_cast<std::size_t>(m_at / 8);
        code = (Load(byte) >> (m_at % 8)) & ((1U << m_width) - 1);
        m_at += m_width;
        return true;
    }

    // Whether the data ends like a compressor's output: the last byte is padded with zeros.
    bool IsAtEnd() const noexcept
    {
        if (m_at >= m_end)
            return true;
        return m_end - m_at < 8 && m_data[m_size - 1] >> (m_at % 8) == 0;
    }

private:
    // At least 24 bits from that byte on, zeros past the end.
    std::uint32_t Load(std::size_t byte) const noexcept
    {
        const unsigned char* const at = m_data + byte;
        if (m_size - byte >= 4)
            return at[0] | std::uint32_t{at[1]} << 8U | std::uint32_t{at[2]} << 16U | std::uint32_t{at[3]} << 24U;
        std::uint32_t bits = 0;
        for (std::size_t i = m_size - byte; i-- > 0;)
            bits = bits << 8U | at[i];
        return bits;
    }

    const unsigned char* m_data;
    std::size_t m_size;
    std::uint64_t m_end;       // one past the last bit
    std::uint64_t m_at = 0;    // next bit
    std::uint64_t m_start = 0; // first bit of the codes of the current width
    unsigned m_width = kMinWidth;
};

// The text of a code: the text of an older code and one more character. Texts are divided into pieces of eight
// characters from their start. An entry has its last piece, and the code whose text ends with the full piece before
// that, so a text is copied eight characters at a time.
struct Entry
{
    std::array<char, 8> lastPiece;
    std::uint32_t length;
    std::uint16_t pieceBefore;
    char first;
};
constexpr std::uint32_t kPiece = 8;
constexpr std::size_t kMaxLength = std::size_t{1} << kMaxWidth; // each entry is one longer than an older one

class CTable
{
public:
    // Only entries that were set are ever read. Clearing a megabyte would take longer than decoding most files.
    CTable() : m_entries(std::make_unique_for_overwrite<Entry[]>(std::size_t{1} << kMaxWidth))
    {
        for (unsigned code = 0; code < kLiterals; ++code)
        {
            const char character = static_cast<char>(code);
            m_entries[code] = {{character}, 1, 0, character};
        }
    }

    char First(unsigned code) const noexcept { return m_entries[code].first; }

    // Sets the text of `code` to the text of `prefix` and `character`.
    void Set(unsigned code, unsigned prefix, char character) noexcept
    {
        const Entry& old = m_entries[prefix];
        Entry& entry = m_entries[code];
        const std::uint32_t used = old.length % kPiece;
        entry.lastPiece = old.lastPiece;
        entry.lastPiece[used] = character;
        entry.pieceBefore = used == 0 ? static_cast<std::uint16_t>(prefix) : old.pieceBefore;
        entry.length = old.length + 1;
        entry.first = old.first;
    }

    // Copies the text to `to` and returns its length. Up to one piece more than the text is written.
    std::size_t Copy(unsigned code, char* to) const noexcept
    {
        const Entry* entry = &m_entries[code];
        const std::size_t length = entry->length;
        std::size_t at = (length - 1) / kPiece * kPiece;
        std::memcpy(to + at, entry->lastPiece.data(), kPiece);
        while (at != 0)
        {
            entry = &m_entries[entry->pieceBefore];
            at -= kPiece;
            std::memcpy(to + at, entry->lastPiece.data(), kPiece);
        }
        return length;
    }

private:
    std::unique_ptr<Entry[]> m_entries;
};

// Collects the text and passes it on in large blocks.
class COutput
{
public:
    COutput(ULONGLONG limit, const std::function<bool(std::string_view)>& write)
        : m_buffer(std::make_unique_for_overwrite<char[]>(kBlock + kMaxLength + kPiece)), m_left(limit), m_write(write)
    {
    }

    bool Add(const CTable& table, unsigned code)
    {
        m_used += table.Copy(code, m_buffer.get() + m_used);
        return m_used < kBlock || Flush();
    }

    bool Flush()
    {
        if (m_used > m_left)
            m_result = LzwResult::TooLong;
        else if (!m_write({m_buffer.get(), m_used}))
            m_result = LzwResult::Refused;
        m_left -= m_used;
        m_used = 0;
        return m_result == LzwResult::Done;
    }

    // Done, or why Add or Flush failed.
    LzwResult Result() const noexcept { return m_result; }

private:
    static constexpr std::size_t kBlock = std::size_t{1} << 20U;

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_used = 0;
    ULONGLONG m_left;
    const std::function<bool(std::string_view)>& m_write;
    LzwResult m_result = LzwResult::Done;
};

LzwResult DecodeCodes(CCodeReader codes, unsigned maxWidth, bool blockMode, COutput& output)
{
    CTable table;
    const unsigned firstFree = blockMode ? kClear + 1 : kLiterals;
    const unsigned tableSize = 1U << maxWidth;
    unsigned free = firstFree;
    unsigned last = kNoCode;
    for (unsigned code = 0;;)
    {
        if (free >> codes.Width() != 0 && codes.Width() < maxWidth)
            codes.SetWidth(codes.Width() + 1);
        if (!codes.Next(code))
            break;
        if (blockMode && code == kClear)
        {
            codes.SetWidth(kMinWidth);
            free = firstFree;
            last = kNoCode;
            continue;
        }
        if (last == kNoCode ? code >= kLiterals : code > free)
            return LzwResult::Damaged;
        if (last != kNoCode && free < tableSize)
        {
            // The compressor may use the code that is only defined in this step. Its text begins with the same
            // character as the last one.
            table.Set(free, last, table.First(code == free ? last : code));
            ++free;
        }
        if (!output.Add(table, code))
            return output.Result();
        last = code;
    }
    if (!codes.IsAtEnd())
        return LzwResult::Damaged;
    output.Flush();
    return output.Result();
}
} // namespace

LzwResult DecodeLzw(std::string_view data, ULONGLONG limit, const std::function<bool(std::string_view)>& write)
{
    if (data.size() < kHeaderSize || !data.starts_with(kMagic))
        return LzwResult::Damaged;
    const auto flags = static_cast<unsigned char>(data[kMagic.size()]);
    const unsigned maxWidth = flags & kWidthMask;
    if (maxWidth < kMinWidth || maxWidth > kMaxWidth)
        return LzwResult::Damaged;
    COutput output(limit, write);
    return DecodeCodes(CCodeReader(data.substr(kHeaderSize)), maxWidth, (flags & kBlockMode) != 0, output);
}
