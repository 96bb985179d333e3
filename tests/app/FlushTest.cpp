#include "RunProgram.h"

#include "support/MemoryChecker.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

#if defined(JOBX_FLUSH_RECORDER) && !defined(JOBX_MEMORY_CHECKER)

namespace
{
// Writes the sample over a former job, with the recorder loaded.
ProgramResult Write(const TempDir& directory, const std::string& failing)
{
    directory.Write("out/blinker/steps/former", "former");
    return RunShell("JOBX_FLUSHES=" + ShellWord(directory.Path("flushes")) + " JOBX_FLUSH_FAILS=" + ShellWord(failing) +
                    " LD_PRELOAD=" + ShellWord(JOBX_FLUSH_RECORDER) + " \"$JOBX\" write --quiet --force -o " +
                    ShellWord(directory.Path("out")) + " " + ShellWord(CopySample(directory)));
}
} // namespace

TEST(JobxWriteFlushes, EveryFileAndDirectoryBeforeTheExchangeAndTheOutputDirectoryAfterIt)
{
    const TempDir directory;
    const ProgramResult result = Write(directory, "/none");
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<std::string> lines = LinesOf(FileBytes(directory.Path("flushes")));
    const auto exchange = std::find(lines.begin(), lines.end(), "exchange " + directory.Path("out/blinker"));
    ASSERT_NE(exchange, lines.end());
    std::vector<std::string> flushed;
    for (auto line = lines.begin(); line != exchange; ++line)
        flushed.push_back(line->substr(line->find("/new/blinker") + std::string("/new/").size()));
    std::vector<std::string> wanted = {"blinker"};
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory.Path("out/blinker")))
        wanted.push_back(entry.path().string().substr(directory.Path("out/").size()));
    EXPECT_THAT(flushed, testing::UnorderedElementsAreArray(wanted));
    EXPECT_EQ(std::vector<std::string>(exchange + 1, lines.end()),
              std::vector<std::string>{"flush " + directory.Path("out")});
}

TEST(JobxWriteFlushes, AFailureIsAnErrorAndTheFormerJobStays)
{
    for (const std::string failing : {"/matrix/matrix", "/steps/PCB/layers", "/new/blinker"})
    {
        SCOPED_TRACE(failing);
        const TempDir directory;
        const ProgramResult result = Write(directory, failing);
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_THAT(result.err, testing::MatchesRegex("jobx: cannot flush [^\n]*: Input/output error\n"));
        EXPECT_THAT(result.err, testing::HasSubstr(failing + "\""));
        EXPECT_TRUE(directory.Exists("out/blinker/steps/former"));
        EXPECT_EQ(std::distance(fs::directory_iterator(directory.Path("out")), fs::directory_iterator()), 1);
    }
}

TEST(JobxWriteFlushes, AFailureOfTheOutputDirectoryIsAWarningBecauseTheJobIsInItsPlace)
{
    const TempDir directory;
    const ProgramResult result = Write(directory, "/out");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "jobx: warning: cannot flush \"" + directory.Path("out") +
                              "\": Input/output error; the job is in its place, but a power failure could still undo "
                              "that\n");
    EXPECT_FALSE(directory.Exists("out/blinker/steps/former"));
    EXPECT_TRUE(directory.Exists("out/blinker/steps/PCB/layers/top/features"));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.Path("out")), fs::directory_iterator()), 1);
}

#endif

#if defined(__linux__)

// It cannot be opened to be flushed, which must be known before the exchange.
TEST(JobxWriteFlushes, AnOutputDirectoryThatCannotBeReadKeepsTheFormerJob)
{
    const TempDir directory;
    fs::permissions(directory.Path(), fs::perms::all);
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.Write("out/job/steps/former", "former");
    const bool isRoot = RunShell("test \"$(id -u)\" = 0").exitCode == 0;
    const std::string run =
        (isRoot ? std::string("setpriv --reuid=65534 --regid=65534 --clear-groups ") : std::string()) + "\"$JOBX\" ";
    const std::string out = ShellWord(directory.Path("out"));
    if (RunShell("chmod -R a+rwX " + out + " && " + run + "info " + ShellWord(job) + " && chmod a=wx " + out)
            .exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not read everything";
    const ProgramResult result = RunShell(run + "write --quiet --force -o " + out + " " + ShellWord(job));
    RunShell("chmod a+rwx " + out);
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.err, "jobx: cannot flush \"" + directory.Path("out") + "\": Permission denied\n");
    EXPECT_TRUE(directory.Exists("out/job/steps/former"));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.Path("out")), fs::directory_iterator()), 1);
}

// The loader takes an empty entry for the current directory.
TEST(JobxProgram, ItsLibraryPathHasNoEmptyEntryAndLeadsToTheLibrary)
{
    const ProgramResult result = RunShell("readelf -d \"$JOBX\"");
    if (result.exitCode != 0)
        GTEST_SKIP() << "readelf is missing";
    bool hasPath = false;
    for (const std::string& line : LinesOf(result.out))
    {
        const std::size_t from = line.find("path: [");
        if (from == std::string::npos)
            continue;
        hasPath = true;
        const std::string path = line.substr(from + 7, line.rfind(']') - from - 7);
        EXPECT_NE(path, "");
        EXPECT_EQ((":" + path + ":").find("::"), std::string::npos) << path;
    }
    EXPECT_TRUE(hasPath) << "the build tree's program finds its library by its library path";
    const TempDir directory;
    EXPECT_EQ(RunShell("cd " + ShellWord(directory.Path()) + "\n\"$JOBX\" --version").exitCode, 0);
}

#endif
