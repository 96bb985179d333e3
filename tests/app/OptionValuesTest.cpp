// Wrong values of options: one line each, in the program's own words.
#include "RunProgram.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>

namespace
{
const std::vector<std::string> kCommands = {"info", "layers", "nets", "components", "packages", "panel", "features",
                                            "tree", "json",   "diff", "convert",    "edit",     "write"};

struct BadValue
{
    std::string value;
    std::string problem;
};

// What each option with a value refuses; options of all commands.
const std::map<std::string, std::vector<BadValue>>& BadValues()
{
    static const auto kNumber = [](const std::string& text) {
        return BadValue{text, "--max-entries needs a whole number from 1, not \"" + text + "\""};
    };
    static const auto kTolerance = [](const std::string& text) {
        return BadValue{text, "--tolerance needs a number of at least 0, not \"" + text + "\""};
    };
    static const auto kScale = [](const std::string& text) {
        return BadValue{text, "--scale needs a number from 0.000001 to 1000000, not \"" + text + "\""};
    };
    static const BadValue kSteps = {"", "--step needs step names, separated by commas"};
    static const std::map<std::string, std::vector<BadValue>> kBadValues = {
        {"--max-entries",
         {kNumber("-1"), kNumber("0"), kNumber("x"), kNumber(""), kNumber("1.5"), kNumber("99999999999999999999")}},
        {"--tolerance", {kTolerance("-1"), kTolerance("nan"), kTolerance("inf"), kTolerance("1,5"), kTolerance("")}},
        {"--scale",
         {kScale("0"), kScale("-1"), kScale("nan"), kScale("inf"), kScale("1e999"), kScale("0.0000009"),
          kScale("1000001"), kScale("x")}},
        {"--step", {kSteps, {"a,,b", kSteps.problem}}},
        {"--steps", {kSteps, {",", kSteps.problem}}},
        {"--only",
         {{"", "--only needs names of parts, separated by commas"},
          {"nest", "--only knows no part \"nest\"; the parts are: info, matrix, font, symbols, headers, layers, "
                   "components, packages, nets, netlists, files; did you mean \"nets\"?"}}},
        {"--columns", {{"", "--columns needs column names, separated by commas"}}},
        {"--sort", {{"", "--sort needs the name of a column"}, {"-", "--sort needs the name of a column"}}},
        {"--units", {{"cm", "--units needs \"mm\" or \"inch\", not \"cm\""}}},
        {"--side",
         {{"left", "--side needs \"top\" or \"bottom\", not \"left\""},
          {"", "--side needs \"top\" or \"bottom\", not \"\""}}},
        {"convert --layers", // a flag of info
         {{"", "--layers needs layer names, separated by commas"},
          {"a,,b", "--layers needs layer names, separated by commas"}}},
        {"--flatten", {{"", "--flatten needs step names, separated by commas"}}},
        {"--drop-layers", {{"", "--drop-layers needs layer names, separated by commas"}}},
        {"--drop",
         {{"", "--drop needs names of parts, separated by commas"},
          {"nest", "--drop knows no part \"nest\"; the parts are: attributes, components, eda, fonts, netlists, nets, "
                   "notes, others, properties; did you mean \"nets\"?"}}},
        {"--rename-step", {{"a", "--rename-step needs OLD=NEW, not \"a\""}}},
        {"--rename-layer",
         {{"=a", "--rename-layer needs OLD=NEW, not \"=a\""}, {"a=", "--rename-layer needs OLD=NEW, not \"a=\""}}},
        {"--rename-job", {{"", "--rename-job needs a name"}}},
        {"--step-order", {{"", "--step-order needs step names, separated by commas"}}},
        {"--set", {{"x", "the change \"x\" is not possible: it is neither KIND NAME.MEMBER=VALUE nor a deletion"}}},
        {"--script", {{"", "--script needs the name of a file"}}},
        {"--component", {{"", "--component needs a name"}}},
        {"--layer", {{"", "--layer needs a name"}}},
        {"--net", {{"", "--net needs a name"}}},
        {"--symbol", {{"", "--symbol needs a name"}}},
        {"--attribute", {{"", "--attribute needs a name, as in .pad_usage=via"}}},
        {"--near", {{"1,2", "--near needs X,Y,R: three numbers, R at least 0, not \"1,2\""}}},
        {"--color",
         {{"yes", "--color needs \"auto\", \"always\" or \"never\", not \"yes\""},
          {"", "--color needs \"auto\", \"always\" or \"never\", not \"\""}}},
        {"--messages",
         {{"some", "--messages needs \"all\" or \"none\", not \"some\""},
          {"", "--messages needs \"all\" or \"none\", not \"\""}}},
        {"--sysattr", {{"", "--sysattr needs the name of a file"}}},
        {"--output", {{"", "--output needs the name of a directory"}}},
        {"-o", {{"", "--output needs the name of a directory"}}},
        {"--name", {{"", ""}}}, // of write, an empty name is refused later: it names no directory
    };
    return kBadValues;
}

// The options in the command's help; true for those with a value.
std::map<std::string, bool> OptionsOf(const std::string& command)
{
    std::map<std::string, bool> options;
    const std::regex form("  (-[a-z0-9-]+)(?:,(-[a-z0-9-]+))?( [A-Z][A-Z,=]*)?(?: .*)?");
    for (const std::string& line : LinesOf(RunJobx({command, "--help"}).out))
        if (std::smatch match; std::regex_match(line, match, form))
            for (const std::string& name : {match[1].str(), match[2].str()})
                if (!name.empty())
                    options[name] = match[3].matched;
    return options;
}

// The error of a command line that is right but for these words.
std::string ErrorOf(const TempDir& directory, const std::string& command, const std::vector<std::string>& words)
{
    std::vector<std::string> line = {command, directory.Path("job")};
    if (command == "diff")
        line.push_back(directory.Path("job"));
    const bool writes = command == "write" || command == "convert" || command == "edit";
    if (writes && words[0] != "-o" && words[0] != "--output")
        line.insert(line.end(), {"-o", directory.Path("out")});
    if (command == "edit")
        line.insert(line.end(), {"--set", "job.name=x"});
    line.insert(line.end(), words.begin(), words.end());
    const ProgramResult result = RunJobx(line);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    return result.err;
}

std::string Line(const std::string& command, const std::string& problem)
{
    return "jobx: " + problem + " (try: jobx " + command + " --help)\n";
}

bool MayBeRepeated(const std::string& command, const std::string& option)
{
    return command + option == "json--layer" || option == "--set" || option.starts_with("--rename-step") ||
           option.starts_with("--rename-layer");
}

// The name that messages use for an option with several.
std::string MainName(const std::string& option)
{
    if (option == "--steps")
        return "--step";
    if (option == "-h")
        return "--help";
    return option == "-o" ? "--output" : option;
}
} // namespace

