#pragma once

#include "JOBXCLSDLL.h"

// Calls `visit(file, component)` for every component of a step, file by file.
template <class Visit>
void ForEachComponent(const CJOBXstepObj& step, Visit visit)
{
    for (__int64 f = 0; f < step.m_arrComponents.GetSize(); ++f)
    {
        const CJOBXcomponents* const file = step.m_arrComponents.GetAt(f);
        for (__int64 i = 0; file != nullptr && i < file->m_arrCmps.GetSize(); ++i)
            if (const CJOBXcmp* const component = file->m_arrCmps.GetAt(i))
                visit(*file, *component);
    }
}
