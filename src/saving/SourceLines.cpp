#include "saving/SourceLines.h"

#include "foundation/CLineScanner.h"

namespace
{
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
}

CSourceLines::CSourceLines(std::string_view text) : m_text(text)
{
    const bool hasOnlyCR = text.find('\n') == std::string_view::npos && text.find('\r') != std::string_view::npos;
    const char newline = hasOnlyCR ? '\r' : '\n';
    m_begins.push_back(0);
    for (std::size_t at = 0; at < text.size();)
    {
        const std::size_t found = text.find(newline, at);
        at = found == std::string_view::npos ? text.size() : found + 1;
        m_begins.push_back(at);
    }
    if (hasOnlyCR)
        m_end = "\r";
    else if (const std::size_t first = text.find('\n');
             first != std::string_view::npos && first > 0 && text[first - 1] == '\r')
        m_end = "\r\n";
}

std::string_view CSourceLines::Content(std::size_t line) const noexcept
{
    std::string_view whole = Whole(line);
    if (line == 1 && whole.starts_with(kByteOrderMark))
        whole.remove_prefix(kByteOrderMark.size());
    return Trimmed(whole);
}

std::string_view CSourceLines::Indentation(std::size_t line) const noexcept
{
    const std::string_view whole = Whole(line);
    return whole.substr(0, static_cast<std::size_t>(TrimmedLeft(whole).data() - whole.data()));
}

bool CSourceLines::IsEnded() const noexcept
{
    return m_text.empty() || m_text.back() == m_end.back();
}
