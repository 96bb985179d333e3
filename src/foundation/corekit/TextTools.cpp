#include "foundation/corekit/TextTools.h"

#include <string_view>

namespace
{
// Calls `take` with every token of `text`, in order.
template <class Take>
void ForEachToken(std::string_view text, std::string_view delimiters, Take take)
{
    std::size_t begin = text.find_first_not_of(delimiters);
    while (begin != std::string_view::npos)
    {
        const std::size_t end = text.find_first_of(delimiters, begin);
        take(text.substr(begin, end - begin));
        begin = text.find_first_not_of(delimiters, end);
    }
}
} // namespace

CString MakeUpper(const CString& text)
{
    CString copy(text);
    copy.MakeUpper();
    return copy;
}

CString MakeLower(const CString& text)
{
    CString copy(text);
    copy.MakeLower();
    return copy;
}

ULONGLONG XTokenString(const char* text, const char* delimiters, CStringArray& tokens, int /*flag1*/, int /*flag2*/,
                       int /*flag3*/, int /*flag4*/, int /*flag5*/)
{
    const CString copy(text); // `text` may be one of the replaced tokens
    const CString separators(delimiters);
    INT_PTR count = 0; // count first, so that a long list is allocated once
    ForEachToken(copy.View(), separators.View(), [&count](std::string_view) { ++count; });
    tokens.RemoveAll();
    tokens.SetSize(count);
    INT_PTR at = 0;
    ForEachToken(copy.View(), separators.View(), [&](std::string_view token) { tokens[at++] = token; });
    return static_cast<ULONGLONG>(count);
}
