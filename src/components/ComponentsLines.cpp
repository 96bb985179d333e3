#include "components/ComponentsLines.h"

#include "components/CJOBXcomponents.h"
#include "components/ComponentsFormat.h"
#include "foundation/CommonFields.h"
#include "saving/CAttributeTables.h"
#include "saving/COptionalFields.h"

namespace
{
class CComponentsLines
{
public:
    CComponentsLines(const CJOBXcomponents& file, const CAttributeTypes& types, const CMendedReferences& references,
                     CRecordLines& lines)
        : m_file(file), m_references(references), m_lines(lines), m_tables(file, types)
    {
    }

    void List()
    {
        m_lines.KeyValue(0, "UNITS", m_file.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH");
        for (const CJOBXcmp& component : m_file.m_arrCmps.Records())
        {
            m_tables.Collect(component.m_arrAttributes);
            for (const CJOBXcmpTop& top : component.m_arrTops.Records())
                m_tables.Collect(jobx::TailAttributes{}(top));
        }
        m_tables.ListLines(m_lines);
        int position = 0;
        for (const CJOBXcmp& component : m_file.m_arrCmps.Records())
            ListComponent(component, position++);
    }

private:
    static std::string_view MirrorFlag(int mirror)
    {
        return mirror == 1 ? components_format::kMirrored : components_format::kNotMirrored;
    }

    void ListComponent(const CJOBXcmp& component, int position)
    {
        m_lines.BeginAbove(0);
        m_lines.Word(components_format::kNewComponent).EndKey().Integer(position);
        m_lines.Begin(0, component.GetSourceLine());
        int package = component.m_nPkgRef;
        if (const CMendedReferences::Numbers* const mended = m_references.Find(&component))
            package = mended->isGone ? -1 : mended->values[0];
        m_lines.Word(components_format::kComponent).Integer(package);
        m_lines.Real(component.m_ptLocation.x).Real(component.m_ptLocation.y).Real(component.m_dRotation);
        m_lines.Word(MirrorFlag(component.m_nMirror));
        COptionalFields(m_lines).Text(component.m_sName.View()).Text(component.m_sPartName.View());
        GlueTail(m_tables.TextOf(component.m_arrAttributes), component.GetID(), m_lines);
        for (const CLProperty& property : component.m_arrProperties.Records())
            ListProperty(property);
        for (const CJOBXcmpTop& top : component.m_arrTops.Records())
            ListToeprint(top);
    }
    void ListProperty(const CLProperty& property)
    {
        m_lines.Begin(1, CRecordLines::kUnknownLine);
        m_lines.Word(components_format::kProperty);
        if (!property.m_sName.IsEmpty() || !property.m_sValue.IsEmpty())
            m_lines.Word(property.m_sName.View()).EndKey().Word("'").Glue(property.m_sValue.View()).Glue("'");
    }
    void ListToeprint(const CJOBXcmpTop& top)
    {
        int pin = top.m_nPin;
        int net = top.m_nNet;
        int subnet = top.m_nSubnet;
        if (const CMendedReferences::Numbers* const mended = m_references.Find(&top))
        {
            pin = mended->isGone ? pin : mended->values[0];
            net = mended->isGone ? -1 : mended->values[1];
            subnet = mended->isGone ? -1 : mended->values[2];
        }
        m_lines.Begin(1, top.GetSourceLine());
        m_lines.Word(components_format::kToeprint).Integer(pin);
        m_lines.Real(top.m_ptLocation.x).Real(top.m_ptLocation.y).Real(top.m_dRotation);
        m_lines.Word(MirrorFlag(top.m_nMirror)).Integer(net).Integer(subnet);
        COptionalFields(m_lines).Text(top.m_sName.View());
        GlueTail(m_tables.TextOf(jobx::TailAttributes{}(top)), top.GetID(), m_lines);
    }

    const CJOBXcomponents& m_file;
    const CMendedReferences& m_references;
    CRecordLines& m_lines;
    CAttributeTables m_tables;
};
} // namespace

void ListLines(const CJOBXcomponents& components, const CAttributeTypes& types, const CMendedReferences& references,
               CRecordLines& lines)
{
    CComponentsLines(components, types, references, lines).List();
}
