// Texts of a job are bytes of no known encoding; this is how they reach a reader.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view bytes) noexcept;

// Every byte as the character of that number, U+0000 to U+00FF, in UTF-8.
std::string BytesAsCharacters(std::string_view bytes);

// The text for a person to read: control characters, bytes that are no UTF-8, and characters that show nothing, break
// lines or turn the direction of a text, as \xNN, so that a text of a file cannot steer a terminal or deceive its
// reader.
std::string Printable(std::string_view bytes);

// How many characters a printable text has.
std::size_t CharacterCount(std::string_view utf8) noexcept;

// The shortest decimal form that reads back as the same number; "inf", "-inf", "nan" and "-nan" for what is none, and
// "-0.0" for the negative zero, which readers of JSON would take for an integer without the point.
class NumberText
{
public:
    explicit NumberText(double number) noexcept;

    std::string_view View() const noexcept { return {m_buffer.data(), m_size}; }

private:
    std::array<char, 32> m_buffer{};
    std::size_t m_size = 0;
};
