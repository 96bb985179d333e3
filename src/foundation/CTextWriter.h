// How every writer of the library prints a text file: through one buffer, numbers as printf prints them in the C
// locale.
#pragma once

#include "foundation/NumberPrint.h"
#include "foundation/framework/CString.h"

#include <array>
#include <cstddef>
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

    // Prints whatever a CTextLine prints.
    template <class T>
    CTextWriter& operator<<(const T& value);

private:
    friend class CTextLine;

    // Blocks of this size, from the begin of the file on, are what the system's page cache takes fastest.
    static constexpr std::size_t kBlock = 65536;
    // What one element may store behind the block before the block is written.
    static constexpr std::size_t kSlack = 512;
    static_assert(number_print::kLongest <= kSlack);

    // Each returns where printing goes on; `at` is where it has come to.
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
    int m_exceptions = std::uncaught_exceptions(); // on their way when the writer was made
    std::array<char, kBlock + kSlack> m_buffer;
    char* m_at = m_buffer.data(); // inside the block
};

// Prints one run of elements. It keeps the place in the buffer to itself, so that the compiler need not look it up
// again for each character; until it ends its writer must not be used otherwise.
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
    // Up to the first NUL, as "%s" prints it.
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
