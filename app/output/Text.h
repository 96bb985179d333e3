// Texts of a job are bytes of unknown encoding. These functions prepare them for output.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
// The start of a text in UTF-8: at most that many characters.
std::string_view FirstCharacters(std::string_view utf8, std::size_t count) noexcept;

bool IsUtf8(std::string_view bytes) noexcept;

// Converts every byte to the character of that number, U+0000 to U+00FF, in UTF-8.
std::string BytesAsCharacters(std::string_view bytes);

// Makes a text printable, so that a text of a file cannot control a terminal or deceive its reader: control characters,
// invalid UTF-8, invisible characters and characters that break lines or change the direction of text become \xNN.
std::string Printable(std::string_view bytes);

// A printable text in quotation marks.
std::string Quoted(std::string_view bytes);

// How many characters a printable text has.
std::size_t CharacterCount(std::string_view utf8) noexcept;

// The shortest decimal form that round-trips. Infinities and NaN are "inf", "-inf", "nan" and "-nan". Negative zero is
// "-0.0", because JSON readers take "-0" for an integer.
class NumberText
{
public:
    explicit NumberText(double number) noexcept;

    std::string_view View() const noexcept { return {m_buffer.data(), m_size}; }

private:
    std::array<char, 32> m_buffer{};
    std::size_t m_size = 0;
};
