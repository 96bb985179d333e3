#include "options/CommonOptions.h"

#include "options/HelpText.h"
#include "output/Colours.h"
#include "output/Text.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <charconv>
#include <cmath>
#include <sstream>

namespace
{
unsigned long long EntriesIn(const std::string& text)
{
    unsigned long long entries = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, entries);
    if (problem != std::errc() || rest != end || entries == 0)
        RaiseWrongUsage(fmt::format("--max-entries needs a whole number from 1, not \"{}\"", Printable(text)));
    return entries;
}
ShownMessages MessagesIn(const std::string& text)
{
    if (text != "all" && text != "none")
        RaiseWrongUsage(fmt::format("--messages needs \"all\" or \"none\", not \"{}\"", Printable(text)));
    return text == "all" ? ShownMessages::All : ShownMessages::None;
}

struct ColourWord
{
    std::string_view word;
    ColourUse use;
};
constexpr ColourWord kColourWords[] = {
    {"auto", ColourUse::Auto}, {"always", ColourUse::Always}, {"never", ColourUse::Never}};

ColourUse ColourUseIn(const std::string& text)
{
    for (const ColourWord& each : kColourWords)
        if (each.word == text)
            return each.use;
    RaiseWrongUsage(fmt::format("--color needs \"auto\", \"always\" or \"never\", not \"{}\"", Printable(text)));
}

JOBXunit UnitIn(const std::string& text)
{
    if (text != "mm" && text != "inch")
        RaiseWrongUsage(fmt::format("--units needs \"mm\" or \"inch\", not \"{}\"", Printable(text)));
    return text == "mm" ? JOBXunit::Millimetre : JOBXunit::Inch;
}
} // namespace

void RaiseWrongUsage(const std::string& message)
{
    throw UsageError(message);
}

std::vector<std::string> SplitAtCommas(const std::string& text, const char* problem)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text + ",");
    for (std::string piece; std::getline(stream, piece, ',');)
    {
        const std::size_t first = piece.find_first_not_of(' ');
        if (first == std::string::npos)
            RaiseWrongUsage(problem);
        pieces.push_back(piece.substr(first, piece.find_last_not_of(' ') - first + 1));
    }
    return pieces;
}

std::optional<double> NumberIn(const std::string& text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, number);
    if (problem != std::errc() || rest != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

void UseColoursAsIn(const std::vector<std::string>& words)
{
    constexpr std::string_view kOption = "--color";
    for (std::size_t i = 0; i < words.size(); ++i)
        for (const ColourWord& each : kColourWords)
            if (words[i] == fmt::format("{}={}", kOption, each.word) ||
                (i > 0 && words[i - 1] == kOption && words[i] == each.word))
                SetColourUse(each.use);
}

CLI::App& AddCommand(CLI::App& app, const char* name, const char* about)
{
    CLI::App* const command = app.add_subcommand(name, about);
    command->footer("Exit codes and more examples: jobx --help");
    command
        ->add_option_function<std::string>(
            "--color", [](const std::string& text) { SetColourUse(ColourUseIn(text)); },
            "Colour messages and what differs: auto (on terminals), always or never")
        ->type_name("WHEN");
    return *command;
}

void SetExample(CLI::App& command, const char* purpose, const char* example)
{
    command.formatter(HelpFormatter(purpose, example));
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
    command.add_flag("--follow-links", read.followLinks, "Also follow links to files and directories outside the job");
    command
        .add_option_function<std::string>(
            "--max-entries", [&read](const std::string& text) { read.maxEntries = EntriesIn(text); },
            "The most files and directories in one listing, 1000000 by default")
        ->type_name("N");
}

void AddMessages(CLI::App& command, ReadOptions& read)
{
    command
        .add_option_function<std::string>(
            "--messages", [&read](const std::string& text) { read.messages = MessagesIn(text); },
            "Which messages about the job: all or none, instead of the ten most serious")
        ->type_name("WHICH");
    command.add_flag("--strict", read.strict, "Exit with 5 if the job has errors, after printing what was read");
}

CLI::Option* AddWay(CLI::App& command, ReadOptions& read)
{
    read.way = JOBXway::Complete;
    CLI::Option* const legacy = command.add_flag_callback(
        "--legacy", [&read] { read.way = JOBXway::Classic; },
        "Read like the library by default and like earlier versions: less of the job, no messages");
    AddMessages(command, read);
    command.get_option("--strict")->excludes(legacy);
    return legacy;
}

void AddSteps(CLI::App& command, std::vector<std::string>& steps)
{
    command
        .add_option_function<std::string>(
            "--step,--steps",
            [&steps](const std::string& names)
            { steps = SplitAtCommas(names, "--step needs step names, separated by commas"); },
            "Only this step, or several, separated by commas")
        ->type_name("A,B");
}

void AddSystemAttributes(CLI::App& command, ReadOptions& read)
{
    command
        .add_option_function<std::string>(
            "--sysattr",
            [&read](const std::string& file)
            {
                if (file.empty())
                    RaiseWrongUsage("--sysattr needs the name of a file");
                read.sysAttrFile = file;
            },
            "Also read definitions of system attributes from this file")
        ->type_name("FILE");
}

void AddTableView(CLI::App& command, TableView& view)
{
    CLI::Option* const csv = command.add_flag_callback(
        "--csv", [&view] { view.form = TableForm::Csv; }, "As comma-separated values (RFC 4180); lines end with CR LF");
    command
        .add_flag_callback(
            "--json", [&view] { view.form = TableForm::Json; }, "As a JSON array")
        ->excludes(csv);
    CLI::Option* const wide = command.add_flag("--wide", view.isWide, "All columns, and long texts in full");
    command
        .add_option_function<std::string>(
            "--columns",
            [&view](const std::string& names)
            { view.columns = SplitAtCommas(names, "--columns needs column names, separated by commas"); },
            "Only these columns, in this order, separated by commas")
        ->type_name("A,B")
        ->excludes(wide);
    command
        .add_option_function<std::string>(
            "--sort",
            [&view](const std::string& column)
            {
                if (column.empty() || column == "-")
                    RaiseWrongUsage("--sort needs the name of a column");
                view.sort = column;
            },
            "Sort by this column, R2 before R10; -COLUMN: the other way round")
        ->type_name("COLUMN");
}

void AddUnits(CLI::App& command, std::optional<JOBXunit>& unit, const char* about)
{
    command
        .add_option_function<std::string>(
            "--units", [&unit](const std::string& text) { unit = UnitIn(text); }, about)
        ->type_name("UNIT");
}

void RefuseTogether(CLI::App& command, CLI::Option* option, std::initializer_list<const char*> others)
{
    for (const char* const other : others)
        option->excludes(command.get_option(other));
}
