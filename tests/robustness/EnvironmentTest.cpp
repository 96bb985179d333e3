// The same job under other surroundings: locales, names, threads, changing files.
#include "JOBXCLSDLL.h"
#include "robustness/FailingCalls.h"
#include "robustness/SampleJob.h"
#include "robustness/Threads.h"
#include "support/CommaLocale.h"
#include "support/CurrentDir.h"
#include "support/Golden.h"
#include "support/MemoryChecker.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <fstream>
#include <functional>
#include <pthread.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{
// What the library writes of the job at `path`, in a new directory of that name; the written job's directory.
std::string Rewritten(const TempDir& dir, const std::string& path, const std::string& name)
{
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(path.c_str()), 1);
    job.SetODBProjectName("job");
    job.WriteODBData(dir.MakeDir(name).c_str(), 1);
    return dir.Path(name) + "/job";
}

// Another locale for all of C while it lives; false when the machine does not have it.
class OtherLocale
{
public:
    explicit OtherLocale(const char* name)
        : m_before(std::setlocale(LC_ALL, nullptr)), m_isActive(std::setlocale(LC_ALL, name) != nullptr)
    {
    }
    ~OtherLocale() { std::setlocale(LC_ALL, m_before.c_str()); }
    OtherLocale(const OtherLocale&) = delete;
    OtherLocale& operator=(const OtherLocale&) = delete;
    bool IsActive() const { return m_isActive; }

private:
    std::string m_before;
    bool m_isActive;
};

int CountRead(const std::string& path)
{
    CJOBX job;
    job.ParseODBOfMFC(path.c_str());
    return static_cast<int>(job.m_pSteps->m_arrSteps.GetSize());
}

constexpr int kNotHere = 77; // the exit code of a child process that cannot be brought into the state to be tested

// Runs `work` in a copy of this process; the exit code it answers, or 128 and the signal that ended the copy.
int InChild(const std::function<int()>& work)
{
    const ::pid_t child = ::fork();
    if (child == 0)
    {
        ::alarm(120);
        int exitCode = 1;
        try
        {
            exitCode = work();
        }
        catch (...) // else the copy would go on with the tests that follow
        {
        }
        ::_exit(exitCode);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool CanStartAThread()
{
    try
    {
        std::thread([] {}).join();
        return true;
    }
    catch (const std::system_error&)
    {
        return false;
    }
}

// Takes every right to start threads from this process: they count for a user who is not the administrator.
bool RefuseThreads()
{
    constexpr ::uid_t kNobody = 65534;
    const ::rlimit none = {0, 0};
    return ::setrlimit(RLIMIT_NPROC, &none) == 0 && (::getuid() != 0 || ::setuid(kNobody) == 0) && !CanStartAThread();
}

// Leaves this process address space for less than one thread's stack. The stacks are larger than those of ended threads,
// which the C library keeps for later ones.
bool RefuseStacks()
{
    constexpr std::size_t stack = std::size_t{64} * 1024 * 1024;
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    ::pthread_attr_t attributes;
    if (::pthread_getattr_default_np(&attributes) != 0 || ::pthread_attr_setstacksize(&attributes, stack) != 0 ||
        ::pthread_setattr_default_np(&attributes) != 0)
        return false;
    const ::rlim_t room = pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + stack - stack / 8;
    const ::rlimit limit = {room, room};
    return ::setrlimit(RLIMIT_AS, &limit) == 0 && !CanStartAThread();
}

// Brought into that state, a process that wants eight threads reads and writes the job as others do.
void ExpectSameJobWhere(bool (*threadsAreRefused)())
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    CountRead(job); // decompresses the symbol
    const std::string wanted = Rewritten(dir, job, "wanted");
    fs::permissions(dir.Path(), fs::perms::all);
    fs::permissions(dir.MakeDir("refused"), fs::perms::all);
    const int exitCode = InChild(
        [&]
        {
            const Threads threads(8);
            if (!threadsAreRefused())
                return kNotHere;
            Rewritten(dir, job, "refused");
            return testing::Test::HasFailure() ? 1 : 0;
        });
    if (exitCode == kNotHere)
        GTEST_SKIP() << "threads cannot be refused on this machine";
    EXPECT_EQ(exitCode, 0);
    ExpectSameFolder(dir.Path("refused/job"), wanted);
}

std::ptrdiff_t CountThreads()
{
    return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}
} // namespace

TEST(Environment, ADecimalCommaChangesNothing)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    const std::string wanted = Rewritten(dir, job, "wanted");
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    ExpectSameFolder(Rewritten(dir, job, "comma"), wanted);
}

TEST(Environment, EncodingsOfSeveralBytesChangeNothing)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    dir.Write("blinker/misc/info", "JOB_NAME=\xC3\xA4\x83\x5C\xFF\n"); // of no encoding
    const std::string wanted = Rewritten(dir, job, "wanted");
    int active = 0;
    for (const char* const name : {"C.UTF-8", "ja_JP.SJIS", "ja_JP.eucJP", "zh_CN.GBK", "zh_TW.BIG5"})
    {
        const OtherLocale locale(name);
        if (!locale.IsActive())
            continue;
        ExpectSameFolder(Rewritten(dir, job, name), wanted);
        ++active;
    }
    if (active == 0)
        GTEST_SKIP() << "no locale with an encoding of several bytes on this machine";
}

