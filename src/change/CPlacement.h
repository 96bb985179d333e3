// How a step, or anything in it, is placed: turned, mirrored and moved.
#pragma once

#include "change/LengthConversion.h"
#include "foundation/corekit/CPointD.h"

#include <cmath>

// The angle from 0 on and below 360 degrees, without the noise of sums.
inline double NormalisedAngle(double angle)
{
    constexpr double kTurn = 360.0;
    constexpr double kGrains = 1e9;
    const double rounded = std::nearbyint(std::fmod(angle, kTurn) * kGrains) / kGrains;
    const double positive = rounded < 0.0 ? rounded + kTurn : rounded;
    return positive == kTurn || positive == 0.0 ? 0.0 : positive;
}

// First turned clockwise, then mirrored, which negates x.
struct CPose
{
    double angle = 0.0; // degrees, clockwise
    bool isMirrored = false;

    CPointD Of(CPointD point) const
    {
        if (angle != 0.0)
            point.Rotate(-angle);
        return isMirrored ? CPointD(-point.GetX(), point.GetY()) : point;
    }
    // The pose in a picture that is posed like that itself: turning what was mirrored is turning it the other way first.
    CPose In(const CPose& outer) const
    {
        const double turned = isMirrored ? angle - outer.angle : angle + outer.angle;
        return {NormalisedAngle(turned), isMirrored != outer.isMirrored};
    }
};

// Where a step lies in the step that is flattened.
// Units: lengths in that of the flattened step's header.
struct CPlacement
{
    CPose pose{};
    bool isFlipped = false; // layers of the top are on the bottom
    CPointD shift{};

    CPlacement In(const CPlacement& outer) const
    {
        const CPointD turned = outer.pose.Of(shift);
        return {pose.In(outer.pose), isFlipped != outer.isFlipped,
                CPointD(outer.shift.GetX() + turned.GetX(), outer.shift.GetY() + turned.GetY())};
    }
};

// A placement as one file sees it: brings its places from their unit to that of the file they go to.
class CPlacedFile
{
public:
    // `unit` is the unit of the shift.
    CPlacedFile(const CPlacement& placement, JOBXunit unit, JOBXunit from, JOBXunit to)
        : m_pose(placement.pose),
          m_shift(unit == to ? placement.shift : ConvertedPoint(placement.shift, to)),
          m_to(to),
          m_isConverted(from != to)
    {
    }

    const CPose& Pose() const noexcept { return m_pose; }
    bool IsConverted() const noexcept { return m_isConverted; }
    JOBXunit Unit() const noexcept { return m_to; }
    double Length(double length) const { return m_isConverted ? ConvertedLength(length, m_to) : length; }
    CPointD Size(const CPointD& size) const { return m_isConverted ? ConvertedPoint(size, m_to) : size; }
    CPointD Point(const CPointD& point) const
    {
        const CPointD turned = m_pose.Of(Size(point));
        return {RoundedSum(turned.GetX() + m_shift.GetX()), RoundedSum(turned.GetY() + m_shift.GetY())};
    }

private:
    CPose m_pose;
    CPointD m_shift;
    JOBXunit m_to;
    bool m_isConverted;
};
