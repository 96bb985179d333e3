#pragma once

#include "JOBXCLSDLL.h"

#include <optional>
#include <vector>

struct ShapePoint
{
    double x = 0.0;
    double y = 0.0;
};

// Where a feature lies: its centre line, or its outlines. Arcs are polygons with a corner every 5 degrees.
// Units:   millimetres.
struct FeatureShape
{
    std::vector<std::vector<ShapePoint>> paths; // a single point for a pad or text; closed for a surface
    bool isFilled = false;                      // what lies inside an odd number of paths belongs to it
};

FeatureShape ShapeOf(const CJOBXlayObj& feature, const CJOBXlayer& layer);

struct ShapeBox
{
    ShapePoint low;
    ShapePoint high;
};

// The box around the paths, nothing if there are none.
std::optional<ShapeBox> BoxOf(const FeatureShape& shape);

// The distance of the point from what the feature draws, in millimetres; 0 on it. Corners of rotated pads with a
// standard symbol count as a box, a pad with any other symbol and a text as a point, a line as wide as its symbol.
double DistanceFrom(const ShapePoint& point, const CJOBXlayObj& feature, const CJOBXlayer& layer);
