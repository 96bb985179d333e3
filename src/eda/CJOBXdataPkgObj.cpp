#include "eda/CJOBXdataPkgObj.h"

#include "eda/CJOBXdataPkgObjContour.h"
#include "eda/CJOBXdataPkgObjFields.h"
#include "eda/EdaFormat.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/ScaleLengths.h"
#include "foundation/base/NumberText.h"
#include "foundation/framework/Guarded.h"

#include <array>
#include <cmath>
#include <memory>
#include <typeinfo>

template class CExPtrArray<CJOBXdataPkgObj*, CJOBXdataPkgObj*>;

namespace
{
template <class Shape>
void ConvertAs(CJOBXdataPkgObj& record, const double& factor)
{
    if (auto* const shape = dynamic_cast<Shape*>(&record))
        shape->UnitConvert(factor);
}

bool IsPlain(const CJOBXdataPkgObj* record, std::string_view keyword)
{
    return record != nullptr && record->m_sKeyword.View() == keyword && typeid(*record) == typeid(CJOBXdataPkgObj);
}

// Whether the whole text is one finite number; sets `value`.
bool IsNumber(std::string_view text, double& value)
{
    const char* const end = text.data() + text.size();
    const auto read = ReadReal(text.data(), end);
    value = read.value;
    return !text.empty() && read.end == end && std::isfinite(value);
}

// Whether the record has `count` parameters and the first of them are numbers; these go into `numbers`.
template <std::size_t N>
bool HasNumbers(const CJOBXdataPkgObj& record, std::array<double, N>& numbers, std::size_t count = N)
{
    if (record.m_arrParameters.GetSize() != static_cast<INT_PTR>(count))
        return false;
    for (std::size_t i = 0; i < N; ++i)
        if (!IsNumber(record.m_arrParameters[static_cast<INT_PTR>(i)].View(), numbers[i]))
            return false;
    return true;
}

template <class Shape>
std::unique_ptr<Shape> MakeLike(const CJOBXdataPkgObj& record)
{
    auto shape = std::make_unique<Shape>();
    shape->m_nLineNumber = record.m_nLineNumber;
    shape->m_arrParameters = record.m_arrParameters;
    shape->SetID(record.GetID());
    if (const CJOBXPropertyArray* const attributes = record.pGetTailAttributes())
        *shape->pMakeTailAttributes() = *attributes;
    return shape;
}

// The shape that the plain record describes, null if none.
std::unique_ptr<CJOBXdataPkgObj> MakeShape(const CJOBXdataPkgObj* record)
{
    std::array<double, 3> three{};
    std::array<double, 4> four{};
    if (IsPlain(record, eda_format::kCircle) && HasNumbers(*record, three))
    {
        auto circle = MakeLike<CJOBXdataPkgObjCircle>(*record);
        circle->m_ptCenter.SetData(three[0], three[1]);
        circle->m_dRadius = three[2];
        return circle;
    }
    if (IsPlain(record, eda_format::kSquare) && HasNumbers(*record, three))
    {
        auto square = MakeLike<CJOBXdataPkgObjSquare>(*record);
        square->m_ptCenter.SetData(three[0], three[1]);
        square->m_dHalfSide = three[2];
        return square;
    }
    if (IsPlain(record, eda_format::kRectangle) && HasNumbers(*record, four))
    {
        auto rectangle = MakeLike<CJOBXdataPkgObjRectangle>(*record);
        rectangle->m_ptLowerLeft.SetData(four[0], four[1]);
        rectangle->m_dWidth = four[2];
        rectangle->m_dHeight = four[3];
        return rectangle;
    }
    return nullptr;
}

// The contour element that the plain record describes, null if none.
std::unique_ptr<CJOBXlayObjOX> MakeElement(const CJOBXdataPkgObj* record)
{
    auto element = std::make_unique<CJOBXlayObjOX>();
    std::array<double, 2> two{};
    std::array<double, 4> four{};
    if (IsPlain(record, eda_format::kPolygon) && HasNumbers(*record, two, 3))
    {
        element->SetPoint({two[0], two[1]});
        element->SetPolygonType(record->m_arrParameters.GetAt(2));
    }
    else if (IsPlain(record, eda_format::kSegment) && HasNumbers(*record, two))
    {
        element->SetPoint({two[0], two[1]});
    }
    else if (IsPlain(record, eda_format::kCurve) && HasNumbers(*record, four, 5))
    {
        element->SetPoint({four[0], four[1]});
        element->SetCenterPoint({four[2], four[3]});
        element->SetClockwise(record->m_arrParameters.GetAt(4));
    }
    else if (!IsPlain(record, eda_format::kPolygonEnd) || record->m_arrParameters.GetSize() != 0)
    {
        return nullptr;
    }
    element->SetKind(record->m_sKeyword);
    element->SetLineNumber(record->m_nLineNumber);
    return element;
}

// The contour that begins at `begin`, null if none; `end` becomes the position after it. Without a contour, there is no
// other start of one before `end`, so a list of starts without an end is only walked twice.
std::unique_ptr<CJOBXdataPkgObjContour> MakeContour(const CJOBXdataPkgObjArray& records, __int64 begin, __int64& end)
{
    const CJOBXdataPkgObj* const first = records.GetAt(begin);
    if (!IsPlain(first, eda_format::kContour) || first->m_arrParameters.GetSize() != 0)
        return nullptr;
    auto contour = MakeLike<CJOBXdataPkgObjContour>(*first);
    for (end = begin + 1; end < records.GetSize(); ++end)
    {
        const CJOBXdataPkgObj* const record = records.GetAt(end);
        if (IsPlain(record, eda_format::kContourEnd) && record->m_arrParameters.GetSize() == 0)
        {
            ++end;
            return contour;
        }
        auto element = MakeElement(record);
        if (element == nullptr)
            return nullptr;
        contour->m_arrElements.Own(std::move(element));
    }
    return nullptr;
}

// Replaces and deletes the record at `position`.
void Replace(CJOBXdataPkgObjArray& records, __int64 position, std::unique_ptr<CJOBXdataPkgObj> record)
{
    delete records.GetAt(position);
    records.SetAt(position, record.release());
}

// The list stays valid at every step: nulls take the places of a contour's records until the end.
void MakeGeometry(CJOBXdataPkgObjArray& records)
{
    for (__int64 i = 0; i < records.GetSize(); ++i)
    {
        __int64 end = i;
        if (auto shape = MakeShape(records.GetAt(i)))
            Replace(records, i, std::move(shape));
        else if (auto contour = MakeContour(records, i, end))
        {
            Replace(records, i, std::move(contour));
            for (++i; i < end; ++i)
                Replace(records, i, nullptr);
            --i;
        }
    }
    records.RemoveNullElement();
}
} // namespace

