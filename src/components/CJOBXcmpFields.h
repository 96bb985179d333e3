#pragma once

#include "components/CJOBXcmp.h"
#include "components/CJOBXcmpTopFields.h"
#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "foundation/corekit/CLPropertyFields.h"

// The fields of CJOBXcmp.
template <>
struct jobx::Fields<CJOBXcmp>
{
    static constexpr RecordName kName{"component", "A placed component", "component", "component"};
    static constexpr auto kList = std::tuple{
        Integer("number", "Of the comment before the component", &CJOBXcmp::m_nNumber).Shown("number", 2),
        Integer("side", "0 bottom; set by hosts", &CJOBXcmp::m_nSide).InMemoryOnly(),
        Records("toeprints", "", &CJOBXcmp::m_arrTops).Shown(10),
        Text("partName", "Part", &CJOBXcmp::m_sPartName).Shown("part name", 7),
        Text("name", "Reference designator", &CJOBXcmp::m_sName).Shown("name", 1).AsName(),
        Integer("mirror", "1 mirrored", &CJOBXcmp::m_nMirror).Shown("mirror", 6),
        Angle("rotation", "Degrees", &CJOBXcmp::m_dRotation).Shown("rotation", 5),
        Coordinate("location", "Place", &CJOBXcmp::m_ptLocation).Shown("x", "y", 4),
        Index(FieldTable::Packages, "package", "Position of the package in the EDA file", &CJOBXcmp::m_nPkgRef)
            .Shown("package", 3),
        Records("properties", "", &CJOBXcmp::m_arrProperties).Shown(9),
        Records("attributes", "", &CJOBXcmp::m_arrAttributes).Shown(8),
        LineNumber("line", "Line of the file", &CJOBXcmp::GetLine, &CJOBXcmp::SetLine).Shown(11).OfCompleteReading(),
        IDOf<CJOBXtailed>(),
    };
};
