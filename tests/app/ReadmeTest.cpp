#include "FileCounts.h"
#include "RunProgram.h"
#include "support/TestPaths.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

#include <string>

using testing::HasSubstr;

namespace
{
// A command of a session, and what the document shows below it.
struct Shown
{
    std::string command;
    std::string output;
};

std::string Document(const std::string& name)
{
    return FileBytes(std::string(JOBX_SOURCES) + "/" + name);
}

// The commands of a document's console blocks, in order.
std::vector<Shown> CommandsOf(const std::string& document)
{
    std::vector<Shown> commands;
    bool isInside = false;
    for (const std::string& line : LinesOf(document))
    {
        if (line.rfind("```", 0) == 0)
            isInside = line == "```console";
        else if (isInside && line.rfind("$ ", 0) == 0)
            commands.push_back({line.substr(2), ""});
        else if (isInside && !commands.empty())
            commands.back().output += line + "\n";
    }
    return commands;
}

// Runs the document's commands in one shell, in a new directory that holds the samples, with jobx on its path.
void ExpectShownOutput(const std::string& name)
{
    constexpr std::string_view kEnd = "--- end of the command\n";
    const TempDir directory;
    std::filesystem::copy(SamplesDir(), directory.Path("samples"), std::filesystem::copy_options::recursive);
    std::string script = "cd " + ShellWord(directory.Path()) + "\nPATH=$(dirname \"$JOBX\"):$PATH\nexec 2>&1\n";
    const std::vector<Shown> commands = CommandsOf(Document(name));
    ASSERT_FALSE(commands.empty());
    for (const Shown& shown : commands)
        script += shown.command + "\nstatus=$?\nprintf '%s\\n' " + ShellWord(kEnd.substr(0, kEnd.size() - 1)) +
                  "\n(exit $status)\n"; // the next command may ask for the status
    std::string rest = RunShell(script).out;
    std::erase(rest, '\r'); // CSV lines end with CR and LF
    for (const Shown& shown : commands)
    {
        const std::size_t end = rest.find(kEnd);
        ASSERT_NE(end, std::string::npos) << shown.command;
        EXPECT_EQ(rest.substr(0, end), shown.output) << name << ": " << shown.command;
        rest.erase(0, end + kEnd.size());
    }
    EXPECT_EQ(rest, "");
}

// The C++ blocks between a heading of a document and the next one.
std::vector<std::string> CodeBelow(const std::string& document, const std::string& heading)
{
    constexpr std::string_view kOpen = "```cpp\n";
    const std::size_t begin = document.find("\n" + heading + "\n");
    if (begin == std::string::npos)
        return {};
    const std::string section = document.substr(begin, document.find("\n## ", begin + 1) - begin);
    std::vector<std::string> blocks;
    for (std::size_t at = section.find(kOpen); at != std::string::npos; at = section.find(kOpen, at))
    {
        at += kOpen.size();
        const std::size_t end = section.find("```", at);
        blocks.push_back(section.substr(at, end - at));
        at = end + 3;
    }
    return blocks;
}
} // namespace

TEST(Readme, ItsSessionPrintsWhatItShows)
{
    ExpectShownOutput("README.md");
}

TEST(Readme, HasAtMost120Lines)
{
    EXPECT_LE(LinesOf(Document("README.md")).size(), 120U);
}

TEST(Tour, ItsSessionsPrintWhatTheyShow)
{
    ExpectShownOutput("docs/tour.md");
}

TEST(Tour, EachOfSevenQuestionsIsAnsweredByOneCommand)
{
    const std::string tour = Document("docs/tour.md");
    const std::size_t begin = tour.find("\n## Seven questions\n");
    ASSERT_NE(begin, std::string::npos);
    std::vector<std::string> questions;
    std::vector<std::int64_t> commands;
    for (const std::string& line : LinesOf(tour.substr(begin + 1, tour.find("\n## ", begin + 1) - begin)))
        if (line.ends_with('?'))
        {
            questions.push_back(line);
            commands.push_back(0);
        }
        else if (line.starts_with("$ jobx ") && !commands.empty())
            ++commands.back();
    EXPECT_THAT(questions, testing::ElementsAre(HasSubstr("How big"), HasSubstr("layers"), HasSubstr("smallest drill"),
                                                HasSubstr("Where is U1"), HasSubstr("pin 3"),
                                                HasSubstr("on the bottom"), HasSubstr("changed since last week")));
    EXPECT_EQ(commands, std::vector<std::int64_t>(7, 1));
}

TEST(WritingGuide, ItsSessionPrintsWhatItShows)
{
    ExpectShownOutput("docs/writing.md");
}

