#include "saving/CAttributeTables.h"

#include "foundation/CJOBXtailed.h"
#include "foundation/CLineScanner.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace
{
constexpr int kNoEntry = -1;

// The whole text as a number that a table may have; -1 if it is none.
int TableNumberOf(std::string_view text)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && at == end && number >= 0 && text.front() != '-' ? number : kNoEntry;
}

// Whether the value can be an item's value without a table.
bool IsPlainValue(std::string_view value)
{
    return !value.empty() && value.find_first_of(",;\r\n") == std::string_view::npos && Trimmed(value) == value;
}
} // namespace

CSavedTable::CSavedTable(const CArrayN& numbers, const CStringArray& texts) : m_numbers(numbers), m_texts(texts)
{
    for (INT_PTR i = 0; i < numbers.GetSize() && i < texts.GetSize(); ++i)
        if (const std::string_view text = texts[i].View(); m_byNumber.try_emplace(numbers[i], text).second)
            m_byText.try_emplace(std::string(text), numbers[i]);
}

bool CSavedTable::Is(int number, std::string_view text) const
{
    const auto found = m_byNumber.find(number);
    return found != m_byNumber.end() && found->second == text;
}

void CSavedTable::Need(std::string_view text)
{
    if (m_byText.try_emplace(std::string(text), kNoEntry).second)
        m_needed.emplace_back(text);
}

void CSavedTable::NumberNew()
{
    int last = m_byNumber.empty() ? kNoEntry : std::max(m_byNumber.rbegin()->first, kNoEntry);
    for (const std::string& needed : m_needed)
    {
        auto& [text, number] = *m_byText.find(needed);
        if (number == kNoEntry)
            number = last = NextNumber(last == std::numeric_limits<int>::max() ? 0 : last + 1);
        m_byNumber.try_emplace(number, text);
    }
}

int CSavedTable::NextNumber(int from) const
{
    while (Has(from) || m_avoided.contains(from))
        ++from;
    return from;
}

int CSavedTable::NumberOf(std::string_view text) const
{
    const auto found = m_byText.find(text);
    return found != m_byText.end() ? found->second : kNoEntry;
}

void CSavedTable::ListLines(std::string_view mark, CRecordLines& lines) const
{
    const auto list = [&](int number, std::string_view text)
    {
        lines.Begin(0, CRecordLines::kUnknownLine);
        lines.Word(mark).GlueInteger(number).EndKey();
        if (!text.empty())
            lines.Word(text);
    };
    for (INT_PTR i = 0; i < m_numbers.GetSize() && i < m_texts.GetSize(); ++i)
        list(m_numbers[i], m_texts[i].View());
    for (const std::string& text : m_needed)
        list(NumberOf(text), text);
}

void CAttributeTables::ListLines(CRecordLines& lines)
{
    m_names.NumberNew();
    m_texts.NumberNew();
    m_names.ListLines("@", lines);
    m_texts.ListLines("&", lines);
}

// A new text must not get a number that something else in the file has: a value that is a whole number would become that
// text.
void CAttributeTables::Collect(const CJOBXProperty& attribute)
{
    const std::string_view name = attribute.m_sName.View();
    if (name.empty())
        m_names.Avoid(attribute.m_nNumber);
    else if (!m_names.Is(attribute.m_nNumber, name))
        m_names.Need(name);
    const std::string_view value = attribute.m_sValue.View();
    if (FormOf(attribute) == Form::Plain)
        m_texts.Avoid(value.empty() ? kNoEntry : TableNumberOf(value));
    else if (FormOf(attribute) == Form::Text && !m_texts.Is(attribute.m_nTextNumber, value))
        m_texts.Need(value);
}

// An attribute that a host made need not have its kind.
JOBXattributeKind CAttributeTables::KindOf(const CJOBXProperty& attribute) const
{
    if (attribute.GetKind() != JOBXattributeKind::Unknown)
        return attribute.GetKind();
    const CAttributeTypes::Type* const type = m_types.Find(attribute.m_sName.View());
    return type != nullptr ? type->kind : JOBXattributeKind::Unknown;
}

