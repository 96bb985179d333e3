#pragma once

#include "foundation/base/RecordFields.h"
#include "layer/CJOBXlayObjOX.h"

// The fields of CJOBXlayObjOX.
template <>
struct jobx::Fields<CJOBXlayObjOX>
{
    static constexpr RecordName kName{"element", "An element of a contour", "contour element", "element"};
    static constexpr auto kList = std::tuple{
        Text("kind", "OB begin, OS straight to a point, OC arc to a point, OE end", &CJOBXlayObjOX::GetKind,
             &CJOBXlayObjOX::SetKind)
            .Shown("kind", 1),
        LineNumber("line", "Line of the file, from 1", &CJOBXlayObjOX::GetLineNumber, &CJOBXlayObjOX::SetLineNumber)
            .Shown(6),
        Coordinate("point", "Begin, or end of the segment or arc", &CJOBXlayObjOX::GetPoint, &CJOBXlayObjOX::SetPoint)
            .Shown("x", "y", 2),
        Coordinate("centre", "Of an arc", &CJOBXlayObjOX::GetCenterPoint, &CJOBXlayObjOX::SetCenterPoint)
            .Shown("centre x", "centre y", 3),
        Text("polygonType", "Of a begin: I island, H hole", &CJOBXlayObjOX::GetPolygonType,
             &CJOBXlayObjOX::SetPolygonType)
            .Shown("polygon type", 4),
        Text("clockwise", "Of an arc: Y or N", &CJOBXlayObjOX::GetClockwise, &CJOBXlayObjOX::SetClockwise)
            .Shown("clockwise", 5),
    };
};
