#include "CommandLine.h"

#include "diff/DiffCommand.h"
#include "info/InfoCommand.h"
#include "output/ExitError.h"
#include "output/Text.h"
#include "panel/PanelCommand.h"
#include "tables/ComponentsCommand.h"
#include "tables/NetsCommand.h"
#include "tables/PackagesCommand.h"
#include "write/WriteCommand.h"
#include "json/JsonCommand.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <charconv>
#include <cmath>
#include <sstream>
#include <string>

namespace
{
constexpr const char* kAbout = "Shows, compares, exports and writes ODB++ jobs. A job is the directory tree that "
                               "takes a circuit board from its\n"
                               "design tool to its manufacturer.";

constexpr const char* kFooter = R"(
Examples:
  jobx info board                      show what is in the job directory "board"
  jobx info board --steps pcb          show only one step
  jobx components board --csv > c.csv  export the components as a spreadsheet
  jobx panel board --step panel        show where boards lie on a panel
  jobx json board > board.json         export everything for another program
  jobx diff board newer                show what differs between two jobs
  jobx write board -o out              write the job to out/board

A job is a directory; unpack an archive (.tgz, .zip) first. Reading unpacks compressed user symbols in place: a file
"features" appears beside symbols/NAME/features.Z. Nothing else in the job changes.

Data goes to standard output; messages and the progress line go to standard error.

Exit codes:
  0  done
  1  diff: the jobs differ
  2  wrong usage, or a step that the job does not have
  3  the input cannot be read
  4  the output cannot be written
  70 an internal error)";

// The values of all options.
struct Arguments
{
    ReadOptions read;
    WriteOptions write;
    bool json = false;
    bool csv = false;
    bool latin1 = false;
    bool compact = false;
    std::string panelStep;
    DiffOptions diff;
    ExitCode exitCode = ExitCode::Done; // of the command
};

[[noreturn]] void RaiseWrongUsage(const std::string& message)
{
    throw ExitError(ExitCode::WrongUsage, message + " (try: jobx --help)");
}

std::vector<std::string> SplitAtCommas(const std::string& text)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text + ",");
    for (std::string piece; std::getline(stream, piece, ',');)
    {
        if (piece.empty())
            RaiseWrongUsage("--steps needs step names separated by commas");
        pieces.push_back(piece);
    }
    return pieces;
}

// The limits on reading a job that someone else made.
void AddLimits(CLI::App& command, ReadOptions& read)
{
    command.add_flag("--follow-links", read.followLinks, "Also follow links to directories outside the job");
    command
        .add_option("--max-entries", read.maxEntries,
                    "Limit of files and directories in one listing, 1000000 by default")
        ->type_name("N");
}

// Adds a command with the options that all commands take; `run` is called once the arguments have their values.
template <class Run>
CLI::App* AddCommand(CLI::App& app, Arguments& arguments, const char* name, const char* about, Run run)
{
    CLI::App* const command = app.add_subcommand(name, about);
    command->add_option("JOB", arguments.read.jobPath, "The job's directory")->required()->type_name("");
    command->footer("Examples and exit codes: jobx --help");
    command->add_flag("--quiet", arguments.read.quiet, "No progress line and no notes");
    AddLimits(*command, arguments.read);
    command->callback([run] { run(); });
    return command;
}

void AddSteps(CLI::App& command, Arguments& arguments)
{
    command
        .add_option_function<std::string>(
            "--steps", [&arguments](const std::string& names) { arguments.read.steps = SplitAtCommas(names); },
            "Only these steps, separated by commas")
        ->type_name("A,B");
}

void AddStepsAndAttributes(CLI::App& command, Arguments& arguments)
{
    AddSteps(command, arguments);
    command
        .add_option("--sysattr", arguments.read.sysAttrFile,
                    "Also read definitions of system attributes from this file")
        ->type_name("FILE");
}

TableForm FormOf(const Arguments& arguments)
{
    if (arguments.csv)
        return TableForm::Csv;
    return arguments.json ? TableForm::Json : TableForm::Aligned;
}

