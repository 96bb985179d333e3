#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

class Random;

// A length in hundred-millionths of a unit, which files print with as many digits as their design tool had.
struct Length
{
    std::int64_t hundredMillionths = 0;
};

// A text file being written. Makes the directories that lead to it. What cannot be written raises std::runtime_error.
class TextFile
{
public:
    explicit TextFile(const std::filesystem::path& path);
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;
    ~TextFile() = default;

    // Writes what is left; answers the file's size.
    std::uint64_t Close();
    std::uint64_t Size() const { return m_written + m_used; }

    TextFile& operator<<(char character)
    {
        *Room(1) = character;
        ++m_used;
        return *this;
    }
    TextFile& operator<<(std::string_view text)
    {
        std::memcpy(Room(text.size()), text.data(), text.size());
        m_used += text.size();
        return *this;
    }
    TextFile& operator<<(std::integral auto number)
    {
        constexpr std::size_t kLongest = 24;
        char* const begin = Room(kLongest);
        m_used += static_cast<std::size_t>(std::to_chars(begin, begin + kLongest, number).ptr - begin);
        return *this;
    }
    TextFile& operator<<(Length length);
    // A length whose last digit is not 0 with digits beyond the hundred-millionth, as some tools print them.
    void PrintLong(Length length, std::uint32_t moreDigits);

private:
    char* Room(std::size_t size);
    void Flush();

    std::filesystem::path m_path;
    std::ofstream m_file;
    std::array<char, 1U << 16U> m_buffer;
    std::size_t m_used = 0;
    std::uint64_t m_written = 0;
};
