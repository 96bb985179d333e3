#include "components/CJOBXcomponents.h"
#include "components/ComponentsFormat.h"
#include "components/ComponentsReader.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/ComponentsMessageKinds.h"
#include "reading/SharedRecords.h"
#include "reading/Tail.h"

#include <memory>

namespace
{
constexpr CCheckedRecord::Kinds kComponentsFields{components_message::kTooFew, components_message::kTooMany,
                                                  components_message::kNotNumber};

class CCompleteComponentsReading
{
public:
    CCompleteComponentsReading(const CReadingContext& context, CSourceFile& file, CJOBXcomponents& components)
        : m_text(file.Text()),
          m_messages(file.Messages()),
          m_file(components),
          m_unit(m_messages, components, context.job.unit),
          m_attributes(m_names, m_texts, context.job.types, m_messages)
    {
    }

    void Read()
    {
        while (m_text.NextLine())
            ReadLine(m_text.Line());
        m_tops.Finish();
        m_properties.Finish();
        m_file.m_sUnits = m_file.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    int Line() const noexcept { return m_text.LineNumber(); }

    void ReadLine(std::string_view line)
    {
        if (line.front() == '#')
            return ReadComment(Trimmed(line.substr(1)));
        if (IsTableEntry(line))
            return AddTableEntry(line, m_file.m_arrAttributeNameNumbers, m_file.m_arrAttributeNames,
                                 m_file.m_arrAttributeTextNumbers, m_file.m_arrAttributeTexts);
        if (m_unit.Take(line, Line()))
            return;
        const CTailText tail = CutTail(line);
        CCheckedRecord fields(tail.record, Line(), m_messages, kComponentsFields);
        if (fields.Is(components_format::kToeprint))
            OnToeprint(fields, tail);
        else if (fields.Is(components_format::kProperty))
            OnProperty(fields, line);
        else if (fields.Is(components_format::kComponent))
            OnComponent(fields, tail);
        else
            m_messages.SayUnknown(components_message::kUnknown, Line(), "record", fields.Keyword());
    }

    // "CMP 3" announces the component that comes next.
    void ReadComment(std::string_view comment)
    {
        int number = 0;
        if (IsNumbered(comment, components_format::kComponent, number) && number != m_file.m_arrCmps.GetSize())
            m_messages.Say(components_message::kOtherNumber, Line(), "The comment says ", Quoted{comment},
                           ", but the position is ", static_cast<long long>(m_file.m_arrCmps.GetSize()), ".");
    }

    void OnComponent(CCheckedRecord& fields, const CTailText& tail)
    {
        auto component = record_pool::New<CJOBXcmp>();
        component->m_nNumber = static_cast<int>(m_file.m_arrCmps.GetSize());
        component->SetLine(Line());
        fields.Integer(component->m_nPkgRef);
        fields.Point(component->m_ptLocation);
        fields.Real(component->m_dRotation);
        component->m_nMirror = Mirror(fields);
        fields.Text(component->m_sName);
        std::string_view part;
        if (fields.Rest(part))
            component->m_sPartName = m_cache.Of(part);
        component->SetID(ReadTailID(tail, Line(), m_messages));
        m_attributes.Append(tail.attributes, Line(), component->m_arrAttributes);
        if (const int before = m_componentNames.LineBefore(component->m_sName.View(), Line()); before != 0)
            m_messages.Say(components_message::kSameName, Line(), "The component ", Quoted{component->m_sName.View()},
                           " has the name of the component on line ", before, ".");
        m_component = m_file.m_arrCmps.Own(std::move(component));
        m_tops.Begin(m_component->m_arrTops);
        m_properties.Begin(m_component->m_arrProperties);
    }

    void OnToeprint(CCheckedRecord& fields, const CTailText& tail)
    {
        if (m_component == nullptr)
            return SayNoOwner(fields);
        auto top = record_pool::New<CJOBXcmpTop>();
        fields.Integer(top->m_nPin);
        fields.Point(top->m_ptLocation);
        fields.Real(top->m_dRotation);
        top->m_nMirror = Mirror(fields);
        fields.Integer(top->m_nNet);
        fields.Integer(top->m_nSubnet);
        std::string_view name;
        if (fields.Rest(name))
            top->m_sName = m_cache.Of(name);
        m_attributes.Take(tail, Line(), *top);
        m_tops.Own(std::move(top));
    }

    void OnProperty(CCheckedRecord& fields, std::string_view line)
    {
        if (m_component == nullptr)
            return SayNoOwner(fields);
        const CPropertyText text(fields.IsAtEnd() ? std::string_view() : line);
        if (fields.IsAtEnd())
            m_messages.Say(components_message::kTooFew, Line(), "The record ", Quoted{fields.Keyword()},
                           " has too few fields.");
        m_properties.Own(std::make_unique<CLProperty>(m_cache.Of(text.name), m_cache.Of(text.value)));
        if (!text.numbers.empty())
            m_messages.Say(components_message::kTooMany, Line(), "The numbers ", Quoted{text.numbers},
                           " behind the value of the property ", Quoted{text.name}, " are not kept.");
    }

    int Mirror(CCheckedRecord& fields)
    {
        std::string_view flag = components_format::kNotMirrored;
        fields.Text(flag);
        if (flag != components_format::kMirrored && flag != components_format::kNotMirrored)
            m_messages.Say(components_message::kNoMirror, Line(), "The mirror flag ", Quoted{flag},
                           " is neither N nor M.");
        return flag == components_format::kMirrored ? 1 : 0;
    }
    void SayNoOwner(const CCheckedRecord& fields)
    {
        m_messages.Say(components_message::kNoOwner, Line(), "The record ", Quoted{fields.Keyword()},
                       " belongs to no component.");
    }

    CLineScanner& m_text;
    CFileMessages& m_messages;
    CJOBXcomponents& m_file;
    CFileUnit m_unit;
    CNumberIndex m_names{m_file.m_arrAttributeNameNumbers, m_file.m_arrAttributeNames};
    CNumberIndex m_texts{m_file.m_arrAttributeTextNumbers, m_file.m_arrAttributeTexts};
    CAttributeReader m_attributes;
    CTextCache m_cache{};
    CFirstNames m_componentNames;
    CJOBXcmp* m_component = nullptr; // the last one; null before the first
    CListFiller<CJOBXcmpTop> m_tops{};
    CListFiller<CLProperty> m_properties{};
};
} // namespace

void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXcomponents& components)
{
    components.SetUnit(context.job.unit);
    if (file.WasRead())
        CCompleteComponentsReading(context, file, components).Read();
}
