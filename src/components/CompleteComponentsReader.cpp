#include "components/CJOBXcomponents.h"
#include "components/ComponentsFormat.h"
#include "components/ComponentsReader.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/CFirstNames.h"
#include "reading/CPlainRecord.h"
#include "reading/ComponentsMessageKinds.h"
#include "reading/SharedRecords.h"
#include "reading/Tail.h"

#include <memory>

namespace
{
constexpr CCheckedRecord::Kinds kComponentsFields{components_message::kTooFew, components_message::kTooMany,
                                                  components_message::kNotNumber};

// The fields of a component. A field that is missing keeps its value. `accepts` is asked about the mirror flag; it says
// whether to go on.
struct ComponentFields
{
    int package = -1;
    CPointD location{};
    double rotation = 0.0;
    std::string_view mirror = components_format::kNotMirrored;
    std::string_view name{};
    std::string_view part{};
};

template <class Fields, class Accepts>
bool Take(Fields& fields, ComponentFields& component, Accepts accepts)
{
    return fields.Integer(component.package) && fields.Point(component.location) && fields.Real(component.rotation) &&
           fields.Text(component.mirror) && accepts(component.mirror) && fields.Text(component.name) &&
           fields.Rest(component.part);
}

// The same of a toeprint.
struct ToeprintFields
{
    int pin = -1;
    CPointD location{};
    double rotation = 0.0;
    std::string_view mirror = components_format::kNotMirrored;
    int net = -1;
    int subnet = -1;
    std::string_view name{};
};

template <class Fields, class Accepts>
bool Take(Fields& fields, ToeprintFields& toeprint, Accepts accepts)
{
    return fields.Integer(toeprint.pin) && fields.Point(toeprint.location) && fields.Real(toeprint.rotation) &&
           fields.Text(toeprint.mirror) && accepts(toeprint.mirror) && fields.Integer(toeprint.net) &&
           fields.Integer(toeprint.subnet) && fields.Rest(toeprint.name);
}

bool IsMirror(std::string_view flag)
{
    return flag == components_format::kMirrored || flag == components_format::kNotMirrored;
}

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
        for (ReadPlainLines(); m_text.NextLine(); ReadPlainLines())
        {
            m_line = m_text.LineNumber();
            ReadLine(m_text.Line());
        }
        m_tops.Finish();
        m_properties.Finish();
        m_file.m_sUnits = m_file.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH";
    }

