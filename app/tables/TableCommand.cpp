#include "tables/TableCommand.h"

#include "options/CommonOptions.h"
#include "tables/Tables.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace
{
struct TableCommand
{
    const char* name;
    const char* about;
    const char* footer;
    Table (*make)(const CJOBX& job);
};

constexpr const char* kPlainFooter = "Examples and exit codes: jobx --help";
constexpr const char* kComponentsFooter =
    R"(Lengths are in the unit of the file (see info). MIRROR is 1 for a mirrored component, else 0.

Examples and exit codes: jobx --help)";
constexpr const char* kPackagesFooter =
    R"(Lengths are in the unit of the file (see info).

Examples and exit codes: jobx --help)";

constexpr TableCommand kTableCommands[] = {
    {"nets", "Prints the nets as a table", kPlainFooter, NetsTable},
    {"components", "Prints the placed components as a table", kComponentsFooter, ComponentsTable},
    {"packages", "Prints the packages as a table", kPackagesFooter, PackagesTable},
};

struct TableOptions
{
    ReadOptions read;
    TableForm form = TableForm::Aligned;
};

void PrintTable(const TableCommand& table, const TableOptions& options)
{
    const ReadJob read = ReadGoodJobDirectory(options.read);
    Output output;
    table.make(*read.job).Print(output, options.form);
    CheckStrictly(options.read, read);
}

void AddTableCommand(CLI::App& app, const TableCommand& table)
{
    const auto options = std::make_shared<TableOptions>();
    CLI::App& command = AddJobCommand(app, table.name, table.about, options->read);
    AddWay(command, options->read);
    AddSteps(command, options->read.steps);
    AddTableForms(command, options->form);
    command.footer(table.footer);
    command.callback([&table, options] { PrintTable(table, *options); });
}
} // namespace

void AddTableCommands(CLI::App& app)
{
    for (const TableCommand& table : kTableCommands)
        AddTableCommand(app, table);
}
