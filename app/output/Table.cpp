#include "output/Table.h"

#include "output/NaturalOrder.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
constexpr std::size_t kGap = 2;            // between columns
constexpr std::size_t kLeastTextWidth = 8; // to which texts are shortened before columns are left out
constexpr std::size_t kWidestList = 40;    // of texts in one cell
constexpr std::string_view kEllipsis = "...";
constexpr double kPlainNumbers = 1e9; // from here on, a fixed number of decimals makes no sense

// With at most so many digits behind the decimal point, and none that mean nothing.
std::string RoundedText(double number, int decimals)
{
    if (decimals == Table::kAllDecimals || !(std::abs(number) < kPlainNumbers))
        return std::string(NumberText(number).View());
    std::string text = fmt::format("{:.{}f}", number, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string Joined(const TextList& texts, std::string_view between)
{
    std::string joined;
    for (const std::string& text : texts)
        joined.append(joined.empty() ? "" : between).append(text);
    return joined;
}

std::string TextOf(const Cell& cell, int decimals = Table::kAllDecimals)
{
    if (const auto* const text = std::get_if<std::string>(&cell))
        return *text;
    if (const auto* const integer = std::get_if<std::int64_t>(&cell))
        return fmt::format("{}", *integer);
    if (const auto* const real = std::get_if<double>(&cell))
        return RoundedText(*real, decimals);
    if (const auto* const texts = std::get_if<TextList>(&cell))
        return Joined(*texts, " ");
    return {};
}

// The first texts of a list, and how many more there are.
std::string ShortList(const TextList& texts)
{
    std::string shown;
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        const std::string text = Printable(texts[i]);
        if (i > 0 && CharacterCount(shown) + CharacterCount(text) > kWidestList)
            return shown + fmt::format(" ... {} more", texts.size() - i);
        shown.append(i == 0 ? "" : " ").append(text);
    }
    return shown;
}

// The first characters of a printable text, with dots in place of the rest.
std::string Shortened(const std::string& text, std::size_t width)
{
    if (CharacterCount(text) <= width)
        return text;
    const std::size_t dots = std::min(kEllipsis.size(), width);
    return std::string(FirstCharacters(text, width - dots)).append(kEllipsis.substr(0, dots));
}

std::size_t TotalWidth(const std::vector<std::size_t>& widths)
{
    return std::accumulate(widths.begin(), widths.end(), kGap * (std::max<std::size_t>(widths.size(), 1) - 1));
}

bool IsBefore(const Cell& a, const Cell& b)
{
    const auto numberOf = [](const Cell& cell) -> std::optional<double>
    {
        if (const auto* const integer = std::get_if<std::int64_t>(&cell))
            return static_cast<double>(*integer);
        if (const auto* const real = std::get_if<double>(&cell); real != nullptr && !std::isnan(*real))
            return *real;
        return std::nullopt;
    };
    const std::optional<double> numberA = numberOf(a);
    const std::optional<double> numberB = numberOf(b);
    if (numberA && numberB)
        return *numberA < *numberB;
    if (numberA.has_value() != numberB.has_value())
        return numberA.has_value();
    return IsNaturallyBefore(TextOf(a), TextOf(b));
}

bool IsBlankCell(const Cell& cell)
{
    const auto* const text = std::get_if<std::string>(&cell);
    const auto* const texts = std::get_if<TextList>(&cell);
    return std::holds_alternative<std::monostate>(cell) || (text != nullptr && text->empty()) ||
           (texts != nullptr && texts->empty());
}

void WriteCell(JsonOutput& json, const Cell& cell)
{
    if (const auto* const text = std::get_if<std::string>(&cell))
        json.Value(std::string_view(*text));
    else if (const auto* const integer = std::get_if<std::int64_t>(&cell))
        json.Value(*integer);
    else if (const auto* const real = std::get_if<double>(&cell))
        json.Value(*real);
    else if (const auto* const texts = std::get_if<TextList>(&cell))
        json.Array(
            [&]
            {
                for (const std::string& each : *texts)
                    json.Value(std::string_view(each));
            });
    else
        json.Null();
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

// The texts of a table, line by line, and how wide its columns are.
class AlignedTexts
{
public:
    AlignedTexts(const std::vector<Table::Column>& columns, const std::vector<std::vector<Cell>>& rows, bool isFitted)
        : m_columns(columns), m_lines(1)
    {
        for (const Table::Column& column : columns)
            m_lines[0].push_back(column.title);
        for (const std::vector<Cell>& row : rows)
            AddRow(row, isFitted);
        m_widths.assign(columns.size(), 0);
        for (const std::vector<std::string>& line : m_lines)
            for (std::size_t i = 0; i < line.size(); ++i)
                m_widths[i] = std::max(m_widths[i], CharacterCount(line[i]));
    }

    // Makes texts shorter and columns fewer, until no line is longer. The titles of the columns left out.
    std::vector<std::string> Fit(std::size_t width)
    {
        const std::vector<std::size_t> whole = m_widths;
        while (!FitTexts(width) && m_widths.size() > 1)
            m_widths.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(m_widths.size()) - 1);
        if (m_widths.size() == 1)
            m_widths[0] = std::min(m_widths[0], std::max<std::size_t>(width, 1));
        std::vector<std::string> leftOut;
        for (std::size_t i = m_widths.size(); i < m_columns.size(); ++i)
            leftOut.push_back(m_columns[i].title);
        return leftOut;
    }

    void Print(Output& output, std::string_view indent) const
    {
        PrintLine(output, indent, m_lines[0]);
        std::vector<std::string> rules;
        rules.reserve(m_widths.size());
        for (const std::size_t width : m_widths)
            rules.emplace_back(width, '-');
        PrintLine(output, indent, rules);
        for (std::size_t i = 1; i < m_lines.size(); ++i)
            PrintLine(output, indent, m_lines[i]);
    }

private:
    void AddRow(const std::vector<Cell>& row, bool isFitted)
    {
        std::vector<std::string>& line = m_lines.emplace_back();
        for (std::size_t i = 0; i < m_columns.size() && i < row.size(); ++i)
            if (const auto* const texts = std::get_if<TextList>(&row[i]); texts != nullptr && isFitted)
                line.push_back(ShortList(*texts));
            else
                line.push_back(Printable(TextOf(row[i], m_columns[i].decimals)));
        line.resize(m_columns.size());
    }

    // False if the texts would become too short.
    bool FitTexts(std::size_t width)
    {
        while (TotalWidth(m_widths) > width)
        {
            std::size_t* widest = nullptr;
            for (std::size_t i = 0; i < m_widths.size(); ++i)
                if (!m_columns[i].isNumber && m_widths[i] > LeastWidth(i) &&
                    (widest == nullptr || m_widths[i] > *widest))
                    widest = &m_widths[i];
            if (widest == nullptr)
                return false;
            --*widest;
        }
        return true;
    }
    std::size_t LeastWidth(std::size_t column) const
    {
        return std::max(kLeastTextWidth, CharacterCount(m_columns[column].title));
    }

    void PrintLine(Output& output, std::string_view indent, const std::vector<std::string>& texts) const
    {
        std::string line(indent);
        for (std::size_t i = 0; i < m_widths.size(); ++i)
        {
            const std::string text = Shortened(texts[i], m_widths[i]);
            const std::string padding(m_widths[i] - CharacterCount(text), ' ');
            line.append(i == 0 ? 0 : kGap, ' ');
            line += m_columns[i].isNumber ? padding + text : text + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        output.Write(line);
        output.Put('\n');
    }

    const std::vector<Table::Column>& m_columns;
    std::vector<std::vector<std::string>> m_lines; // the first has the titles
    std::vector<std::size_t> m_widths;             // of the columns that are printed
};
} // namespace

bool Table::IsUniform(std::size_t column) const
{
    return std::all_of(m_rows.begin(), m_rows.end(),
                       [&](const std::vector<Cell>& row) { return row[column] == m_rows.front()[column]; });
}

bool Table::IsBlank(std::size_t column) const
{
    return std::all_of(m_rows.begin(), m_rows.end(),
                       [&](const std::vector<Cell>& row) { return IsBlankCell(row[column]); });
}

void Table::Choose(const std::vector<std::size_t>& columns)
{
    std::vector<Column> heads;
    heads.reserve(columns.size());
    for (const std::size_t column : columns)
        heads.push_back(m_columns[column]);
    m_columns = std::move(heads);
    for (std::vector<Cell>& row : m_rows)
    {
        std::vector<Cell> cells;
        cells.reserve(columns.size());
        for (const std::size_t column : columns)
            cells.push_back(row[column]);
        row = std::move(cells);
    }
}

void Table::Sort(std::size_t column, bool isDescending)
{
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [&](const std::vector<Cell>& a, const std::vector<Cell>& b)
                     {
                         if (IsBlankCell(a[column]) || IsBlankCell(b[column]))
                             return !IsBlankCell(a[column]) && IsBlankCell(b[column]);
                         return isDescending ? IsBefore(b[column], a[column]) : IsBefore(a[column], b[column]);
                     });
}

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
    AlignedTexts(m_columns, m_rows, false).Print(output, indent);
}

std::vector<std::string> Table::PrintFitted(Output& output, std::size_t width) const
{
    AlignedTexts texts(m_columns, m_rows, true);
    std::vector<std::string> leftOut = texts.Fit(width);
    texts.Print(output, "");
    return leftOut;
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
                            WriteCell(json, i < row.size() ? row[i] : Cell());
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
