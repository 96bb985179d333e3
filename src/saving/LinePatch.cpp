#include "saving/LinePatch.h"

#include "foundation/CLineScanner.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{
constexpr char kQuote = '\'';
constexpr char kTail = ';';

bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

using Fields = std::vector<std::string_view>;

// Where the field that begins at `at` ends.
std::size_t EndOfField(std::string_view text, std::size_t at, char separator)
{
    if (text[at] == kQuote)
        if (const std::size_t quote = text.find(kQuote, at + 1); quote != std::string_view::npos)
            at = quote + 1;
    while (at < text.size() && text[at] != separator && (separator != ' ' || !IsBlank(text[at])))
        ++at;
    return at;
}

// The mark of a comment is a field of its own.
Fields RecordFieldsOf(std::string_view text)
{
    Fields fields;
    if (text.starts_with('#'))
        fields.push_back(text.substr(0, 1));
    for (std::size_t at = fields.size(); at < text.size();)
    {
        if (IsBlank(text[at]))
        {
            ++at;
            continue;
        }
        const std::size_t end = EndOfField(text, at, ' ');
        fields.push_back(text.substr(at, end - at));
        at = end;
    }
    return fields;
}

// The parts of a tail between semicolons.
Fields TailFieldsOf(std::string_view text)
{
    Fields fields;
    std::size_t at = 0;
    for (std::size_t end = text.find(kTail); end != std::string_view::npos; end = text.find(kTail, at))
    {
        fields.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    fields.push_back(text.substr(at));
    return fields;
}

// Fields and what separates them, as far as a line was patched.
class CPatchedText
{
public:
    explicit CPatchedText(std::string_view source) : m_source(source), m_at(source.data()) {}

    // Takes the source up to the field and puts `text` in its place.
    void Replace(std::string_view field, std::string_view text)
    {
        TakeTo(field.data());
        m_text += text;
        m_at = field.data() + field.size();
    }
    void TakeTo(const char* to)
    {
        m_text.append(m_at, static_cast<std::size_t>(to - m_at));
        m_at = to;
    }
    // Adds a field that the source does not have.
    void Add(std::string_view field)
    {
        Separate();
        m_text += field;
    }
    // Goes on with the source at `at`.
    void GoOnAt(const char* at)
    {
        Separate();
        m_at = at;
    }
    // Leaves out the source up to `to`.
    void Drop(const char* to) { m_at = to; }
    std::string Rest()
    {
        TakeTo(m_source.data() + m_source.size());
        return std::move(m_text);
    }

private:
    void Separate()
    {
        if (!m_text.empty() && !IsBlank(m_text.back()))
            m_text += ' ';
    }

    std::string_view m_source;
    const char* m_at;
    std::string m_text;
};

// As many fields before as now: those that differ are replaced.
std::string WithFieldsReplaced(std::string_view source, const Fields& fields, const Fields& before, const Fields& now)
{
    CPatchedText text(source);
    for (std::size_t i = 0; i < before.size(); ++i)
        if (before[i] != now[i])
            text.Replace(fields[i], now[i]);
    return text.Rest();
}

// Fields were added or removed: those between the fields that are equal at both ends are replaced.
std::string WithMiddleReplaced(std::string_view source, const Fields& fields, const Fields& before, const Fields& now)
{
    const std::size_t most = std::min(before.size(), now.size());
    std::size_t first = 0;
    while (first < most && before[first] == now[first])
        ++first;
    std::size_t last = 0; // fields that are equal at the end
    while (last < most - first && before[before.size() - 1 - last] == now[now.size() - 1 - last])
        ++last;
    CPatchedText text(source);
    if (first > 0)
        text.TakeTo(fields[first - 1].data() + fields[first - 1].size());
    for (std::size_t i = first; i < now.size() - last; ++i)
        text.Add(now[i]);
    if (const std::size_t rest = before.size() - last; rest < fields.size())
        text.GoOnAt(fields[rest].data());
    else if (rest > first)
        text.Drop(fields[rest - 1].data() + fields[rest - 1].size());
    return text.Rest();
}

struct Parts
{
    std::string_view record;
    std::string_view tail; // from the semicolon on
};

// A semicolon inside quotes does not begin the tail.
Parts PartsOf(std::string_view line)
{
    for (std::size_t at = 0; at < line.size();)
    {
        if (line[at] == kTail)
            return {line.substr(0, at), line.substr(at)};
        const bool isFieldStart = at == 0 || IsBlank(line[at - 1]);
        const std::size_t quote =
            isFieldStart && line[at] == kQuote ? line.find(kQuote, at + 1) : std::string_view::npos;
        at = quote != std::string_view::npos ? quote + 1 : at + 1;
    }
    return {line, {}};
}

std::string PatchRecord(std::string_view source, std::string_view before, std::string_view now)
{
    if (before == now)
        return std::string(source);
    const Fields fields = RecordFieldsOf(source);
    const Fields fieldsBefore = RecordFieldsOf(before);
    if (fields.size() < fieldsBefore.size())
        return std::string(now);
    const Fields fieldsNow = RecordFieldsOf(now);
    return fieldsBefore.size() == fieldsNow.size() ? WithFieldsReplaced(source, fields, fieldsBefore, fieldsNow)
                                                   : WithMiddleReplaced(source, fields, fieldsBefore, fieldsNow);
}

std::string PatchTail(std::string_view source, std::string_view before, std::string_view now)
{
    if (before == now)
        return std::string(source);
    const Fields fields = TailFieldsOf(source);
    const Fields fieldsBefore = TailFieldsOf(before);
    const Fields fieldsNow = TailFieldsOf(now);
    if (source.empty() || now.empty() || fields.size() != fieldsBefore.size() || fields.size() != fieldsNow.size())
        return std::string(now);
    return WithFieldsReplaced(source, fields, fieldsBefore, fieldsNow);
}
} // namespace

std::string PatchLine(std::string_view source, std::string_view before, std::string_view now)
{
    if (source.starts_with('#') && !before.starts_with('#')) // an entry of a table in a comment
    {
        const std::size_t begin = std::min(source.find_first_not_of("# \t"), source.size());
        return std::string(source.substr(0, begin)) + PatchLine(source.substr(begin), before, now);
    }
    const Parts parts = PartsOf(source);
    const Parts partsBefore = PartsOf(before);
    const Parts partsNow = PartsOf(now);
    std::string text = PatchRecord(parts.record, partsBefore.record, partsNow.record);
    const std::string tail = PatchTail(parts.tail, partsBefore.tail, partsNow.tail);
    if (tail.empty() && !parts.tail.empty())
        text.resize(TrimmedRight(text).size()); // the blank before the tail goes with it
    return text + tail;
}

std::string PatchKeyLine(std::string_view source, std::string_view now)
{
    const std::size_t equals = source.find('=');
    const std::size_t equalsNow = now.find('=');
    if (equals == std::string_view::npos)
        return std::string(now);
    const std::string_view key = TrimmedRight(source.substr(0, equals));
    const std::string_view keyNow = now.substr(0, equalsNow);
    const std::string_view behind = source.substr(equals + 1);
    const std::string_view value = Trimmed(behind);
    // An empty value has no place of its own: it stands where the blanks end.
    const std::string_view blanks =
        value.empty() ? behind : behind.substr(0, behind.size() - TrimmedLeft(behind).size());
    std::string text(AsciiEqualNoCase(key, keyNow) ? key : keyNow);
    text.append(source.substr(key.size(), equals + 1 - key.size())).append(blanks);
    return text.append(now.substr(equalsNow + 1));
}
