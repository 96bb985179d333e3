#include "layer/CJOBXlayObj.h"

#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"
#include "layer/FeaturesWriter.h"
#include "layer/RecordOfType.h"
#include "layer/SharedProperties.h"

#include <algorithm>
#include <string_view>

template class CExPtrArray<CJOBXlayObj*, CJOBXlayObj*>;
template class CExPtrArray<CJOBXlayObjSurfaceOB*, CJOBXlayObjSurfaceOB*>;

struct CJOBXlayObj::Extras
{
    CStringArray texts;
    __int64 value = 0;
};

namespace
{
template <class T>
void ScaleAs(CJOBXlayObj* object, double factor)
{
    if (T* const record = RecordOfType<T>(object))
        record->ScaleGeometry(factor);
}

// Whether `text` holds `upper` somewhere, ASCII letters of the text taken in upper case.
bool ContainsUpper(std::string_view text, std::string_view upper)
{
    return std::search(text.begin(), text.end(), upper.begin(), upper.end(),
                       [](char a, char b) { return AsciiUpper(a) == b; }) != text.end();
}
} // namespace

CJOBXlayObj::CJOBXlayObj() = default;

CJOBXlayObj::~CJOBXlayObj()
{
    if (m_pProperties != nullptr)
        m_pProperties->Release();
}

int CJOBXlayObj::CheckObjAtCenterPoint(double& /*x*/, double& /*y*/)
{
    return 0;
}

CStringArray& CJOBXlayObj::GetTexts()
{
    if (m_pExtras == nullptr)
        m_pExtras = std::make_unique<Extras>();
    return m_pExtras->texts;
}

const CStringArray& CJOBXlayObj::GetTexts() const
{
    static const CStringArray kNone;
    return m_pExtras != nullptr ? m_pExtras->texts : kNone;
}

__int64 CJOBXlayObj::GetUserValue() const
{
    return m_pExtras != nullptr ? m_pExtras->value : 0;
}

void CJOBXlayObj::SetUserValue(__int64 value)
{
    if (m_pExtras == nullptr)
        m_pExtras = std::make_unique<Extras>();
    m_pExtras->value = value;
}

int CJOBXlayObj::nGetPropertyCount() const
{
    return m_pProperties != nullptr ? static_cast<int>(m_pProperties->m_list.GetSize()) : 0;
}

const CJOBXProperty* CJOBXlayObj::pGetProperty(int index) const
{
    return m_pProperties != nullptr ? m_pProperties->m_list.GetAt(index) : nullptr;
}

CJOBXPropertyArray* CJOBXlayObj::GetPropertyArray()
{
    if (m_pProperties == nullptr)
    {
        m_pProperties = new CSharedProperties;
    }
    else if (!m_pProperties->IsOnlyReference())
    {
        auto* const own = new CSharedProperties;
        try
        {
            own->m_list = m_pProperties->m_list;
        }
        catch (...)
        {
            own->Release();
            throw;
        }
        m_pProperties->Release();
        m_pProperties = own;
    }
    return &m_pProperties->m_list;
}

void CJOBXlayObj::ShareProperties(CSharedProperties* list)
{
    if (list != nullptr)
        list->AddReference();
    if (m_pProperties != nullptr)
        m_pProperties->Release();
    m_pProperties = list;
}

void CJOBXlayObj::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObj::vRescale(double factor)
{
    if (m_sType.GetLength() != 1)
        return;
    switch (m_sType.GetAt(0))
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

CJOBXlayObjLine::CJOBXlayObjLine() = default;

CJOBXlayObjLine::~CJOBXlayObjLine() = default;

void CJOBXlayObjLine::ScaleGeometry(double factor)
{
    m_ptEnd.Scale(factor);
    m_ptStart.Scale(factor);
}

CJOBXlayObjPad::CJOBXlayObjPad() = default;

CJOBXlayObjPad::~CJOBXlayObjPad() = default;

int CJOBXlayObjPad::CheckObjAtCenterPoint(double& x, double& y)
{
    return m_ptCenter.x == x && m_ptCenter.y == y ? 1 : 0;
}

void CJOBXlayObjPad::ScaleGeometry(double factor)
{
    m_ptCenter.Scale(factor);
}

CJOBXlayObjArc::CJOBXlayObjArc() = default;

CJOBXlayObjArc::~CJOBXlayObjArc() = default;

void CJOBXlayObjArc::ScaleGeometry(double factor)
{
    m_ptCenter.Scale(factor);
    m_ptEnd.Scale(factor);
    m_ptStart.Scale(factor);
}

CJOBXlayObjText::CJOBXlayObjText() = default;

CJOBXlayObjText::~CJOBXlayObjText() = default;

void CJOBXlayObjText::ScaleGeometry(double factor)
{
    m_dWidthFactor *= factor;
    m_ptSize.Scale(factor);
    m_ptPosition.Scale(factor);
}

CJOBXlayObjBarcode::CJOBXlayObjBarcode() = default;

CJOBXlayObjBarcode::~CJOBXlayObjBarcode() = default;

void CJOBXlayObjBarcode::ScaleGeometry(double factor)
{
    m_dHeight *= factor;
    m_dWidth *= factor;
    m_ptPosition.ReScale(factor, factor);
}

CJOBXlayObjSurfaceOB::CJOBXlayObjSurfaceOB() : m_pElements(std::make_shared<CJOBXlayObjOXArray>()) {}

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
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayObjSurfaceOB* const contour = GetAt(i))
            contour->vRescale(factor);
}

CJOBXlayObjSurface::CJOBXlayObjSurface() = default;

CJOBXlayObjSurface::~CJOBXlayObjSurface() = default;

void CJOBXlayObjSurface::ScaleGeometry(double factor)
{
    m_arrContours.vRescale(factor);
}

CJOBXlayObjArray::CJOBXlayObjArray() = default;

CJOBXlayObjArray::~CJOBXlayObjArray() = default;

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
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayObj* const object = GetAt(i))
            object->vRescale(factor);
}
