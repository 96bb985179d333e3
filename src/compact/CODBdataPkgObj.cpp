#include "compact/CODBdataPkgObj.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"
#include "eda/CJOBXdataPkgObjContour.h"

#include <algorithm>
#include <typeinfo>

template class CExPtrArray<CODBdataPkgObj*, CODBdataPkgObj*>;

namespace
{
bool IsPlain(const CODBdataPkgObj* record)
{
    return record != nullptr && typeid(*record) == typeid(CODBdataPkgObj);
}

// A plain record as the main model has it. A subclass becomes a record without a keyword, which the main model ignores.
std::unique_ptr<CJOBXdataPkgObj> MakeMain(const CODBdataPkgObj* record)
{
    auto same = MakeNew<CJOBXdataPkgObj>();
    if (IsPlain(record))
    {
        same->m_nLineNumber = record->m_nLineNumber;
        same->m_arrParameters = record->m_arrParameters;
        same->m_sKeyword = record->m_sKeyword;
    }
    return same;
}

template <class Shape>
std::unique_ptr<Shape> MakeCompact(const CJOBXdataPkgObj& record)
{
    auto shape = MakeNew<Shape>();
    shape->m_nLineNumber = record.m_nLineNumber;
    shape->m_arrParameters = record.m_arrParameters;
    return shape;
}

std::unique_ptr<CODBdataPkgObj> MakeContour(const CJOBXdataPkgObjContour& source)
{
    auto contour = MakeCompact<CODBdataPkgObjContour>(source);
    const CJOBXlayObjOXArray& elements = *source.GetODBlayObjOXArray();
    for (__int64 i = 0; i < elements.GetSize(); ++i)
    {
        const CJOBXlayObjOX& from = *elements.GetAt(i);
        CODBlayObjOX& element = *contour->m_arrElements.Own(MakeNew<CODBlayObjOX>());
        element.m_nLineNumber = from.GetLineNumber();
        element.m_sClockwise = from.GetClockwise();
        element.m_sPolygonType = from.GetPolygonType();
        element.m_ptCenter = from.GetCenterPoint();
        element.m_ptPoint = from.GetPoint();
        element.m_sKind = from.GetKind();
    }
    return contour;
}

// The compact form of a main model's record with geometry, null for a record without geometry.
std::unique_ptr<CODBdataPkgObj> MakeShape(const CJOBXdataPkgObj& record)
{
    if (const auto* const from = dynamic_cast<const CJOBXdataPkgObjCircle*>(&record))
    {
        auto circle = MakeCompact<CODBdataPkgObjCircle>(record);
        circle->m_ptCenter = from->m_ptCenter;
        circle->m_dRadius = from->m_dRadius;
        return circle;
    }
    if (const auto* const from = dynamic_cast<const CJOBXdataPkgObjSquare*>(&record))
    {
        auto square = MakeCompact<CODBdataPkgObjSquare>(record);
        square->m_ptCenter = from->m_ptCenter;
        square->m_dHalfSide = from->m_dHalfSide;
        return square;
    }
    if (const auto* const from = dynamic_cast<const CJOBXdataPkgObjRectangle*>(&record))
    {
        auto rectangle = MakeCompact<CODBdataPkgObjRectangle>(record);
        rectangle->m_dWidth = from->m_dWidth;
        rectangle->m_dHeight = from->m_dHeight;
        rectangle->m_ptLowerLeft = from->m_ptLowerLeft;
        return rectangle;
    }
    const auto* const contour = dynamic_cast<const CJOBXdataPkgObjContour*>(&record);
    return contour != nullptr ? MakeContour(*contour) : nullptr;
}

// The number of plain records that this one was made from. For a contour they include its first and last line.
__int64 RecordsIn(const CJOBXdataPkgObj& record)
{
    const auto* const contour = dynamic_cast<const CJOBXdataPkgObjContour*>(&record);
    return contour != nullptr ? contour->GetODBlayObjOXArray()->GetSize() + 2 : 1;
}
} // namespace

CODBdataPkgObj::~CODBdataPkgObj() = default;

CODBdataPkgObj* CODBdataPkgObj::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObj::vRescale(double /*factor*/) {}

CODBdataPkgObjArray* CODBdataPkgObjArray::clone() const
{
    return NewCopy(*this);
}

// Uses the main model's parser, so that both models understand the same texts.
void CODBdataPkgObjArray::vMakeGeometry()
{
    if (std::none_of(GetData(), GetData() + GetSize(), IsPlain))
        return RemoveNullElement();
    CJOBXdataPkgObjArray records;
    for (__int64 i = 0; i < GetSize(); ++i)
        records.Own(MakeMain(GetAt(i)));
    Guarded([&records] { records.vMakeGeometry(); });

    __int64 first = 0; // first of this array's records that the main model's record was made from
    for (__int64 k = 0; k < records.GetSize(); ++k)
    {
        const __int64 end = first + RecordsIn(*records.GetAt(k));
        if (auto shape = MakeShape(*records.GetAt(k)))
            for (; first < end; ++first)
            {
                delete GetAt(first);
                SetAt(first, shape.release());
            }
        first = end;
    }
    RemoveNullElement();
}

void CODBdataPkgObjArray::vRescale(double factor)
{
    vMakeGeometry();
    CRescalableArray::vRescale(factor);
}

CODBdataPkgObjCircle::CODBdataPkgObjCircle()
{
    m_sKeyword = "CR";
}

CODBdataPkgObjCircle::~CODBdataPkgObjCircle() = default;

CODBdataPkgObjCircle* CODBdataPkgObjCircle::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjCircle::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBdataPkgObjSquare::CODBdataPkgObjSquare()
{
    m_sKeyword = "SQ";
}

CODBdataPkgObjSquare::~CODBdataPkgObjSquare() = default;

CODBdataPkgObjSquare* CODBdataPkgObjSquare::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjSquare::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBdataPkgObjRectangle::CODBdataPkgObjRectangle()
{
    m_sKeyword = "RC";
}

CODBdataPkgObjRectangle::~CODBdataPkgObjRectangle() = default;

CODBdataPkgObjRectangle* CODBdataPkgObjRectangle::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjRectangle::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBdataPkgObjContour::CODBdataPkgObjContour()
{
    m_sKeyword = "CT";
}

CODBdataPkgObjContour::~CODBdataPkgObjContour() = default;

CODBdataPkgObjContour* CODBdataPkgObjContour::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjContour::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}