void AddTableForms(CLI::App& command, Arguments& arguments)
{
    CLI::Option* const csv = command.add_flag("--csv", arguments.csv, "As comma-separated values (RFC 4180)");
    command.add_flag("--json", arguments.json, "As a JSON array")->excludes(csv);
}

// A command whose result is one table.
template <class Run>
void AddTableCommand(CLI::App& app, Arguments& arguments, const char* name, const char* about, Run run)
{
    CLI::App* const command =
        AddCommand(app, arguments, name, about, [&arguments, run] { run(arguments.read, FormOf(arguments)); });
    command
        ->add_option_function<std::string>(
            "--step", [&arguments](const std::string& step) { arguments.read.steps = {step}; }, "Only this step")
        ->type_name("NAME");
    AddTableForms(*command, arguments);
}

constexpr const char* kPanelFooter =
    R"(Each placement is one row, numbered from 1 in each step. A placement comes before those inside it. LEVEL counts from
1; PARENT is the number of the placement that contains this one. X and Y are the position of the placed step's datum
in the step of the first column, in the unit of the step headers. ANGLE is clockwise, the sum of all rotations. MIRROR
is "YES" if any placement on the way is mirrored; FLIP is the flip of the outermost placement.

It is an error (exit code 3) if a step repeats itself, directly or through others, or if there are more than 100000
placements.
docs/panel.schema.json describes the JSON document.

Examples and exit codes: jobx --help)";

void AddPanelCommand(CLI::App& app, Arguments& arguments)
{
    CLI::App* const panel =
        AddCommand(app, arguments, "panel", "Prints where repeated steps lie, as a table",
                   [&arguments] { RunPanel(arguments.read, arguments.panelStep, FormOf(arguments)); });
    panel->add_option("--step", arguments.panelStep, "Only the placements in this step")->type_name("NAME");
    AddTableForms(*panel, arguments);
    panel->footer(kPanelFooter);
}

void AddDiffCommand(CLI::App& app, Arguments& arguments)
{
    CLI::App* const command = app.add_subcommand("diff", "Prints what differs between two jobs");
    DiffOptions& diff = arguments.diff;
    command->add_option("A", diff.jobA, "The first job's directory")->required()->type_name("");
    command->add_option("B", diff.jobB, "The second job's directory")->required()->type_name("");
    command
        ->add_option("--tolerance", diff.rules.tolerance,
                     "Ignore coordinates and lengths that differ by at most this, in the unit of the files")
        ->check(CLI::NonNegativeNumber)
        ->type_name("T");
    command->add_flag("--ignore-line-numbers", diff.rules.ignoreLineNumbers,
                      "Ignore the lines in which records stand in their files");
    command->add_flag("--json", diff.json, "As a JSON document");
    command->add_flag("--quiet", diff.quiet, "No progress line");
    AddLimits(*command, arguments.read);
    command->footer("Examples and exit codes: jobx --help");
    command->callback([&arguments] { arguments.exitCode = RunDiff(arguments.read, arguments.diff); });
}

constexpr const char* kWriteFooter =
    R"(The job is written to DIR/NAME, where NAME is the name of the directory that was read. DIR is created if its parent
exists. The job is written beside that place first and moved there when it is complete and on the disk, so a failure
changes nothing. The job is scaled first, then its steps are reordered, then it gets its name.

An existing directory is replaced only with --force, and never a file, the input job or a directory that contains it.

As in the library, these are not written:
  user symbols  if the whole job is read; with --steps they are written, beside "steps"
  the font      unless the current directory has a file named "standard"
  misc          stays empty: neither the job information nor attributes are written
  other files   attribute lists, tools and everything else that is not read

Examples and exit codes: jobx --help)";

// A number greater than 0 with a decimal point, whatever the locale.
double ScaleOf(const std::string& text)
{
    double scale = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, scale);
    if (problem != std::errc() || rest != end || !std::isfinite(scale) || scale <= 0)
        RaiseWrongUsage(fmt::format("--scale needs a number greater than 0, not \"{}\"", Printable(text)));
    return scale;
}

