#pragma once

#include "eda/CJOBXdataPkg.h"
#include "eda/CJOBXdataPkgPinFields.h"
#include "foundation/CJOBXPropertyFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "foundation/corekit/CLPropertyFields.h"

// The fields of CJOBXdataPkg.
template <>
struct jobx::Fields<CJOBXdataPkg>
{
    static constexpr RecordName kName{"package", "A footprint", "package", "package"};
    static constexpr auto kList = std::tuple{
        Integer("number", "Of the comment before the package, -1 for none", &CJOBXdataPkg::m_nNumber)
            .Shown("number", 2),
        Text("name", "Name", &CJOBXdataPkg::m_sName).Shown("name", 1).AsName(),
        Integer("flag", "Set by hosts", &CJOBXdataPkg::m_nFlag).InMemoryOnly(),
        Length("pitch", "Pin pitch", &CJOBXdataPkg::m_dPitch).Shown("pitch", 3),
        Coordinate("lowerLeft", "Corner", &CJOBXdataPkg::m_ptLowerLeft).Shown("lower left x", "lower left y", 4),
        Coordinate("upperRight", "Corner", &CJOBXdataPkg::m_ptUpperRight).Shown("upper right x", "upper right y", 5),
        Records("outlines", "", &CJOBXdataPkg::m_arrOutlines).Shown(6),
        Records("pins", "", &CJOBXdataPkg::m_arrPins).Shown(7),
        Records("properties", "", &CJOBXdataPkg::m_arrProperties).Shown(8),
        Records("attributes", "", &CJOBXdataPkg::m_arrAttributes).Shown(9).OfClassicReading(),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