CJOBXdataPkgObj::~CJOBXdataPkgObj() = default;

CJOBXdataPkgObj* CJOBXdataPkgObj::clone() const
{
    return new CJOBXdataPkgObj(*this);
}

bool CJOBXdataPkgObj::operator==(const CJOBXdataPkgObj& other) const
{
    return m_nLineNumber == other.m_nLineNumber && m_sKeyword == other.m_sKeyword &&
           m_arrParameters == other.m_arrParameters;
}

void CJOBXdataPkgObj::UnitConvert(const double& factor)
{
    const std::string_view keyword = m_sKeyword.View();
    if (keyword == eda_format::kCircle)
        ConvertAs<CJOBXdataPkgObjCircle>(*this, factor);
    else if (keyword == eda_format::kSquare)
        ConvertAs<CJOBXdataPkgObjSquare>(*this, factor);
    else if (keyword == eda_format::kRectangle)
        ConvertAs<CJOBXdataPkgObjRectangle>(*this, factor);
    else if (keyword == eda_format::kContour)
        ConvertAs<CJOBXdataPkgObjContour>(*this, factor);
}

CJOBXdataPkgObjArray::CJOBXdataPkgObjArray(const CJOBXdataPkgObjArray& other) : COwningPtrArray()
{
    *this = other;
}

CJOBXdataPkgObjArray& CJOBXdataPkgObjArray::operator=(const CJOBXdataPkgObjArray& other)
{
    CopyElements(other, [](const CJOBXdataPkgObj& record) { return record.clone(); });
    return *this;
}

CJOBXdataPkgObjArray::~CJOBXdataPkgObjArray() = default;

CJOBXdataPkgObjArray* CJOBXdataPkgObjArray::clone() const
{
    return new CJOBXdataPkgObjArray(*this);
}

bool CJOBXdataPkgObjArray::operator==(const CJOBXdataPkgObjArray& other) const
{
    return EqualsAtPositionsOf(other);
}

void CJOBXdataPkgObjArray::vMakeGeometry()
{
    Guarded([this] { MakeGeometry(*this); });
}

void CJOBXdataPkgObjArray::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of a record
    vMakeGeometry();
    for (__int64 i = 0; i < GetSize(); ++i)
        GetAt(i)->UnitConvert(by);
}

CJOBXdataPkgObjCircle::CJOBXdataPkgObjCircle()
{
    m_sKeyword = eda_format::kCircle;
}

CJOBXdataPkgObjCircle::~CJOBXdataPkgObjCircle() = default;

CJOBXdataPkgObjCircle* CJOBXdataPkgObjCircle::clone() const
{
    return new CJOBXdataPkgObjCircle(*this);
}

void CJOBXdataPkgObjCircle::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXdataPkgObjSquare::CJOBXdataPkgObjSquare()
{
    m_sKeyword = eda_format::kSquare;
}

CJOBXdataPkgObjSquare::~CJOBXdataPkgObjSquare() = default;

CJOBXdataPkgObjSquare* CJOBXdataPkgObjSquare::clone() const
{
    return new CJOBXdataPkgObjSquare(*this);
}

void CJOBXdataPkgObjSquare::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}

CJOBXdataPkgObjRectangle::CJOBXdataPkgObjRectangle()
{
    m_sKeyword = eda_format::kRectangle;
}

CJOBXdataPkgObjRectangle::~CJOBXdataPkgObjRectangle() = default;

CJOBXdataPkgObjRectangle* CJOBXdataPkgObjRectangle::clone() const
{
    return new CJOBXdataPkgObjRectangle(*this);
}

void CJOBXdataPkgObjRectangle::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}
