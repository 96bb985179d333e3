// Three ways to parse the fields of a feature line. FeatureLines.h says which fields there are.
#pragma once

#include "foundation/CLineScanner.h"
#include "layer/FeatureLines.h"

#include <algorithm>
#include <cmath>
#include <cstring>
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
    bool OptionalInteger(int& value) noexcept { return LastInteger(value); }
    // The classic reader looks for no angle in a barcode.
    bool BarcodeAngle(int /*orientation*/, double& /*angle*/) noexcept { return true; }
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

// Parses plain fields, as most programs print them: single blanks between them, plain numbers. Returns false for anything
// else, which is then left to the other cursors. For fields that both accept, the results are the same.
class CPlainFields
{
public:
    // `end` is behind a LF, which no operation but LineEnd passes.
    CPlainFields(const char* at, const char* end) noexcept : m_at(at), m_end(end) {}

    const char* At() const noexcept { return m_at; }

    // These also consume the blank after the field.
    [[gnu::always_inline]] bool Real(double& value) noexcept { return LastReal(value) && Is(' '); }
    [[gnu::always_inline]] bool Point(FeaturePoint& point) noexcept { return Real(point.x) && Real(point.y); }
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
    [[gnu::always_inline]] bool LastPoint(FeaturePoint& point) noexcept { return Real(point.x) && LastReal(point.y); }
    bool CurveClockwise(std::string_view& clockwise) noexcept { return LastClockwise(clockwise); }
    bool LastOrientation(int& code, double& angle) noexcept
    {
        return Digits(code) && (!Is(' ') || !BeginsReal() || LastReal(angle));
    }

    // An attribute list: everything up to a ";", a blank or the end of the line.
    std::string_view List() noexcept
    {
        const char* const begin = m_at;
        while (!EndsList(*m_at))
            ++m_at;
        return {begin, static_cast<std::size_t>(m_at - begin)};
    }
    // Takes the list if it is this one.
    bool TakeList(std::string_view list) noexcept
    {
        if (static_cast<std::size_t>(m_end - m_at) <= list.size() || !EndsList(m_at[list.size()]) ||
            std::memcmp(m_at, list.data(), list.size()) != 0)
            return false;
        m_at += list.size();
        return true;
    }

    // "ID=" and a number.
    bool ID(__int64& id) noexcept
    {
        int number = 0;
        if (!Is('I') || !Is('D') || !Is('=') || !Digits(number))
            return false;
        id = number;
        return true;
    }

    bool Is(char character) noexcept
    {
        if (*m_at != character)
            return false;
        ++m_at;
        return true;
    }
    void SkipBlanks() noexcept
    {
        while (*m_at == ' ')
            ++m_at;
    }
    // Moves to the end of the line, if there is none of these before it.
    bool SkipLineWithout(char one, char other) noexcept
    {
        while (*m_at != '\n' && *m_at != one && *m_at != other)
            ++m_at;
        return *m_at == '\n';
    }
    bool LineEnd() noexcept
    {
        if (*m_at == '\r')
            ++m_at;
        if (*m_at != '\n')
            return false;
        ++m_at;
        return true;
    }

private:
    static bool EndsList(char character) noexcept
    {
        return static_cast<unsigned char>(character) <= ' ' || character == features_format::kAttributes;
    }
    bool BeginsReal() const noexcept { return number_text::IsDigit(*m_at) || *m_at == '-' || *m_at == '.'; }
    [[gnu::always_inline]] bool LastReal(double& value) noexcept
    {
        const char* const read = number_text::ReadDecimal(m_at, number_text::FarEnd{m_end}, value);
        m_at = read != nullptr ? read : m_at;
        return read != nullptr;
    }
    // A number without a sign.
    bool Digits(int& value) noexcept
    {
        constexpr int kMost = 9; // digits that fit
        const char* at = m_at;
        unsigned number = 0;
        for (; number_text::IsDigit(*at); ++at)
            number = number * 10U + static_cast<unsigned>(*at - '0');
        if (at == m_at || at - m_at > kMost)
            return false;
        m_at = at;
        value = static_cast<int>(number);
        return true;
    }
    bool Letter(std::string_view& letter, char one, char other) noexcept
    {
        if (*m_at != one && *m_at != other)
            return false;
        letter = {m_at++, 1};
        return true;
    }

