#include "reading/CFileMessages.h"

#include <algorithm>

namespace
{
constexpr std::size_t kLongestQuote = 60;
constexpr const char kOthers[] = "..."; // all names beyond those that are counted separately
} // namespace

void reading_text::Append(std::string& text, Quoted part)
{
    const bool isCut = part.text.size() > kLongestQuote;
    text += '"';
    for (const char character : part.text.substr(0, kLongestQuote))
        text += static_cast<unsigned char>(character) < ' ' || character == '\x7F' ? '?' : character;
    text += isCut ? "...\"" : "\"";
}

bool CFileMessages::IsWanted(const CJOBXmessageKind& kind, int line)
{
    auto count = std::find_if(m_counts.begin(), m_counts.end(), [&](const Count& one) { return one.kind == &kind; });
    if (count == m_counts.end())
        count = m_counts.insert(m_counts.end(), Count{&kind});
    ++count->said;
    const bool isWanted = m_reading->nMessagesPerCode <= 0 || count->said <= m_reading->nMessagesPerCode;
    if (!isWanted)
        count->last = line;
    return isWanted;
}

void CFileMessages::Add(const CJOBXmessageKind& kind, int line, std::string&& text, int count)
{
    m_entries.push_back({&kind, line, m_entries.size(), std::move(text), count});
}

void CFileMessages::SayUnknown(const CJOBXmessageKind& kind, int line, const char* what, std::string_view name)
{
    if (m_reading->pSink == nullptr)
        return;
    std::pair<std::string, std::string> key(what, name.substr(0, kLongestQuote));
    auto found = m_unknown.find(key);
    if (found == m_unknown.end())
    {
        if (m_unknown.size() >= kMostUnknown)
            key.second = kOthers;
        found = m_unknown.find(key);
    }
    if (found == m_unknown.end())
    {
        found = m_unknown.emplace(std::move(key), Unknown{&kind, what, line, 0}).first;
    }
    ++found->second.count;
}

void CFileMessages::AddUnknown()
{
    for (const auto& [key, unknown] : m_unknown)
    {
        std::string text = std::string("The ") + unknown.what + " ";
        reading_text::Append(text, Quoted{key.second});
        text += " is not known";
        text += unknown.count == 1 ? "." : "; there are " + std::to_string(unknown.count) + " of them.";
        if (IsWanted(*unknown.kind, unknown.line))
            Add(*unknown.kind, unknown.line, std::move(text));
    }
}

void CFileMessages::AddLeftOut()
{
    for (const Count& count : m_counts)
        if (const int left = count.said - m_reading->nMessagesPerCode; m_reading->nMessagesPerCode > 0 && left > 0)
            Add(*count.kind, count.last, std::to_string(left) + " more like this in the file, the last one here.",
                left);
}

void CFileMessages::Deliver()
{
    if (m_reading->pSink == nullptr)
        return;
    AddUnknown();
    AddLeftOut();
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry& a, const Entry& b)
              { return a.line != b.line ? a.line < b.line : a.order < b.order; }); // a stable sort would allocate
    const std::vector<Entry> entries = std::exchange(m_entries, {});
    m_counts.clear();
    m_unknown.clear();
    CJOBXmessage message;
    message.file = std::string_view(m_file);
    for (const Entry& entry : entries)
    {
        message.kind = entry.kind;
        message.line = entry.line;
        message.text = std::string_view(entry.text);
        message.count = entry.count;
        m_reading->pSink->OnMessage(message);
    }
}
