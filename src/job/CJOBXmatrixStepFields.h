#pragma once

#include "foundation/CommonFields.h"
#include "foundation/base/RecordFields.h"
#include "job/CJOBXmatrixStep.h"

// The fields of CJOBXmatrixStep.
template <>
struct jobx::Fields<CJOBXmatrixStep>
{
    static constexpr RecordName kName{"matrixStep", "A column of the matrix", "matrix step", "step"};
    static constexpr auto kList = std::tuple{
        Integer("column", "", &CJOBXmatrixStep::m_nColumn).Shown("column", 2),
        Text("name", "Name", &CJOBXmatrixStep::m_sName).Shown("name", 1).AsNameInAnyCase(),
        IDOf<CJOBXidentified>(),
        FurtherKeysOf(),
    };
};
