#pragma once

#include "output/JsonOutput.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

enum class TableForm
{
    Aligned, // as text
    Csv,     // RFC 4180: comma, double quotes where needed, lines end with CR LF
    Json,    // an array of objects
};

// One value of a table: the bytes of a text, a number, or nothing.
using Cell = std::variant<std::monostate, std::string, std::int64_t, double>;

// A cell from any value of the model.
inline Cell CellOf(const CString& text)
{
    return std::string(text.View());
}
template <std::integral Integer>
Cell CellOf(Integer number)
{
    return static_cast<std::int64_t>(number);
}
inline Cell CellOf(double number)
{
    return number;
}
// Empty if there is no value.
template <class Value>
Cell CellOf(const std::optional<Value>& value)
{
    return value ? CellOf(*value) : Cell();
}

// Rows under named columns.
class Table
{
public:
    struct Column
    {
        std::string title; // as text
        std::string key;   // for programs: the CSV header and the names of the JSON members
        bool isNumber = false;
    };

    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    // Values in the order of the columns; missing ones at the end are empty.
    void Add(std::vector<Cell> row) { m_rows.push_back(std::move(row)); }
    bool IsEmpty() const { return m_rows.empty(); }

    // Prints the whole document in that form.
    void Print(Output& output, TableForm form) const;
    // Prints aligned columns, each line after `indent`, with control characters made visible.
    void PrintAligned(Output& output, std::string_view indent) const;
    // Writes an array of objects, with null for empty cells.
    void WriteRows(JsonOutput& json) const;

private:
    void PrintCsv(Output& output) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};

enum class ColumnKind
{
    Text,
    Number,
};

// A complete column: its head, and the value that it shows of a row. A table is an array of columns.
template <class Row>
struct ColumnOf
{
    const char* title;
    const char* key;
    ColumnKind kind;
    Cell (*cell)(const Row& row);
};

template <class Row>
std::vector<Table::Column> HeadsOf(std::span<const ColumnOf<Row>> columns)
{
    std::vector<Table::Column> heads;
    for (const ColumnOf<Row>& column : columns)
        heads.push_back({column.title, column.key, column.kind == ColumnKind::Number});
    return heads;
}

template <class Row>
std::vector<Cell> CellsOf(std::span<const ColumnOf<Row>> columns, const Row& row)
{
    std::vector<Cell> cells;
    cells.reserve(columns.size());
    for (const ColumnOf<Row>& column : columns)
        cells.push_back(column.cell(row));
    return cells;
}
