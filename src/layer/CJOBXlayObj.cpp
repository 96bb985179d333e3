#include "layer/CJOBXlayObj.h"

#include "foundation/CRecordPool.h"
#include "foundation/ScaleLengths.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXlayObjFields.h"
#include "layer/FeaturesWriter.h"
#include "layer/RecordOfType.h"

#include <algorithm>
#include <string_view>

template class CExPtrArray<CJOBXlayObj*, CJOBXlayObj*>;
template class CExPtrArray<CJOBXlayObjSurfaceOB*, CJOBXlayObjSurfaceOB*>;

// Members that few records need.
struct CJOBXlayObj::Extras : CRaisingNew
{
    const CJOBXPropertyArray* borrowed = nullptr; // from the record's file, until the record has its own list
    std::unique_ptr<CJOBXPropertyArray> own;
    CStringArray texts;
    __int64 value = 0;
    int surfaceIndex = -1;
    CString polarity;
    CString type;
    CString padName;
    CString clockwise;

    const CJOBXPropertyArray* Properties() const noexcept { return own != nullptr ? own.get() : borrowed; }
};

namespace
{
template <class T>
void ScaleAs(CJOBXlayObj* object, double factor)
{
    if (T* const record = RecordOfType<T>(object))
        record->ScaleGeometry(factor);
}

// Whether `text`, with its ASCII letters in upper case, contains `upper`.
bool ContainsUpper(std::string_view text, std::string_view upper)
{
    return std::search(text.begin(), text.end(), upper.begin(), upper.end(),
                       [](char a, char b) { return AsciiUpper(a) == b; }) != text.end();
}
} // namespace

CJOBXlayObj::~CJOBXlayObj()
{
    delete FindExtras();
}

CJOBXlayObj::Extras* CJOBXlayObj::FindExtras() const noexcept
{
    // The address was put there with the mark. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return (m_nLink & 1U) != 0 ? reinterpret_cast<Extras*>(m_nLink - 1U) : nullptr;
}

CJOBXlayObj::Extras& CJOBXlayObj::MakeExtras()
{
    if (Extras* const extras = FindExtras())
        return *extras;
    auto* const made = new Extras;
    // Without the mark it is the borrowed list's address. NOLINTNEXTLINE(performance-no-int-to-ptr)
    made->borrowed = reinterpret_cast<const CJOBXPropertyArray*>(m_nLink);
    m_nLink = reinterpret_cast<std::uintptr_t>(made) | 1U;
    if (m_bIsAmongPlain)
        CRecordChunk::Of(this).RecordOwnsSomething();
    return *made;
}

char CJOBXlayObj::ShortOrKept(const CString& text, CString Extras::*kept)
{
    if (text.IsEmpty())
        return kEmptyText;
    if (text.GetLength() == 1 && IsCharacter(text.GetAt(0)))
        return text.GetAt(0);
    MakeExtras().*kept = text;
    return kLongText;
}

void CJOBXlayObj::SetType(const CString& type)
{
    m_cType = ShortOrKept(type, &Extras::type);
}

void CJOBXlayObj::SetPolarity(const CString& polarity)
{
    m_cPolarity = ShortOrKept(polarity, &Extras::polarity);
}

CString CJOBXlayObj::LongText(char text, CString Extras::*kept) const
{
    return text == kLongText ? FindExtras()->*kept : CString();
}

CString CJOBXlayObj::LongType() const
{
    return LongText(m_cType, &Extras::type);
}

CString CJOBXlayObj::LongPolarity() const
{
    return LongText(m_cPolarity, &Extras::polarity);
}

int CJOBXlayObj::CheckObjAtCenterPoint(double& /*x*/, double& /*y*/)
{
    return 0;
}

int CJOBXlayObj::GetSurfaceIndex() const
{
    const Extras* const extras = FindExtras();
    return extras != nullptr ? extras->surfaceIndex : -1;
}

void CJOBXlayObj::SetSurfaceIndex(int index)
{
    if (index != GetSurfaceIndex())
        MakeExtras().surfaceIndex = index;
}

CStringArray& CJOBXlayObj::GetTexts()
{
    return MakeExtras().texts;
}

const CStringArray& CJOBXlayObj::GetTexts() const
{
    static const CStringArray kNone;
    const Extras* const extras = FindExtras();
    return extras != nullptr ? extras->texts : kNone;
}

__int64 CJOBXlayObj::GetUserValue() const
{
    const Extras* const extras = FindExtras();
    return extras != nullptr ? extras->value : 0;
}

void CJOBXlayObj::SetUserValue(__int64 value)
{
    if (value != GetUserValue())
        MakeExtras().value = value;
}

CString CJOBXlayObj::PadName() const
{
    const Extras* const extras = FindExtras();
    return extras != nullptr ? extras->padName : CString();
}

void CJOBXlayObj::KeepPadName(const CString& name)
{
    if (!name.IsEmpty() || FindExtras() != nullptr)
        MakeExtras().padName = name;
}

const CJOBXPropertyArray* CJOBXlayObj::FindProperties() const noexcept
{
    if (const Extras* const extras = FindExtras())
        return extras->Properties();
    // Without the mark it is the list's address. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<const CJOBXPropertyArray*>(m_nLink);
}

int CJOBXlayObj::nGetPropertyCount() const
{
    const CJOBXPropertyArray* const list = FindProperties();
    return list != nullptr ? static_cast<int>(list->GetSize()) : 0;
}

