#include "RunProgram.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#endif

namespace
{
constexpr int kEndedByTheSignal = 141; // 128 and SIGPIPE, as shells show it

// Runs `jobx ARGUMENTS` after the line `before`, with what `streams` redirects into a pipe, descriptor 4, that nobody
// reads from.
ProgramResult RunIntoClosedPipe(const TempDir& directory, const std::string& arguments,
                                const std::string& streams = ">&4", const std::string& before = ":")
{
    const std::string pipe = ShellWord(directory.Path("pipe"));
    return RunShell("rm -f " + pipe + "; mkfifo " + pipe + " || exit 1\nexec 3<>" + pipe + " 4>" + pipe + " 3<&-\n" +
                    before + "\n\"$JOBX\" " + arguments + " " + streams);
}
} // namespace

TEST(JobxClosedPipe, EveryCommandEndsQuietlyByTheSignal)
{
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    for (const std::string& command : std::vector<std::string>{
             "info", "info --json", "info --compact", "nets", "nets --csv", "nets --json", "components",
             "components --csv", "components --json", "packages", "packages --csv", "packages --json", "panel",
             "panel --csv", "panel --json", "json", "diff " + job, "diff --json " + job})
    {
        SCOPED_TRACE(command);
        // The first classic read unpacks a symbol, which complete reading then finds twice.
        const ProgramResult result = RunIntoClosedPipe(directory, command + " --messages none " + job);
        EXPECT_EQ(result.exitCode, kEndedByTheSignal);
        EXPECT_EQ(result.err, "");
    }
}

TEST(JobxClosedPipe, HelpAndVersionDoToo)
{
    const TempDir directory;
    for (const std::string arguments : {"--help", "--version", "write --help"})
    {
        SCOPED_TRACE(arguments);
        const ProgramResult result = RunIntoClosedPipe(directory, arguments);
        EXPECT_EQ(result.exitCode, kEndedByTheSignal);
        EXPECT_EQ(result.err, "");
    }
}

TEST(JobxClosedPipe, AJobIsWrittenAllTheSame)
{
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    const std::string out = directory.MakeDir("out");
    const ProgramResult result = RunIntoClosedPipe(directory, "write --quiet -o " + ShellWord(out) + " " + job);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(directory.Exists("out/blinker/matrix/matrix"));
}

TEST(JobxClosedPipe, TheSignalEndsTheProgramAlsoWhereItWasIgnored)
{
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    const ProgramResult result = RunIntoClosedPipe(directory, "json " + job, ">&4", "trap '' PIPE");
    EXPECT_EQ(result.exitCode, kEndedByTheSignal);
    EXPECT_EQ(result.err, "");
}

TEST(JobxClosedPipe, AReaderMayStopInTheMiddleOfALongDocument)
{
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    const ProgramResult result =
        RunShell("{ \"$JOBX\" json " + job + "; echo $? >" + ShellWord(directory.Path("code")) + "; } | head -c 10");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "{\"result\":");
    EXPECT_EQ(directory.Read("code"), "141\n");
}

TEST(JobxClosedPipe, WarningsIntoAClosedPipeDoNotEndTheProgram)
{
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    directory.Write("blinker/symbols/broken/features.Z", "not compressed");
    const std::string arguments = "nets --csv " + job;
    const ProgramResult result = RunIntoClosedPipe(directory, arguments, "2>&4 >" + ShellWord(directory.Path("out")));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(directory.Read("out"), RunShell("\"$JOBX\" " + arguments).out);
}

#if !defined(_WIN32)
TEST(JobxClosedPipe, WhoStartsTheProgramSeesTheSignal)
{
    const TempDir directory;
    const std::string pipe = ShellWord(directory.Path("pipe"));
    const std::string commandLine = "mkfifo " + pipe + " && exec 3<>" + pipe + " 4>" + pipe + " 3<&- && exec " +
                                    ShellWord(JOBX_PROGRAM) + " --version >&4";
    const int status = std::system(commandLine.c_str());
    ASSERT_TRUE(WIFSIGNALED(status)) << status;
    EXPECT_EQ(WTERMSIG(status), SIGPIPE);
}
#endif
