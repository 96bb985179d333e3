// How complete reading takes the fields of most lines: in one pass, without looking for the end of the line first.
#pragma once

#include "foundation/CJOBXtailed.h"
#include "foundation/CLineScanner.h"
#include "foundation/corekit/CPointD.h"

#include <cstring>
#include <string_view>

// The tail of a plain line.
struct CPlainTail
{
    std::string_view attributes{}; // "0=1,2"
    __int64 id = CJOBXtailed::kNoID;
};

// Takes the fields of a line in the form that most programs write: a keyword in capital letters, then plain numbers and
// words with one blank before each. Every operation returns false for anything else. The line is then left to
// CCheckedRecord, which takes the same fields from a line that both accept.
// Ownership: borrows the text. A LF ends the line, so whatever is behind another character may be looked at.
class CPlainRecord
{
public:
    // `end` is behind the last LF of the text.
    CPlainRecord(const char* at, const char* end) noexcept : m_at(at), m_end(end) {}

    const char* At() const noexcept { return m_at; }
    bool Is(char character) noexcept
    {
        if (*m_at != character)
            return false;
        ++m_at;
        return true;
    }
    bool Keyword(std::string_view keyword) noexcept
    {
        for (const char letter : keyword)
            if (!Is(letter))
                return false;
        return true;
    }
    // The number in a keyword such as "12".
    bool KeywordInteger(int& value) noexcept { return Digits(value); }

    bool Integer(int& value) noexcept { return Is(' ') && Digits(value); }
    [[gnu::always_inline]] bool Real(double& value) noexcept
    {
        if (!Is(' '))
            return false;
        const char* const read = number_text::ReadDecimal(m_at, number_text::FarEnd{m_end}, value);
        m_at = read != nullptr ? read : m_at;
        return read != nullptr;
    }
    [[gnu::always_inline]] bool Point(CPointD& point) noexcept { return Real(point.x) && Real(point.y); }
    bool Text(std::string_view& field) noexcept { return Is(' ') && Word(field); }
    // What CCheckedRecord calls the rest is one word in a plain line.
    bool Rest(std::string_view& text) noexcept { return Text(text); }
    // A number as text.
    bool NumberText(std::string_view& field) noexcept
    {
        constexpr std::ptrdiff_t kLongest = 20; // far from the largest number
        const char* const begin = m_at + 1;
        if (!Is(' '))
            return false;
        Is('-');
        const char* const first = m_at;
        SkipDigits();
        const bool hasPoint = Is('.');
        SkipDigits();
        field = {begin, static_cast<std::size_t>(m_at - begin)};
        return m_at - first > (hasPoint ? 1 : 0) && m_at - first <= kLongest;
    }
    // Text between quotes, which may contain quotes, and the end of the line.
    bool QuotedToEnd(std::string_view& text) noexcept
    {
        if (!Is(' ') || !Is('\''))
            return false;
        const char* const begin = m_at;
        const auto* const newline =
            static_cast<const char*>(std::memchr(begin, '\n', static_cast<std::size_t>(m_end - begin)));
        text = TrimmedRight({begin, static_cast<std::size_t>(newline - begin)});
        if (!text.ends_with('\'') || text.find('\0') != std::string_view::npos)
            return false;
        text.remove_suffix(1);
        m_at = newline + 1;
        return true;
    }
    // Words up to the end of the line, if there are any, without the blanks around them.
    bool WordsToEnd(std::string_view& words) noexcept
    {
        if (*m_at != ' ')
            return LineEnd();
        SkipBlanks();
        const char* const begin = m_at;
        while (IsOfWord(*m_at) || *m_at == ' ')
            ++m_at;
        words = TrimmedRight({begin, static_cast<std::size_t>(m_at - begin)});
        return LineEnd();
    }

    // The end of the line, without a tail and with one.
    bool End() noexcept
    {
        SkipBlanks();
        return LineEnd();
    }
    bool End(CPlainTail& tail) noexcept
    {
        SkipBlanks();
        return (!Is(';') || Tail(tail)) && LineEnd();
    }

private:
    static bool IsOfWord(char character) noexcept
    {
        return static_cast<unsigned char>(character) > ' ' && character != ';';
    }
    bool Word(std::string_view& word) noexcept
    {
        const char* const begin = m_at;
        while (IsOfWord(*m_at))
            ++m_at;
        word = {begin, static_cast<std::size_t>(m_at - begin)};
        return !word.empty();
    }
    void SkipDigits() noexcept
    {
        while (number_text::IsDigit(*m_at))
            ++m_at;
    }
    // A number without a sign, and not the beginning of something else.
    bool Digits(int& value) noexcept
    {
        constexpr std::ptrdiff_t kMost = 9; // digits that fit
        const char* at = m_at;
        unsigned number = 0;
        for (; number_text::IsDigit(*at); ++at)
            number = number * 10U + static_cast<unsigned>(*at - '0');
        const bool isPlain = at != m_at && at - m_at <= kMost;
        m_at = at;
        value = static_cast<int>(number);
        return isPlain;
    }
    // Behind the first ";": attributes, "ID=3", or attributes and ";ID=3".
    bool Tail(CPlainTail& tail) noexcept
    {
        if (AsciiUpper(*m_at) == 'I')
            return ID(tail.id);
        Word(tail.attributes);
        SkipBlanks();
        return !Is(';') || *m_at != 'I' || ID(tail.id);
    }
    bool ID(__int64& id) noexcept
    {
        int number = 0;
        if (!Keyword("ID=") || !Digits(number))
            return false;
        id = number;
        return true;
    }
    void SkipBlanks() noexcept
    {
        while (*m_at == ' ')
            ++m_at;
    }
    bool LineEnd() noexcept
    {
        Is('\r');
        return Is('\n');
    }

    const char* m_at;
    const char* m_end;
};
