// The fields of the lines of a features file. Each kind of line is described here once, for all cursors: `Fields` is
// CPlainFields, CLenientFields or CCheckedFields. Take returns false if the fields are not suitable; CLenientFields always takes what
// there is.
#pragma once

#include "foundation/base/NumberText.h"
#include "layer/FeaturesFormat.h"

#include <string_view>

// Texts are views of the line.
struct FeaturePoint
{
    double x = 0.0;
    double y = 0.0;
};

struct FeatureFields
{
    int symbol = -1;
    std::string_view polarity = "P";
    int dcode = 0;
};

struct LineFields : FeatureFields
{
    FeaturePoint start;
    FeaturePoint end;
};

struct ArcFields : FeatureFields
{
    FeaturePoint start;
    FeaturePoint end;
    FeaturePoint center;
    std::string_view clockwise;
};

struct PadFields : FeatureFields
{
    FeaturePoint center;
    int resizeFlag = 0;
    double resizeFactor = 0.0;
    int orientation = 0;
    double angle = 0.0;
};

constexpr bool IsTurned(int orientation) noexcept
{
    return orientation == features_format::kTurned || orientation == features_format::kTurnedAndMirrored;
}

struct TextFields : FeatureFields
{
    FeaturePoint position;
    std::string_view font = "standard";
    int orientation = 0;
    double angle = 0.0;
    FeaturePoint size;
    double widthFactor = 0.0;
    std::string_view text;
    int version = 1;
};

struct BarcodeFields : FeatureFields
{
    FeaturePoint position;
    std::string_view name;
    std::string_view font;
    int orientation = 0;
    double angle = 0.0;
    std::string_view eFlag;
    double width = 0.0;
    double height = 0.0;
    std::string_view fasc;
    std::string_view cs;
    std::string_view bg;
    std::string_view astr;
    std::string_view astrPosition;
    std::string_view text;
};

struct SurfaceFields : FeatureFields
{
};

// The start of a contour, a segment and an arc.
struct ContourFields
{
    FeaturePoint point;
    std::string_view polygonType;
};

struct SegmentFields
{
    FeaturePoint point;
};

struct CurveFields
{
    FeaturePoint point;
    FeaturePoint center;
    std::string_view clockwise;
};

template <class Fields>
bool Take(Fields& fields, LineFields& line)
{
    return fields.Point(line.start) && fields.Point(line.end) && fields.Integer(line.symbol) &&
           fields.Polarity(line.polarity) && fields.LastInteger(line.dcode);
}

template <class Fields>
bool Take(Fields& fields, ArcFields& arc)
{
    return fields.Point(arc.start) && fields.Point(arc.end) && fields.Point(arc.center) && fields.Integer(arc.symbol) &&
           fields.Polarity(arc.polarity) && fields.Integer(arc.dcode) && fields.LastClockwise(arc.clockwise);
}

inline bool IsPolarity(std::string_view field) noexcept
{
    return field == "P" || field == "p" || field == "n" || field == "N";
}

// Where other pads have the polarity, a resized pad has a second symbol number and the factor.
template <class Fields>
bool TakePolarityOrResize(Fields& fields, PadFields& pad)
{
    std::string_view field;
    if (!fields.Polarity(field))
        return false;
    if (field.empty())
        return true; // the line has ended
    if (pad.symbol != -1 && IsPolarity(field))
    {
        pad.polarity = field;
        return true;
    }
    pad.symbol = ParseInteger(field);
    pad.resizeFlag = 1;
    return fields.Real(pad.resizeFactor) && fields.Polarity(pad.polarity);
}

template <class Fields>
bool Take(Fields& fields, PadFields& pad)
{
    return fields.Point(pad.center) && fields.Integer(pad.symbol) && TakePolarityOrResize(fields, pad) &&
           fields.Integer(pad.dcode) && fields.LastOrientation(pad.orientation, pad.angle);
}

template <class Fields>
bool Take(Fields& fields, TextFields& text)
{
    const bool isPlaced = fields.Point(text.position) && fields.Text(text.font) && fields.Polarity(text.polarity) &&
                          fields.Integer(text.orientation);
    if (!isPlaced || (IsTurned(text.orientation) && !fields.Real(text.angle)) || !fields.Point(text.size) ||
        !fields.Real(text.widthFactor))
        return false;
    int ignored = 0;
    const bool isQuoted = fields.Quoted(text.text);
    return fields.OptionalInteger(isQuoted ? text.version : ignored);
}

template <class Fields>
bool Take(Fields& fields, BarcodeFields& barcode)
{
    if (!fields.Point(barcode.position) || !fields.Text(barcode.name) || !fields.Text(barcode.font) ||
        !fields.Polarity(barcode.polarity) || !fields.Integer(barcode.orientation) ||
        !fields.BarcodeAngle(barcode.orientation, barcode.angle) || !fields.Text(barcode.eFlag) ||
        !fields.Real(barcode.width) || !fields.Real(barcode.height) || !fields.Text(barcode.fasc) ||
        !fields.Text(barcode.cs) || !fields.Text(barcode.bg) || !fields.Text(barcode.astr) ||
        !fields.Text(barcode.astrPosition))
        return false;
    int ignored = 0;
    fields.Quoted(barcode.text);
    return fields.OptionalInteger(ignored);
}

template <class Fields>
bool Take(Fields& fields, SurfaceFields& surface)
{
    return fields.Polarity(surface.polarity) && fields.LastInteger(surface.dcode);
}

template <class Fields>
bool Take(Fields& fields, ContourFields& contour)
{
    return fields.Point(contour.point) && fields.Text(contour.polygonType);
}

template <class Fields>
bool Take(Fields& fields, SegmentFields& segment)
{
    return fields.LastPoint(segment.point);
}

template <class Fields>
bool Take(Fields& fields, CurveFields& curve)
{
    return fields.Point(curve.point) && fields.Point(curve.center) && fields.CurveClockwise(curve.clockwise);
}