TEST(Readme, ItsProgramPrintsTheFeaturesOfEveryLayer)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result = RunShell(ShellWord(JOBX_README_EXAMPLE) + " " + ShellWord(job));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(LinesOf(result.out).size(), 24U);
    const std::string file = job + "/steps/pcb/layers/spt/features";
    EXPECT_THAT(result.out, HasSubstr("PCB/spt: " + std::to_string(CountLines(file, "P ")) + " features\n"));
    EXPECT_EQ(result.err, "");
}

TEST(Readme, ItsProgramFailsAndSaysWhyWhenThereIsNoJob)
{
    const TempDir directory;
    const ProgramResult result = RunShell(ShellWord(JOBX_README_EXAMPLE) + " " + ShellWord(directory.Path()));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("There is no ODB Data!"));
}

TEST(WritingGuide, ItsProgramConvertsAndWritesTheJob)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result =
        RunShell(ShellWord(JOBX_WRITING_EXAMPLE) + " " + ShellWord(job) + " " + ShellWord(directory.MakeDir("out")));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(LinesOf(result.out).size(), 24U);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(directory.Read("out/blinker/steps/PCB/profile"), HasSubstr("\nOS 38.100000 25.400000\n"));
}

TEST(WritingGuide, ItsProgramFailsWhenTheJobCannotBeWritten)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string nowhere = directory.Path("nowhere/out");
    const ProgramResult result =
        RunShell(ShellWord(JOBX_WRITING_EXAMPLE) + " " + ShellWord(job) + " " + ShellWord(nowhere));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, HasSubstr("cannot make directory " + nowhere));
}

TEST(Cookbook, PrintsWhatIsExpectedOfTheSample)
{
    const TempDir directory;
    const ProgramResult result =
        RunShell(ShellWord(JOBX_COOKBOOK) + " " + ShellWord(CopySample(directory)) + " pcb RST U1");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, Document("examples/cookbook/expected.txt"));
    EXPECT_EQ(result.err, "");
}

TEST(Cookbook, CountsNoSlotsAsHolesAndPrintsNoSpanThatTheMatrixDoesNotName)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result = RunShell("cd " + ShellWord(job) + R"(
        echo 'L 0.1 0.1 0.2 0.1 0 P 0' >> steps/pcb/layers/drill/features
        sed -i '/START_NAME=/d; /END_NAME=/d' matrix/matrix
        )" + ShellWord(JOBX_COOKBOOK) + " . pcb RST U1");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\nDRILL\n  r40: 4 holes\n"));
}

TEST(Cookbook, FailsForANetOrComponentThatDoesNotExist)
{
    const TempDir directory;
    const std::string command = ShellWord(JOBX_COOKBOOK) + " " + ShellWord(CopySample(directory));
    for (const char* const names : {" pcb NONE U1", " pcb RST U99", " back RST U1"})
        EXPECT_EQ(RunShell(command + names).exitCode, 2) << names;
}

TEST(Cookbook, TheGuideShowsTheProgramsFunctions)
{
    const std::string program = Document("examples/cookbook/main.cpp");
    const std::vector<std::string> blocks = CodeBelow(Document("docs/hosts.md"), "## Cookbook");
    EXPECT_EQ(blocks.size(), 5U);
    for (const std::string& block : blocks)
        EXPECT_THAT(program, HasSubstr("\n" + block));
}

TEST(NetReport, PrintsPinsViasAndFeaturesOfANetOfTheSample)
{
    const TempDir directory;
    const ProgramResult result = RunShell(ShellWord(JOBX_NET_REPORT) + " " + ShellWord(CopySample(directory)) + " RST");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, Document("examples/net_report/expected.txt"));
    EXPECT_EQ(result.err, "");
}

TEST(NetReport, PrintsWhatIsWrongWithTheJob)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result =
        RunShell("cd " + ShellWord(job) + " && echo 'P 1 2' >> steps/pcb/layers/top/features; " +
                 ShellWord(JOBX_NET_REPORT) + " . RST");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, HasSubstr("steps/pcb/layers/top/features:"));
    EXPECT_THAT(result.err, HasSubstr(": error FEA001 "));
}

TEST(NetReport, IsShortAndTheGuideShowsItsLines)
{
    const std::string program = Document("examples/net_report/main.cpp");
    EXPECT_LE(std::count(program.begin(), program.end(), '\n'), 60);
    const std::vector<std::string> blocks = CodeBelow(Document("docs/hosts.md"), "## Reading completely");
    EXPECT_EQ(blocks.size(), 2U);
    for (const std::string& block : blocks)
        EXPECT_THAT(program, HasSubstr("\n" + block));
}