private:
    int Line() const noexcept { return m_line; }

    // Lines in their usual form, of which at most a name or the attributes give a message; any other line is left to
    // ReadLine.
    void ReadPlainLines()
    {
        ReadLinesAhead(m_text,
                       [this](const char* at, const char* end, int line)
                       {
                           m_line = line;
                           return ReadPlainLine({at, end}, *at);
                       });
    }
    const char* ReadPlainLine(CPlainRecord fields, char first)
    {
        switch (first)
        {
        case 'T':
            return OnPlainToeprint(fields);
        case 'P':
            return OnPlainProperty(fields);
        case 'C':
            return OnPlainComponent(fields);
        case '#':
            return OnPlainComment(fields);
        default:
            return nullptr;
        }
    }
    // Without text, or "CMP 3".
    const char* OnPlainComment(CPlainRecord fields)
    {
        int number = 0;
        fields.Is('#');
        if (CPlainRecord empty = fields; empty.End())
            return empty.At();
        return fields.Is(' ') && fields.Keyword(components_format::kComponent) && fields.Integer(number) &&
                       number == m_file.m_arrCmps.GetSize() && fields.End()
                   ? fields.At()
                   : nullptr;
    }
    const char* OnPlainComponent(CPlainRecord fields)
    {
        ComponentFields component;
        CPlainTail tail;
        if (!fields.Keyword(components_format::kComponent) || !Take(fields, component, IsMirror) || !fields.End(tail))
            return nullptr;
        AddComponent(component, tail.id, tail.attributes);
        return fields.At();
    }
    const char* OnPlainToeprint(CPlainRecord fields)
    {
        ToeprintFields toeprint;
        CPlainTail tail;
        if (m_component == nullptr || !fields.Keyword(components_format::kToeprint) ||
            !Take(fields, toeprint, IsMirror) || !fields.End(tail))
            return nullptr;
        AddToeprint(toeprint, tail);
        return fields.At();
    }
    const char* OnPlainProperty(CPlainRecord fields)
    {
        std::string_view name;
        std::string_view value;
        if (m_component == nullptr || !fields.Keyword(components_format::kProperty) || !fields.Text(name) ||
            !fields.QuotedToEnd(value))
            return nullptr;
        AddProperty(name, value);
        return fields.At();
    }

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
        ComponentFields component;
        Take(fields, component, [this](std::string_view mirror) { return CheckMirror(mirror); });
        AddComponent(component, ReadTailID(tail, Line(), m_messages), tail.attributes);
    }
    void AddComponent(const ComponentFields& fields, __int64 id, std::string_view attributes)
    {
        auto component = record_pool::New<CJOBXcmp>();
        component->m_nNumber = static_cast<int>(m_file.m_arrCmps.GetSize());
        component->SetSourceLine(Line());
        component->m_nPkgRef = fields.package;
        component->m_ptLocation = fields.location;
        component->m_dRotation = fields.rotation;
        component->m_nMirror = fields.mirror == components_format::kMirrored ? 1 : 0;
        component->m_sName = fields.name;
        component->m_sPartName = m_cache.Of(fields.part);
        component->SetID(id);
        if (!attributes.empty())
            m_attributes.Append(attributes, Line(), component->m_arrAttributes);
        if (const int before = m_componentNames.LineBefore(fields.name, Line()); before != 0)
            m_messages.Say(components_message::kSameName, Line(), "The component ", Quoted{fields.name},
                           " has the name of the component on line ", before, ".");
        m_component = m_file.m_arrCmps.Own(std::move(component));
        m_tops.Begin(m_component->m_arrTops);
        m_properties.Begin(m_component->m_arrProperties);
    }

    void OnToeprint(CCheckedRecord& fields, const CTailText& tail)
    {
        if (m_component == nullptr)
            return SayNoOwner(fields);
        ToeprintFields toeprint;
        Take(fields, toeprint, [this](std::string_view mirror) { return CheckMirror(mirror); });
        AddToeprint(toeprint, tail);
    }
    template <class Tail>
    void AddToeprint(const ToeprintFields& fields, const Tail& tail)
    {
        auto top = record_pool::New<CJOBXcmpTop>();
        top->SetSourceLine(Line());
        top->m_nPin = fields.pin;
        top->m_ptLocation = fields.location;
        top->m_dRotation = fields.rotation;
        top->m_nMirror = fields.mirror == components_format::kMirrored ? 1 : 0;
        top->m_nNet = fields.net;
        top->m_nSubnet = fields.subnet;
        top->m_sName = m_cache.Of(fields.name);
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
        AddProperty(text.name, text.value);
        if (!text.numbers.empty())
            m_messages.Say(components_message::kTooMany, Line(), "The numbers ", Quoted{text.numbers},
                           " behind the value of the property ", Quoted{text.name}, " are not kept.");
    }

    void AddProperty(std::string_view name, std::string_view value)
    {
        auto property = record_pool::New<CLProperty>();
        property->m_sName = m_cache.Of(name);
        property->m_sValue = m_cache.Of(value);
        m_properties.Own(std::move(property));
    }

    // The line is kept, whatever its flag.
    bool CheckMirror(std::string_view flag)
    {
        if (!IsMirror(flag))
            m_messages.Say(components_message::kNoMirror, Line(), "The mirror flag ", Quoted{flag},
                           " is neither N nor M.");
        return true;
    }
    void SayNoOwner(const CCheckedRecord& fields)
    {
        m_messages.Say(components_message::kNoOwner, Line(), "The record ", Quoted{fields.Keyword()},
                       " belongs to no component.");
    }

    CLineScanner& m_text;
    int m_line = 0;
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
