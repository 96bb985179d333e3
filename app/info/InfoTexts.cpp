#include "info/InfoTexts.h"

#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>

std::string Count(std::int64_t count, std::string_view one)
{
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

std::string Date(const CString& date)
{
    const std::string_view text = date.View();
    const auto areDigits = [&](std::size_t from, std::size_t count)
    {
        return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(from),
                           text.begin() + static_cast<std::ptrdiff_t>(from + count),
                           [](char character) { return character >= '0' && character <= '9'; });
    };
    if (text.size() != 15 || text[8] != '.' || !areDigits(0, 8) || !areDigits(9, 6))
        return Printable(text);
    return fmt::format("{}-{}-{} {}:{}:{}", text.substr(0, 4), text.substr(4, 2), text.substr(6, 2), text.substr(9, 2),
                       text.substr(11, 2), text.substr(13, 2));
}

std::string Saved(const CJOBXmisc& misc)
{
    std::string text = Date(misc.m_sSaveDate);
    if (!misc.m_sSaveUser.IsEmpty())
        text += " by " + Printable(misc.m_sSaveUser.View());
    if (!misc.m_sSaveApp.IsEmpty())
        text += " with " + Printable(misc.m_sSaveApp.View());
    return text.substr(text.find_first_not_of(' ') == std::string::npos ? text.size() : text.find_first_not_of(' '));
}
