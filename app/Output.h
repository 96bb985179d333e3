#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

// What a command prints as its data: standard output through a buffer of fixed size.
// Results: a failure to write (a full disk, a closed pipe) raises ExitError; the destructor drops what was
//          not flushed.
class Output
{
public:
    using Ch = char; // for RapidJSON, whose output stream this is

    Output();

    void Put(char character)
    {
        if (m_size == kCapacity)
            Flush();
        m_buffer[m_size++] = character;
    }
    void Write(std::string_view text);
    // Hands the buffer to the system.
    void Flush();

private:
    static constexpr std::size_t kCapacity = 1U << 16U;

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_size = 0;
};
