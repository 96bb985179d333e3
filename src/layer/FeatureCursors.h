// Two ways to parse the fields of a feature line. FeatureLines.h says which fields there are.
#pragma once

#include "foundation/CTextScanner.h"
#include "layer/FeatureLines.h"

#include <algorithm>
#include <string_view>

// Parses fields of any line. A missing field does not change its value, a field that is not a number gives 0. Every
// operation returns true.
class CLenientFields
{
public:
    // The line is trimmed; its keyword is skipped.
    explicit CLenientFields(std::string_view line) noexcept : m_fields(line) { m_fields.Skip(); }

    bool Real(double& value) noexcept
    {
        m_fields.Real(value);
        return true;
    }
    bool Integer(int& value) noexcept
    {
        m_fields.Integer(value);
        return true;
    }
    bool Text(std::string_view& field) noexcept
    {
        m_fields.Text(field);
        return true;
    }
    bool Point(FeaturePoint& point) noexcept { return Real(point.x) && Real(point.y); }
    bool Polarity(std::string_view& polarity) noexcept { return Text(polarity); }

    // The last fixed field of a line: the text before the ";" of the attributes, or the next field if there are none.
    bool LastInteger(int& value) noexcept
    {
        const std::string_view field = LastField();
        if (!field.empty())
            value = ParseInteger(field);
        return true;
    }
    bool LastClockwise(std::string_view& clockwise) noexcept
    {
        clockwise = LastField();
        return true;
    }
    bool LastPoint(FeaturePoint& point) noexcept { return Point(point); }
    // Of a contour's arc, which has no attributes: ";" is an ordinary character.
    bool CurveClockwise(std::string_view& clockwise) noexcept { return Text(clockwise); }
    // "8 30 ;1=2": the code, and the angle if a blank follows the code.
    bool LastOrientation(int& code, double& angle) noexcept
    {
        CFieldScanner fields(TakeAttributes());
        fields.Integer(code);
        fields.Real(angle);
        return true;
    }

    // Moves behind the text between quotes. All leading quotes are dropped, so the text neither begins with a quote nor
    // contains one. An unclosed quote takes the rest of the line. False without a quote; then nothing is skipped.
    bool Quoted(std::string_view& text) noexcept
    {
        const std::string_view rest = m_fields.Rest();
        const std::size_t quote = rest.find(features_format::kQuote);
        if (quote == std::string_view::npos)
            return false;
        const std::string_view open = WithoutLeading(rest.substr(quote), features_format::kQuote);
        text = open.substr(0, open.find(features_format::kQuote));
        m_fields = CFieldScanner(Trimmed(open.substr(std::min(text.size() + 1, open.size()))));
        return true;
    }

    // The attribute list after the last field, without the ";" before it; "" if there is none.
    std::string_view Attributes() const noexcept { return m_attributes; }

private:
    // What is left before the attributes. Keeps the attributes.
    std::string_view TakeAttributes() noexcept
    {
        const std::string_view rest = m_fields.Rest();
        const std::size_t semicolon = rest.find(features_format::kAttributes);
        if (semicolon != std::string_view::npos)
            m_attributes = WithoutLeading(rest.substr(semicolon), features_format::kAttributes);
        return Trimmed(rest.substr(0, semicolon));
    }
    std::string_view LastField() noexcept
    {
        if (m_fields.Rest().find(features_format::kAttributes) != std::string_view::npos)
            return TakeAttributes();
        std::string_view field;
        m_fields.Text(field);
        return field;
    }

    CFieldScanner m_fields;
    std::string_view m_attributes;
};

// Parses fields as most programs print them: single blanks, plain numbers, no blank at either end. Returns false for
// anything else, which is then left to CLenientFields. For fields that both accept, the results are the same.
class CStrictFields
{
public:
    CStrictFields(const char* at, const char* end) noexcept : m_at(at), m_end(end) {}

    const char* At() const noexcept { return m_at; }

    // These also consume the blank after the field.
    bool Real(double& value) noexcept
    {
        const char* const read = number_text::ReadPlainReal(m_at, m_end, value);
        if (read == nullptr || read == m_end || *read != ' ')
            return false;
        m_at = read + 1;
        return true;
    }
    bool Point(FeaturePoint& point) noexcept { return Real(point.x) && Real(point.y); }
    bool Integer(int& value) noexcept { return Digits(value) && Is(' '); }
    bool Polarity(std::string_view& polarity) noexcept
    {
        return Letter(polarity, features_format::kPositive, features_format::kNegative) && Is(' ');
    }

    // The last fields of a line, without the end of the line or the attributes after them.
    bool LastInteger(int& value) noexcept { return Digits(value); }
    bool LastClockwise(std::string_view& clockwise) noexcept
    {
        return Letter(clockwise, features_format::kClockwise, features_format::kCounterClockwise);
    }
    bool LastPoint(FeaturePoint& point) noexcept { return Real(point.x) && LastReal(point.y); }
    bool CurveClockwise(std::string_view& clockwise) noexcept { return LastClockwise(clockwise); }
    bool LastOrientation(int& code, double& angle) noexcept { return Digits(code) && (!Is(' ') || LastReal(angle)); }

    bool Is(char character) noexcept
    {
        if (m_at == m_end || *m_at != character)
            return false;
        ++m_at;
        return true;
    }
    bool LineEnd() noexcept
    {
        if (m_at != m_end && *m_at == '\r')
            ++m_at;
        return Is('\n');
    }

private:
    bool LastReal(double& value) noexcept
    {
        const char* const read = number_text::ReadPlainReal(m_at, m_end, value);
        m_at = read != nullptr ? read : m_at;
        return read != nullptr;
    }
    // A number without a sign.
    bool Digits(int& value) noexcept
    {
        constexpr int kMost = 9; // digits that fit
        const char* at = m_at;
        int number = 0;
        for (; at != m_end && number_text::IsDigit(*at) && at - m_at <= kMost; ++at)
            number = static_cast<int>(static_cast<unsigned>(number) * 10U + static_cast<unsigned>(*at - '0'));
        if (at == m_at || at - m_at > kMost)
            return false;
        m_at = at;
        value = number;
        return true;
    }
    bool Letter(std::string_view& letter, char one, char other) noexcept
    {
        if (m_at == m_end || (*m_at != one && *m_at != other))
            return false;
        letter = {m_at++, 1};
        return true;
    }

    const char* m_at;
    const char* m_end;
};
