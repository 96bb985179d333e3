#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmatrixLayerFields.h"
#include "job/CJOBXmatrixStepFields.h"

// The fields of CJOBXmatrix.
template <>
struct jobx::Fields<CJOBXmatrix>
{
    static constexpr RecordName kName{"matrix", "The job's table of steps and layers", "matrix", "matrix"};
    static constexpr auto kList = std::tuple{
        Records("steps", "", &CJOBXmatrix::m_arrSteps).Shown(),
        Records("layers", "", &CJOBXmatrix::m_arrLayers).Shown(),
        FurtherKeysOf(),
    };
};
