#include "reading/Tail.h"

#include "foundation/CRecordPool.h"
#include "reading/AttributeMessageKinds.h"

#include <memory>

using namespace attribute_message;

namespace
{
constexpr std::string_view kID = "ID=";

// Whether the whole text is an integer; sets `value`.
bool IsInteger(std::string_view text, long long& value)
{
    constexpr std::size_t kMostDigits = 18; // always fits
    const bool isNegative = text.starts_with('-');
    const std::string_view digits = text.substr(isNegative ? 1 : 0);
    if (digits.empty() || digits.size() > kMostDigits)
        return false;
    long long number = 0;
    for (const char digit : digits)
    {
        if (!number_text::IsDigit(digit))
            return false;
        number = number * 10 + (digit - '0');
    }
    value = isNegative ? -number : number;
    return true;
}

bool IsReal(std::string_view text)
{
    const char* const end = text.data() + text.size();
    return !text.empty() && ReadReal(text.data(), end).end == end;
}

// The number of an option or text; -1 if it is not one.
int NumberOf(std::string_view text)
{
    long long number = 0;
    constexpr long long kMost = 0x7FFFFFFF;
    return IsInteger(text, number) && number >= 0 && number <= kMost ? static_cast<int>(number) : -1;
}

// The next part of a tail, without its ";"; `rest` keeps the remainder.
std::string_view NextPart(std::string_view& rest)
{
    const std::size_t semicolon = rest.find(';');
    const std::string_view part = Trimmed(rest.substr(0, semicolon));
    rest = semicolon == std::string_view::npos ? std::string_view() : rest.substr(semicolon + 1);
    return part;
}
} // namespace

CTailText CutTailAt(std::string_view line, std::size_t semicolon) noexcept
{
    CTailText tail;
    tail.record = TrimmedRight(line.substr(0, semicolon));
    std::string_view rest = line.substr(semicolon + 1);
    tail.whole = Trimmed(rest);
    for (bool isFirst = true; isFirst || !rest.empty(); isFirst = false)
    {
        const std::string_view part = NextPart(rest);
        if (BeginsWith(part, kID))
        {
            tail.id = Trimmed(part.substr(kID.size()));
            tail.hasID = true;
        }
        else if (isFirst)
        {
            tail.attributes = part;
        }
        else if (!part.empty())
        {
            tail.rest = part;
        }
    }
    return tail;
}

__int64 ReadTailID(const CTailText& tail, int line, CFileMessages& messages)
{
    if (!tail.rest.empty())
        messages.Say(kOddTail, line, "What follows the attributes, ", Quoted{tail.rest}, ", is not known.");
    if (!tail.hasID)
        return CJOBXtailed::kNoID;
    long long id = 0;
    if (IsInteger(tail.id, id) && id >= 0)
        return id;
    messages.Say(kBadID, line, "The unique number ", Quoted{tail.id}, " is not a whole number.");
    return CJOBXtailed::kNoID;
}

bool CAttributeReader::Append(std::string_view list, int line, CJOBXPropertyArray& properties)
{
    m_isSound = true;
    CAttributeListScanner items(list);
    for (std::string_view item; items.Next(item);)
    {
        const std::size_t equals = item.find('=');
        const std::string_view number = Trimmed(item.substr(0, equals));
        auto property = record_pool::New<CJOBXProperty>();
        property->m_nNumber = NumberOf(number);
        if (property->m_nNumber < 0)
        {
            Say(kBadItem, line, "The attribute ", Quoted{item}, " does not begin with a number.");
            continue;
        }
        property->m_sName = m_names.Text(property->m_nNumber);
        if (property->m_sName.IsEmpty())
            Say(kNoName, line, "No attribute name has the number ", property->m_nNumber, ".");
        if (equals == std::string_view::npos)
            property->SetKind(JOBXattributeKind::Flag);
        else
            SetValue(*property, Trimmed(item.substr(equals + 1)), line);
        properties.Own(std::move(property));
    }
    return m_isSound;
}

void CAttributeReader::Store(__int64 id, std::string_view attributes, int line, CJOBXtailed& record)
{
    record.SetID(id);
    if (!attributes.empty())
        Append(attributes, line, *record.pMakeTailAttributes());
}

void CAttributeReader::SetValue(CJOBXProperty& property, std::string_view value, int line)
{
    const CAttributeTypes::Type* const type = m_types.Find(property.m_sName.View());
    property.SetKind(type != nullptr ? type->kind : GuessKind(value));
    property.m_sValue = value;
    long long whole = 0;
    switch (property.GetKind())
    {
    case JOBXattributeKind::Text:
        return SetText(property, value, line);
    case JOBXattributeKind::Option:
        return type != nullptr ? SetOption(property, *type, value, line) : void();
    case JOBXattributeKind::Integer:
    case JOBXattributeKind::Real:
        if (property.GetKind() == JOBXattributeKind::Integer ? IsInteger(value, whole) : IsReal(value))
            return;
        Say(kBadNumber, line, "The value ", Quoted{value}, " of the attribute ", Quoted{property.m_sName.View()},
            " is not a number.");
        property.SetKind(JOBXattributeKind::Text);
        return;
    case JOBXattributeKind::Flag:
    case JOBXattributeKind::Unknown:
        return;
    }
}

void CAttributeReader::SetText(CJOBXProperty& property, std::string_view value, int line)
{
    property.m_nTextNumber = NumberOf(value);
    if (property.m_nTextNumber >= 0 && m_texts.Has(property.m_nTextNumber))
        property.m_sValue = m_texts.Text(property.m_nTextNumber);
    else
        Say(kNoText, line, "No attribute text has the number ", Quoted{value}, ".");
}

void CAttributeReader::SetOption(CJOBXProperty& property, const CAttributeTypes::Type& type, std::string_view value,
                                 int line)
{
    property.m_nTextNumber = NumberOf(value);
    const auto index = static_cast<std::size_t>(property.m_nTextNumber);
    if (property.m_nTextNumber >= 0 && index < type.options.size())
        property.m_sValue = std::string_view(type.options[index]);
    else if (!type.options.empty())
        Say(kNoOption, line, "The attribute ", Quoted{property.m_sName.View()}, " has no option ", Quoted{value}, ".");
}

// Without a definition: a whole number that is in the table of texts means that text, as exporters write it.
JOBXattributeKind CAttributeReader::GuessKind(std::string_view value)
{
    long long whole = 0;
    if (!IsInteger(value, whole))
        return IsReal(value) ? JOBXattributeKind::Real : JOBXattributeKind::Unknown;
    const int number = NumberOf(value);
    return number >= 0 && m_texts.Has(number) ? JOBXattributeKind::Text : JOBXattributeKind::Integer;
}
