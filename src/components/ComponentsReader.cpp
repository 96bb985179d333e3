#include "components/CJOBXcomponents.h"
#include "components/ComponentsFormat.h"
#include "foundation/CBlankEndedScanner.h"
#include "foundation/CLineScanner.h"
#include "foundation/CListFiller.h"
#include "foundation/CRecordPool.h"
#include "foundation/CTextCache.h"
#include "foundation/KeywordTable.h"
#include "foundation/NumberedTable.h"
#include "foundation/framework/Guarded.h"

#include <memory>

namespace
{
// Adds the attributes of a list such as "0=2,1"; `nameOf` gives the name of a number. The second number of each is never
// set, whatever its value; this is intended.
template <class NameOf>
void AddAttributes(CListFiller<CJOBXProperty>& attributes, std::string_view list, NameOf nameOf)
{
    CAttributeListScanner items(list);
    for (std::string_view item; items.Next(item);)
    {
        const std::size_t equals = item.find('=');
        auto attribute = record_pool::New<CJOBXProperty>();
        attribute->m_nNumber = ParseInteger(item.substr(0, equals));
        attribute->m_sName = nameOf(attribute->m_nNumber);
        if (equals != std::string_view::npos)
        {
            attribute->m_sValue = Trimmed(item.substr(equals + 1));
            attribute->m_sValue.Remove('\'');
        }
        attributes.Own(std::move(attribute));
    }
}

struct ComponentsReading
{
    CJOBXcomponents& file;
    CNumberIndex names;
    CJOBXcmp* component = nullptr; // the last one begun
    // Its lists, to be filled.
    CListFiller<CJOBXcmpTop> tops{};
    CListFiller<CLProperty> properties{};
    CListFiller<CJOBXProperty> attributes{};
    CTextCache texts{};
};

void AddTableEntry(std::string_view line, std::string_view mark, CArrayN& numbers, CStringArray& texts)
{
    CFieldScanner fields(line);
    std::string_view number;
    fields.Text(number);
    numbers.Add(ParseInteger(WithoutLeading(number, mark.front())));
    texts.Add(CString(fields.Rest()));
}

void OnAttributeName(ComponentsReading& reading, std::string_view line)
{
    CJOBXcomponents& file = reading.file;
    AddTableEntry(line, components_format::kNameMark, file.m_arrAttributeNameNumbers, file.m_arrAttributeNames);
}

void OnAttributeText(ComponentsReading& reading, std::string_view line)
{
    CJOBXcomponents& file = reading.file;
    AddTableEntry(line, components_format::kTextMark, file.m_arrAttributeTextNumbers, file.m_arrAttributeTexts);
}

void OnNewComponent(ComponentsReading& reading, std::string_view line)
{
    auto component = record_pool::New<CJOBXcmp>();
    component->m_nNumber = ParseInteger(WithoutKeyword(WithoutKeyword(line)));
    reading.component = reading.file.m_arrCmps.Own(std::move(component));
    reading.tops.Begin(reading.component->m_arrTops);
    reading.properties.Begin(reading.component->m_arrProperties);
    reading.attributes.Begin(reading.component->m_arrAttributes);
}

// The name that ends a line, and the attributes behind it. Attributes of a toeprint also go to its component; this is
// intended.
void TakeName(ComponentsReading& reading, CBlankEndedScanner& fields, CString& name)
{
    const std::string_view rest = fields.Rest();
    const std::size_t semicolon = rest.find(';');
    if (semicolon == std::string_view::npos)
    {
        name = reading.texts.Of(fields.TokenOrRest());
        return;
    }
    name = reading.texts.Of(Trimmed(rest.substr(0, semicolon)));
    AddAttributes(reading.attributes, WithoutLeading(rest.substr(semicolon), ';'),
                  [&reading](int number) { return reading.names.Text(number); });
}

int MirrorOf(std::string_view token)
{
    return token == components_format::kMirrored ? 1 : 0;
}

void OnComponent(ComponentsReading& reading, std::string_view line)
{
    if (reading.component == nullptr)
        return;
    CJOBXcmp& component = *reading.component;
    CBlankEndedScanner fields(WithoutKeyword(line));
    component.m_nPkgRef = fields.Integer();
    component.m_ptLocation.x = fields.Real();
    component.m_ptLocation.y = fields.Real();
    component.m_dRotation = fields.Real();
    component.m_nMirror = MirrorOf(fields.Token());
    component.m_sName = fields.Token();
    TakeName(reading, fields, component.m_sPartName);
}

void OnToeprint(ComponentsReading& reading, std::string_view line)
{
    if (reading.component == nullptr)
        return;
    CJOBXcmpTop& top = *reading.tops.Own(record_pool::New<CJOBXcmpTop>());
    CBlankEndedScanner fields(WithoutKeyword(line));
    top.m_nPin = fields.Integer();
    top.m_ptLocation.x = fields.Real();
    top.m_ptLocation.y = fields.Real();
    top.m_dRotation = fields.Real();
    top.m_nMirror = MirrorOf(fields.Token());
    top.m_nNet = fields.Integer();
    top.m_nSubnet = fields.Integer();
    TakeName(reading, fields, top.m_sName);
}

// The value is in single quotes. Several opening quotes count as one; the next quote ends it. Without any quote the
// whole line is the name.
void OnProperty(ComponentsReading& reading, std::string_view line)
{
    if (reading.component == nullptr)
        return;
    const std::string_view text = WithoutKeyword(line);
    const std::size_t quote = text.find('\'');
    auto property = record_pool::New<CLProperty>();
    property->m_sName = reading.texts.Of(Trimmed(text.substr(0, quote)));
    if (quote != std::string_view::npos)
    {
        const std::string_view value = WithoutLeading(text.substr(quote), '\'');
        property->m_sValue = reading.texts.Of(value.substr(0, value.find('\'')));
    }
    reading.properties.Own(std::move(property));
}

// Tried from the top, first match wins. All other lines are dropped, including comments and the units line.
constexpr Keyword<ComponentsReading> kComponentsKeywords[] = {
    {components_format::kNameMark, OnAttributeName},
    {components_format::kTextMark, OnAttributeText},
    {components_format::kNewComponent, OnNewComponent},
    {components_format::kComponent, OnComponent}, // dropped before the first "# CMP", as are the two below
    {components_format::kToeprint, OnToeprint},
    {components_format::kProperty, OnProperty},
};

void ReadLines(CLineScanner& text, CJOBXcomponents& components)
{
    ComponentsReading reading{components,
                              CNumberIndex(components.m_arrAttributeNameNumbers, components.m_arrAttributeNames)};
    while (text.NextLine())
        Dispatch<kComponentsKeywords>(reading, text.Line());
    reading.tops.Finish();
    reading.properties.Finish();
    reading.attributes.Finish();
}
} // namespace

int CJOBXcomponents::ParseODBOfMFC(CString path)
{
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, *this);
            return 1;
        });
}

void CJOBXcomponents::AddPropertyData(CString attributes, CJOBXcmp* component) const
{
    if (component != nullptr)
        Guarded(
            [&]
            {
                CListFiller<CJOBXProperty> filler;
                filler.Begin(component->m_arrAttributes);
                AddAttributes(filler, attributes.View(), [this](int number) { return GetAttributeName(number); });
                filler.Finish();
            });
}
