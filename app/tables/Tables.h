// Tables of the records of a job: one row each, step by step in the order they were read.
#pragma once

#include "JOBXCLSDLL.h"
#include "model/LayerRoles.h"
#include "model/ShownUnit.h"
#include "output/Table.h"

#include <optional>
#include <string>

struct TableRequest
{
    ShownUnit unit;                     // of the lengths
    bool isClassic = false;             // with the columns of --legacy
    std::string pattern{};              // of the names to show; "" for all
    std::string component{};            // likewise, of the components whose pins to show
    std::optional<BoardSide> side = {}; // of the components to show; nothing for both
};

// Each raises ExitError if no name matches the pattern. A job without steps and layers gives an empty table.
Table NetsTable(const CJOBX& job, const TableRequest& request);
Table NetPinsTable(const CJOBX& job, const TableRequest& request);
Table ComponentsTable(const CJOBX& job, const TableRequest& request);
Table PackagesTable(const CJOBX& job, const TableRequest& request);
Table LayersTable(const CJOBX& job, const TableRequest& request);
