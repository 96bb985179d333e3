// How every writer of the library prints a text file: through one buffer, with numbers as printf prints them in the C
// locale.
#pragma once

#include "foundation/NumberPrint.h"
#include "foundation/framework/CString.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <string_view>

// Printed like "%lf": six decimals.
struct Fixed
{
    double value;
};

// Printed like "%g": six significant digits in the shorter form.
struct General
{
    double value;
};

// Text output through one buffer, to its own file or to the caller's stream.
// Results:   a failed write raises nothing; it is reported to the diagnostics once, and then IsGood() is false. An
//            exception from the diagnostic sink is passed on after closing the file, even from the destructor, unless
//            another exception is already being handled.
class CTextWriter
{
public:
    // Creates or empties the file at `path`. Diagnostics name `sourceFile` and `line` as the caller.
    CTextWriter(const CString& path, const char* sourceFile, int line);
    // Prints to a borrowed stream; null prints nothing.
    explicit CTextWriter(std::FILE* stream);
    CTextWriter(const CTextWriter&) = delete;
    CTextWriter& operator=(const CTextWriter&) = delete;
    // Writes the rest of the buffer; closes its own file.
    ~CTextWriter() noexcept(false);

    // False if there is no file or stream, or if a write failed.
    bool IsGood() const noexcept { return m_stream != nullptr && !m_failed; }

    // Prints any type that CTextLine prints.
    template <class T>
    CTextWriter& operator<<(const T& value);

private:
    friend class CTextLine;

    // The page cache is fastest for blocks of this size, aligned with the start of the file.
    static constexpr std::size_t kBlock = 65536;
    // The most that one element may store past the end of the block before the block is written.
    static constexpr std::size_t kSlack = 512;
    static_assert(number_print::kLongest <= kSlack);

    // Each takes the current print position and returns the next one.
    char* WriteBlock(const char* at);
    char* WriteLong(char* at, std::string_view text);
    void Emit(const char* data, std::size_t size);
    void Report(int error) const;
    void ReportAtEnd(int error);

    std::FILE* m_stream = nullptr;
    bool m_owned = false;
    bool m_failed = false;
    CString m_path;
    const char* m_sourceFile = nullptr;
    int m_line = 0;
    int m_exceptions = std::uncaught_exceptions(); // active when the writer was made
    std::array<char, kBlock + kSlack> m_buffer;
    char* m_at = m_buffer.data(); // in the block
};

// Prints one sequence of elements. Keeps the buffer position in itself, so that the compiler need not reload it for
// every character. While it lives, its writer must not be used otherwise.
class CTextLine
{
public:
    explicit CTextLine(CTextWriter& out) noexcept
        : m_out(out), m_at(out.m_at), m_end(out.m_buffer.data() + CTextWriter::kBlock)
    {
    }
    CTextLine(const CTextLine&) = delete;
    CTextLine& operator=(const CTextLine&) = delete;
    ~CTextLine() { m_out.m_at = m_at; }

    CTextLine& operator<<(char character)
    {
        *m_at = character;
        return Printed(m_at + 1);
    }
    CTextLine& operator<<(int number) { return Printed(PrintInteger(m_at, number)); }
    CTextLine& operator<<(Fixed number) { return Printed(PrintFixed(m_at, number.value)); }
    CTextLine& operator<<(General number) { return Printed(PrintGeneral(m_at, number.value)); }
    CTextLine& operator<<(std::string_view text)
    {
        if (text.size() > CTextWriter::kSlack)
        {
            m_at = m_out.WriteLong(m_at, text);
            return *this;
        }
        text.copy(m_at, text.size());
        return Printed(m_at + text.size());
    }
    CTextLine& operator<<(const char* text) { return *this << std::string_view(text); }
    // Up to the first NUL, like "%s".
    CTextLine& operator<<(const CString& text)
    {
        const std::string_view all = text.View();
        if (all.size() > kFew)
            return *this << all.substr(0, all.find('\0'));
        char* at = m_at;
        for (const char character : all)
        {
            if (character == '\0')
                break;
            *at++ = character;
        }
        return Printed(at);
    }

private:
    static constexpr std::size_t kFew = 8; // characters that are copied one by one

    CTextLine& Printed(char* at)
    {
        m_at = at < m_end ? at : m_out.WriteBlock(at);
        return *this;
    }

    CTextWriter& m_out;
    char* m_at;
    char* const m_end; // of the block
};

template <class T>
CTextWriter& CTextWriter::operator<<(const T& value)
{
    CTextLine(*this) << value;
    return *this;
}
