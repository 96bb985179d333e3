// Lines with fields at fixed positions, in which the last field has no blank behind it and is left.
#pragma once

#include "foundation/CLineScanner.h"

#include <string_view>

// Takes blank-separated tokens from the front of a trimmed text. A token is the text before the first blank; taking it
// removes it and the blanks after it. If there is no blank, the token is empty (0 as a number) and nothing is removed,
// so the last piece is left for whatever takes the rest. Files and hosts rely on it. CFieldScanner differs in the last
// field only: there it is everything that is left.
class CBlankEndedScanner
{
public:
    explicit CBlankEndedScanner(std::string_view text) noexcept : m_rest(text) {}

    // The text not taken yet.
    std::string_view Rest() const noexcept { return m_rest; }

    std::string_view Token() noexcept
    {
        const char* const begin = m_rest.data();
        const char* const blank = TakeTo(begin);
        return blank != nullptr ? std::string_view(begin, static_cast<std::size_t>(blank - begin)) : std::string_view();
    }
    int Integer() noexcept { return Number(ReadInteger(m_rest.data(), m_rest.data() + m_rest.size())); }
    double Real() noexcept { return Number(ReadReal(m_rest.data(), m_rest.data() + m_rest.size())); }

    // The next token, or everything that is left if there is no blank.
    std::string_view TokenOrRest() noexcept
    {
        const char* const begin = m_rest.data();
        const char* const blank = TakeTo(begin);
        if (blank != nullptr)
            return {begin, static_cast<std::size_t>(blank - begin)};
        const std::string_view rest = m_rest;
        m_rest = {};
        return rest;
    }

private:
    // The value, if a blank ends its token; a number never contains a blank.
    template <class T>
    T Number(const NumberRead<T>& read) noexcept
    {
        return TakeTo(read.end) != nullptr ? read.value : T{};
    }
    // Removes the token that reaches at least to `at` and the blanks after it. Returns where the token ended, or null,
    // removing nothing, if no blank ends it. Tokens are short, so a loop finds the blank faster than a search.
    const char* TakeTo(const char* at) noexcept
    {
        const char* const end = m_rest.data() + m_rest.size();
        while (at != end && *at != ' ')
            ++at;
        if (at == end)
            return nullptr;
        const char* const blank = at;
        while (at != end && IsAsciiSpace(*at)) // the end is already trimmed
            ++at;
        m_rest = {at, static_cast<std::size_t>(end - at)};
        return blank;
    }

    std::string_view m_rest;
};

// The text after the first blank, trimmed; the whole line if it has no blank.
inline std::string_view WithoutKeyword(std::string_view line) noexcept
{
    CBlankEndedScanner fields(line);
    fields.Token();
    return fields.Rest();
}

// Takes the items of an attribute list such as "0=2,1" one by one, trimmed. A run of commas separates once. Leading
// commas make one empty first item, and an empty last item is dropped. An item of blanks between two commas is empty.
class CAttributeListScanner
{
public:
    explicit CAttributeListScanner(std::string_view text) noexcept : m_rest(text) {}

    bool Next(std::string_view& item) noexcept
    {
        const std::size_t comma = m_rest.find(',');
        item = Trimmed(m_rest.substr(0, comma));
        const bool last = comma == std::string_view::npos;
        m_rest = last ? std::string_view() : WithoutLeading(m_rest.substr(comma), ',');
        return !last || !item.empty();
    }

private:
    std::string_view m_rest;
};
