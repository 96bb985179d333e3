#include "CommandLine.h"

#include "completion/Completion.h"
#include "convert/ConvertCommand.h"
#include "diff/DiffCommand.h"
#include "edit/EditCommand.h"
#include "features/FeaturesCommand.h"
#include "info/InfoCommand.h"
#include "options/CommonOptions.h"
#include "options/HelpText.h"
#include "output/ExitError.h"
#include "output/NearestName.h"
#include "output/Output.h"
#include "output/Text.h"
#include "panel/PanelCommand.h"
#include "tables/TableCommand.h"
#include "tree/TreeCommand.h"
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
                               "takes a circuit board from its design tool to its manufacturer.";

constexpr const char* kFooter = R"(
Examples:
  jobx info board                    the facts about the board in "board"
  jobx info board --layers           its layers and what they hold
  jobx components board --csv > c.csv
                                     the components as a spreadsheet
  jobx nets board --net GND --pins   which pins are on a net
  jobx panel board --step panel      where the boards lie on a panel
  jobx json board > board.json       everything, for another program
  jobx diff board newer              what differs between two jobs
  jobx convert board -o copy         the job with nothing lost, in copy

A job is a directory; unpack an archive (.tgz, .zip) first. Reading changes
nothing in it, except with --legacy, for write and for info --compact: they
unpack compressed user symbols in place, so a file "features" appears beside
symbols/NAME/features.Z, or is replaced there.

"jobx help COMMAND" explains a command and its columns.

Data goes to standard output; messages and the progress line go to standard
error. On a terminal, messages and differences have colours, unless the
environment variable NO_COLOR is set or --color says otherwise.

Exit codes:
  0  done
  1  diff: the jobs differ
  2  wrong usage, or a step, layer, net or component that the job does not have
  3  the input cannot be read
  4  the output cannot be written
  5  with --strict: the job has errors
  70 an internal error
  71 out of memory

If the reader of the output closes the pipe, as in "jobx json board | head",
jobx ends by the signal SIGPIPE without a message; shells show this as 141.
Ctrl-C ends it by SIGINT, which shells show as 130.)";

