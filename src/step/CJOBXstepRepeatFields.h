#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "step/CJOBXstepRepeat.h"

// The fields of CJOBXstepRepeat.
template <>
struct jobx::Fields<CJOBXstepRepeat>
{
    static constexpr RecordName kName{"stepRepeat", "A step placed in this one", "step-repeat", "step-repeat"};
    static constexpr auto kList = std::tuple{
        Text("name", "The placed step", &CJOBXstepRepeat::m_sName).Shown("name").AsMark(),
        Coordinate("position", "Of its datum", &CJOBXstepRepeat::m_ptPosition).Shown("x", "y"),
        Coordinate("pitch", "Between columns and rows", &CJOBXstepRepeat::m_ptPitch).Shown("dx", "dy"),
        Count("count", "", &CJOBXstepRepeat::m_ptCount).Shown("nx", "ny"),
        Angle("angle", "Degrees, clockwise", &CJOBXstepRepeat::m_dAngle).Shown("angle"),
        Text("mirror", "YES or NO", &CJOBXstepRepeat::m_sMirror).Shown("mirror"),
        Text("flip", "YES, NO or empty", &CJOBXstepRepeat::m_sFlip).Shown("flip"),
        IDOf<CJOBXidentified>(),
        FurtherKeysOf(),
    };
};