TEST(JobxOptionValues, EachWrongOneIsRefusedInOneLine)
{
    const TempDir directory;
    MakeJob(directory, "");
    for (const std::string& command : kCommands)
        for (const auto& [option, hasValue] : OptionsOf(command))
        {
            SCOPED_TRACE(command + " " + option);
            const std::string own = command + ' ' + option;
            const std::string& row = BadValues().contains(own) ? own : option;
            ASSERT_EQ(hasValue, BadValues().contains(row)) << "the table has a row for each option with a value";
            if (!hasValue)
                continue;
            for (const BadValue& bad : BadValues().at(row))
                if (!bad.problem.empty())
                {
                    EXPECT_EQ(ErrorOf(directory, command, {option, bad.value}), Line(command, bad.problem));
                }
        }
    EXPECT_EQ(ErrorOf(directory, "write", {"--name", ""}),
              "jobx: the job's name \"\" cannot name a directory: give another with --name\n");
}

TEST(JobxOptionValues, AMissingValueASecondOneAndOneOfAFlagAreNamed)
{
    const TempDir directory;
    MakeJob(directory, "");
    for (const std::string& command : kCommands)
    {
        const std::map<std::string, bool> options = OptionsOf(command);
        ASSERT_TRUE(options.contains("--help") && options.contains("--quiet"));
        for (const auto& [option, hasValue] : options)
        {
            SCOPED_TRACE(command + " " + option);
            const std::string name = MainName(option);
            if (hasValue)
            {
                EXPECT_EQ(ErrorOf(directory, command, {option}), Line(command, name + " needs a value"));
            }
            if (hasValue && !MayBeRepeated(command, option))
            {
                EXPECT_EQ(ErrorOf(directory, command, {option, "1", option, "1"}),
                          Line(command, name + " may be given only once"));
            }
            else if (!hasValue && option.starts_with("--"))
            {
                EXPECT_EQ(ErrorOf(directory, command, {option + "=x"}), Line(command, name + " takes no value"));
            }
        }
    }
}

TEST(JobxOptionValues, TheNextOptionIsNotTakenAsTheValueUnlessItIsAttached)
{
    const TempDir directory;
    MakeJob(directory, "");
    for (const std::string& command : kCommands)
        for (const auto& [option, hasValue] : OptionsOf(command))
            if (hasValue)
            {
                SCOPED_TRACE(command + " " + option);
                const std::string name = MainName(option);
                EXPECT_EQ(ErrorOf(directory, command, {option, "--quiet"}),
                          Line(command, name + " needs a value; for the value \"--quiet\" type " + name + "=--quiet"));
            }
    const std::string write = "cd " + ShellWord(directory.Path()) + "\n\"$JOBX\" write job --quiet ";
    for (const std::string options :
         {"--output=--force", "-o--force --force", "--name -o -o out", "-o out --name -o --force", "-o out --name=--x"})
        EXPECT_EQ(RunShell(write + options).exitCode, 0) << options;
    EXPECT_TRUE(directory.Exists("--force/job") && directory.Exists("out/-o") && directory.Exists("out/--x"));
}

TEST(JobxOptionValues, MissingAndSurplusArgumentsAreNamed)
{
    const TempDir directory;
    MakeJob(directory, "");
    for (const std::string& command : kCommands)
    {
        SCOPED_TRACE(command);
        EXPECT_EQ(RunJobx({command}).err,
                  Line(command, (command == "diff" ? "A" : "JOB") + std::string(" is missing")));
        EXPECT_EQ(ErrorOf(directory, command, {"--quiet", "more"}),
                  Line(command, command + " does not take the argument \"more\""));
        if (OptionsOf(command).contains("--csv"))
        {
            EXPECT_EQ(ErrorOf(directory, command, {"--json", "--csv"}),
                      Line(command, "--csv and --json cannot be combined"));
        }
    }
    EXPECT_EQ(RunJobx({"--version=x"}).err, "jobx: --version takes no value (try: jobx --help)\n");
    EXPECT_EQ(RunJobx({"diff", "a"}).err, Line("diff", "B is missing"));
    EXPECT_EQ(RunJobx({"write", "a"}).err, Line("write", "--output is missing"));
}

TEST(JobxOptionValues, AllowIncompleteWithoutForceIsAnError)
{
    const TempDir directory;
    MakeJob(directory, "");
    EXPECT_EQ(ErrorOf(directory, "write", {"--allow-incomplete"}), Line("write", "--allow-incomplete needs --force"));
    EXPECT_FALSE(directory.Exists("out"));
}
