// How the commands read a job completely, or with --legacy as before, and what they say about it.
#include "RunProgram.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
// The contents of every file below a directory.
std::map<std::string, std::string> ContentsBelow(const std::string& directory)
{
    std::map<std::string, std::string> tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            tree[entry.path().string()] = FileBytes(entry.path().string());
    return tree;
}

// A job with one error, one warning and one note for each of the counts.
std::string FaultyJob(const TempDir& directory, int errors, int warnings, int notes)
{
    std::string features = "$0 r10\n";
    for (int i = 0; i < notes; ++i)
        features += "X" + std::to_string(i) + " 1\n";
    for (int i = 0; i < warnings; ++i)
        features += "P 0 0 0 P 0 0;" + std::to_string(i + 50) + "=1\n";
    for (int i = 0; i < errors; ++i)
        features += "L 0 0 1 1 7 P 0\n";
    return MakeJob(directory, features);
}

std::vector<std::string> Arguments(const std::string& command, const std::string& job)
{
    return command == "diff" ? std::vector<std::string>{command, job, job} : std::vector<std::string>{command, job};
}

std::vector<std::string> With(std::vector<std::string> arguments, const std::vector<std::string>& more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}
} // namespace

TEST(CompleteReading, TheSampleHasNoMessagesInAnyCommand)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json", "diff"})
        EXPECT_EQ(RunJobx(With(Arguments(command, job), {"--messages", "all", "--strict"})).err, "") << command;
}

TEST(CompleteReading, TheRealJobsHaveNoErrors)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const std::string job : {"flat_hierarchy", "beagleboneblack"})
    {
        const ProgramResult result = RunJobx({"info", jobs + "/" + job, "--messages", "all", "--strict"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.err, Not(HasSubstr(": error "))) << job;
    }
}

TEST(CompleteReading, NothingIsWrittenIntoTheJobExceptWithLegacy)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const auto before = ContentsBelow(job);
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json", "diff"})
    {
        EXPECT_EQ(RunJobx(Arguments(command, job)).exitCode, 0) << command;
        EXPECT_TRUE(ContentsBelow(job) == before) << command;
    }
    RunLegacy({"info", job});
    EXPECT_EQ(ContentsBelow(job).size(), before.size() + 1);
}

TEST(CompleteReading, PackagesWithATailAndMetricUnitsAreReadAndLegacyLeavesThemOut)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/flat_hierarchy";
    EXPECT_EQ(LinesOf(RunJobx({"packages", job, "--csv"}).out).size(), 29U);
    EXPECT_EQ(LinesOf(RunLegacy({"packages", job, "--csv"}).out).size(), 1U);
}

TEST(CompleteReading, TheTenMostSeriousMessagesComeFirstAndTheOthersAreCounted)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 3, 4, 5);
    const std::string file = "jobx: " + job + "/steps/pcb/layers/top/features:";
    const ProgramResult result = RunJobx({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.err);
    ASSERT_EQ(lines.size(), 11U) << result.err;
    EXPECT_EQ(lines[0], file + "11: error FEA004 No symbol has the number 7.");
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_THAT(lines[i], HasSubstr(i < 3 ? ": error FEA" : i < 7 ? ": warning ATR" : ": note FEA")) << i;
    EXPECT_EQ(lines[10], "jobx: further messages: 2 notes (--messages all prints them)");
}

TEST(CompleteReading, MessagesAllPrintsThemAllAndNoneNone)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 25, 1, 2);
    EXPECT_EQ(LinesOf(RunJobx({"json", job, "--messages", "all"}).err).size(), 28U);
    EXPECT_EQ(RunJobx({"json", job, "--messages", "none"}).err, "");
    EXPECT_EQ(RunJobx({"json", job, "--messages=none", "--strict"}).exitCode, 5);
}

TEST(CompleteReading, ErrorsAreCountedAlikeHoweverManyMessagesArePrinted)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 25, 0, 0);
    for (const std::vector<std::string>& messages :
         {std::vector<std::string>{}, {"--messages", "all"}, {"--messages", "none"}})
        EXPECT_EQ(LinesOf(RunJobx(With({"json", job, "--strict"}, messages)).err).back(),
                  "jobx: \"" + job + "\" has 25 errors (--strict)");
    EXPECT_EQ(LinesOf(RunJobx({"json", job}).err).back(),
              "jobx: further messages: 15 errors (--messages all prints them)");
}

TEST(CompleteReading, QuietLeavesOutNotesAndTheirCount)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 1, 0, 20);
    EXPECT_EQ(LinesOf(RunJobx({"info", job, "--quiet"}).err).size(), 1U);
    EXPECT_EQ(LinesOf(RunJobx({"info", job}).err).size(), 11U);
}

