// What the EDA data and the components files have in common.
#pragma once

#include "foundation/CBlankEndedScanner.h"
#include "foundation/CLineScanner.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CStringArray.h"

#include <algorithm>
#include <string_view>

// Whether the text is an entry of an attribute table: "@0 .name" or "&0 text".
inline bool IsTableEntry(std::string_view text) noexcept
{
    return text.size() > 1 && (text[0] == '@' || text[0] == '&') && number_text::IsDigit(text[1]);
}

// Adds the entry to the table of names or of texts.
inline void AddTableEntry(std::string_view entry, CArrayN& nameNumbers, CStringArray& names, CArrayN& textNumbers,
                          CStringArray& texts)
{
    const bool isName = entry.front() == '@';
    entry.remove_prefix(1);
    const std::size_t blank = std::min(entry.find(' '), entry.size());
    (isName ? nameNumbers : textNumbers).Add(ParseInteger(entry.substr(0, blank)));
    (isName ? names : texts).Add(CString(Trimmed(entry.substr(blank))));
}

// Whether a comment says "NET 3": the keyword, letters in any case, and a number.
inline bool IsNumbered(std::string_view comment, std::string_view upperKeyword, int& number) noexcept
{
    if (!BeginsWith(comment, upperKeyword))
        return false;
    const std::string_view digits = Trimmed(comment.substr(upperKeyword.size()));
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), number_text::IsDigit))
        return false;
    number = ParseInteger(digits);
    return true;
}

// A property line: "PRP name 'value' 1.5 2". The value ends at the last quote of the line, so it may hold quotes.
struct CPropertyText
{
    explicit CPropertyText(std::string_view line) noexcept
    {
        CBlankEndedScanner fields(WithoutKeyword(line));
        name = fields.TokenOrRest();
        const std::string_view rest = fields.Rest();
        const std::size_t last = rest.rfind('\'');
        hasQuotes = rest.starts_with('\'') && last > 0;
        const std::size_t end = hasQuotes ? last + 1 : std::min(rest.find(' '), rest.size());
        value = hasQuotes ? rest.substr(1, last - 1) : rest.substr(0, end);
        const std::string_view behind = rest.substr(end);
        numbers = Trimmed(behind.substr(0, behind.find(';')));
    }

    std::string_view name;
    std::string_view value;
    std::string_view numbers; // blank-separated
    bool hasQuotes = false;
};