void AddWriteCommand(CLI::App& app, Arguments& arguments)
{
    WriteOptions& options = arguments.write;
    CLI::App* const write = AddCommand(app, arguments, "write", "Writes the job as a new directory tree",
                                       [&arguments] { RunWrite(arguments.read, arguments.write); });
    write->add_option("-o,--output", options.directory, "Where the job's directory goes")->required()->type_name("DIR");
    AddSteps(*write, arguments);
    write->add_flag_callback(
        "--no-eda", [&options] { options.withEda = false; }, "Leave out the EDA data and netlists of the steps");
    write
        ->add_option_function<std::string>(
            "--scale", [&options](const std::string& factor) { options.scale = ScaleOf(factor); },
            "Multiply lengths by this; unit names, symbol names and step headers do not change")
        ->type_name("FACTOR");
    write->add_flag("--rebuild-steps", options.rebuildSteps, "Put steps that repeat others before the plain ones");
    write->add_option("--name", options.name, "The name of the written job")->type_name("NAME");
    write->add_flag("--force", options.force, "Replace an existing directory");
    write->add_flag("--allow-incomplete", options.allowIncomplete,
                    "With --force: replace it even if something that the matrix names could not be read");
    write->footer(kWriteFooter);
}

void AddCommands(CLI::App& app, Arguments& arguments)
{
    CLI::App* const info = AddCommand(app, arguments, "info", "Prints a summary of the job",
                                      [&arguments] { RunInfo(arguments.read, arguments.json, arguments.compact); });
    AddStepsAndAttributes(*info, arguments);
    info->add_flag("--json", arguments.json, "As a JSON document");
    info->add_flag("--compact", arguments.compact,
                   "Show the compact model of every step instead, before and after its conversion to inches");
    AddTableCommand(app, arguments, "nets", "Prints the nets as a table", RunNets);
    AddTableCommand(app, arguments, "components", "Prints the placed components as a table", RunComponents);
    AddTableCommand(app, arguments, "packages", "Prints the packages as a table", RunPackages);
    AddPanelCommand(app, arguments);
    CLI::App* const json = AddCommand(
        app, arguments, "json", "Prints everything as one JSON document (see docs/job.schema.json)",
        [&arguments] { RunJson(arguments.read, arguments.latin1 ? TextBytes::Latin1 : TextBytes::Utf8OrLatin1); });
    AddStepsAndAttributes(*json, arguments);
    json->add_flag("--latin1", arguments.latin1,
                   "Map every byte of a text to the character of that number, even in UTF-8");
    AddDiffCommand(app, arguments);
    AddWriteCommand(app, arguments);
}

std::string UsageProblem(const CLI::App& app, const CLI::ParseError& error)
{
    if (!app.get_subcommands().empty())
        return Printable(error.what());
    const std::vector<std::string> words = app.remaining();
    return words.empty() ? "a command is needed"
                         : fmt::format("unknown {} \"{}\"", words.front().starts_with("-") ? "option" : "command",
                                       Printable(words.front()));
}

// Prints the help or the version.
void PrintAnswer(const CLI::App& app, const CLI::Success& answer)
{
    std::ostringstream text;
    std::ostringstream errors;
    app.exit(answer, text, errors);
    Output output;
    output.Write(text.str());
    output.Flush();
}
} // namespace

ExitCode RunCommandLine(int argc, const char* const* argv)
{
    CLI::App app(kAbout, "jobx");
    app.footer(kFooter);
    app.set_version_flag("--version", "jobx " JOBX_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    Arguments arguments;
    AddCommands(app, arguments);
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::Success& answer)
    {
        PrintAnswer(app, answer);
    }
    catch (const CLI::ParseError& error)
    {
        RaiseWrongUsage(UsageProblem(app, error));
    }
    return arguments.exitCode;
}
