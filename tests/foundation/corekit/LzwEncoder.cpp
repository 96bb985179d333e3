#include "foundation/corekit/LzwEncoder.h"

#include <algorithm>
#include <unordered_map>

namespace
{
constexpr unsigned kClear = 256;

class CodeWriter
{
public:
    explicit CodeWriter(std::string& out) : m_out(out) {}

    void Put(unsigned code, unsigned width)
    {
        while (width > 0)
        {
            if (m_nBits % 8 == 0)
                m_out.push_back('\0');
            const unsigned used = static_cast<unsigned>(m_nBits % 8);
            const unsigned count = std::min(8 - used, width);
            const unsigned bits = (code & ((1U << count) - 1)) << used;
            m_out.back() = static_cast<char>(static_cast<unsigned char>(m_out.back()) | bits);
            m_nBits += count;
            code >>= count;
            width -= count;
        }
    }

    // Leaves the rest of a group of eight codes unused.
    void EndGroup(unsigned width)
    {
        while (m_nBits % (8 * width) != 0)
            Put(0, 1);
        m_nBits = 0;
    }

private:
    std::string& m_out;
    std::size_t m_nBits = 0; // since the last change of width
};
} // namespace

std::string EncodeLzw(std::string_view text, const LzwOptions& options)
{
    std::string out = "\x1F\x9D";
    out.push_back(static_cast<char>(options.maxWidth | (options.blockMode ? 0x80U : 0U)));
    CodeWriter writer(out);
    const unsigned firstFree = options.blockMode ? kClear + 1 : kClear;
    std::unordered_map<unsigned, unsigned> table; // code and next character to the longer code
    unsigned width = 9;
    unsigned free = firstFree;       // next code the compressor makes
    unsigned readerFree = firstFree; // the reader is one code behind
    bool isFirst = true;
    std::size_t sinceClear = 0;
    std::size_t at = 0;
    const auto widen = [&]
    {
        if (readerFree >> width != 0 && width < options.maxWidth)
            writer.EndGroup(width++);
    };
    while (at < text.size())
    {
        if (options.blockMode && options.clearEvery != 0 && sinceClear >= options.clearEvery)
        {
            widen();
            writer.Put(kClear, width);
            writer.EndGroup(width);
            table.clear();
            width = 9;
            free = readerFree = firstFree;
            isFirst = true;
            sinceClear = 0;
        }
        unsigned code = static_cast<unsigned char>(text[at++]);
        ++sinceClear;
        for (; at < text.size(); ++at, ++sinceClear)
        {
            const auto longer = table.find(code << 8U | static_cast<unsigned char>(text[at]));
            if (longer == table.end())
                break;
            code = longer->second;
        }
        widen();
        writer.Put(code, width);
        if (!isFirst && readerFree < 1U << options.maxWidth)
            ++readerFree;
        isFirst = false;
        if (at < text.size() && free < 1U << options.maxWidth)
            table[code << 8U | static_cast<unsigned char>(text[at])] = free++;
    }
    return out;
}
