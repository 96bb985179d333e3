#pragma once

#include "components/CJOBXcmpTop.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXcmpTop.
template <>
struct jobx::Fields<CJOBXcmpTop>
{
    static constexpr RecordName kName{"toeprint", "Where a pin meets the board", "toeprint", "toeprint"};
    static constexpr auto kList = std::tuple{
        Text("name", "Name", &CJOBXcmpTop::m_sName).Shown("name", 7),
        Index(FieldTable::Nets, "net", "Position among the EDA nets", &CJOBXcmpTop::m_nNet).Shown("net", 5),
        Index(FieldTable::Subnets, "subnet", "Position in that net", &CJOBXcmpTop::m_nSubnet).Shown("subnet", 6),
        Integer("mirror", "1 mirrored", &CJOBXcmpTop::m_nMirror).Shown("mirror", 4),
        Angle("rotation", "Degrees", &CJOBXcmpTop::m_dRotation).Shown("rotation", 3),
        Coordinate("location", "Place", &CJOBXcmpTop::m_ptLocation).Shown("x", "y", 2),
        Index(FieldTable::Pins, "pin", "Position in the package", &CJOBXcmpTop::m_nPin).Shown("pin", 1),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
