#pragma once

#include "JOBXCLSDLL.h"

// Calls `visit(file, component)` for every component of a step, file by file.
template <class Visit>
void ForEachComponent(const CJOBXstepObj& step, Visit visit)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            visit(file, component);
}
