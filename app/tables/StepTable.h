#pragma once

#include "JOBXCLSDLL.h"
#include "output/Table.h"

#include <span>

// The table of the rows that `visit(step, add)` passes to `add`, for every step that was read.
template <class Row, class Visit>
Table TableOfSteps(const CJOBX& job, std::span<const ColumnOf<Row>> columns, Visit visit)
{
    Table table(HeadsOf(columns));
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            visit(*step, [&](const Row& row) { table.Add(CellsOf(columns, row)); });
    return table;
}