// In the order of the help. `answer` is the exit code unless something fails.
void AddCommands(CLI::App& app, ExitCode& answer)
{
    AddInfoCommand(app);
    AddTableCommands(app);
    AddFeaturesCommand(app);
    AddPanelCommand(app);
    AddTreeCommand(app);
    AddJsonCommand(app);
    AddDiffCommand(app, answer);
    AddConvertCommand(app);
    AddEditCommand(app);
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

// The parser's error in our words. Its texts begin with the option's name, which for a flag has no dashes. `place` is
// the program or one of its commands.
std::string ProblemInOurWords(const CLI::App& place, const CLI::ParseError& error)
{
    const std::string text = error.what();
    for (const CLI::Option* const option : place.get_options())
    {
        const std::string name = option->get_name();
        const std::string bareName = name.substr(std::min(name.find_first_not_of('-'), name.size()));
        if (error.get_name() == "RequiredError" && text == name + " is required")
            return name + " is missing";
        for (const CLI::Option* const other : option->get_excludes())
            if (error.get_name() == "ExcludesError" && text == name + " excludes " + other->get_name())
                return fmt::format("{} and {} cannot be combined", name, other->get_name());
        if (error.get_name() != "ArgumentMismatch")
            continue;
        if (text.starts_with(name + ": "))
            return name + (option->count() > 1 ? " may be given only once" : " needs a value");
        if (text.starts_with(bareName + " "))
            return name + " takes no value";
    }
    return "the command line is wrong";
}

// If there are several mistakes, reports an unknown word first: it may be in the place of what seems to be missing.
[[noreturn]] void RaiseUsageProblem(const CLI::App& app, const CLI::ParseError& error)
{
    if (const std::vector<std::string> words = app.remaining(); !words.empty())
    {
        if (IsOption(words.front()))
            RaiseUnknownOption(app, words.front());
        RaiseUnknownCommand(app, words.front());
    }
    if (app.get_subcommands().empty())
        RaiseWrongUsage(error.get_name() == "ArgumentMismatch" ? ProblemInOurWords(app, error) : "a command is needed");
    const CLI::App& command = *app.get_subcommands().front();
    const std::vector<std::string> words = command.remaining();
    if (const auto option = std::find_if(words.begin(), words.end(), IsOption); option != words.end())
        RaiseUnknownOption(command, *option);
    if (!words.empty())
        RaiseWrongUsage(fmt::format("{} does not take the argument \"{}\"", command.get_name(), Printable(words[0])));
    RaiseWrongUsage(ProblemInOurWords(command, error));
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

// Makes "--json=x" an error.
void TakeNoValuesForFlags(CLI::App& place)
{
    for (CLI::Option* const option : place.get_options())
        if (option->get_items_expected_max() == 0)
            option->disable_flag_override();
}

// The option of that name, if it takes the next word as its value.
const CLI::Option* OptionBeforeValue(const CLI::App& command, const std::string& word)
{
    const CLI::Option* const option = IsOption(word) ? command.get_option_no_throw(word) : nullptr;
    return option != nullptr && option->get_items_expected_max() > 0 ? option : nullptr;
}

// The parser would take any next word as the value: "-o --force" would write to a directory "--force".
void RefuseOptionsAsValues(const CLI::App& app, const std::vector<std::string>& words)
{
    const CLI::App* command = nullptr;
    for (std::size_t at = 0; at + 1 < words.size() && words[at] != "--"; ++at)
    {
        if (command == nullptr)
        {
            for (const CLI::App* const each : app.get_subcommands([](const CLI::App*) { return true; }))
                command = each->get_name() == words[at] ? each : command;
            continue;
        }
        const CLI::Option* const option = OptionBeforeValue(*command, words[at]);
        if (option == nullptr)
            continue;
        const std::string& value = words[++at];
        if (value.starts_with("--"))
            throw ExitError(ExitCode::WrongUsage,
                            fmt::format("{0} needs a value; for the value \"{1}\" type {0}={1} (try: jobx {2} --help)",
                                        option->get_name(), Printable(value), command->get_name()));
    }
}

bool HasCommand(const CLI::App& app, const std::string& name)
{
    return !app.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; }).empty();
}

// "help COMMAND" is another way to ask for "COMMAND --help", and "help" for "--help".
void TakeHelpAsOption(const CLI::App& app, std::vector<std::string>& words)
{
    if (words.empty() || words.front() != "help")
        return;
    words.erase(words.begin());
    if (!words.empty() && !IsOption(words.front()) && !HasCommand(app, words.front()))
        RaiseUnknownCommand(app, words.front());
    words.emplace_back("--help");
}

// Runs the command from the command line.
void Parse(CLI::App& app, int argc, const char* const* argv)
{
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    UseColoursAsIn(words);
    TakeHelpAsOption(app, words);
    RefuseOptionsAsValues(app, words);
    try
    {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // the parser takes them from the end
    }
    catch (const CLI::Success& success)
    {
        PrintAnswer(app, success);
    }
    catch (const CLI::ParseError& error)
    {
        RaiseUsageProblem(app, error);
    }
}

// The help to read: the command's, unless a word before it is wrong.
std::string Hint(const CLI::App& app)
{
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const bool isOfCommand = !commands.empty() && app.remaining().empty();
    return fmt::format(" (try: jobx {}--help)", isOfCommand ? commands.front()->get_name() + " " : "");
}
} // namespace

ExitCode RunCommandLine(int argc, const char* const* argv)
{
    CLI::App app(kAbout, "jobx");
    app.formatter(HelpFormatter("", ""));
    app.footer(kFooter);
    app.set_version_flag("--version", "jobx " JOBX_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    ExitCode answer = ExitCode::Done;
    AddCommands(app, answer);
    TakeNoValuesForFlags(app);
    for (CLI::App* const command : app.get_subcommands([](CLI::App*) { return true; }))
        TakeNoValuesForFlags(*command);
    try
    {
        if (argc > 1 && argv[1] == kCompletionWord)
            PrintCompletions(app, {argv + 2, argv + argc});
        else
            Parse(app, argc, argv);
    }
    catch (const UsageError& error)
    {
        throw ExitError(ExitCode::WrongUsage, error.what() + Hint(app));
    }
    return answer;
}
