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
    bool HasBlank() const noexcept { return m_rest.find(' ') != std::string_view::npos; }

    std::string_view Token() noexcept
    {
        const std::size_t blank = m_rest.find(' ');
        if (blank == std::string_view::npos)
            return {};
        const std::string_view token = m_rest.substr(0, blank);
        m_rest = Trimmed(m_rest.substr(blank));
        return token;
    }
    int Integer() noexcept { return ParseInteger(Token()); }
    double Real() noexcept { return ParseReal(Token()); }

    // The next token, or all that is left when no blank is left; nothing is left then.
    std::string_view TokenOrRest() noexcept
    {
        if (HasBlank())
            return Token();
        const std::string_view rest = m_rest;
        m_rest = {};
        return rest;
    }

private:
    std::string_view m_rest;
};

// The text behind the keyword that begins the line: behind its first blank, trimmed; the whole line when it has none.
inline std::string_view WithoutKeyword(std::string_view line) noexcept
{
    CTokenScanner fields(line);
    fields.Token();
    return fields.Rest();
}

// Takes the items of an attribute list "0=2,1" one by one, trimmed. A run of commas separates once, commas at the front
// do not count, and an empty last item is dropped; an item of blanks between two commas is an empty one.
class CAttributeListScanner
{
public:
    explicit CAttributeListScanner(std::string_view text) noexcept : m_rest(text) {}

    bool Next(std::string_view& item) noexcept
    {
        m_rest = WithoutLeading(m_rest, ',');
        const std::size_t comma = m_rest.find(',');
        item = Trimmed(m_rest.substr(0, comma));
        const bool last = comma == std::string_view::npos;
        m_rest = last ? std::string_view() : m_rest.substr(comma);
        return !last || !item.empty();
    }

private:
    std::string_view m_rest;
};
