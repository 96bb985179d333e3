#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "netlist/CJOBXnetPt.h"

namespace jobx
{
// The other words of a point's line, which points may share.
struct PointFlags
{
    static const CStringArray& Get(const CJOBXnetPt& point) { return point.GetFlags(); }
    static void Set(CJOBXnetPt& point, const CStringArray& flags)
    {
        point.RemoveAllFlags();
        for (INT_PTR i = 0; i < flags.GetSize(); ++i)
            point.AddFlag(flags[i]);
    }
};
} // namespace jobx

// The fields of CJOBXnetPt.
template <>
struct jobx::Fields<CJOBXnetPt>
{
    static constexpr RecordName kName{"testPoint", "A test point", "netlist point", "point"};
    static constexpr auto kList = std::tuple{
        Text("side", "T, B, D or I", &CJOBXnetPt::m_sSide).Shown("side", 3),
        Text("staggeredMark", "staggered, or what stood there", &CJOBXnetPt::m_sStaggeredMark)
            .Shown("staggered mark", 8),
        Length("staggeredRadius", "Staggered radius", &CJOBXnetPt::m_dStaggeredRadius)
            .Shown("staggered radius", 10)
            .LeftByUnitChange(),
        Text("exposure", "Exposure", &CJOBXnetPt::m_sExposure).Shown("exposure", 7),
        Text("endPoint", "End point", &CJOBXnetPt::m_sEndPoint).Shown("end point", 6),
        Length("height", "Of a point that is not round", &CJOBXnetPt::m_dHeight).Shown("height", 5),
        Length("width", "Of a point that is not round", &CJOBXnetPt::m_dWidth).Shown("width", 4),
        Coordinate("position", "Place", &CJOBXnetPt::m_ptPosition).Shown("x", "y", 2),
        Coordinate("staggeredPosition", "Staggered place", &CJOBXnetPt::m_ptStaggeredPosition)
            .Shown("staggered x", "staggered y", 9),
        Length("radius", "0 for a point that is not round", &CJOBXnetPt::m_dRadius).Shown("radius", 1),
        Texts("flags", "Further words", PointFlags{}).Shown("flags", 11),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
