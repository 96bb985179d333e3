#include "reading/AttributeListReader.h"

#include "reading/AttributeListMessageKinds.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace
{
constexpr char kAttributeListFile[] = "attrlist";

class CAttributeListReading
{
public:
    CAttributeListReading(const CReadingContext& context, CSourceFile& file, CJOBXattributeList& list)
        : m_text(file.Text()),
          m_messages(file.Messages()),
          m_types(context.job.types),
          m_unit(m_messages, list, context.job.unit),
          m_list(list)
    {
    }

    void Read()
    {
        while (m_text.NextLine())
            if (m_text.Line().front() != '#' && !m_unit.Take(m_text.Line(), Line()))
                OnAttribute(m_text.Line());
    }

private:
    int Line() const noexcept { return m_text.LineNumber(); }

    void OnAttribute(std::string_view line)
    {
        const std::size_t equals = line.find('=');
        const std::string_view name = TrimmedRight(line.substr(0, equals));
        if (equals == std::string_view::npos || name.empty())
            return m_messages.Say(attribute_list_message::kNotAttribute, Line(), "The line ", Quoted{line},
                                  " is not an attribute with a value.");
        auto attribute = std::make_unique<CJOBXProperty>();
        attribute->m_sName = name;
        attribute->m_sValue = Trimmed(line.substr(equals + 1));
        if (const CAttributeTypes::Type* const type = m_types.Find(name))
        {
            attribute->SetKind(type->kind);
            CheckValue(*type, *attribute);
        }
        if (const int before = m_names.LineBefore(name, Line()); before != 0)
            m_messages.Say(attribute_list_message::kTwice, Line(), "The attribute ", Quoted{name},
                           " was already given on line ", before, ".");
        m_list.GetAttributes()->Own(std::move(attribute));
    }

    // An empty value means that the attribute is not set.
    void CheckValue(const CAttributeTypes::Type& type, const CJOBXProperty& attribute)
    {
        const std::string_view value = attribute.m_sValue.View();
        const auto isValue = [&](std::string_view option) { return AsciiEqualNoCase(option, value); };
        if (value.empty())
            return;
        if (type.kind == JOBXattributeKind::Integer || type.kind == JOBXattributeKind::Real)
        {
            const NumberRead<double> read = ReadReal(value.data(), value.data() + value.size());
            if (read.end != value.data() + value.size() || !std::isfinite(read.value))
                m_messages.Say(attribute_list_message::kNotNumber, Line(), "The value ", Quoted{value},
                               " of the attribute ", Quoted{attribute.m_sName.View()}, " is not a number.");
            return;
        }
        const bool isOption =
            type.kind == JOBXattributeKind::Option && std::none_of(type.options.begin(), type.options.end(), isValue);
        const bool isFlag = type.kind == JOBXattributeKind::Flag && !isValue("yes") && !isValue("no");
        if (isOption || isFlag)
            m_messages.Say(attribute_list_message::kNoOption, Line(), "The attribute ",
                           Quoted{attribute.m_sName.View()}, " cannot have the value ", Quoted{value}, ".");
    }

    CLineScanner& m_text;
    CFileMessages& m_messages;
    const CAttributeTypes& m_types;
    CFileUnit m_unit;
    CJOBXattributeList& m_list;
    CFirstNames m_names;
};
} // namespace

void ReadAttributeList(const CReadingContext& context, const CSourceFolder& folder, CJOBXattributed& owner)
{
    CSourceFile file(context, folder, kAttributeListFile, Presence::Optional);
    if (file.WasRead())
        CAttributeListReading(context, file, *owner.pMakeAttributeList()).Read();
}
