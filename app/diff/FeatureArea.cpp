#include "diff/FeatureArea.h"

#include "diff/DiffRecords.h"
#include "model/SymbolArea.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double kHalfTurn = std::numbers::pi;
constexpr int kMostDepth = 8;        // of user symbols in user symbols
constexpr double kThousand = 1000.0; // mils of an inch, microns of a millimetre

bool IsNegative(const CJOBXlayObj& feature)
{
    return feature.GetPolarity().CompareNoCase("N") == 0;
}

bool AreEqualPoints(const CPointD& a, const CPointD& b)
{
    return a.x == b.x && a.y == b.y;
}

double DistanceOf(const CPointD& a, const CPointD& b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

// The angle that an arc turns by, positive counter-clockwise; equal ends are a full turn.
double TurnOf(const CPointD& start, const CPointD& end, const CPointD& centre, const CString& clockwise)
{
    const double sign = clockwise.CompareNoCase("Y") == 0 ? -1.0 : 1.0;
    if (AreEqualPoints(start, end))
        return sign * 2.0 * kHalfTurn;
    double turn = std::atan2(end.y - centre.y, end.x - centre.x) - std::atan2(start.y - centre.y, start.x - centre.x);
    if (turn * sign <= 0.0)
        turn += sign * 2.0 * kHalfTurn;
    return turn;
}

std::optional<SymbolPen> PenOf(const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    std::optional<SymbolPen> pen = PenOfSymbol(layer.GetSymbolName(feature.GetSymbolNumber()).View());
    if (pen)
    {
        const double factor = layer.dGetSymbolFactorToMM(feature.GetSymbolNumber());
        pen->width *= factor;
        pen->height *= factor;
    }
    return pen;
}

std::optional<double> AreaOfLine(const CJOBXlayObjLine& line, const CJOBXlayer& layer)
{
    const std::optional<SymbolPen> pen = PenOf(line, layer);
    if (!pen)
        return std::nullopt;
    const double factor = layer.dGetFactorToMM();
    const CPointD start = line.GetStartPoint();
    const CPointD end = line.GetEndPoint();
    if (pen->isRound)
        return DistanceOf(start, end) * factor * pen->width + kHalfTurn / 4.0 * pen->width * pen->width;
    return pen->width * pen->height + pen->height * std::abs(end.x - start.x) * factor +
           pen->width * std::abs(end.y - start.y) * factor;
}

std::optional<double> AreaOfArc(const CJOBXlayObjArc& arc, const CJOBXlayer& layer)
{
    const std::optional<SymbolPen> pen = PenOf(arc, layer);
    if (!pen || !pen->isRound)
        return std::nullopt;
    const double radius = DistanceOf(arc.GetStartPoint(), arc.GetCenterPoint()) * layer.dGetFactorToMM();
    const double half = pen->width / 2.0;
    if (AreEqualPoints(arc.GetStartPoint(), arc.GetEndPoint()))
    {
        const double inside = std::max(radius - half, 0.0);
        return kHalfTurn * ((radius + half) * (radius + half) - inside * inside);
    }
    if (half > radius)
        return std::nullopt; // the pen draws over a part of its own way
    const double turn = TurnOf(arc.GetStartPoint(), arc.GetEndPoint(), arc.GetCenterPoint(), arc.GetClockwise());
    return std::abs(turn) * radius * pen->width + kHalfTurn * half * half;
}

// Half the integral of x dy - y dx along the contour, by Green's theorem; exact for arcs.
double AreaInside(const CJOBXlayObjSurfaceOB& contour)
{
    double twice = 0.0;
    bool hasBegun = false;
    CPointD first;
    CPointD last;
    for (const CJOBXlayObjOX& element : contour.GetODBlayObjOXArray()->Records())
    {
        const CString kind = element.GetKind();
        if (kind == "OE")
            continue;
        const CPointD point = element.GetPoint();
        if (!hasBegun)
            first = point;
        else if (kind == "OC")
        {
            const CPointD centre = element.GetCenterPoint();
            const double radius = DistanceOf(last, centre);
            twice += centre.x * (point.y - last.y) - centre.y * (point.x - last.x) +
                     radius * radius * TurnOf(last, point, centre, element.GetClockwise());
        }
        else
            twice += last.x * point.y - last.y * point.x;
        last = point;
        hasBegun = true;
    }
    twice += last.x * first.y - last.y * first.x;
    return std::abs(twice) / 2.0;
}

double AreaOfSurface(const CJOBXlayObjSurface& surface, const CJOBXlayer& layer)
{
    double area = 0.0;
    for (const CJOBXlayObjSurfaceOB& contour : surface.GetContours()->Records())
    {
        const CJOBXlayObjOXArray& elements = *contour.GetODBlayObjOXArray();
        const bool isHole = elements.GetSize() > 0 && elements.GetAt(0)->GetPolygonType().CompareNoCase("H") == 0;
        area += isHole ? -AreaInside(contour) : AreaInside(contour);
    }
    return std::max(area, 0.0) * layer.dGetFactorToMM() * layer.dGetFactorToMM();
}
} // namespace

