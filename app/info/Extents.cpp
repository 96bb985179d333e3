#include "info/Extents.h"

#include <array>
#include <cmath>

namespace
{
constexpr double kFullCircle = 6.283185307179586476925;
constexpr double kRounding = 1e-9;

// The angle from one direction counter-clockwise to another, from 0 to a full turn.
double TurnBetween(double from, double to)
{
    const double turn = std::fmod(to - from, kFullCircle);
    return turn < 0.0 ? turn + kFullCircle : turn;
}

// One element of a contour, of either model.
struct ContourElement
{
    ContourElement(const CJOBXlayObjOX& element)
        : kind(element.GetKind()),
          point(element.GetPoint()),
          centre(element.GetCenterPoint()),
          isClockwise(element.GetClockwise() == "Y")
    {
    }
    ContourElement(const CODBlayObjOX& element)
        : kind(element.m_sKind),
          point(element.m_ptPoint),
          centre(element.m_ptCenter),
          isClockwise(element.m_sClockwise == "Y")
    {
    }

    CString kind;
    CPointD point;
    CPointD centre;
    bool isClockwise;
};

double DirectionOf(const CPointD& point, const CPointD& centre)
{
    return std::atan2(point.y - centre.y, point.x - centre.x);
}
} // namespace

void Extents::Add(const CPointD& point)
{
    // A comparison with NaN is false, so NaN changes nothing.
    m_lowX = point.x < m_lowX ? point.x : m_lowX;
    m_lowY = point.y < m_lowY ? point.y : m_lowY;
    m_highX = point.x > m_highX ? point.x : m_highX;
    m_highY = point.y > m_highY ? point.y : m_highY;
}

void Extents::AddArc(const CPointD& start, const CPointD& end, const CPointD& centre, bool isClockwise)
{
    Add(start);
    Add(end);
    const double radius = std::hypot(start.x - centre.x, start.y - centre.y);
    const CPointD& first = isClockwise ? end : start; // counter-clockwise from here
    const CPointD& last = isClockwise ? start : end;
    const double from = DirectionOf(first, centre);
    const bool isCircle = start.x == end.x && start.y == end.y;
    const double turn = isCircle ? kFullCircle : TurnBetween(from, DirectionOf(last, centre));
    const std::array<CPointD, 4> tips = {CPointD(centre.x + radius, centre.y), CPointD(centre.x, centre.y + radius),
                                         CPointD(centre.x - radius, centre.y), CPointD(centre.x, centre.y - radius)};
    // If a tip equals an end except for rounding, it would replace the exact value.
    const auto isEnd = [&](const CPointD& tip)
    {
        const double nearest =
            std::fmin(std::hypot(tip.x - start.x, tip.y - start.y), std::hypot(tip.x - end.x, tip.y - end.y));
        return nearest < radius * kRounding;
    };
    for (std::size_t i = 0; i < tips.size(); ++i)
        if (TurnBetween(from, static_cast<double>(i) * kFullCircle / 4.0) < turn && !isEnd(tips[i]))
            Add(tips[i]);
}

void Extents::Add(const CJOBXlayer& layer)
{
    const CJOBXlayObjArray& features = *layer.GetFeatures();
    for (const CJOBXlayObj& feature : features.Records())
        Add(feature);
}

void Extents::Add(const CJOBXlayObj& feature)
{
    if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
    {
        const CJOBXlayObjSurfaceOBArray& contours = *surface->GetContours();
        for (const CJOBXlayObjSurfaceOB& contour : contours.Records())
            AddContour(*contour.GetODBlayObjOXArray());
    }
    else if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&feature))
    {
        Add(line->GetStartPoint());
        Add(line->GetEndPoint());
    }
    else if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&feature))
        AddArc(arc->GetStartPoint(), arc->GetEndPoint(), arc->GetCenterPoint(), arc->GetClockwise() == "Y");
    else if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        Add(pad->GetCenterPoint());
    else if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
        Add(text->GetPosition());
    else if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&feature))
        Add(barcode->m_ptPosition);
}

void Extents::Add(const CODBlayer& layer)
{
    for (const CODBlayObj& feature : layer.m_arrFeatures.Records())
        Add(feature);
}

void Extents::Add(const CODBlayObj& feature)
{
    if (const auto* const surface = dynamic_cast<const CODBlayObjSurface*>(&feature))
    {
        for (const CODBlayObjSurfaceOB& contour : surface->m_arrContours.Records())
            AddContour(contour.m_arrElements);
    }
    else if (const auto* const line = dynamic_cast<const CODBlayObjLine*>(&feature))
    {
        Add(line->m_ptStart);
        Add(line->m_ptEnd);
    }
    else if (const auto* const arc = dynamic_cast<const CODBlayObjArc*>(&feature))
        AddArc(arc->m_ptStart, arc->m_ptEnd, arc->m_ptCenter, arc->m_sClockwise == "Y");
    else if (const auto* const pad = dynamic_cast<const CODBlayObjPad*>(&feature))
        Add(pad->m_ptCenter);
    else if (const auto* const text = dynamic_cast<const CODBlayObjText*>(&feature))
        Add(text->m_ptPosition);
    else if (const auto* const barcode = dynamic_cast<const CODBlayObjBarcode*>(&feature))
        Add(barcode->m_ptPosition);
}

template <class Elements>
void Extents::AddContour(const Elements& contour)
{
    CPointD previous;
    for (const auto& each : contour.Records())
    {
        const ContourElement element(each);
        if (element.kind == "OE")
            continue;
        if (element.kind == "OC")
            AddArc(previous, element.point, element.centre, element.isClockwise);
        else
            Add(element.point);
        previous = element.point;
    }
}
