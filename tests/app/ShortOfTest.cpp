// What jobx does when the system gives it little memory or few open files.
#include "RunProgram.h"

#include "output/ExitError.h"
#include "reading/InsideJob.h"
#include "support/MemoryChecker.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace fs = std::filesystem;

#if defined(__linux__) && !defined(JOBX_MEMORY_CHECKER)

#include <sys/resource.h>
#include <unistd.h>

namespace
{
// While it lives, this process can open no file.
class NoMoreFiles
{
public:
    NoMoreFiles()
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const int free = ::dup(0);
        ::close(free);
        const ::rlimit none = {static_cast<::rlim_t>(free), m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &m_before); }

private:
    ::rlimit m_before = {};
};
} // namespace

TEST(JobxShortOf, OpenFilesKeepItInTheDirectoryToWhichItCouldNotReturn)
{
    const TempDir directory;
    const fs::path before = fs::current_path();
    std::string line;
    {
        const NoMoreFiles none;
        try
        {
            const InsideJob inside(directory.Path());
        }
        catch (const ExitError& error)
        {
            line = error.what();
        }
    }
    EXPECT_EQ(line, "cannot enter the directory \"" + directory.Path() + "\": Too many open files");
    EXPECT_EQ(fs::current_path(), before);
    fs::current_path(before);
}

TEST(JobxShortOf, MemoryIsAnErrorOfItsOwn)
{
    const TempDir directory;
    std::string features;
    for (int i = 0; i < 300'000; ++i)
        features += "P 1 1 0 P 0 0\n";
    const std::string job = MakeJob(directory, features);
    const std::string write = "\"$JOBX\" write --quiet " + ShellWord(job) + " -o " + ShellWord(directory.Path("out"));
    ASSERT_EQ(RunShell(write).exitCode, 0);
    int outOfMemory = 0;
    for (int kilobytes = 16'000; kilobytes <= 64'000; kilobytes += 4'000)
        for (const std::string& command : {"\"$JOBX\" info " + ShellWord(job), write + " --force"})
        {
            SCOPED_TRACE(kilobytes);
            const ProgramResult result = RunShell("ulimit -v " + std::to_string(kilobytes) + "\n" + command);
            if (result.exitCode == 127 || result.exitCode == 0)
                continue; // too little to load the program, or enough
            EXPECT_EQ(result.exitCode, 71);
            EXPECT_EQ(result.err, "jobx: out of memory\n");
            ++outOfMemory;
        }
    EXPECT_GT(outOfMemory, 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.Path("out")), fs::directory_iterator()), 1);
}

TEST(JobxShortOf, StackIsSaidAtOnce)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string write = "\"$JOBX\" write --quiet " + ShellWord(job) + " -o " + ShellWord(directory.Path("out"));
    const ProgramResult result = RunShell("ulimit -s 255\n" + write);
    EXPECT_EQ(result.exitCode, 71);
    EXPECT_EQ(result.err, "jobx: the stack is limited to less than 256 KB (ulimit -s)\n");
    EXPECT_FALSE(directory.Exists("out"));
    EXPECT_EQ(RunShell("ulimit -s 256\n" + write).exitCode, 0);
}

TEST(JobxShortOf, OpenFilesLeaveNoStagingDirectoryBehind)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    ASSERT_EQ(RunJobx({"info", job}).exitCode, 0); // unpacks a symbol
    int failures = 0;
    for (int files = 4; files <= 16; ++files)
    {
        SCOPED_TRACE(files);
        fs::remove_all(directory.Path("out"));
        directory.Write("out/blinker/steps/former", "former");
        const ProgramResult result =
            RunShell("cd " + ShellWord(directory.Path()) + "\nulimit -n " + std::to_string(files) +
                     "\n\"$JOBX\" write --quiet blinker -o out --force --allow-incomplete");
        std::vector<std::string> entries;
        for (const fs::directory_entry& entry : fs::directory_iterator(directory.Path("out")))
            entries.push_back(entry.path().filename().string());
        EXPECT_THAT(entries, testing::ElementsAre("blinker")) << result.err;
        EXPECT_EQ(directory.Exists("out/blinker/steps/former"), result.exitCode != 0) << result.err;
        EXPECT_THAT(result.exitCode, testing::AnyOf(0, 3, 4, 127)) << result.err;
        failures += result.exitCode == 4 ? 1 : 0;
    }
    EXPECT_GT(failures, 0) << "some limits let the job be read but not written";
}

#endif
