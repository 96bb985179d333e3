#include "foundation/CJOBXProperty.h"

#include "foundation/corekit/CECadClsLvl.h"
#include "foundation/framework/Guarded.h"

#include <algorithm>
#include <memory>

template class CExPtrArray<CJOBXProperty*, CJOBXProperty*>;

namespace
{
constexpr UINT kListVersion = 1;
constexpr UINT kLongCount = 0x80000000U; // set in the version word if a 64-bit count follows

CString Indent(int level)
{
    return CString(' ', level > 0 ? level * 3 : 0);
}
} // namespace

CJOBXProperty::CJOBXProperty() = default;

CJOBXProperty::CJOBXProperty(const CJOBXProperty& other) = default;

CJOBXProperty::~CJOBXProperty() = default;

void CJOBXProperty::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        archive << nVersion << m_sName << m_sValue;
        return;
    }
    int version = 0;
    archive >> version;
    if (version == nVersion)
        archive >> m_sName >> m_sValue;
}

CJOBXProperty* CJOBXProperty::clone() const
{
    return new CJOBXProperty(*this);
}

// Assigning a text to itself is safe, so self-assignment needs no test.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
CJOBXProperty& CJOBXProperty::operator=(const CJOBXProperty& other)
{
    m_sName = other.m_sName;
    m_sValue = other.m_sValue;
    return *this;
}

int CJOBXProperty::operator==(const CJOBXProperty& other) const
{
    return m_sName == other.m_sName && m_sValue == other.m_sValue && m_nNumber == other.m_nNumber &&
                   m_nTextNumber == other.m_nTextNumber
               ? 1
               : 0;
}

int CJOBXProperty::operator!=(const CJOBXProperty& other) const
{
    return *this == other ? 0 : 1;
}

CString CJOBXProperty::GetReport_ForPickingProperty() const
{
    return m_sName + " : " + m_sValue;
}

void CJOBXProperty::Write2AsciiFile(FILE* file, int level) const
{
    if (file != nullptr)
        std::fprintf(file, "%s(ITEM:\"%s\" VALUE:\"%s\")\n", Indent(level).GetString(), m_sName.GetString(),
                     m_sValue.GetString());
}

CECadClsLvl* CJOBXProperty::pGetECadClsLvl()
{
    m_sName.Remove('"');
    m_sValue.Remove('"');
    auto level = std::make_unique<CECadClsLvl>();
    level->m_sLabel = "PROP";
    level->m_arrItems.Add(m_sName);
    level->m_arrItems.Add(m_sValue);
    return level.release();
}

CJOBXPropertyArray::CJOBXPropertyArray() = default;

CJOBXPropertyArray::CJOBXPropertyArray(const CJOBXPropertyArray& other) : COwningPtrArray()
{
    *this = other;
}

CJOBXPropertyArray& CJOBXPropertyArray::operator=(const CJOBXPropertyArray& other)
{
    CopyElements(other, [](const CJOBXProperty& property) { return property.clone(); });
    return *this;
}

CJOBXPropertyArray::~CJOBXPropertyArray() = default;

CJOBXPropertyArray* CJOBXPropertyArray::clone() const
{
    return Guarded([this] { return new CJOBXPropertyArray(*this); });
}

void CJOBXPropertyArray::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        // A null entry has no archived form: it is neither counted nor stored, and stays in the list.
        const auto missing = std::count(GetData(), GetData() + GetSize(), nullptr);
        archive << (kListVersion | kLongCount) << static_cast<ULONGLONG>(GetSize() - missing);
        for (CJOBXProperty& property : Records())
            property.Serialize(archive);
        return;
    }
    DeleteAll();
    UINT version = 0;
    archive >> version;
    if ((version & ~kLongCount) != kListVersion)
        return;
    ULONGLONG count = 0;
    if ((version & kLongCount) != 0)
    {
        archive >> count;
    }
    else
    {
        UINT shortCount = 0;
        archive >> shortCount;
        count = shortCount;
    }
    for (ULONGLONG i = 0; i < count; ++i)
    {
        auto property = std::make_unique<CJOBXProperty>();
        property->Serialize(archive);
        Own(std::move(property));
    }
}

int CJOBXPropertyArray::operator==(const CJOBXPropertyArray& other) const
{
    return GetSize() == other.GetSize() && EqualsAtPositionsOf(other) ? 1 : 0;
}

int CJOBXPropertyArray::operator!=(const CJOBXPropertyArray& other) const
{
    return *this == other ? 0 : 1;
}

int CJOBXPropertyArray::ExistSameData(const CJOBXProperty* property) const
{
    if (property == nullptr)
        return 0;
    for (__int64 i = 0; i < GetSize(); ++i)
        if (GetAt(i) != nullptr && *GetAt(i) == *property)
            return 1;
    return 0;
}

CString CJOBXPropertyArray::GetReport_ForPickingProperty() const
{
    CString report;
    for (const CJOBXProperty& property : Records())
        report += property.GetReport_ForPickingProperty() + "\r\n";
    return report.TrimRight();
}

void CJOBXPropertyArray::Write2AsciiFile(FILE* file, int level) const
{
    if (file == nullptr || GetSize() == 0)
        return;
    std::fprintf(file, "%s(PROPERTY\n", Indent(level).GetString());
    for (const CJOBXProperty& property : Records())
        property.Write2AsciiFile(file, level + 1);
    std::fprintf(file, "%s)\n", Indent(level).GetString());
}
