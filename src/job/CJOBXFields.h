#pragma once

#include "foundation/base/RecordFields.h"
#include "job/CJOBX.h"
#include "job/CJOBXcarriedFileFields.h"
#include "job/CJOBXmatrixFields.h"
#include "job/CJOBXmiscFields.h"
#include "job/CJOBXsteps.h"
#include "job/CJOBXsysAttrDataFields.h"
#include "layer/CJOBXSpecialSymbolFields.h"
#include "layer/CJOBXfontsFields.h"
#include "step/CJOBXstepObjFields.h"

// The fields of CJOBX.
template <>
struct jobx::Fields<CJOBX>
{
    static constexpr RecordName kName{"job", "Everything that was read of one job", "job", "job"};
    static constexpr auto kList = std::tuple{
        // Not of the format that the job has: that is in its information. No reader sets these.
        Integer("versionMajor", "", &CJOBX::m_nVersionMajor).OfClassicReading(),
        Integer("versionMinor", "", &CJOBX::m_nVersionMinor).OfClassicReading(),
        Text("name", "Last part of the job's path", &CJOBX::m_sName),
        Part(
            "font", "", [](auto& job) -> auto& { return *job.m_pFonts; }),
        Part(
            "matrix", "", [](auto& job) -> auto& { return *job.m_pMatrix; }),
        Part(
            "misc", "", [](auto& job) -> auto& { return *job.m_pMisc; }),
        Records(
            "steps", "In the order they were read", [](auto& job) -> auto& { return job.m_pSteps->m_arrSteps; }),
        Records(
            "symbols", "Sorted by path", [](auto& job) -> auto& { return *job.m_pSpecialSymbols; })
            .Sorted(),
        Records(
            "sysAttrs", "With --sysattr", [](auto& job) -> auto& { return *job.m_pSysAttrs; }),
        Records(
            "carriedFiles", "Files that no reader took, in the order of their paths",
            [](auto& job) -> auto& { return *job.m_pMisc->GetCarriedFiles(); })
            .OfCompleteReading(),
    };
};
