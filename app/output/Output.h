#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

// The data that a command prints: standard output through a buffer of fixed size.
// Results:   a failure to write, such as a full disk, raises ExitError; a pipe closed by its reader raises ClosedPipe.
//            The destructor drops what is not flushed.
class Output
{
public:
    using Ch = char; // RapidJSON writes to this class as its output stream

    Output();

    void Put(char character)
    {
        if (m_size == kCapacity)
            Flush();
        m_characters[m_size++] = character;
    }
    void Write(std::string_view text);
    // Writes the buffer to standard output.
    void Flush();

private:
    static constexpr std::size_t kCapacity = 1U << 16U;

    std::unique_ptr<char[]> m_buffer;
    char* const m_characters = m_buffer.get(); // as good as m_buffer, and quick in unoptimised builds too
    std::size_t m_size = 0;
};
