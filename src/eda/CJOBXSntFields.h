#pragma once

#include "eda/CJOBXSnt.h"
#include "eda/CJOBXdataNetObjFields.h"
#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"

// The fields of CJOBXSnt.
template <>
struct jobx::Fields<CJOBXSnt>
{
    static constexpr RecordName kName{"subnet", "A connected piece of a net", "subnet", "subnet"};
    static constexpr auto kList = std::tuple{
        Integer("flag", "Set by hosts", &CJOBXSnt::m_nFlag).InMemoryOnly(),
        LineNumber("line", "Line of the file", &CJOBXSnt::m_nLineNumber).Shown(8),
        Text("kind", "TOP, VIA, TRC, PLN or as in the file", &CJOBXSnt::m_sKind).Shown("kind", 1).AsMark(),
        Text("side", "T or B", &CJOBXSnt::m_sSide).Shown("side", 2),
        Index(FieldTable::Components, "component", "-1 for none", &CJOBXSnt::m_nComponentNumber).Shown("component", 3),
        Index(FieldTable::Toeprints, "toeprint", "-1 for none", &CJOBXSnt::m_nToeprintNumber).Shown("toeprint", 4),
        Text("fillType", "Of a plane", &CJOBXSnt::m_sFillType).Shown("fill type", 5),
        Text("cutoutType", "Of a plane", &CJOBXSnt::m_sCutoutType).Shown("cutout type", 6),
        Length("fillSize", "Of a plane", &CJOBXSnt::m_dFillSize).Shown("fill size", 7).LeftByUnitChange(),
        Coordinate("point", "Set by hosts", &CJOBXSnt::m_ptPosition).LeftByUnitChange(),
        Text("text", "Set by hosts", &CJOBXSnt::m_sText),
        Records("objects", "", &CJOBXSnt::m_arrNetObjs).Shown(9),
        IDOf<CJOBXtailed>(),
        TailAttributesOf(),
    };
};