    const char* m_at;
    const char* m_end;
};

// Takes fields from the record part of any line, as lenient ones do, and remembers what is wrong with them: the first
// field that is no number, whether there were too few fields, and what is left. Blanks and tabs separate.
class CCheckedFields
{
public:
    // The record is trimmed and has no tail; its keyword is passed over.
    explicit CCheckedFields(std::string_view record) noexcept : m_rest(record) { NextField(); }

    bool Real(double& value) noexcept
    {
        const std::string_view field = NextNeeded();
        if (field.empty())
            return true;
        const auto read = ReadReal(field.data(), field.data() + field.size());
        value = read.value;
        return Numeric(field, std::isfinite(value) ? read.end : field.data());
    }
    bool Integer(int& value) noexcept
    {
        const std::string_view field = NextNeeded();
        return field.empty() || WholeNumber(field, value);
    }
    bool Text(std::string_view& value) noexcept
    {
        const std::string_view field = NextNeeded();
        if (!field.empty())
            value = field;
        return true;
    }
    bool Point(FeaturePoint& point) noexcept { return Real(point.x) && Real(point.y); }
    bool Polarity(std::string_view& polarity) noexcept { return Text(polarity); }
    bool LastInteger(int& value) noexcept { return Integer(value); }
    bool LastClockwise(std::string_view& clockwise) noexcept { return Text(clockwise); }
    bool LastPoint(FeaturePoint& point) noexcept { return Point(point); }
    bool CurveClockwise(std::string_view& clockwise) noexcept { return Text(clockwise); }
    bool LastOrientation(int& code, double& angle) noexcept
    {
        Integer(code);
        // Other codes may have an angle, which is 0 then.
        return IsTurned(code) ? Real(angle) : m_rest.empty() || Real(angle);
    }
    bool BarcodeAngle(int orientation, double& angle) noexcept { return !IsTurned(orientation) || Real(angle); }
    bool OptionalInteger(int& value) noexcept { return m_rest.empty() || Integer(value); }

    // The text between the first quote and the last one of the record, whatever stands between them. A text without
    // quotes is a field.
    bool Quoted(std::string_view& text) noexcept
    {
        const std::size_t quote = m_rest.find(features_format::kQuote);
        if (quote == std::string_view::npos)
            return Text(text);
        const std::string_view open = m_rest.substr(quote + 1);
        const std::size_t end = open.rfind(features_format::kQuote);
        m_hasOpenQuote = end == std::string_view::npos;
        text = open.substr(0, end);
        m_rest = m_hasOpenQuote ? std::string_view() : TrimmedLeft(open.substr(end + 1));
        return true;
    }

    bool AreTooFew() const noexcept { return m_areTooFew; }
    bool HasOpenQuote() const noexcept { return m_hasOpenQuote; }
    std::string_view NoNumber() const noexcept { return m_noNumber; } // the first field that had to be one; or ""
    std::string_view Left() const noexcept { return m_rest; }

private:
    std::string_view NextField() noexcept
    {
        std::size_t size = 0;
        while (size != m_rest.size() && m_rest[size] != ' ' && m_rest[size] != '\t')
            ++size;
        const std::string_view field = m_rest.substr(0, size);
        m_rest = TrimmedLeft(m_rest.substr(size));
        return field;
    }
    std::string_view NextNeeded() noexcept
    {
        m_areTooFew = m_areTooFew || m_rest.empty();
        return NextField();
    }
    bool Numeric(std::string_view field, const char* end) noexcept
    {
        if (end != field.data() + field.size() && m_noNumber.empty())
            m_noNumber = field;
        return true;
    }
    bool WholeNumber(std::string_view field, int& value) noexcept
    {
        const auto read = ReadInteger(field.data(), field.data() + field.size());
        value = read.value;
        return Numeric(field, read.end);
    }

    std::string_view m_rest;
    std::string_view m_noNumber;
    bool m_areTooFew = false;
    bool m_hasOpenQuote = false;
};
