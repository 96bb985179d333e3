#include "output/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace
{
constexpr unsigned char kContinuation = 0x80;

bool IsContinuation(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == kContinuation;
}

// The length of the well-formed character at the front of `bytes`, 0 if there is none.
std::size_t CharacterLength(std::string_view bytes) noexcept
{
    const auto first = static_cast<unsigned char>(bytes[0]);
    if (first < 0x80)
        return 1;
    std::size_t length = 0;
    if (first >= 0xC2 && first <= 0xDF)
        length = 2;
    else if (first >= 0xE0 && first <= 0xEF)
        length = 3;
    else if (first >= 0xF0 && first <= 0xF4)
        length = 4;
    if (length == 0 || bytes.size() < length ||
        !std::all_of(bytes.begin() + 1, bytes.begin() + static_cast<std::ptrdiff_t>(length), IsContinuation))
        return 0;
    const auto second = static_cast<unsigned char>(bytes[1]);
    const bool isOverlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool isSurrogate = first == 0xED && second >= 0xA0;
    const bool isTooLarge = first == 0xF4 && second >= 0x90;
    return isOverlong || isSurrogate || isTooLarge ? 0 : length;
}

// The code point of a well-formed character.
char32_t CodePointOf(std::string_view character) noexcept
{
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1)
        return first;
    char32_t number = first & (0x7FU >> character.size());
    for (const char byte : character.substr(1))
        number = (number << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    return number;
}

// Whether it is a control character, which terminals obey, an invisible one, or one that breaks lines or changes the
// direction of text.
bool IsControl(std::string_view character) noexcept
{
    struct Range
    {
        char32_t from;
        char32_t to;
    };
    static constexpr Range kRanges[] = {
        {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x180E, 0x180E},   {0x200B, 0x200F},
        {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
    };
    const char32_t number = CodePointOf(character);
    return std::any_of(std::begin(kRanges), std::end(kRanges),
                       [&](const Range& range) { return number >= range.from && number <= range.to; });
}

void AppendEscaped(std::string& text, std::string_view bytes)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    for (const char byte : bytes)
    {
        const auto value = static_cast<unsigned char>(byte);
        text += "\\x";
        text += kDigits[value >> 4U];
        text += kDigits[value & 0xFU];
    }
}
} // namespace

bool IsUtf8(std::string_view bytes) noexcept
{
    while (!bytes.empty())
    {
        const std::size_t length = CharacterLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string BytesAsCharacters(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes)
    {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x80)
        {
            text += byte;
            continue;
        }
        text += static_cast<char>(0xC0U | (value >> 6U));
        text += static_cast<char>(kContinuation | (value & 0x3FU));
    }
    return text;
}

std::string Printable(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty())
    {
        const std::size_t length = CharacterLength(bytes);
        const std::string_view character = bytes.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || IsControl(character))
            AppendEscaped(text, character);
        else
            text += character;
        bytes.remove_prefix(character.size());
    }
    return text;
}

std::string Quoted(std::string_view bytes)
{
    return '"' + Printable(bytes) + '"';
}

std::size_t CharacterCount(std::string_view utf8) noexcept
{
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char byte) { return !IsContinuation(byte); }));
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count) noexcept
{
    std::size_t size = 0;
    for (; size < utf8.size(); ++size)
        if (!IsContinuation(utf8[size]) && count-- == 0)
            break;
    return utf8.substr(0, size);
}

NumberText::NumberText(double number) noexcept
{
    std::string_view fixed;
    if (std::isnan(number))
        fixed = std::signbit(number) ? "-nan" : "nan";
    else if (std::isinf(number))
        fixed = number < 0.0 ? "-inf" : "inf";
    else if (number == 0.0)
        fixed = std::signbit(number) ? "-0.0" : "0";
    if (!fixed.empty())
        m_size = static_cast<std::size_t>(std::copy(fixed.begin(), fixed.end(), m_buffer.begin()) - m_buffer.begin());
    else
        m_size = static_cast<std::size_t>(
            std::to_chars(m_buffer.data(), m_buffer.data() + m_buffer.size(), number).ptr - m_buffer.data());
}