FeatureAreas::FeatureAreas(const CJOBXSpecialSymbolArray& symbols)
{
    for (const CJOBXSpecialSymbol& symbol : symbols.Records())
        m_symbols.try_emplace(FoldedName(CKUtility::GetInstance()->GetSegmntFromFilePath(symbol.m_sPath, 2).View()),
                              UserSymbol{symbol.GetLayer(), false, std::nullopt});
}

std::optional<double> FeatureAreas::AreaOf(const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        return AreaOfPad(*pad, layer);
    if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&feature))
        return AreaOfLine(*line, layer);
    if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&feature))
        return AreaOfArc(*arc, layer);
    if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
        return AreaOfSurface(*surface, layer);
    return std::nullopt;
}

void FeatureAreas::Add(FeatureSum& sum, const CJOBXlayObj& feature, const CJOBXlayer& layer)
{
    ++sum.count;
    if (IsNegative(feature))
        ++sum.negative;
    const std::optional<double> area = AreaOf(feature, layer);
    if (!area || !std::isfinite(*area))
        ++sum.withoutArea;
    else
        (IsNegative(feature) ? sum.negativeArea : sum.area) += *area;
}

std::optional<double> FeatureAreas::AreaOfPad(const CJOBXlayObjPad& pad, const CJOBXlayer& layer)
{
    const CString name = layer.GetSymbolName(pad.GetSymbolNumber());
    if (const auto found = m_symbols.find(FoldedName(name.View())); found != m_symbols.end())
        return AreaOfUserSymbol(found->second);
    const double factor = layer.dGetSymbolFactorToMM(pad.GetSymbolNumber());
    // The growth has the unit of the file, a symbol may have another.
    const double growth =
        pad.GetResizeFlag() == 0 ? 0.0 : pad.GetResizeFactor() * layer.dGetFactorToMM() / kThousand / factor;
    const std::optional<double> area = AreaOfSymbol(name.View(), growth);
    return area ? std::optional(*area * factor * factor) : std::nullopt;
}

// A symbol that is found in itself has no area, nor has one inside many others.
std::optional<double> FeatureAreas::AreaOfUserSymbol(UserSymbol& symbol)
{
    if (symbol.isMeasured || m_depth == kMostDepth)
        return symbol.area;
    symbol.isMeasured = true;
    ++m_depth;
    FeatureSum sum;
    for (const CJOBXlayObj& feature : symbol.layer->GetFeatures()->Records())
        Add(sum, feature, *symbol.layer);
    --m_depth;
    if (sum.withoutArea == 0)
        symbol.area = sum.area - sum.negativeArea;
    return symbol.area;
}
