#include "saving/CRecordLines.h"

#include <algorithm>
#include <array>
#include <charconv>

void AppendInteger(std::string& text, __int64 number)
{
    std::array<char, 24> digits{};
    const auto printed = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), printed.ptr);
}

void AppendReal(std::string& text, double number)
{
    std::array<char, 400> digits{}; // the longest number below 2^1024 has 309, the smallest 325 and "-0."
    const double plain = number == 0.0 ? 0.0 : number;
    const auto printed = std::to_chars(digits.data(), digits.data() + digits.size(), plain, std::chars_format::fixed);
    text.append(digits.data(), printed.ptr);
}

void CRecordLines::Begin(int depth, int sourceLine)
{
    const std::size_t at = m_text.size();
    m_lines.push_back({at, at, at, depth, sourceLine, false, false});
}

void CRecordLines::BeginAbove(int depth)
{
    Begin(depth, kUnknownLine);
    m_lines.back().isAbove = true;
}

void CRecordLines::Separate()
{
    Line& line = m_lines.back();
    if (line.begin == line.end)
        return;
    if (line.keyEnd == line.begin)
        line.keyEnd = line.end; // of the first field
    m_text += ' ';
}

CRecordLines& CRecordLines::Word(std::string_view text)
{
    Separate();
    return Glue(text);
}

CRecordLines& CRecordLines::Integer(__int64 number)
{
    Separate();
    return GlueInteger(number);
}

CRecordLines& CRecordLines::Real(double number)
{
    Separate();
    AppendReal(m_text, number);
    Extend();
    return *this;
}

CRecordLines& CRecordLines::Glue(std::string_view text)
{
    m_text += text;
    Extend();
    return *this;
}

CRecordLines& CRecordLines::GlueInteger(__int64 number)
{
    AppendInteger(m_text, number);
    Extend();
    return *this;
}

CRecordLines& CRecordLines::EndKey()
{
    m_lines.back().keyEnd = m_text.size();
    return *this;
}

void CRecordLines::BeginKey(int depth, std::string_view key)
{
    Begin(depth, kUnknownLine);
    m_lines.back().isKeyValue = true;
    Glue(key).EndKey().Glue("=");
}

void CRecordLines::KeyValue(int depth, std::string_view key, std::string_view value)
{
    BeginKey(depth, key);
    Glue(value);
}

void CRecordLines::KeyInteger(int depth, std::string_view key, __int64 value)
{
    BeginKey(depth, key);
    GlueInteger(value);
}

void CRecordLines::KeyReal(int depth, std::string_view key, double value)
{
    BeginKey(depth, key);
    AppendReal(m_text, value);
    Extend();
}

std::string CRecordLines::WholeText() const
{
    std::string text;
    text.reserve(m_text.size() + m_lines.size());
    for (const Line& line : m_lines)
        text.append(TextOf(line)).append(1, '\n');
    return text;
}
