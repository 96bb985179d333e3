// Tables of the records of a job: one row each, step by step in the order they were read.
#pragma once

#include "JOBXCLSDLL.h"
#include "model/ShownUnit.h"
#include "output/Table.h"

#include <string>

struct TableRequest
{
    ShownUnit unit;         // of the lengths
    bool isClassic = false; // with the columns of --legacy
    std::string pattern;    // of the names to show; "" for all
};

// Each raises ExitError if no name matches the pattern. A job without steps and layers gives an empty table.
Table NetsTable(const CJOBX& job, const TableRequest& request);
Table NetPinsTable(const CJOBX& job, const TableRequest& request);
Table ComponentsTable(const CJOBX& job, const TableRequest& request);
Table PackagesTable(const CJOBX& job, const TableRequest& request);
Table LayersTable(const CJOBX& job, const TableRequest& request);
