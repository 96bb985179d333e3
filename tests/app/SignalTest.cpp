// What a signal leaves behind while a job is being written.
#include "RunProgram.h"

#include "support/MemoryChecker.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

#if defined(JOBX_SIGNAL_SENDER) && !defined(JOBX_MEMORY_CHECKER)

namespace
{
constexpr int kCannotBeCaught[] = {SIGKILL, SIGSTOP};
constexpr int kCrashes[] = {SIGILL, SIGTRAP, SIGABRT, SIGBUS, SIGFPE, SIGSEGV, SIGSYS};
constexpr int kEndNothing[] = {SIGCHLD, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU, SIGURG, SIGWINCH};
constexpr int kIgnoredByJobx[] = {SIGPIPE, SIGXFSZ}; // they become errors of writing

template <class Signals>
bool IsIn(int signal, const Signals& signals)
{
    return std::find(std::begin(signals), std::end(signals), signal) != std::end(signals);
}

// The C library keeps a few signals between the named ones and SIGRTMIN for itself.
std::vector<int> SignalsThatEndAProcess()
{
    std::vector<int> signals;
    for (int signal = 1; signal <= SIGRTMAX; ++signal)
        if ((signal < 32 || signal >= SIGRTMIN) && !IsIn(signal, kCannotBeCaught) && !IsIn(signal, kCrashes) &&
            !IsIn(signal, kEndNothing) && !IsIn(signal, kIgnoredByJobx))
            signals.push_back(signal);
    return signals;
}

// Writes the sample over a former job, and sends the signal meanwhile.
ProgramResult WriteOverFormer(const TempDir& directory, const std::string& job, int signal, const std::string& before)
{
    fs::remove_all(directory.Path("out"));
    directory.Write("out/blinker/steps/former", "former");
    return RunShell("ulimit -c 0\n" + before + "\nLD_PRELOAD=" + ShellWord(JOBX_SIGNAL_SENDER) +
                    " JOBX_SIGNAL=" + std::to_string(signal) + " \"$JOBX\" write --quiet --force " + ShellWord(job) +
                    " -o " + ShellWord(directory.Path("out")));
}

void ExpectOnlyTheJobIn(const std::string& directory)
{
    std::vector<std::string> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        entries.push_back(entry.path().filename().string());
    EXPECT_THAT(entries, testing::ElementsAre("blinker"));
}
} // namespace

TEST(JobxWriteEnds, ByEverySignalThatEndsAProcessAndLeavesTheFormerJobAlone)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::vector<int> signals = SignalsThatEndAProcess();
    EXPECT_GE(signals.size(), 14U);
    for (const int signal : signals)
    {
        SCOPED_TRACE(signal);
        const ProgramResult result = WriteOverFormer(directory, job, signal, "");
        EXPECT_EQ(result.exitCode, 128 + signal);
        ExpectOnlyTheJobIn(directory.Path("out"));
        EXPECT_TRUE(directory.Exists("out/blinker/steps/former"));
    }
}

TEST(JobxWriteEnds, NotByASignalThatIsIgnored)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    for (const int signal : {SIGPIPE, SIGXFSZ, SIGHUP, SIGALRM})
    {
        SCOPED_TRACE(signal);
        const ProgramResult result = WriteOverFormer(directory, job, signal, "trap '' HUP ALRM");
        EXPECT_EQ(result.exitCode, 0) << result.err;
        ExpectOnlyTheJobIn(directory.Path("out"));
        EXPECT_FALSE(directory.Exists("out/blinker/steps/former"));
    }
}

#endif