TEST(CompleteReading, TextsOfFilesInMessagesAreMadePrintable)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "# a comment that makes the file a text\nX\x1B[2J\xC2\x9B 1\n");
    const ProgramResult result = RunJobx({"info", job});
    EXPECT_EQ(LinesOf(result.err).size(), 1U);
    EXPECT_THAT(result.err, HasSubstr("note FEA014 The record \"X"));
    EXPECT_THAT(result.err, Not(HasSubstr("\x1B")));
    EXPECT_THAT(result.err, Not(HasSubstr("\xC2\x9B")));
}

TEST(CompleteReading, StrictTurnsAnErrorIntoExitCode5AfterTheOutput)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 2, 0, 0);
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json", "diff"})
    {
        SCOPED_TRACE(command);
        const ProgramResult lenient = RunJobx(Arguments(command, job));
        const ProgramResult strict = RunJobx(With(Arguments(command, job), {"--strict"}));
        EXPECT_EQ(lenient.exitCode, 0);
        EXPECT_EQ(strict.exitCode, 5);
        EXPECT_EQ(strict.out, lenient.out);
        EXPECT_EQ(strict.err, lenient.err + "jobx: \"" + job + "\" has 2 errors (--strict)\n");
    }
}

TEST(CompleteReading, StrictIsContentWithWarningsAndNotes)
{
    const TempDir directory;
    EXPECT_EQ(RunJobx({"info", FaultyJob(directory, 0, 1, 1), "--strict"}).exitCode, 0);
}

TEST(CompleteReading, StrictNeedsCompleteReading)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 1, 0, 0);
    const ProgramResult legacy = RunJobx({"info", job, "--strict", "--legacy"});
    EXPECT_EQ(legacy.exitCode, 2);
    EXPECT_THAT(legacy.err, HasSubstr("--legacy and --strict cannot be combined"));
    EXPECT_EQ(RunJobx({"info", job, "--compact", "--strict"}).exitCode, 2);
    EXPECT_EQ(RunLegacy({"info", job}).exitCode, 0);
    EXPECT_EQ(RunLegacy({"info", job}).err, "");
}

TEST(CompleteReading, DiffSaysWhetherAJobHasErrors)
{
    const TempDir one;
    const TempDir two;
    const std::string faulty = FaultyJob(one, 2, 0, 0);
    const std::string other = FaultyJob(two, 1, 0, 0);
    EXPECT_THAT(RunJobx({"diff", faulty, other}).out,
                EndsWith("\nA has 2 errors, B has 1 error: some of it could not be compared\n"));
    EXPECT_EQ(RunJobx({"diff", faulty, faulty}).out,
              "identical\nA has 2 errors, B has 2 errors: some of it could not be compared\n");
    EXPECT_THAT(RunJobx({"diff", faulty, other, "--json"}).out, HasSubstr("\"errorsInA\":2,\"errorsInB\":1,"));
    EXPECT_EQ(RunLegacy({"diff", faulty, faulty}).out, "identical\n");
    EXPECT_THAT(RunLegacy({"diff", faulty, other, "--json"}).out, Not(HasSubstr("errors")));
}

TEST(CompleteReading, CompressedFilesAreReadLikePlainOnes)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string wanted = RunJobx({"json", job}).out;
    for (const std::string command :
         {"gzip steps/pcb/layers/top/features",
          "gzip steps/pcb/eda/data && mv steps/pcb/eda/data.gz steps/pcb/eda/data.Z",
          "gzip 'steps/pcb/layers/comp_+_top/components'", "gzip steps/pcb/netlists/cadnet/netlist",
          "gzip steps/pcb/profile", "gzip steps/pcb/stephdr", "gzip matrix/matrix", "gzip misc/info",
          "head -c 1000 steps/pcb/layers/bot/features >h && tail -c +1001 steps/pcb/layers/bot/features >t && "
          "gzip h t && cat h.gz t.gz >steps/pcb/layers/bot/features && "
          "rm h.gz t.gz"})
    {
        SCOPED_TRACE(command);
        ASSERT_EQ(RunShell("cd " + ShellWord(job) + " && " + command).exitCode, 0);
        const ProgramResult result = RunJobx({"json", job});
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(result.out == wanted);
    }
}

TEST(CompleteReading, ADamagedGzipFileIsAnError)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string file = job + "/steps/pcb/eda/data";
    ASSERT_EQ(RunShell("gzip -c " + ShellWord(file) + " | head -c 500 >" + ShellWord(file + ".gz") + " && rm " +
                       ShellWord(file))
                  .exitCode,
              0);
    const ProgramResult result = RunJobx({"nets", job, "--strict"});
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_THAT(result.err,
                StartsWith("jobx: " + file + ".gz: error FIL003 The compressed file is damaged or cut short.\n"));
}

