#include "output/Wrapping.h"

#include <algorithm>

namespace
{
constexpr char kEscape = '\x1B';

// How many bytes the first `count` characters have, and the colours among and behind them.
std::size_t BytesOf(std::string_view line, std::size_t count)
{
    std::size_t bytes = 0;
    while (bytes < line.size())
    {
        if (line[bytes] == kEscape)
        {
            const std::size_t end = line.find('m', bytes);
            bytes = end == std::string_view::npos ? line.size() : end + 1;
            continue;
        }
        const bool isContinued = (static_cast<unsigned char>(line[bytes]) & 0xC0U) == 0x80U;
        if (!isContinued && count-- == 0)
            break;
        ++bytes;
    }
    return bytes;
}
} // namespace

std::string Wrapped(std::string_view line, std::size_t width, std::size_t indent)
{
    std::string text;
    std::size_t room = width; // the first line's
    while (width > indent)
    {
        const std::size_t bytes = BytesOf(line, room);
        if (bytes == line.size())
            break;
        // A blank behind the last character that has room is a good place, too. Blanks at the beginning are not.
        const std::size_t first = std::min(line.find_first_not_of(' '), bytes);
        const std::size_t blank = line.substr(0, bytes + 1).rfind(' ');
        const bool isGood = blank != std::string_view::npos && blank > first;
        text.append(line.substr(0, isGood ? blank : bytes)).append("\n").append(indent, ' ');
        line.remove_prefix(isGood ? blank + 1 : bytes);
        room = width - indent;
    }
    return text.append(line);
}
