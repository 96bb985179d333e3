#include "output/TableView.h"

#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/NearestName.h"
#include "output/Terminal.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <sstream>

namespace
{
using Columns = std::vector<Table::Column>;

bool AreSameWord(std::string_view a, std::string_view b)
{
    return CString(a).CompareNoCase(CString(b)) == 0;
}

std::string_view WithoutUnit(std::string_view title)
{
    for (const std::string_view unit : {" mm", " inch"})
        if (title.ends_with(unit))
            title.remove_suffix(unit.size());
    return title;
}

bool IsNameOf(const Table::Column& column, std::string_view name)
{
    return AreSameWord(column.key, name) || AreSameWord(WithoutUnit(column.title), WithoutUnit(name));
}

std::size_t FindColumn(const Columns& columns, const TableKind& kind, const std::string& name)
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Table::Column& column) { return IsNameOf(column, name); });
    if (found != columns.end())
        return static_cast<std::size_t>(found - columns.begin());
    std::vector<std::string> names;
    std::string list;
    for (const Table::Column& column : columns)
    {
        names.push_back(column.key);
        list += (list.empty() ? "" : ", ") + column.key;
    }
    throw ExitError(ExitCode::WrongUsage, fmt::format("the table of {} has no column \"{}\"; its columns are: {}{}",
                                                      kind.records, Printable(name), list, DidYouMean(name, names)));
}

std::vector<std::size_t> FindColumns(const Columns& columns, const TableKind& kind,
                                     const std::vector<std::string>& names)
{
    std::vector<std::size_t> found;
    found.reserve(names.size());
    for (const std::string& name : names)
    {
        const std::size_t column = FindColumn(columns, kind, name);
        if (std::find(found.begin(), found.end(), column) != found.end())
            throw ExitError(ExitCode::WrongUsage, fmt::format("the column \"{}\" is given twice", Printable(name)));
        found.push_back(column);
    }
    return found;
}

// The usual columns of a table; `isWide`: also those that show nothing, and then all others.
std::vector<std::size_t> UsualColumns(const Table& table, const TableKind& kind, bool isWide)
{
    std::vector<std::size_t> chosen;
    std::istringstream keys(kind.usual);
    for (std::string key; std::getline(keys, key, ',');)
    {
        const bool onlyIfDifferent = key.ends_with('?');
        key.resize(key.size() - (onlyIfDifferent ? 1 : 0));
        const std::size_t column = FindColumn(table.Columns(), kind, key);
        if (isWide || !(table.IsBlank(column) || (onlyIfDifferent && table.IsUniform(column))))
            chosen.push_back(column);
    }
    for (std::size_t column = 0; isWide && column < table.Columns().size(); ++column)
        if (std::find(chosen.begin(), chosen.end(), column) == chosen.end())
            chosen.push_back(column);
    return chosen;
}

struct Order
{
    std::string column;
    bool isDescending = false;
};

std::optional<Order> OrderIn(const TableView& view)
{
    if (view.sort.empty())
        return std::nullopt;
    const bool isDescending = view.sort.starts_with('-');
    return Order{view.sort.substr(isDescending ? 1 : 0), isDescending};
}

void PrintLeftOut(const std::vector<std::string>& titles)
{
    constexpr std::size_t kShown = 3;
    std::string list;
    for (std::size_t i = 0; i < std::min(titles.size(), kShown); ++i)
        list += (i == 0 ? "" : ", ") + titles[i];
    if (titles.size() > kShown)
        list += fmt::format(" and {} more", titles.size() - kShown);
    PrintMessage(fmt::format("not shown for lack of room: {} (--wide)", list));
}
} // namespace

void CheckView(const std::vector<Table::Column>& columns, const TableKind& kind, const TableView& view)
{
    FindColumns(columns, kind, view.columns);
    if (const std::optional<Order> order = OrderIn(view))
        FindColumn(columns, kind, order->column);
}

void PrintView(Table table, const TableKind& kind, const TableView& view, bool isQuiet)
{
    if (const std::optional<Order> order = OrderIn(view))
        table.Sort(FindColumn(table.Columns(), kind, order->column), order->isDescending);
    const bool isAligned = view.form == TableForm::Aligned;
    if (!view.columns.empty())
        table.Choose(FindColumns(table.Columns(), kind, view.columns));
    else if (isAligned)
        table.Choose(UsualColumns(table, kind, view.isWide));
    Output output;
    if (isAligned && table.IsEmpty())
        output.Write(fmt::format("no {}\n", kind.records));
    else if (!isAligned || view.isWide || !view.columns.empty())
        return table.Print(output, view.form);
    else
    {
        const std::size_t width = TerminalWidth(stdout);
        const std::vector<std::string> leftOut =
            table.PrintFitted(output, width == 0 ? std::numeric_limits<std::size_t>::max() : width);
        output.Flush();
        if (!leftOut.empty() && !isQuiet)
            PrintLeftOut(leftOut);
    }
    output.Flush();
}
