// Converts wide text to UTF-8 (RFC 3629). A lone surrogate or a value past U+10FFFF becomes U+FFFD.
#pragma once

#include <string_view>

struct Utf8Character
{
    char bytes[4] = {};
    unsigned length = 0;

    std::string_view View() const noexcept { return {bytes, length}; }
};

constexpr bool IsHighSurrogate(char32_t unit) noexcept
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit) noexcept
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

constexpr char32_t FromSurrogates(char32_t high, char32_t low) noexcept
{
    return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

constexpr Utf8Character EncodeUtf8(char32_t code) noexcept
{
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        code = 0xFFFD;
    const auto tail = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (code < 0x80)
        return {{static_cast<char>(code)}, 1};
    if (code < 0x800)
        return {{static_cast<char>(0xC0U | (code >> 6U)), tail(code)}, 2};
    if (code < 0x10000)
        return {{static_cast<char>(0xE0U | (code >> 12U)), tail(code >> 6U), tail(code)}, 3};
    return {{static_cast<char>(0xF0U | (code >> 18U)), tail(code >> 12U), tail(code >> 6U), tail(code)}, 4};
}
