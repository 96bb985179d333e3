#include "features/FeatureShape.h"

#include "model/SymbolBox.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using ShapePath = std::vector<ShapePoint>;

constexpr double kTurnOfArc = 2.0 * std::numbers::pi;
constexpr double kCorner = kTurnOfArc / 72.0; // between the corners of an arc

ShapePoint InMM(const CPointD& point, double factor)
{
    return {point.x * factor, point.y * factor};
}

double DistanceOf(const ShapePoint& a, const ShapePoint& b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

// Appends the arc behind its start; equal start and end is a full circle.
void AppendArc(ShapePath& path, const ShapePoint& start, const ShapePoint& end, const ShapePoint& centre,
               bool isClockwise)
{
    const double from = std::atan2(start.y - centre.y, start.x - centre.x);
    const double radius = DistanceOf(start, centre);
    double turn = std::atan2(end.y - centre.y, end.x - centre.x) - from;
    if (isClockwise && turn >= 0.0)
        turn -= kTurnOfArc;
    if (!isClockwise && turn <= 0.0)
        turn += kTurnOfArc;
    if (!std::isfinite(turn))
        return path.push_back(end);
    const int corners = static_cast<int>(std::ceil(std::abs(turn) / kCorner));
    for (int i = 1; i < corners; ++i)
    {
        const double angle = from + turn * i / corners;
        path.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
    path.push_back(end);
}

bool IsClockwise(const CString& word)
{
    return word.CompareNoCase("Y") == 0;
}

void AppendContour(FeatureShape& shape, const CJOBXlayObjSurfaceOB& contour, double factor)
{
    ShapePath& path = shape.paths.emplace_back();
    for (const CJOBXlayObjOX& element : contour.GetODBlayObjOXArray()->Records())
    {
        const CString kind = element.GetKind();
        const ShapePoint point = InMM(element.GetPoint(), factor);
        if (kind == "OC" && !path.empty())
            AppendArc(path, ShapePoint(path.back()), point, InMM(element.GetCenterPoint(), factor),
                      IsClockwise(element.GetClockwise()));
        else if (kind != "OE")
            path.push_back(point);
    }
}

double DistanceFromSegment(const ShapePoint& point, const ShapePoint& from, const ShapePoint& to)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    const double along = square == 0.0 ? 0.0 : ((point.x - from.x) * dx + (point.y - from.y) * dy) / square;
    const double at = std::clamp(along, 0.0, 1.0);
    return DistanceOf(point, {from.x + at * dx, from.y + at * dy});
}

double DistanceFromPath(const ShapePoint& point, const ShapePath& path)
{
    double nearest = path.size() == 1 ? DistanceOf(point, path[0]) : std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < path.size(); ++i)
        nearest = std::min(nearest, DistanceFromSegment(point, path[i - 1], path[i]));
    return nearest;
}

bool IsInside(const ShapePoint& point, const FeatureShape& shape)
{
    bool isInside = false;
    for (const ShapePath& path : shape.paths)
        for (std::size_t i = 0; i < path.size(); ++i)
        {
            const ShapePoint& a = path[i];
            const ShapePoint& b = path[(i + 1) % path.size()];
            if ((a.y > point.y) != (b.y > point.y) && point.x < a.x + (b.x - a.x) * (point.y - a.y) / (b.y - a.y))
                isInside = !isInside;
        }
    return isInside;
}

// Clockwise, in radians.
double AngleOf(const CJOBXlayObjPad& pad)
{
    constexpr int kFirstTurned = 8;
    const double degrees =
        pad.GetOrientation() >= kFirstTurned ? pad.GetRotationAngle() : 90.0 * (pad.GetOrientation() % 4);
    return degrees * std::numbers::pi / 180.0;
}

// The symbol is symmetric, so mirroring makes no difference.
double DistanceFromPad(const ShapePoint& point, const ShapePoint& centre, const SymbolBox& size, double angle)
{
    if (size.isRound)
        return std::max(DistanceOf(point, centre) - size.width / 2.0, 0.0);
    const double x = point.x - centre.x;
    const double y = point.y - centre.y;
    const double across = std::abs(x * std::cos(angle) - y * std::sin(angle)) - size.width / 2.0;
    const double along = std::abs(x * std::sin(angle) + y * std::cos(angle)) - size.height / 2.0;
    return std::hypot(std::max(across, 0.0), std::max(along, 0.0));
}

SymbolBox SizeInMM(const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    const std::optional<SymbolBox> size = BoxOfSymbol(layer.GetSymbolName(feature.GetSymbolNumber()).View());
    if (!size)
        return {};
    const double factor = layer.dGetSymbolFactorToMM(feature.GetSymbolNumber());
    return {size->width * factor, size->height * factor, size->isRound};
}
} // namespace

FeatureShape ShapeOf(const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    const double factor = layer.dGetFactorToMM();
    FeatureShape shape;
    if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&feature))
        shape.paths.push_back({InMM(line->GetStartPoint(), factor), InMM(line->GetEndPoint(), factor)});
    else if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        shape.paths.push_back({InMM(pad->GetCenterPoint(), factor)});
    else if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&feature))
    {
        ShapePath& path = shape.paths.emplace_back(ShapePath{InMM(arc->GetStartPoint(), factor)});
        AppendArc(path, ShapePoint(path[0]), InMM(arc->GetEndPoint(), factor), InMM(arc->GetCenterPoint(), factor),
                  IsClockwise(arc->GetClockwise()));
    }
    else if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
        shape.paths.push_back({InMM(text->GetPosition(), factor)});
    else if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&feature))
        shape.paths.push_back({InMM(barcode->m_ptPosition, factor)});
    else if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
    {
        shape.isFilled = true;
        for (const CJOBXlayObjSurfaceOB& contour : surface->GetContours()->Records())
            AppendContour(shape, contour, factor);
    }
    return shape;
}

std::optional<ShapeBox> BoxOf(const FeatureShape& shape)
{
    std::optional<ShapeBox> box;
    for (const ShapePath& path : shape.paths)
        for (const ShapePoint& point : path)
        {
            if (!box)
                box = ShapeBox{point, point};
            box->low = {std::min(box->low.x, point.x), std::min(box->low.y, point.y)};
            box->high = {std::max(box->high.x, point.x), std::max(box->high.y, point.y)};
        }
    return box;
}

double DistanceFrom(const ShapePoint& point, const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    const FeatureShape shape = ShapeOf(feature, layer);
    if (shape.isFilled && IsInside(point, shape))
        return 0.0;
    double nearest = std::numeric_limits<double>::infinity();
    for (const ShapePath& path : shape.paths)
        nearest = std::min(nearest, DistanceFromPath(point, path));
    const SymbolBox size = SizeInMM(feature, layer);
    if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        return DistanceFromPad(point, shape.paths[0][0], size, AngleOf(*pad));
    return std::max(nearest - size.width / 2.0, 0.0);
}
