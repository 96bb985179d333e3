// The rows and columns of a matrix after some of them go.
#pragma once

#include "change/DeleteWhere.h"
#include "foundation/framework/CString.h"

#include <functional>

class CJOBXmatrixLayerArray;

// Deletes the rows for which `isUnwanted` answers true; the numbers of those behind them close up.
template <class Row, class IsUnwanted>
void DropRows(COwningPtrArray<Row>& rows, int Row::*number, IsUnwanted isUnwanted)
{
    std::vector<int> gone;
    for (const Row& row : rows.Records())
        if (isUnwanted(row))
            gone.push_back(row.*number);
    DeleteWhere(rows, [&](const Row& row, int) { return isUnwanted(row); });
    for (Row& row : rows.Records())
    {
        int before = 0;
        for (const int place : gone)
            before += place < row.*number ? 1 : 0;
        row.*number -= before;
    }
}

// Where a span begins or ends at a layer for which `isUnwanted` answers true, lets it begin or end at the next copper layer
// inside it. Without one, the span becomes empty.
void ShortenSpans(CJOBXmatrixLayerArray& layers, const std::function<bool(const CString&)>& isUnwanted);
