#include "options/CommonOptions.h"

#include "output/ExitError.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace
{
std::vector<std::string> SplitAtCommas(const std::string& text)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text + ",");
    for (std::string piece; std::getline(stream, piece, ',');)
    {
        if (piece.empty())
            RaiseWrongUsage("--step needs step names with commas between them");
        pieces.push_back(piece);
    }
    return pieces;
}
} // namespace

void RaiseWrongUsage(const std::string& message)
{
    throw ExitError(ExitCode::WrongUsage, message + " (try: jobx --help)");
}

CLI::App& AddCommand(CLI::App& app, const char* name, const char* about)
{
    CLI::App* const command = app.add_subcommand(name, about);
    command->footer("Examples and exit codes: jobx --help");
    return *command;
}

CLI::App& AddJobCommand(CLI::App& app, const char* name, const char* about, ReadOptions& read)
{
    CLI::App& command = AddCommand(app, name, about);
    command.add_option("JOB", read.jobPath, "The job's directory")->required()->type_name("");
    AddReading(command, read);
    return command;
}

void AddReading(CLI::App& command, ReadOptions& read)
{
    command.add_flag("--quiet", read.quiet, "No progress line and no notes");
    command.add_flag("--follow-links", read.followLinks, "Follow links to directories outside the job too");
    command
        .add_option("--max-entries", read.maxEntries,
                    "The most files and directories that one listing may meet, 1000000 unless given")
        ->type_name("N");
}

void AddSteps(CLI::App& command, std::vector<std::string>& steps)
{
    command
        .add_option_function<std::string>(
            "--step,--steps", [&steps](const std::string& names) { steps = SplitAtCommas(names); },
            "Only this step, or these, with commas between them")
        ->type_name("A,B");
}

void AddSystemAttributes(CLI::App& command, ReadOptions& read)
{
    command.add_option("--sysattr", read.sysAttrFile, "Read definitions of system attributes from this file too")
        ->type_name("FILE");
}

void AddTableForms(CLI::App& command, TableForm& form)
{
    CLI::Option* const csv = command.add_flag_callback(
        "--csv", [&form] { form = TableForm::Csv; }, "As comma-separated values (RFC 4180)");
    command
        .add_flag_callback(
            "--json", [&form] { form = TableForm::Json; }, "As a JSON array")
        ->excludes(csv);
}
