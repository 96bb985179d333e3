// How every writer of the library prints a text file: through one buffer, numbers as printf prints them in the C
// locale.
#pragma once

#include "foundation/framework/CString.h"

#include <array>
#include <cstdio>
#include <exception>
#include <string_view>

// Prints as "%lf" does: six decimals.
struct Fixed
{
    double value;
};

// Prints as "%g" does: six significant digits in the shorter form.
struct General
{
    double value;
};

// Text output through one buffer, to a file of its own or to a stream that the caller keeps.
// Results: writing raises nothing of its own; a failure is reported to the diagnostics once and leaves IsGood() false.
//          What the sink of the diagnostics raises passes, also out of the destructor unless another exception is on
//          its way; the file is closed then.
class CTextWriter
{
public:
    // Makes the file at `path`, or empties the one that is there. `sourceFile` and `line` tell the diagnostics who
    // asked.
    CTextWriter(const CString& path, const char* sourceFile, int line);
    // Prints into a borrowed stream; null prints nothing.
    explicit CTextWriter(std::FILE* stream);
    CTextWriter(const CTextWriter&) = delete;
    CTextWriter& operator=(const CTextWriter&) = delete;
    // Writes what is left; closes a file of its own.
    ~CTextWriter() noexcept(false);

    // False when there is nothing to write to or a write failed.
    bool IsGood() const noexcept { return m_stream != nullptr && !m_failed; }

    CTextWriter& operator<<(std::string_view text)
    {
        if (text.size() > m_buffer.size() - m_used)
            return WriteLong(text);
        text.copy(m_buffer.data() + m_used, text.size());
        m_used += text.size();
        return *this;
    }
    CTextWriter& operator<<(const char* text) { return *this << std::string_view(text); }
    // Up to the first NUL, as "%s" prints it.
    CTextWriter& operator<<(const CString& text) { return *this << std::string_view(text.GetString()); }
    CTextWriter& operator<<(char character) { return *this << std::string_view(&character, 1); }
    CTextWriter& operator<<(int number);
    CTextWriter& operator<<(Fixed number);
    CTextWriter& operator<<(General number);

private:
    static constexpr std::size_t kBufferSize = 65536;
    static constexpr std::size_t kLongestNumber = 400; // "%lf" of the largest double has 317 characters

    CTextWriter& WriteLong(std::string_view text);
    char* Room(std::size_t size);
    void Flush();
    void Emit(const char* data, std::size_t size);
    void Report(int error) const;
    void ReportAtEnd(int error);

    std::FILE* m_stream = nullptr;
    bool m_owned = false;
    bool m_failed = false;
    CString m_path;
    const char* m_sourceFile = nullptr;
    int m_line = 0;
    int m_exceptions = std::uncaught_exceptions(); // on their way when the writer was made
    std::size_t m_used = 0;
    std::array<char, kBufferSize> m_buffer;
};