CAttributeTables::Form CAttributeTables::FormOf(const CJOBXProperty& attribute) const
{
    const std::string_view value = attribute.m_sValue.View();
    switch (KindOf(attribute))
    {
    case JOBXattributeKind::Flag:
        return value.empty() || attribute.GetKind() == JOBXattributeKind::Unknown ? Form::Flag : Form::Plain;
    case JOBXattributeKind::Text:
    {
        // What was read as a text although it should be a number, or has a number that is not in the table.
        const CAttributeTypes::Type* const type = m_types.Find(attribute.m_sName.View());
        const bool isNumber =
            type != nullptr && (type->kind == JOBXattributeKind::Integer || type->kind == JOBXattributeKind::Real);
        const bool isUnresolved = attribute.m_nTextNumber >= 0 && !m_texts.Has(attribute.m_nTextNumber) &&
                                  IsPlainValue(value) && TableNumberOf(value) == attribute.m_nTextNumber;
        return (isNumber && IsPlainValue(value)) || isUnresolved ? Form::Plain : Form::Text;
    }
    case JOBXattributeKind::Unknown:
        return FormOfUnknown(attribute);
    case JOBXattributeKind::Integer:
    case JOBXattributeKind::Real:
    case JOBXattributeKind::Option:
        return Form::Plain;
    }
    return Form::Plain;
}

CAttributeTables::Form CAttributeTables::FormOfUnknown(const CJOBXProperty& attribute) const
{
    const std::string_view value = attribute.m_sValue.View();
    if (value.empty())
        return attribute.m_nNumber < 0 ? Form::Flag : Form::Plain;
    const bool wouldBeText = IsPlainValue(value) && m_texts.Has(TableNumberOf(value));
    return IsPlainValue(value) && !wouldBeText ? Form::Plain : Form::Text;
}

int CAttributeTables::NameNumber(const CJOBXProperty& attribute) const
{
    const std::string_view name = attribute.m_sName.View();
    return name.empty() || m_names.Is(attribute.m_nNumber, name) ? attribute.m_nNumber : m_names.NumberOf(name);
}

void CAttributeTables::Append(const CJOBXProperty& attribute, std::string& text) const
{
    const int number = NameNumber(attribute);
    if (number < 0)
        return; // it has neither a name nor a number
    if (!text.empty())
        text += ',';
    AppendInteger(text, number);
    const Form form = FormOf(attribute);
    if (form == Form::Flag)
        return;
    text += '=';
    const std::string_view value = attribute.m_sValue.View();
    if (form == Form::Text)
        AppendInteger(text,
                      m_texts.Is(attribute.m_nTextNumber, value) ? attribute.m_nTextNumber : m_texts.NumberOf(value));
    else if (KindOf(attribute) == JOBXattributeKind::Option)
        AppendOption(attribute, text);
    else
        text += value;
}

// The number of the word. A word that the definition does not have is printed as it is.
void CAttributeTables::AppendOption(const CJOBXProperty& attribute, std::string& text) const
{
    const CAttributeTypes::Type* const type = m_types.Find(attribute.m_sName.View());
    const std::string_view value = attribute.m_sValue.View();
    const std::size_t count = type != nullptr ? type->options.size() : 0;
    const auto has = [&](std::size_t at) { return at < count && AsciiEqualNoCase(type->options[at], value); };
    std::size_t at = 0;
    if (attribute.m_nTextNumber >= 0 && has(static_cast<std::size_t>(attribute.m_nTextNumber)))
        at = static_cast<std::size_t>(attribute.m_nTextNumber);
    while (at < count && !has(at))
        ++at;
    if (at < count)
        AppendInteger(text, static_cast<__int64>(at));
    else
        text += value;
}

void GlueTail(std::string_view attributes, __int64 id, CRecordLines& lines)
{
    if (!attributes.empty() || id != CJOBXtailed::kNoID)
        lines.Glue(";").Glue(attributes);
    if (id != CJOBXtailed::kNoID)
        lines.Glue(";ID=").GlueInteger(id);
}
