#pragma once

#include "JOBXCLSDLL.h"
#include "model/Glob.h"
#include "output/Table.h"
#include "tables/Tables.h"

#include <span>

// All columns of a table; the first ones are those of --legacy.
template <class Row>
struct StepColumns
{
    std::span<const ColumnOf<Row>> all;
    std::size_t classic;

    std::span<const ColumnOf<Row>> For(const TableRequest& request) const
    {
        return request.isClassic ? all.first(classic) : all;
    }
};

// An empty table of the columns that the request asks for.
template <class Row>
Table EmptyTable(const StepColumns<Row>& columns, const TableRequest& request)
{
    return Table(HeadsOf(columns.For(request), request.isClassic ? std::nullopt : std::optional(request.unit.Unit())));
}

// Chooses components by their names; every name passes if there is no pattern.
NameFilter ComponentFilter(const CJOBX& job, const std::string& pattern);

// The table of the rows that `visit(step, add)` passes to `add`, for every step that was read.
template <class Row, class Visit>
Table TableOfSteps(const CJOBX& job, const TableRequest& request, const StepColumns<Row>& columns, Visit visit)
{
    Table table = EmptyTable(columns, request);
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        visit(step, [&](const Row& row) { table.Add(CellsOf(columns.For(request), row)); });
    return table;
}
