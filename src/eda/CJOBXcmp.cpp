#include "eda/CJOBXcmp.h"

#include "eda/CJOBXcmpFields.h"
#include "eda/ComponentsText.h"
#include "foundation/ScaleLengths.h"

template class CExPtrArray<CJOBXcmp*, CJOBXcmp*>;

namespace
{
// The value of the first property of that name whose value is not empty; "" when there is none.
CString FirstValueOf(const CLPropertyArray& properties, const char* name)
{
    for (__int64 i = 0; i < properties.GetSize(); ++i)
    {
        const CLProperty* const property = properties.GetAt(i);
        if (property != nullptr && property->m_sName == name && !property->m_sValue.IsEmpty())
            return property->m_sValue;
    }
    return CString();
}

// The end of the component's line. Each attribute that has both numbers takes the place of the one before it, so that
// only the last is written: intended.
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
    using namespace components_text;
    CTextLine(out) << kToeprint << ' ' << top.m_nPin << ' ' << Fixed{top.m_ptLocation.x} << ' '
                   << Fixed{top.m_ptLocation.y} << ' ' << Fixed{rotation} << ' '
                   << (top.m_nMirror == 1 ? kMirrored : kNotMirrored) << ' ' << top.m_nNet << ' ' << top.m_nSubnet
                   << ' ' << top.m_sName << '\n';
}

void WriteHead(CTextWriter& writer, const CJOBXcmp& component)
{
    CTextLine out(writer);
    using namespace components_text;
    out << kNewComponent << ' ' << component.m_nNumber << '\n';
    out << kComponent << ' ' << component.m_nPkgRef << ' ' << Fixed{component.m_ptLocation.x} << ' '
        << Fixed{component.m_ptLocation.y} << ' ' << Fixed{component.m_dRotation} << ' '
        << (component.m_nMirror == 1 ? kMirrored : kNotMirrored) << ' ' << component.m_sName << ' '
        << component.m_sPartName;
    WriteAttributes(out, component.m_arrAttributes);
}
} // namespace

void WriteComponent(CTextWriter& out, const CJOBXcmp& component)
{
    using namespace components_text;
    WriteHead(out, component);
    for (__int64 i = 0; i < component.m_arrProperties.GetSize(); ++i)
        if (const CLProperty* const property = component.m_arrProperties.GetAt(i))
            CTextLine(out) << kProperty << ' ' << property->m_sName << " '" << property->m_sValue << "'\n";
    for (__int64 i = 0; i < component.m_arrTops.GetSize(); ++i)
        if (const CJOBXcmpTop* const top = component.m_arrTops.GetAt(i))
            WriteToeprint(out, *top, component.m_dRotation); // not the toeprint's own rotation: intended
}

CJOBXcmp::CJOBXcmp() = default;

CJOBXcmp::~CJOBXcmp() = default;

void CJOBXcmp::WriteODBData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteComponent(out, *this);
}

CString CJOBXcmp::sGetPartName() const
{
    for (const char* const name : {"ALT_SYMBOLS", "PART_NAME"})
    {
        const CString value = FirstValueOf(m_arrProperties, name);
        if (!value.IsEmpty())
            return value;
    }
    return m_sPartName;
}

CJOBXcmpTop* CJOBXcmp::pGetODBcmpToeFromID(int pin) const
{
    return m_arrTops.pGetCmpToeWithPinID(pin);
}

void CJOBXcmp::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXcmpArray::CJOBXcmpArray() = default;

CJOBXcmpArray::~CJOBXcmpArray() = default;

void CJOBXcmpArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of what is converted
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXcmp* const component = GetAt(i))
            component->UnitConvert(by);
}
