// How the readers of the step's files take apart a line whose fields are counted from its front.
#pragma once

#include "foundation/CTextScanner.h"

#include <string_view>

// Takes blank-separated tokens from the front of a trimmed text. A token is the text before the first blank; taking it
// removes it with the blanks behind it. When no blank is left, a token is empty (0 as a number) and nothing is removed,
// so that the last piece stays for what takes the rest; files and hosts rely on it.
class CTokenScanner
{
public:
    explicit CTokenScanner(std::string_view text) noexcept : m_rest(text) {}

    // What has not been taken yet.
    std::string_view Rest() const noexcept { return m_rest; }

    std::string_view Token() noexcept
    {
        const char* const begin = m_rest.data();
        const char* const blank = TakeTo(begin);
        return blank != nullptr ? std::string_view(begin, static_cast<std::size_t>(blank - begin)) : std::string_view();
    }
    int Integer() noexcept { return Number(ReadInteger(m_rest.data(), m_rest.data() + m_rest.size())); }
    double Real() noexcept { return Number(ReadReal(m_rest.data(), m_rest.data() + m_rest.size())); }

    // The next token, or all that is left when no blank is left; nothing is left then.
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
    // The value, when a blank ends its token; no number goes past a blank.
    template <class T>
    T Number(const NumberRead<T>& read) noexcept
    {
        return TakeTo(read.end) != nullptr ? read.value : T{};
    }
    // Removes the token that reaches at least to `at`, with the blanks behind it, and answers where it ended; null, and
    // nothing removed, when no blank ends it. Tokens are short: a loop finds the blank sooner than a search.
    const char* TakeTo(const char* at) noexcept
    {
        const char* const end = m_rest.data() + m_rest.size();
        while (at != end && *at != ' ')
            ++at;
        if (at == end)
            return nullptr;
        const char* const blank = at;
        while (at != end && IsAsciiSpace(*at)) // the end is trimmed already
            ++at;
        m_rest = {at, static_cast<std::size_t>(end - at)};
        return blank;
    }

    std::string_view m_rest;
};

// The text behind the keyword that begins the line: behind its first blank, trimmed; the whole line when it has none.
inline std::string_view WithoutKeyword(std::string_view line) noexcept
{
    CTokenScanner fields(line);
    fields.Token();
    return fields.Rest();
}

// Takes the items of an attribute list "0=2,1" one by one, trimmed. A run of commas separates once. Commas at the front
// make one empty first item, and an empty last item is dropped; an item of blanks between two commas is an empty one.
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
