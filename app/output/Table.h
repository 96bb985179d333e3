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

// One value of a table: the bytes of a text, a number, several texts, or nothing.
using TextList = std::vector<std::string>;
using Cell = std::variant<std::monostate, std::string, std::int64_t, double, TextList>;

// A cell from any value of the model.
inline Cell CellOf(const CString& text)
{
    return std::string(text.View());
}
inline Cell CellOf(std::string_view text)
{
    return std::string(text);
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
    // How a column is headed.
    struct Column
    {
        std::string title; // as text
        std::string key;   // for programs: the CSV header and the names of the JSON members
        bool isNumber = false;
        int decimals = kAllDecimals; // as text: the most digits behind the decimal point
    };
    static constexpr int kAllDecimals = -1;

    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    // Values in the order of the columns; missing ones at the end are empty.
    void Add(std::vector<Cell> row)
    {
        row.resize(m_columns.size());
        m_rows.push_back(std::move(row));
    }
    bool IsEmpty() const { return m_rows.empty(); }
    const std::vector<Column>& Columns() const { return m_columns; }
    // Whether a column has the same value in all rows, or in all of them none.
    bool IsUniform(std::size_t column) const;
    bool IsBlank(std::size_t column) const;

    // Keeps these columns, in this order.
    void Choose(const std::vector<std::size_t>& columns);
    // Sorts the rows by that column, texts in natural order, empty cells last. Equal rows keep their order.
    void Sort(std::size_t column, bool isDescending);

    // Prints the whole document in that form.
    void Print(Output& output, TableForm form) const;
    // Prints aligned columns, each line after `indent`, with control characters made visible.
    void PrintAligned(Output& output, std::string_view indent) const;
    // As above, but no line is longer than `width`: texts are shortened, and if that is not enough, columns are left out
    // from the right. Lists of texts are always shortened.
    // Results: the titles of the columns that are left out.
    std::vector<std::string> PrintFitted(Output& output, std::size_t width) const;
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
    Length, // a number; its title names the unit
};

// A complete column: its head, and the value that it shows of a row. A table is an array of columns.
template <class Row>
struct ColumnOf
{
    const char* title;
    const char* key;
    ColumnKind kind;
    Cell (*cell)(const Row& row);
    const char* classicTitle = nullptr; // of --legacy, if it is another one
};

// The heads of a table whose lengths are in that unit. Without a unit, those of --legacy: the titles name none, and
// lengths have all their digits.
template <class Row>
std::vector<Table::Column> HeadsOf(std::span<const ColumnOf<Row>> columns, std::optional<JOBXunit> unit = std::nullopt)
{
    constexpr int kDecimals[] = {5, 4}; // of inches and of millimetres
    std::vector<Table::Column> heads;
    for (const ColumnOf<Row>& column : columns)
    {
        const char* const title = unit || column.classicTitle == nullptr ? column.title : column.classicTitle;
        Table::Column& head = heads.emplace_back(Table::Column{title, column.key, column.kind != ColumnKind::Text});
        if (column.kind != ColumnKind::Length || !unit)
            continue;
        head.title += *unit == JOBXunit::Millimetre ? " mm" : " inch";
        head.decimals = kDecimals[static_cast<std::size_t>(*unit)];
    }
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