TEST(CompleteReading, EachFactHasOneLine)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "$0 r10\nL 0 0 1 1 0 P 0\n");
    fs::rename(job + "/steps/pcb/layers/top", directory.Path("top"));
    fs::create_directory_symlink(directory.Path("top"), job + "/steps/pcb/layers/top");
    const ProgramResult outside = RunJobx({"info", job, "--strict"});
    EXPECT_EQ(outside.exitCode, 5);
    EXPECT_EQ(outside.err, "jobx: warning: cannot follow \"" + job +
                               "/steps/pcb/layers/top\": it leads out of the job (--follow-links follows it)\n"
                               "jobx: \"" +
                               job + "\" has 1 error (--strict)\n");
    fs::remove(job + "/steps/pcb/layers/top");
    EXPECT_EQ(RunJobx({"info", job}).err,
              "jobx: " + job + "/steps/pcb/layers: error MAT003 The layer \"TOP\" has no folder.\n");
    fs::remove_all(job + "/steps/pcb");
    EXPECT_EQ(RunJobx({"info", job}).err, "jobx: " + job + "/steps: error MAT001 The step \"PCB\" has no folder.\n");
}

TEST(CompleteReading, AFileThatIsALinkOutOfTheJobIsNamedWithTheOptionThatFollowsIt)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string path = job + "/steps/pcb/eda/data";
    fs::rename(path, directory.Path("secret"));
    fs::create_symlink(directory.Path("secret"), path);
    const std::string told = RunJobx({"info", job}).err;
    EXPECT_THAT(
        told, StartsWith("jobx: " + path +
                         ": error FIL002 The file is a link that leads out of the job (--follow-links follows it).\n"));
    EXPECT_THAT(told, Not(HasSubstr("cannot follow")));
    EXPECT_EQ(RunJobx({"info", job, "--follow-links"}).err, "");
}

TEST(CompleteReading, WriteAndTheCompactModelReadAsBefore)
{
    const TempDir directory;
    const std::string job = FaultyJob(directory, 1, 1, 1);
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--quiet"}).err, "");
    EXPECT_EQ(RunJobx({"info", job, "--compact"}).err, "");
    EXPECT_EQ(RunJobx({"info", job, "--compact"}).out, RunLegacy({"info", job, "--compact"}).out);
}

TEST(CompleteReading, AMatrixThatIsNotTextIsNamedAsTheReason)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    directory.Write("blinker/matrix/matrix", "PK\x03\x04" + std::string(50, '\x02'));
    const ProgramResult result = RunJobx({"info", job});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "jobx: cannot read \"" + job + "/matrix/matrix\": the file is not text\n");
    directory.Write("blinker/matrix/matrix", "\x1F\x9D\x90\x01");
    EXPECT_EQ(RunJobx({"info", job}).err,
              "jobx: cannot read \"" + job + "/matrix/matrix\": the compressed file is damaged or cut short\n");
}

TEST(CompleteReading, AStepWithoutANameIsReportedOnceAndIsNotAmongTheNames)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    directory.Write("blinker/matrix/matrix", "STEP {\nCOL=3\n}\n" + directory.Read("blinker/matrix/matrix"));
    EXPECT_EQ(RunJobx({"info", job}).err, "jobx: " + job + "/matrix/matrix:1: error MAT012 The step has no name.\n");
    EXPECT_THAT(RunJobx({"info", job, "--step", "x"}).err, HasSubstr("its steps are: PCB, PANEL"));
}

TEST(CompleteReading, ADirectoryThatCannotBeListedIsTheOnlyCauseNamed)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string limited = RunJobx({"info", job, "--max-entries", "1"}).err;
    EXPECT_THAT(limited, HasSubstr("cannot list \"" + job + "/steps\""));
    EXPECT_THAT(limited, Not(HasSubstr("has no directory")));
    fs::rename(job + "/steps/pcb/netlists", directory.Path("netlists"));
    fs::create_directory_symlink(directory.Path("netlists"), job + "/steps/pcb/netlists");
    EXPECT_EQ(RunJobx({"info", job}).err, "jobx: warning: cannot follow \"" + job +
                                              "/steps/pcb/netlists\": it leads out of the job "
                                              "(--follow-links follows it)\n");
}

TEST(CompleteReading, WriteNamesTheStepsThatOnlyTheMatrixHas)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    EXPECT_THAT(RunJobx({"write", job, "--step", "pcb", "-o", directory.Path("out")}).err,
                HasSubstr("jobx: note: the matrix also names the steps that are not written: PANEL\n"));
    EXPECT_THAT(RunJobx({"write", job, "-o", directory.Path("whole")}).err, Not(HasSubstr("also names")));
    EXPECT_THAT(RunJobx({"write", job, "--steps", "pcb,panel", "-o", directory.Path("both")}).err,
                Not(HasSubstr("also names")));
}
