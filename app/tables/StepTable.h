#pragma once

#include "JOBXCLSDLL.h"
#include "output/Table.h"

#include <span>

// The table of the rows that `visit(step, add)` passes to `add`, for every step that was read.
template <class Row, class Visit>
Table TableOfSteps(const CJOBX& job, std::span<const ColumnOf<Row>> columns, Visit visit)
{
    Table table(HeadsOf(columns));
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        visit(step, [&](const Row& row) { table.Add(CellsOf(columns, row)); });
    return table;
}
