#include "output/Table.h"

#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>

namespace
{
std::string TextOf(const Cell& cell)
{
    if (const auto* const text = std::get_if<std::string>(&cell))
        return *text;
    if (const auto* const integer = std::get_if<std::int64_t>(&cell))
        return fmt::format("{}", *integer);
    if (const auto* const real = std::get_if<double>(&cell))
        return std::string(NumberText(*real).View());
    return {};
}

void PrintCsvField(Output& output, std::string_view text)
{
    if (text.find_first_of(",\"\r\n") == std::string_view::npos)
    {
        output.Write(text);
        return;
    }
    output.Put('"');
    for (const char character : text)
    {
        if (character == '"')
            output.Put('"');
        output.Put(character);
    }
    output.Put('"');
}

void PrintAlignedLine(Output& output, std::string_view indent, const std::vector<std::string>& texts,
                      const std::vector<std::size_t>& widths, const std::vector<Table::Column>& columns)
{
    std::string line(indent);
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        const std::string padding(widths[i] - CharacterCount(texts[i]), ' ');
        line += i == 0 ? "" : "  ";
        line += columns[i].isNumber ? padding + texts[i] : texts[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    output.Write(line);
    output.Put('\n');
}
} // namespace

void Table::Print(Output& output, TableForm form) const
{
    switch (form)
    {
    case TableForm::Aligned:
        PrintAligned(output, "");
        break;
    case TableForm::Csv:
        PrintCsv(output);
        break;
    case TableForm::Json:
        JsonOutput json(output, TextBytes::Utf8OrLatin1);
        WriteRows(json);
        json.Finish();
        break;
    }
    output.Flush();
}

void Table::PrintAligned(Output& output, std::string_view indent) const
{
    std::vector<std::vector<std::string>> lines(1);
    for (const Column& column : m_columns)
        lines[0].push_back(column.title);
    for (const std::vector<Cell>& row : m_rows)
    {
        std::vector<std::string>& line = lines.emplace_back();
        for (const Cell& cell : row)
            line.push_back(Printable(TextOf(cell)));
        line.resize(m_columns.size());
    }
    std::vector<std::size_t> widths(m_columns.size(), 0);
    for (const std::vector<std::string>& line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], CharacterCount(line[i]));
    std::vector<std::string> rules;
    rules.reserve(widths.size());
    for (const std::size_t width : widths)
        rules.emplace_back(width, '-');
    lines.insert(lines.begin() + 1, std::move(rules));
    for (const std::vector<std::string>& line : lines)
        PrintAlignedLine(output, indent, line, widths, m_columns);
}

void Table::WriteRows(JsonOutput& json) const
{
    json.Array(
        [&]
        {
            for (const std::vector<Cell>& row : m_rows)
                json.Object(
                    [&]
                    {
                        for (std::size_t i = 0; i < m_columns.size(); ++i)
                        {
                            json.Key(m_columns[i].key);
                            if (i >= row.size() || std::holds_alternative<std::monostate>(row[i]))
                                json.Null();
                            else if (const auto* const text = std::get_if<std::string>(&row[i]))
                                json.Value(std::string_view(*text));
                            else if (const auto* const integer = std::get_if<std::int64_t>(&row[i]))
                                json.Value(*integer);
                            else
                                json.Value(std::get<double>(row[i]));
                        }
                    });
        });
}

void Table::PrintCsv(Output& output) const
{
    for (std::size_t i = 0; i < m_columns.size(); ++i)
    {
        output.Write(i == 0 ? "" : ",");
        PrintCsvField(output, m_columns[i].key);
    }
    output.Write("\r\n");
    for (const std::vector<Cell>& row : m_rows)
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            output.Write(i == 0 ? "" : ",");
            if (i < row.size())
                PrintCsvField(output, TextOf(row[i]));
        }
        output.Write("\r\n");
    }
}
