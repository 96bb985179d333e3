// What a user wants to see of a table.
#pragma once

#include "output/Table.h"

#include <string>
#include <vector>

struct TableView
{
    TableForm form = TableForm::Aligned;
    std::vector<std::string> columns; // keys or titles, in this order; none for the usual ones
    std::string sort;                 // a key or title, with "-" in front for the descending order; "" for no order
    bool isWide = false;              // every column, and texts in full
};

// One kind of table.
struct TableKind
{
    const char* records; // what its rows are: "nets"
    // The keys of the columns that are usually shown as text, separated by commas. "?" behind a key: only if its values
    // differ. Columns without any value are not shown.
    const char* usual;
};

// Raises ExitError if the view names a column that the table does not have.
void CheckView(const std::vector<Table::Column>& columns, const TableKind& kind, const TableView& view);

// Prints the table. If standard output is a terminal and the user has not chosen the columns, no line is longer than
// its lines; then, unless `isQuiet`, a note on standard error lists the columns that do not fit.
void PrintView(Table table, const TableKind& kind, const TableView& view, bool isQuiet);
