#pragma once

#include "output/JsonOutput.h"

#include <cstdint>
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
inline Cell CellOf(int number)
{
    return static_cast<std::int64_t>(number);
}
inline Cell CellOf(std::int64_t number)
{
    return number;
}
inline Cell CellOf(double number)
{
    return number;
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

    // The whole document of that form.
    void Print(Output& output, TableForm form) const;
    // Aligned columns, each line after `indent`; control characters are made visible.
    void PrintAligned(Output& output, std::string_view indent) const;
    // An array of objects. A row whose cell is empty has null there.
    void WriteRows(JsonOutput& json) const;

private:
    void PrintCsv(Output& output) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};
