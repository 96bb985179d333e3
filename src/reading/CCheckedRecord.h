// How complete reading takes the fields of a record.
#pragma once

#include "foundation/CLineScanner.h"
#include "foundation/corekit/CPointD.h"
#include "reading/CFileMessages.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

// Takes the fields of one record from the front and reports what is wrong with them. Fields are separated by white
// space. A missing field leaves its value unchanged; a field that should be a number and is none gives what it begins
// with, as classic reading does.
// Ownership: borrows the record, the messages and the kinds.
class CCheckedRecord
{
public:
    // The message kinds of the file.
    struct Kinds
    {
        const CJOBXmessageKind& tooFew;
        const CJOBXmessageKind& tooMany;
        const CJOBXmessageKind& notNumber;
    };

    // `record` is a line without its tail. Its first field is the keyword.
    CCheckedRecord(std::string_view record, int line, CFileMessages& messages, const Kinds& kinds)
        : m_at(record.data()), m_end(record.data() + record.size()), m_line(line), m_messages(messages), m_kinds(kinds)
    {
        m_keyword = Next();
    }

    std::string_view Keyword() const noexcept { return m_keyword; }
    // Whether the keyword is this one, letters in any case.
    bool Is(std::string_view upperKeyword) const noexcept
    {
        return m_keyword.size() == upperKeyword.size() && BeginsWith(m_keyword, upperKeyword);
    }
    // The number in a keyword such as "$12", behind `prefix`.
    void KeywordInteger(std::string_view prefix, int& value)
    {
        const std::string_view digits = m_keyword.substr(std::min(prefix.size(), m_keyword.size()));
        const NumberRead<std::int32_t> read = ReadInteger(digits.data(), digits.data() + digits.size());
        value = read.value;
        CheckEnd(digits.empty() ? m_keyword.data() : read.end, m_keyword);
    }
    bool IsAtEnd() noexcept { return Left().empty(); }
    // What was not taken yet, without the blanks before it.
    std::string_view Left() noexcept
    {
        SkipBlanks();
        return {m_at, static_cast<std::size_t>(m_end - m_at)};
    }

    // Each takes one field; false if the record has ended.
    bool Text(std::string_view& field)
    {
        if (IsAtEnd())
            return Missing();
        field = Next();
        return true;
    }
    bool Text(CString& text)
    {
        std::string_view field;
        const bool isThere = Text(field);
        if (isThere)
            text = field;
        return isThere;
    }
    bool Integer(int& value)
    {
        SkipBlanks();
        return TakePlain(ReadPlainInteger(m_at, m_end, value)) || CheckedInteger(value);
    }
    bool Real(double& value)
    {
        SkipBlanks();
        return TakePlain(number_text::ReadPlainReal(m_at, m_end, value)) || CheckedReal(value);
    }
    bool Point(CPointD& point)
    {
        double x = point.x;
        double y = point.y;
        const bool isWhole = Real(x) && Real(y);
        point.SetData(x, y);
        return isWhole;
    }
    // Everything that is left, trimmed; it must not be empty.
    bool Rest(std::string_view& text)
    {
        if (IsAtEnd())
            return Missing();
        text = TrimmedRight({m_at, static_cast<std::size_t>(m_end - m_at)});
        m_at = m_end;
        return true;
    }

    // After the last field: reports any further ones.
    void End()
    {
        if (!IsAtEnd())
            m_messages.Say(m_kinds.tooMany, m_line, "The record ", Quoted{m_keyword},
                           " has more fields than it should: ", Quoted{{m_at, static_cast<std::size_t>(m_end - m_at)}},
                           ".");
    }

private:
    // A whole number of a few digits, with or without "-" before it; null for anything else.
    static const char* ReadPlainInteger(const char* at, const char* end, int& value) noexcept
    {
        constexpr std::ptrdiff_t kMostDigits = 9; // always fit
        const bool isNegative = at != end && *at == '-';
        const char* const digits = at + (isNegative ? 1 : 0);
        const char* const last = end - digits > kMostDigits ? digits + kMostDigits : end;
        int number = 0;
        for (at = digits; at != last && number_text::IsDigit(*at); ++at)
            number = number * 10 + (*at - '0');
        if (at == digits)
            return nullptr;
        value = isNegative ? -number : number;
        return at;
    }
    // Takes a field up to `end` if it is the whole field.
    bool TakePlain(const char* end) noexcept
    {
        const bool isWhole = end != nullptr && (end == m_end || IsBlank(*end));
        if (isWhole)
            m_at = end;
        return isWhole;
    }
    bool CheckedInteger(int& value)
    {
        std::string_view field;
        if (!Text(field))
            return false;
        const NumberRead<std::int32_t> read = ReadInteger(field.data(), field.data() + field.size());
        value = read.value;
        CheckEnd(read.end, field);
        return true;
    }
    bool CheckedReal(double& value)
    {
        std::string_view field;
        if (!Text(field))
            return false;
        const NumberRead<double> read = ReadReal(field.data(), field.data() + field.size());
        value = read.value;
        CheckEnd(std::isfinite(value) ? read.end : field.data(), field);
        return true;
    }
    static bool IsBlank(char character) noexcept { return character == ' ' || character == '\t'; }
    void SkipBlanks() noexcept
    {
        while (m_at != m_end && IsBlank(*m_at))
            ++m_at;
    }
    std::string_view Next() noexcept
    {
        SkipBlanks();
        const char* const begin = m_at;
        while (m_at != m_end && !IsBlank(*m_at))
            ++m_at;
        return {begin, static_cast<std::size_t>(m_at - begin)};
    }
    // Reported once for each record.
    bool Missing()
    {
        if (!m_isShort)
            m_messages.Say(m_kinds.tooFew, m_line, "The record ", Quoted{m_keyword}, " has too few fields.");
        m_isShort = true;
        return false;
    }
    void CheckEnd(const char* end, std::string_view field)
    {
        if (end != field.data() + field.size())
            m_messages.Say(m_kinds.notNumber, m_line, "The field ", Quoted{field}, " of the record ", Quoted{m_keyword},
                           " is not a number.");
    }

    const char* m_at;
    const char* m_end;
    int m_line;
    CFileMessages& m_messages;
    const Kinds& m_kinds;
    std::string_view m_keyword;
    bool m_isShort = false;
};
