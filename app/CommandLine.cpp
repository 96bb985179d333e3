#include "CommandLine.h"

#include "diff/DiffCommand.h"
#include "info/InfoCommand.h"
#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/NearestName.h"
#include "output/Output.h"
#include "output/Text.h"
#include "panel/PanelCommand.h"
#include "tables/TableCommand.h"
#include "write/WriteCommand.h"
#include "json/JsonCommand.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace
{
constexpr const char* kAbout = "Shows, compares, exports and writes ODB++ jobs. A job is the directory tree that "
                               "takes a circuit board from its\n"
                               "design tool to its manufacturer.";

constexpr const char* kFooter = R"(
Examples:
  jobx info board                      what is in the job directory "board"
  jobx info board --step pcb           the same, of one step only
  jobx components board --csv > c.csv  the components as a spreadsheet
  jobx panel board --step panel        where boards lie in a panel
  jobx json board > board.json         everything, for another program
  jobx diff board newer                what differs between two jobs
  jobx write board -o out              the job as the library writes it, in out/board

A job is a directory; unpack an archive (.tgz, .zip) first. Reading unpacks compressed user symbols in place: a file
"features" appears beside symbols/NAME/features.Z. Nothing else in the job changes.

Data goes to standard output; messages and the progress line go to standard error.

Exit codes:
  0  done
  1  diff: the jobs differ
  2  wrong usage, or a step that the job does not have
  3  the input cannot be read
  4  the output cannot be written
  70 an internal error

When what reads the output closes the pipe, as in "jobx json board | head", jobx ends by the signal SIGPIPE without a
message; shells show that as 141.)";

// In the order of the help. `answer` is what the program answers unless something goes wrong.
void AddCommands(CLI::App& app, ExitCode& answer)
{
    AddInfoCommand(app);
    AddTableCommands(app);
    AddPanelCommand(app);
    AddJsonCommand(app);
    AddDiffCommand(app, answer);
    AddWriteCommand(app);
}

[[noreturn]] void RaiseUnknown(const std::string& problem, const std::string& typed,
                               const std::vector<std::string>& names)
{
    const std::string suggestion = DidYouMean(typed, names);
    if (suggestion.empty())
        RaiseWrongUsage(problem);
    throw ExitError(ExitCode::WrongUsage, problem + suggestion);
}

[[noreturn]] void RaiseUnknownCommand(const CLI::App& app, const std::string& typed)
{
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    RaiseUnknown(fmt::format("there is no command \"{}\"", Printable(typed)), typed, names);
}

// `place` is the program or one of its commands.
[[noreturn]] void RaiseUnknownOption(const CLI::App& place, const std::string& typed)
{
    std::vector<std::string> names;
    for (const CLI::Option* const option : place.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    const std::string name = typed.substr(0, typed.find('='));
    RaiseUnknown(fmt::format("{} has no option \"{}\"", place.get_name(), Printable(name)), name, names);
}

bool IsOption(const std::string& word)
{
    return word.size() > 1 && word.starts_with('-');
}

// Of several mistakes an unknown word is named first: it may have taken the place of what seems to be missing.
[[noreturn]] void RaiseUsageProblem(const CLI::App& app, const CLI::ParseError& error)
{
    if (const std::vector<std::string> words = app.remaining(); !words.empty())
    {
        if (IsOption(words.front()))
            RaiseUnknownOption(app, words.front());
        RaiseUnknownCommand(app, words.front());
    }
    if (app.get_subcommands().empty())
        RaiseWrongUsage("a command is needed");
    const CLI::App& command = *app.get_subcommands().front();
    const std::vector<std::string> words = command.remaining();
    if (const auto option = std::find_if(words.begin(), words.end(), IsOption); option != words.end())
        RaiseUnknownOption(command, *option);
    RaiseWrongUsage(Printable(error.what()));
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
    ExitCode answer = ExitCode::Done;
    AddCommands(app, answer);
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::Success& success)
    {
        PrintAnswer(app, success);
    }
    catch (const CLI::ParseError& error)
    {
        RaiseUsageProblem(app, error);
    }
    return answer;
}