const CJOBXProperty* CJOBXlayObj::pGetProperty(int index) const
{
    const CJOBXPropertyArray* const list = FindProperties();
    return list != nullptr ? list->GetAt(index) : nullptr;
}

CJOBXPropertyArray* CJOBXlayObj::GetPropertyArray()
{
    Extras& extras = MakeExtras();
    if (extras.own == nullptr)
        extras.own = extras.borrowed != nullptr ? std::make_unique<CJOBXPropertyArray>(*extras.borrowed)
                                                : std::make_unique<CJOBXPropertyArray>();
    return extras.own.get();
}

void CJOBXlayObj::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObj::vRescale(double factor)
{
    switch (m_cType)
    {
    case 'A':
        return ScaleAs<CJOBXlayObjArc>(this, factor);
    case 'B':
        return ScaleAs<CJOBXlayObjBarcode>(this, factor);
    case 'L':
        return ScaleAs<CJOBXlayObjLine>(this, factor);
    case 'P':
        return ScaleAs<CJOBXlayObjPad>(this, factor);
    case 'S':
        return ScaleAs<CJOBXlayObjSurface>(this, factor);
    case 'T':
        return ScaleAs<CJOBXlayObjText>(this, factor);
    default:
        return;
    }
}

void CJOBXlayObj::WriteODBData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteFeature(out, *this);
}

void CJOBXlayObj::WriteODBFeatureAttributeData(std::FILE* file) const
{
    CTextWriter out(file);
    WriteFeatureAttributes(out, *this);
}

CString CJOBXlayObj::GetViaPadStackName() const
{
    for (int i = 0; i < nGetPropertyCount(); ++i)
        if (const CJOBXProperty* const property = pGetProperty(i); property != nullptr &&
                                                                   !property->m_sValue.IsEmpty() &&
                                                                   ContainsUpper(property->m_sName.View(), ".GEOMETRY"))
        {
            CString value = property->m_sValue;
            return value.MakeUpper();
        }
    return {};
}

CJOBXlayObjLine::~CJOBXlayObjLine() = default;

void CJOBXlayObjLine::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjPad::~CJOBXlayObjPad() = default;

int CJOBXlayObjPad::CheckObjAtCenterPoint(double& x, double& y)
{
    return m_ptCenter.x == x && m_ptCenter.y == y ? 1 : 0;
}

void CJOBXlayObjPad::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjArc::~CJOBXlayObjArc() = default;

void CJOBXlayObjArc::SetClockwise(const CString& clockwise)
{
    m_cClockwise = ShortOrKept(clockwise, &Extras::clockwise);
}

CString CJOBXlayObjArc::LongClockwise() const
{
    return LongText(m_cClockwise, &Extras::clockwise);
}

void CJOBXlayObjArc::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjText::CJOBXlayObjText() = default;

CJOBXlayObjText::~CJOBXlayObjText() = default;

void CJOBXlayObjText::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjBarcode::CJOBXlayObjBarcode() = default;

CJOBXlayObjBarcode::~CJOBXlayObjBarcode() = default;

void CJOBXlayObjBarcode::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjSurfaceOB::CJOBXlayObjSurfaceOB()
    : m_pElements(Guarded([] { return std::make_shared<CJOBXlayObjOXArray>(); }))
{
}

CJOBXlayObjSurfaceOB::CJOBXlayObjSurfaceOB(const CJOBXlayObjSurfaceOB& other) = default;

CJOBXlayObjSurfaceOB& CJOBXlayObjSurfaceOB::operator=(const CJOBXlayObjSurfaceOB& other) = default;

CJOBXlayObjSurfaceOB::~CJOBXlayObjSurfaceOB() = default;

void CJOBXlayObjSurfaceOB::UnitConvert(const double& factor)
{
    m_pElements->UnitConvert(factor);
}

void CJOBXlayObjSurfaceOB::vRescale(double factor)
{
    m_pElements->vRescale(factor);
}

CJOBXlayObjSurfaceOBArray::CJOBXlayObjSurfaceOBArray() = default;

CJOBXlayObjSurfaceOBArray::~CJOBXlayObjSurfaceOBArray() = default;

void CJOBXlayObjSurfaceOBArray::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObjSurfaceOBArray::vRescale(double factor)
{
    for (CJOBXlayObjSurfaceOB& contour : Records())
        contour.vRescale(factor);
}

CJOBXlayObjSurface::CJOBXlayObjSurface() = default;

CJOBXlayObjSurface::~CJOBXlayObjSurface() = default;

void CJOBXlayObjSurface::ScaleGeometry(double factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXlayObjArray::CJOBXlayObjArray() = default;

// Elements that own nothing are given back together.
CJOBXlayObjArray::~CJOBXlayObjArray()
{
    record_pool::Delete(m_pData, m_nSize);
    RemoveAll();
}

int CJOBXlayObjArray::GetObjAtIndexCenterPoint(double x, double y, int /*start*/) const
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayObj* const object = GetAt(i); object != nullptr && object->CheckObjAtCenterPoint(x, y) == 1)
            return static_cast<int>(i);
    return -1;
}

void CJOBXlayObjArray::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObjArray::vRescale(double factor)
{
    for (CJOBXlayObj& object : Records())
        object.vRescale(factor);
}
