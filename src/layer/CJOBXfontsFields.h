#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "layer/CJOBXfonts.h"

// The fields of CJOBXfontsStandardObj.
template <>
struct jobx::Fields<CJOBXfontsStandardObj>
{
    static constexpr RecordName kName{"stroke", "A stroke", "stroke", "stroke"};
    static constexpr auto kList = std::tuple{
        Coordinate("start", "From here", &CJOBXfontsStandardObj::m_ptStart).Shown("start x", "start y"),
        Coordinate("end", "to here", &CJOBXfontsStandardObj::m_ptEnd).Shown("end x", "end y"),
        Text("polarity", "P or N", &CJOBXfontsStandardObj::m_sPolarity).Shown("polarity"),
        Text("shape", "R or S", &CJOBXfontsStandardObj::m_sShape).Shown("shape"),
        Length("width", "Line width", &CJOBXfontsStandardObj::m_dWidth).Shown("width").LeftByUnitChange(),
    };
};

// The fields of CJOBXfontsStandard.
template <>
struct jobx::Fields<CJOBXfontsStandard>
{
    static constexpr RecordName kName{"character", "A character of the font", "character", "character"};
    static constexpr auto kList = std::tuple{
        Text("name", "The character", &CJOBXfontsStandard::m_sName).Shown("name").AsName(),
        Records("strokes", "", &CJOBXfontsStandard::m_arrStrokes).Shown(),
    };
};

// The fields of CJOBXfonts.
template <>
struct jobx::Fields<CJOBXfonts>
{
    static constexpr RecordName kName{"font", "The job's stroke font", "font", "font"};
    static constexpr auto kList = std::tuple{
        Length("xSize", "Cell width", &CJOBXfonts::m_dXSize).Shown("x size"),
        Length("ySize", "Cell height", &CJOBXfonts::m_dYSize).Shown("y size"),
        Length("offset", "Offset", &CJOBXfonts::m_dOffset).Shown("offset"),
        Records("characters", "", &CJOBXfonts::m_arrCharacters).Shown(),
        UnitOf(),
    };
};
