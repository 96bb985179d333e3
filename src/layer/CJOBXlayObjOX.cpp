#include "layer/CJOBXlayObjOX.h"

#include "foundation/CRecordPool.h"
#include "layer/FeatureMaker.h"

#include <algorithm>
#include <array>
#include <string_view>

template class CExPtrArray<CJOBXlayObjOX*, CJOBXlayObjOX*>;

// For an element with an uncommon text.
struct CJOBXlayObjOX::Texts : CRaisingNew
{
    CString clockwise;
    CString polygonType;
    CString kind;
};

namespace
{
// The common texts. The next number after the last means any other text.
constexpr std::array<std::string_view, 5> kKinds = {"", "OB", "OS", "OC", "OE"};
constexpr std::array<std::string_view, 3> kDirections = {"", "Y", "N"};
constexpr std::array<std::string_view, 3> kPolygonTypes = {"", "I", "H"};

template <std::size_t N>
unsigned char NumberOf(const std::array<std::string_view, N>& usual, const CString& text)
{
    return static_cast<unsigned char>(std::find(usual.begin(), usual.end(), text.View()) - usual.begin());
}
} // namespace

static_assert(kKinds[CFeatureMaker::kBegin] == "OB" && kKinds[CFeatureMaker::kSegment] == "OS" &&
              kKinds[CFeatureMaker::kArc] == "OC" && kKinds[CFeatureMaker::kEnd] == "OE");
static_assert(kDirections[CFeatureMaker::kClockwise] == "Y" && kDirections[CFeatureMaker::kCounterClockwise] == "N");

CJOBXlayObjOX::CJOBXlayObjOX(const CJOBXlayObjOX& other)
{
    *this = other;
}

CJOBXlayObjOX& CJOBXlayObjOX::operator=(const CJOBXlayObjOX& other)
{
    if (this == &other)
        return *this;
    if (other.m_pTexts != nullptr)
        MakeTexts() = *other.m_pTexts;
    m_nLineNumber = other.m_nLineNumber;
    m_nKind = other.m_nKind;
    m_nClockwise = other.m_nClockwise;
    m_nPolygonType = other.m_nPolygonType;
    m_dCenterX = other.m_dCenterX;
    m_dCenterY = other.m_dCenterY;
    m_dX = other.m_dX;
    m_dY = other.m_dY;
    return *this;
}

CJOBXlayObjOX::~CJOBXlayObjOX()
{
    delete m_pTexts;
}

CJOBXlayObjOX* CJOBXlayObjOX::clone() const
{
    return new CJOBXlayObjOX(*this);
}

CJOBXlayObjOX::Texts& CJOBXlayObjOX::MakeTexts()
{
    if (m_pTexts == nullptr)
    {
        m_pTexts = new Texts;
        if (m_bIsAmongPlain)
            CRecordChunk::Of(this).RecordOwnsSomething();
    }
    return *m_pTexts;
}

CString CJOBXlayObjOX::GetClockwise() const
{
    return m_nClockwise < kDirections.size() ? CString(kDirections[m_nClockwise]) : m_pTexts->clockwise;
}

void CJOBXlayObjOX::SetClockwise(const CString& clockwise)
{
    const unsigned char number = NumberOf(kDirections, clockwise);
    if (number == kDirections.size())
        MakeTexts().clockwise = clockwise;
    m_nClockwise = number & 15U;
}

CString CJOBXlayObjOX::GetPolygonType() const
{
    return m_nPolygonType < kPolygonTypes.size() ? CString(kPolygonTypes[m_nPolygonType]) : m_pTexts->polygonType;
}

void CJOBXlayObjOX::SetPolygonType(const CString& polygonType)
{
    const unsigned char number = NumberOf(kPolygonTypes, polygonType);
    if (number == kPolygonTypes.size())
        MakeTexts().polygonType = polygonType;
    m_nPolygonType = number & 15U;
}

CString CJOBXlayObjOX::GetKind() const
{
    return m_nKind < kKinds.size() ? CString(kKinds[m_nKind]) : m_pTexts->kind;
}

void CJOBXlayObjOX::SetKind(const CString& kind)
{
    const unsigned char number = NumberOf(kKinds, kind);
    if (number == kKinds.size())
        MakeTexts().kind = kind;
    m_nKind = number;
}

bool CJOBXlayObjOX::operator==(const CJOBXlayObjOX& other) const
{
    return m_dCenterX == other.m_dCenterX && m_dCenterY == other.m_dCenterY && m_nLineNumber == other.m_nLineNumber &&
           GetClockwise() == other.GetClockwise() && GetPolygonType() == other.GetPolygonType() && m_dX == other.m_dX &&
           m_dY == other.m_dY && GetKind() == other.GetKind();
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

// Elements that own nothing are given back together.
CJOBXlayObjOXArray::~CJOBXlayObjOXArray()
{
    record_pool::Delete(m_pData, m_nSize);
    RemoveAll();
}

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
    for (CJOBXlayObjOX& element : Records())
        element.vRescale(factor);
}