TEST(Environment, AnyNumberOfThreadsGivesTheSameJob)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    CountRead(job); // decompresses the symbol
    std::string wanted;
    {
        const Threads one(1);
        wanted = Rewritten(dir, job, "1");
    }
    for (const int count : {2, 3, 32, 100'000})
    {
        const Threads threads(count);
        ExpectSameFolder(Rewritten(dir, job, std::to_string(count)), wanted);
    }
}

TEST(Environment, HostThreadsReadJobsAtOnce)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    CountRead(job);
    const std::string wanted = Rewritten(dir, job, "wanted");
    std::vector<std::thread> hosts;
    for (int i = 0; i < 2; ++i)
        hosts.emplace_back(
            [&, i]
            {
                const Threads threads(4);
                Rewritten(dir, job, "host" + std::to_string(i));
            });
    for (std::thread& host : hosts)
        host.join();
    ExpectSameFolder(dir.Path("host0/job"), wanted);
    ExpectSameFolder(dir.Path("host1/job"), wanted);
}

TEST(Environment, AJobIsReadAndWrittenWhereTheUserMayStartNoThread)
{
    ExpectSameJobWhere(RefuseThreads);
}

TEST(Environment, AJobIsReadAndWrittenWhereNoThreadsStackFits)
{
#if defined(JOBX_MEMORY_CHECKER)
    GTEST_SKIP() << "the checks of this build need address space of their own";
#endif
    ExpectSameJobWhere(RefuseStacks);
}

TEST(Environment, NoThreadIsLeftAfterReadingAndWriting)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    const std::ptrdiff_t before = CountThreads();
    const Threads threads(8);
    Rewritten(dir, job, "out");
    EXPECT_EQ(CountThreads(), before);
}

TEST(Environment, AChildProcessReadsAndWritesAfterItsParentDid)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    const Threads threads(4);
    CountRead(job);
    const std::string wanted = Rewritten(dir, job, "wanted");
    const int exitCode = InChild(
        [&]
        {
            Rewritten(dir, job, "child");
            return testing::Test::HasFailure() ? 1 : 0;
        });
    EXPECT_EQ(exitCode, 0);
    ExpectSameFolder(dir.Path("child/job"), wanted);
}

// The root takes a font from the current directory, whatever job is read.
TEST(Environment, AFileNamedStandardInTheCurrentDirectoryDoesNotDisturbTheJob)
{
    const TempDir dir;
    const std::string job = CopySample(dir);
    for (const char* const content : {"", "CHAR A\nLINE 0 0 1 1 P R 0.1\nECHAR\n", "\xFF\xFE no font at all"})
    {
        dir.Write("here/standard", content);
        const CurrentDir current(dir.Path("here"));
        EXPECT_EQ(CountRead(job), 2);
    }
    dir.MakeDir("there/standard");
    const CurrentDir current(dir.Path("there"));
    EXPECT_EQ(CountRead(job), 2);
}

TEST(Environment, NamesOfAnyBytesAreReadAndWritten)
{
    for (const std::string name :
         {"a blank", "\"quoted\"", "it's", "100%s%n%d", "\xFF\xFE\x80", "\xC3\xA4", "$HOME", "a;b", "-rf", "*?"})
    {
        SCOPED_TRACE(name);
        const TempDir dir;
        const std::string step = name + "/steps/" + name + "/";
        dir.Write(name + "/matrix/matrix", "STEP {\n    COL=1\n    NAME=" + name + "\n}\n");
        dir.Write(step + "profile", "");
        dir.Write(step + "layers/" + name + "/features", "P 0 0 0 P 0 0\n");
        dir.Write(step + "layers/" + name + " 2/components", "# CMP 0\nCMP 0 0 0 0 N U1 part\n");
        dir.Write(name + "/symbols/" + name + "/features", "P 0 0 0 P 0 0\n");
        CJOBX job;
        ASSERT_EQ(job.ParseODBOfMFC(dir.Path(name).c_str()), 1);
        ASSERT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 1);
        const CJOBXstepObj& read = *job.m_pSteps->m_arrSteps.GetAt(0);
        EXPECT_EQ(read.m_sName, name.c_str());
        EXPECT_EQ(read.m_arrLayers.GetSize(), 1);
        EXPECT_EQ(read.m_arrComponents.GetSize(), 1);
        EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 1);
        dir.MakeDir("out");
        job.WriteODBData(dir.Path("out").c_str(), 1);
        EXPECT_TRUE(dir.Exists("out/" + step + "layers/" + name + "/features"));
        EXPECT_TRUE(dir.Exists("out/" + step + "layers/" + name + " 2/components"));
    }
}

// At every call that the library makes, somebody else empties or removes the whole job.
TEST(Environment, FilesThatShrinkOrVanishMeanwhileDoNoHarm)
{
    const Threads threads(1);
    const JobxMessageBoxHandler before = SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
    const TempDir dir;
    const std::string job = MakeSmallJob(dir);
    fs::copy(job, dir.Path("kept"), fs::copy_options::recursive);
    CountRead(job);
    long count = 0;
    {
        const FailingCalls counting(FailingCalls::kNone);
        CountRead(job);
        count = static_cast<long>(counting.Made().size());
    }
    ASSERT_GT(count, 100);
    const auto shrink = [&]
    {
        for (const auto& entry : fs::recursive_directory_iterator(job))
            if (entry.is_regular_file())
                fs::resize_file(entry.path(), entry.file_size() / 2);
    };
    const auto vanish = [&] { fs::remove_all(job); };
    for (const std::function<void()>& change : {std::function<void()>(shrink), std::function<void()>(vanish)})
        for (long number = 0; number < count; number += kIsSlowBuild ? 7 : 1)
        {
            fs::remove_all(job);
            fs::copy(dir.Path("kept"), job, fs::copy_options::recursive);
            const FailingCalls meanwhile(number, change);
            EXPECT_LE(CountRead(job), 1);
        }
    SetMessageBoxHandler(before);
}
