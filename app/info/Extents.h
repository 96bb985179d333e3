#pragma once

#include "JOBXCLSDLL.h"

#include <limits>

// The smallest rectangle around points and arcs; NaN is skipped.
// Units:     those of the points.
class Extents
{
public:
    void Add(const CPointD& point);
    // The arc from `start` to `end` around `centre`; equal ends make a full circle.
    void AddArc(const CPointD& start, const CPointD& end, const CPointD& centre, bool isClockwise);
    // The centre lines of lines and arcs, the places of pads and texts, the edges of surfaces.
    void Add(const CJOBXlayer& layer);
    void Add(const CODBlayer& layer);

    bool IsEmpty() const { return !(m_lowX <= m_highX && m_lowY <= m_highY); }
    CPointD LowerLeft() const { return {m_lowX, m_lowY}; }
    CPointD UpperRight() const { return {m_highX, m_highY}; }

private:
    void Add(const CJOBXlayObj& feature);
    void Add(const CODBlayObj& feature);
    template <class Elements>
    void AddContour(const Elements& contour);

    double m_lowX = std::numeric_limits<double>::infinity();
    double m_lowY = std::numeric_limits<double>::infinity();
    double m_highX = -std::numeric_limits<double>::infinity();
    double m_highY = -std::numeric_limits<double>::infinity();
};
