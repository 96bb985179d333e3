#include "layer/CJOBXlayObjOX.h"

template class CExPtrArray<CJOBXlayObjOX*, CJOBXlayObjOX*>;

CJOBXlayObjOX::CJOBXlayObjOX() = default;

CJOBXlayObjOX::CJOBXlayObjOX(const CJOBXlayObjOX& other) = default;

CJOBXlayObjOX& CJOBXlayObjOX::operator=(const CJOBXlayObjOX& other) = default;

CJOBXlayObjOX::~CJOBXlayObjOX() = default;

CJOBXlayObjOX* CJOBXlayObjOX::clone() const
{
    return new CJOBXlayObjOX(*this);
}

bool CJOBXlayObjOX::operator==(const CJOBXlayObjOX& other) const
{
    return m_dCenterX == other.m_dCenterX && m_dCenterY == other.m_dCenterY && m_nLineNumber == other.m_nLineNumber &&
           m_sClockwise == other.m_sClockwise && m_sPolygonType == other.m_sPolygonType && m_dX == other.m_dX &&
           m_dY == other.m_dY && m_sKind == other.m_sKind;
}

void CJOBXlayObjOX::SetCenterPoint(const CPointD& center)
{
    m_dCenterX = center.GetX();
    m_dCenterY = center.GetY();
}

void CJOBXlayObjOX::SetPoint(const CPointD& point)
{
    m_dX = point.GetX();
    m_dY = point.GetY();
}

void CJOBXlayObjOX::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObjOX::vRescale(double factor)
{
    m_dCenterX *= factor;
    m_dCenterY *= factor;
    m_dX *= factor;
    m_dY *= factor;
}

CJOBXlayObjOXArray::CJOBXlayObjOXArray() = default;

CJOBXlayObjOXArray::CJOBXlayObjOXArray(const CJOBXlayObjOXArray& other) : COwningPtrArray()
{
    *this = other;
}

CJOBXlayObjOXArray& CJOBXlayObjOXArray::operator=(const CJOBXlayObjOXArray& other)
{
    CopyElements(other, [](const CJOBXlayObjOX& element) { return element.clone(); });
    return *this;
}

CJOBXlayObjOXArray::~CJOBXlayObjOXArray() = default;

CJOBXlayObjOXArray* CJOBXlayObjOXArray::clone() const
{
    return new CJOBXlayObjOXArray(*this);
}

bool CJOBXlayObjOXArray::operator==(const CJOBXlayObjOXArray& other) const
{
    return EqualsAtPositionsOf(other);
}

void CJOBXlayObjOXArray::UnitConvert(const double& factor)
{
    vRescale(factor);
}

void CJOBXlayObjOXArray::vRescale(double factor)
{
    for (__int64 i = 0; i < GetSize(); ++i)
        if (CJOBXlayObjOX* const element = GetAt(i))
            element->vRescale(factor);
}
