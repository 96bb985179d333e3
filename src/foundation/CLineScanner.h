// How every reader of the library parses a text file: lines as views of one buffer, blank-separated fields, numbers.
#pragma once

#include "foundation/base/NumberText.h"
#include "foundation/corekit/CFileBytes.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/CString.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

// The text without white space (blank, tab, VT, FF, CR, LF) at its start, its end, or both.
inline std::string_view TrimmedLeft(std::string_view text) noexcept
{
    while (!text.empty() && IsAsciiSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

inline std::string_view TrimmedRight(std::string_view text) noexcept
{
    while (!text.empty() && IsAsciiSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

inline std::string_view Trimmed(std::string_view text) noexcept
{
    return TrimmedRight(TrimmedLeft(text));
}

// The text without the leading characters that equal `character`.
inline std::string_view WithoutLeading(std::string_view text, char character) noexcept
{
    while (!text.empty() && text.front() == character)
        text.remove_prefix(1);
    return text;
}

// Whether the text begins with the keyword, ignoring the text's letter case. The keyword must be in upper case.
inline bool BeginsWith(std::string_view text, std::string_view upperKeyword) noexcept
{
    if (text.size() < upperKeyword.size())
        return false;
    for (std::size_t i = 0; i < upperKeyword.size(); ++i)
        if (AsciiUpper(text[i]) != upperKeyword[i])
            return false;
    return true;
}

// The value of a key line: the trimmed text after the first "=", or the whole line if it has no "=".
inline std::string_view KeyValue(std::string_view line) noexcept
{
    const std::size_t equals = line.find('=');
    return equals == std::string_view::npos ? line : Trimmed(line.substr(equals + 1));
}

// Takes blank-separated fields from the front of a trimmed text. Only blanks separate; a run of blanks counts as one.
// After each field the rest is trimmed at both ends. The last field, without a blank behind it, is everything that is
// left. After that, every call returns false and does not change its argument.
class CFieldScanner
{
public:
    explicit CFieldScanner(std::string_view text) noexcept : m_at(text.data()), m_end(text.data() + text.size()) {}

    bool IsAtEnd() const noexcept { return m_at == m_end; }
    // The text not taken yet.
    std::string_view Rest() const noexcept { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }
    bool HasBlank() const noexcept { return Rest().find(' ') != std::string_view::npos; }

    // The next field as text.
    bool Text(std::string_view& field) noexcept
    {
        if (m_at == m_end)
            return false;
        const char* const begin = m_at;
        SkipFieldFrom(begin);
        const char* const blank = m_fieldEnd;
        field = {begin, static_cast<std::size_t>(blank - begin)};
        return true;
    }
    bool Text(CString& value)
    {
        std::string_view field;
        if (!Text(field))
            return false;
        value = field;
        return true;
    }
    bool Skip() noexcept
    {
        std::string_view field;
        return Text(field);
    }
    // The number at the start of the next field, 0 if there is none.
    bool Real(double& value) noexcept
    {
        if (m_at == m_end)
            return false;
        const auto read = ReadReal(m_at, m_end);
        value = read.value;
        SkipFieldFrom(read.end);
        return true;
    }
    bool Integer(int& value) noexcept
    {
        if (m_at == m_end)
            return false;
        const auto read = ReadInteger(m_at, m_end);
        value = read.value;
        SkipFieldFrom(read.end);
        return true;
    }

private:
    // Moves past the field that reaches from `at` to the next blank, and past the white space after it.
    void SkipFieldFrom(const char* at) noexcept
    {
        while (at != m_end && *at != ' ')
            ++at;
        m_fieldEnd = at;
        while (at != m_end && IsAsciiSpace(*at))
            ++at;
        m_at = at;
    }

    const char* m_at;
    const char* m_end;
    const char* m_fieldEnd = nullptr;
};

// A text file line by line. LF or CRLF ends a line, the last line needs no end, a NUL byte ends the text of its line.
// Lines are trimmed at both ends and are views of the scanner's buffer. For a file read whole, they are valid as long
// as the scanner lives; for a file read in pieces, until the next line.
class CLineScanner
{
public:
    // Reads the file at `path`, which must be a regular file. Diagnostics name `sourceFile` and `line` as the caller.
    CLineScanner(const CString& path, const char* sourceFile, int line)
        : m_wasRead(m_bytes.Load(path, sourceFile, line))
    {
        Start(m_bytes.View());
    }
    // As above, piece by piece. If reading fails before the end, the lines before are delivered and a diagnostic is
    // reported.
    struct InPieces
    {
    };
    // All that is read is added to the hash, borrowed, if there is one.
    CLineScanner(InPieces /*way*/, const CString& path, const char* sourceFile, int line, CByteHash* hash = nullptr)
        : m_pieces(std::make_unique<CFilePieces>()), m_wasRead(m_pieces->Open(path, sourceFile, line))
    {
        if (hash != nullptr)
            m_pieces->HashInto(*hash);
        Start({});
    }
    // Gets the number of each line that loses text behind a NUL byte.
    class CutLines
    {
    public:
        virtual void OnCutLine(int line) = 0;

    protected:
        CutLines() = default;
        CutLines(const CutLines&) = default;
        CutLines& operator=(const CutLines&) = default;
        ~CutLines() = default;
    };
    void ReportCutLines(CutLines& to) noexcept { m_cutLines = &to; }

    // Scans a text owned by the caller.
    explicit CLineScanner(std::string_view text) : m_wasRead(true) { Start(text); }

    // False if the file could not be opened or read; then there are no lines.
    bool WasRead() const noexcept { return m_wasRead; }

    // For a file read in pieces, before the first line: what it begins with, at most one piece.
    std::string_view Beginning()
    {
        m_isAhead = m_pieces->Next(0);
        Start({m_pieces->View().data(), 0});
        return m_pieces->View();
    }
    // Whether reading a file in pieces failed before the end.
    bool HasFailed() const noexcept { return m_pieces != nullptr && m_pieces->HasFailed(); }

    // Moves to the next line that is not empty; false at the end.
    bool NextLine()
    {
        while (NextAnyLine())
            if (!m_line.empty())
                return true;
        return false;
    }

    // Moves to the next line, even if it is empty; false at the end.
    bool NextAnyLine()
    {
        if (m_at == m_end && !NextPiece())
            return false;
        const auto* newline = static_cast<const char*>(std::memchr(m_at, '\n', static_cast<std::size_t>(m_end - m_at)));
        const char* const lineEnd = newline != nullptr ? newline : m_end;
        m_line = Trimmed(TextOf({m_at, static_cast<std::size_t>(lineEnd - m_at)}));
        m_at = newline != nullptr ? newline + 1 : m_end;
        ++m_lineNumber;
        return true;
    }

    std::string_view Line() const noexcept { return m_line; }
    // Number of the current line, counted from 1.
    int LineNumber() const noexcept { return m_lineNumber; }

    // For a reader with a fast path for common lines: the lines ahead, untrimmed, each with the LF that ends it, and the
    // number of the first. Report what was consumed with Took.
    std::string_view Ahead() const noexcept
    {
        return {m_at, m_at < m_wholeEnd ? static_cast<std::size_t>(m_wholeEnd - m_at) : 0};
    }
    int NumberAhead() const noexcept { return m_lineNumber + 1; }
    // The reader has consumed `lines` lines, up to `at`, where the next begins.
    void Took(const char* at, int lines) noexcept
    {
        m_at = at;
        m_lineNumber += lines;
    }

private:
    static constexpr std::ptrdiff_t kPiece = 32768; // fits into the processor's cache

    void Start(std::string_view text) noexcept
    {
        m_at = text.data();
        m_end = m_at + text.size();
        m_wholeEnd = m_at + (text.rfind('\n') + 1); // 0 if there is none
        m_checked = m_at;
        m_hasNul = false;
    }
    // Moves to the next complete lines of a file that is read in pieces; false at the end.
    bool NextPiece()
    {
        if (m_pieces == nullptr)
            return false;
        const auto used = static_cast<std::size_t>(m_at - m_pieces->View().data());
        // Again if a line is longer than a piece.
        for (bool isMore = m_isAhead || m_pieces->Next(used); isMore; isMore = m_pieces->Next(0))
        {
            m_isAhead = false;
            const std::string_view view = m_pieces->View();
            if (const std::size_t newline = view.rfind('\n'); newline != std::string_view::npos)
            {
                Start(view.substr(0, newline + 1));
                return true;
            }
        }
        Start(m_pieces->View()); // the last line, if it has no end
        return m_at != m_end;
    }
    // The line without a NUL and the text after it. Searches for NULs piece by piece, shortly before the lines are
    // read.
    std::string_view TextOf(std::string_view line)
    {
        const char* const lineEnd = line.data() + line.size();
        if (m_checked < m_at)
            m_checked = m_at;
        while (!m_hasNul && m_checked < lineEnd)
        {
            const std::ptrdiff_t piece = std::min(kPiece, m_end - m_checked);
            m_hasNul = std::memchr(m_checked, '\0', static_cast<std::size_t>(piece)) != nullptr;
            m_checked += piece;
        }
        return m_hasNul ? BeforeNul(line) : line;
    }
    std::string_view BeforeNul(std::string_view line)
    {
        const std::size_t nul = line.find('\0');
        const auto isLost = [](char character) { return character != '\0' && !IsAsciiSpace(character); };
        if (nul != std::string_view::npos && m_cutLines != nullptr &&
            std::any_of(line.begin() + static_cast<std::ptrdiff_t>(nul), line.end(), isLost))
            m_cutLines->OnCutLine(m_lineNumber + 1);
        return line.substr(0, nul);
    }

    CFileBytes m_bytes;
    std::unique_ptr<CFilePieces> m_pieces;
    bool m_wasRead;
    bool m_isAhead = false; // a piece was read and not gone through
    bool m_hasNul = false;
    CutLines* m_cutLines = nullptr;
    const char* m_checked = nullptr; // no NUL before this
    int m_lineNumber = 0;
    const char* m_at = nullptr;
    const char* m_end = nullptr;
    const char* m_wholeEnd = nullptr; // of the last line with an end
    std::string_view m_line;
};

// Goes through the lines ahead of the scanner with `read(at, end, number)`: `at` is where a line begins, `end` is behind
// the last LF, `number` is the line's. It returns where the next line begins, or null to stop at this line.
template <class Read>
void ReadLinesAhead(CLineScanner& scanner, Read read)
{
    const std::string_view ahead = scanner.Ahead();
    const char* const end = ahead.data() + ahead.size();
    const int first = scanner.NumberAhead();
    const char* at = ahead.data();
    int lines = 0;
    for (const char* next = nullptr; at != end && (next = read(at, end, first + lines)) != nullptr; at = next)
        ++lines;
    scanner.Took(at, lines);
}
