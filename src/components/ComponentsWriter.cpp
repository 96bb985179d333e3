#include "components/CJOBXcomponents.h"
#include "components/ComponentsFormat.h"
#include "foundation/corekit/CKUtility.h"

namespace
{
// The end of the component's line. Each attribute with both numbers overwrites the one before, so only the last is
// written; this is intended.
void WriteAttributes(CTextLine& out, const CJOBXPropertyArray& attributes)
{
    for (__int64 i = attributes.GetLastIndex(); i >= 0; --i)
    {
        const CJOBXProperty* const attribute = attributes.GetAt(i);
        if (attribute == nullptr || attribute->m_nNumber == -1 || attribute->m_nTextNumber == -1)
            continue;
        out << " ; " << attribute->m_nNumber << '=' << attribute->m_nTextNumber;
        break;
    }
    out << '\n';
}

void WriteToeprint(CTextWriter& out, const CJOBXcmpTop& top, double rotation)
{
    CTextLine(out) << components_format::kToeprint << ' ' << top.m_nPin << ' ' << Fixed{top.m_ptLocation.x} << ' '
                   << Fixed{top.m_ptLocation.y} << ' ' << Fixed{rotation} << ' '
                   << (top.m_nMirror == 1 ? components_format::kMirrored : components_format::kNotMirrored) << ' '
                   << top.m_nNet << ' ' << top.m_nSubnet << ' ' << top.m_sName << '\n';
}

void WriteHead(CTextWriter& writer, const CJOBXcmp& component)
{
    CTextLine out(writer);
    out << components_format::kNewComponent << ' ' << component.m_nNumber << '\n';
    out << components_format::kComponent << ' ' << component.m_nPkgRef << ' ' << Fixed{component.m_ptLocation.x} << ' '
        << Fixed{component.m_ptLocation.y} << ' ' << Fixed{component.m_dRotation} << ' '
        << (component.m_nMirror == 1 ? components_format::kMirrored : components_format::kNotMirrored) << ' '
        << component.m_sName << ' ' << component.m_sPartName;
    WriteAttributes(out, component.m_arrAttributes);
}

// An entry that has no number is written with its position.
void WriteTable(CTextWriter& out, std::string_view title, std::string_view mark, const CArrayN& numbers,
                const CStringArray& texts)
{
    if (texts.IsEmpty())
        return;
    out << title << "#\n";
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
        out << mark << (i < numbers.GetSize() ? numbers.GetAt(i) : static_cast<int>(i)) << ' ' << texts.GetAt(i)
            << '\n';
    out << "#\n";
}
} // namespace

void WriteComponent(CTextWriter& out, const CJOBXcmp& component)
{
    WriteHead(out, component);
    for (const CLProperty& property : component.m_arrProperties.Records())
        CTextLine(out) << components_format::kProperty << ' ' << property.m_sName << " '" << property.m_sValue << "'\n";
    for (const CJOBXcmpTop& top : component.m_arrTops.Records())
        WriteToeprint(out, top, component.m_dRotation); // not the toeprint's own rotation; intended
}

void CJOBXcmp::WriteODBData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteComponent(out, *this);
}

void CJOBXcomponents::WriteODBData(CString dir) const
{
    CTextWriter out(CKUtility::GetInstance()->CKPathCombine(dir, "components", __FILE__, __LINE__), __FILE__, __LINE__);
    // Written unchanged, even with a percent sign.
    out << "#\nUNITS=" << m_sUnits << "\n#\n#\n";
    WriteTable(out, "#Component attribute names\n", components_format::kNameMark, m_arrAttributeNameNumbers,
               m_arrAttributeNames);
    WriteTable(out, "#Component attribute text strings\n", components_format::kTextMark, m_arrAttributeTextNumbers,
               m_arrAttributeTexts);
    out << "#\n";
    for (const CJOBXcmp& component : m_arrCmps.Records())
        WriteComponent(out, component);
}

void CJOBXcomponentsArray::WriteODBData(CString dir) const
{
    for (const CJOBXcomponents& components : Records())
        components.WriteODBData(dir);
}
