// Every call to the file system fails in turn: what is told, what is kept, what is left behind.
#include "JOBXCLSDLL.h"
#include "foundation/CTextWriter.h"
#include "foundation/corekit/CReplacingFile.h"
#include "output/ExitError.h"
#include "robustness/FailingCalls.h"
#include "robustness/SampleJob.h"
#include "robustness/Threads.h"
#include "support/CurrentDir.h"
#include "support/FailingAllocation.h"
#include "support/Golden.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"
#include "write/WriteCommand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>

namespace fs = std::filesystem;

namespace
{
// Counts diagnostics and keeps nothing of them, so that no block of theirs is taken for a lost one.
class CountingSink : public CKDiagnosticSink
{
public:
    CountingSink() : m_before(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}
    ~CountingSink() override { CKUtility::GetInstance()->SetDiagnosticSink(m_before); }
    void OnDiagnostic(const CKDiagnostic& diagnostic) override
    {
        ++count;
        whole = whole && diagnostic.systemError != 0 && !diagnostic.operation.IsEmpty() && !diagnostic.path.IsEmpty();
    }
    int count = 0;
    bool whole = true; // each names operation, path and reason

private:
    CKDiagnosticSink* m_before;
};

class NoMessageBoxes
{
public:
    NoMessageBoxes() : m_before(SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; })) {}
    ~NoMessageBoxes() { SetMessageBoxHandler(m_before); }
    NoMessageBoxes(const NoMessageBoxes&) = delete;
    NoMessageBoxes& operator=(const NoMessageBoxes&) = delete;

private:
    JobxMessageBoxHandler m_before;
};

void Read(const CString& path)
{
    CJOBX job;
    job.ParseODBOfMFC(path);
}

// What the library writes of the job at `path`, below a new directory.
std::string Rewritten(const CString& path, const TempDir& dir, const std::string& name)
{
    CJOBX job;
    job.ParseODBOfMFC(path);
    job.WriteODBData(dir.MakeDir(name).c_str(), 1);
    return dir.Path(name);
}

template <class Work>
std::vector<std::string> CallsOf(Work work, CallFault always = CallFault::None)
{
    const FailingCalls counting(always);
    work();
    return counting.Made();
}

// Lets each call of `work` fail once, with `prepare` run before; `check` is given the call's name and how many
// diagnostics there were. Answers the names that failed.
template <class Prepare, class Work, class Check>
std::multiset<std::string> FailEachCall(int error, Prepare prepare, Work work, Check check,
                                        CallFault always = CallFault::None)
{
    prepare();
    work(); // whatever is made once only
    prepare();
    const auto count = static_cast<long>(CallsOf(work, always).size());
    std::multiset<std::string> names;
    for (long number = 0; number < count; ++number)
    {
        prepare();
        CountingSink sink;
        std::string failed;
        const long live = FailingAllocation::LiveBlocks();
        {
            const FailingCalls failing(number, error, always);
            work();
            failed = failing.Failed(); // short: takes no block
        }
        EXPECT_EQ(FailingAllocation::LiveBlocks() - live, 0) << number << " " << failed;
        SCOPED_TRACE("call " + std::to_string(number) + ", " + failed);
        EXPECT_FALSE(failed.empty());
        EXPECT_TRUE(sink.whole);
        check(failed, sink.count);
        names.insert(failed);
    }
    return names;
}

std::size_t EntriesOf(const fs::path& path)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(path), fs::directory_iterator()));
}
} // namespace

TEST(FileSystemFaults, ReadingTellsOfEveryCallThatFailsAndGoesOn)
{
    const Threads threads(1);
    const NoMessageBoxes silence;
    const TempDir dir;
    const CString job = MakeSmallJob(dir).c_str();
    for (const int error : {EIO, EACCES, ENOMEM, EMFILE})
    {
        const std::multiset<std::string> failed = FailEachCall(
            error, [] {}, [&] { Read(job); },
            [](const std::string& name, int told)
            {
                EXPECT_EQ(told > 0, name != "close"); // of a file that was read: nothing is lost
            });
        for (const char* const name : {"open", "fstat", "read", "close", "fstatat", "opendir", "readdir"})
            EXPECT_TRUE(failed.contains(name)) << name;
    }
}

TEST(FileSystemFaults, ReadingInSeveralThreadsTellsOfEveryCallThatFails)
{
    const Threads threads(4);
    const NoMessageBoxes silence;
    const TempDir dir;
    const CString job = CopySample(dir).c_str();
    const auto count = static_cast<long>(CallsOf([&] { Read(job); }).size());
    for (long number = 0; number < count; number += kIsSlowBuild ? 11 : 1)
    {
        const CountingSink sink;
        const FailingCalls failing(number);
        Read(job);
        EXPECT_EQ(sink.count > 0, failing.Failed() != "close") << number << " " << failing.Failed();
    }
}

TEST(FileSystemFaults, AnEntryThatIsNotThereAnyMoreIsNoFailure)
{
    const Threads threads(1);
    const NoMessageBoxes silence;
    const TempDir dir;
    const CString job = MakeSmallJob(dir).c_str();
    FailEachCall(
        ENOENT, [] {}, [&] { Read(job); },
        [](const std::string& name, int told)
        {
            const bool asksForAnEntry = name == "fstatat";
            EXPECT_TRUE(!asksForAnEntry || told == 0);
        });
}

TEST(FileSystemFaults, InterruptedAndShortReadsGiveTheWholeFiles)
{
    const TempDir dir;
    const CString job = MakeSmallJob(dir).c_str();
    const std::string wanted = Rewritten(job, dir, "wanted"); // the compressed symbol has its file from now on
    CountingSink before;
    ExpectSameFolder(Rewritten(job, dir, "again"), wanted);
    for (const CallFault fault : {CallFault::Interrupted, CallFault::Short})
    {
        const CountingSink sink;
        const FailingCalls failing(fault);
        const std::string name = fault == CallFault::Short ? "short" : "interrupted";
        ExpectSameFolder(Rewritten(job, dir, name), wanted);
        EXPECT_EQ(sink.count, before.count); // symbols that are named by paths are not written
    }
}

TEST(FileSystemFaults, WritingTellsOfEveryCallThatFails)
{
    const TempDir dir;
    dir.Write("standard", "");
    const CurrentDir current(dir.Path());
    CJOBX job;
    const std::string path = MakeSmallJob(dir);
    job.ParseODBOfMFC(path.c_str());
    job.m_sName = "written";
    const CString directory = dir.MakeDir("out").c_str();
    const auto oldTree = [&]
    {
        fs::remove_all(dir.Path("out/written"));
        job.WriteODBData(directory, 1);
    };
    const std::multiset<std::string> failed = FailEachCall(
        EIO, oldTree, [&] { job.WriteODBData(directory, 1); },
        [](const std::string& /*name*/, int told) { EXPECT_GT(told, 0); });
    for (const char* const name : {"fopen", "fwrite", "fclose", "mkdir", "fstatat", "openat", "readdir", "unlinkat"})
        EXPECT_TRUE(failed.contains(name)) << name;
}

TEST(FileSystemFaults, DecompressingKeepsTheOldFileUnlessItSucceeds)
{
    const TempDir dir;
    const CString compressed = dir.Path("features.Z").c_str();
    const CKUtility* const files = CKUtility::GetInstance();
    fs::copy(SamplesDir() + "/blinker/symbols/mount_ring/features.Z", dir.Path("features.Z"));
    ASSERT_EQ(files->GDecompress(compressed), 1);
    const std::string fresh = dir.Read("features");
    int result = 0;
    const std::multiset<std::string> failed = FailEachCall(
        ENOSPC, [&] { dir.Write("features", "old"); }, [&] { result = files->GDecompress(compressed); },
        [&](const std::string& name, int told)
        {
            EXPECT_EQ(result, name == "close" ? 1 : 0);
            EXPECT_EQ(told, 1 - result);
            EXPECT_EQ(dir.Read("features"), result == 1 ? fresh : "old");
            EXPECT_EQ(EntriesOf(dir.Path()), 2U) << "something was left behind";
        });
    for (const char* const name : {"open", "fstat", "read", "fopen", "fwrite", "fclose", "rename"})
        EXPECT_TRUE(failed.contains(name)) << name;
}

TEST(FileSystemFaults, DeletingADirectoryTellsOfEveryCallThatFailsAndFollowsNothing)
{
    const TempDir dir;
    const CString tree = dir.Path("tree").c_str();
    dir.Write("kept", "kept");
    const auto make = [&]
    {
        fs::remove_all(dir.Path("tree"));
        dir.Write("tree/a/b/file", "x");
        dir.Write("tree/c", "x");
        fs::create_symlink(dir.Path("kept"), dir.Path("tree/a/link"));
        fs::create_directory_symlink(dir.Path(), dir.Path("tree/up"));
    };
    const std::multiset<std::string> failed = FailEachCall(
        EIO, make, [&] { CKUtility::GetInstance()->DeleteDirectory(tree); },
        [&](const std::string& /*name*/, int told)
        {
            EXPECT_EQ(told, 1);
            EXPECT_EQ(dir.Read("kept"), "kept");
        });
    for (const char* const name : {"lstat", "openat", "fdopendir", "fstat", "readdir", "unlinkat", "rmdir"})
        EXPECT_TRUE(failed.contains(name)) << name;
}

// On file systems that leave it open in a listing what an entry is.
TEST(FileSystemFaults, ListingsThatDoNotTellTypesGiveTheSameJob)
{
    const Threads threads(1);
    const NoMessageBoxes silence;
    const TempDir dir;
    const std::string path = MakeSmallJob(dir);
    fs::create_directory_symlink("/", path + "/steps/pcb/layers/root");
    fs::create_symlink("data", path + "/steps/pcb/eda/link");
    const CString job = path.c_str();
    const std::string wanted = Rewritten(job, dir, "wanted");
    {
        const FailingCalls untold(CallFault::Untold);
        ExpectSameFolder(Rewritten(job, dir, "untold"), wanted);
    }
    const auto list = [&]
    {
        CStringArray found;
        CKUtility::GetInstance()->GetAllFileListIn(job, found, "*.*", 1);
    };
    const std::multiset<std::string> failed = FailEachCall(
        EIO, [] {}, list, [](const std::string& /*name*/, int told) { EXPECT_EQ(told, 1); }, CallFault::Untold);
    EXPECT_TRUE(failed.contains("fstatat"));
}

TEST(FileSystemFaults, DeletingADirectoryWhoseListingsDoNotTellTypes)
{
    const TempDir dir;
    const CString tree = dir.Path("tree").c_str();
    dir.Write("kept/file", "kept");
    const auto make = [&]
    {
        fs::remove_all(dir.Path("tree"));
        dir.Write("tree/a/b/file", "x");
        fs::create_directory_symlink(dir.Path("kept"), dir.Path("tree/a/link"));
    };
    const auto remove = [&] { CKUtility::GetInstance()->DeleteDirectory(tree); };
    make();
    {
        const FailingCalls untold(CallFault::Untold);
        remove();
    }
    EXPECT_FALSE(dir.Exists("tree"));
    const std::multiset<std::string> failed = FailEachCall(
        EIO, make, remove, [](const std::string& /*name*/, int told) { EXPECT_EQ(told, 1); }, CallFault::Untold);
    EXPECT_TRUE(failed.contains("fstatat"));
    EXPECT_EQ(dir.Read("kept/file"), "kept");
}

// Somebody moves the directory that is being emptied elsewhere: the way up from it is another one then.
TEST(FileSystemFaults, DeletingADirectoryThatIsMovedMeanwhileDeletesNothingElse)
{
    const TempDir dir;
    const CString tree = dir.Path("tree").c_str();
    const auto make = [&]
    {
        fs::remove_all(dir.Path("tree"));
        fs::remove_all(dir.Path("elsewhere"));
        dir.Write("tree/a/b/c/file", "x");
        dir.Write("elsewhere/kept", "kept");
    };
    const auto remove = [&] { CKUtility::GetInstance()->DeleteDirectory(tree); };
    const auto move = [&]
    {
        if (dir.Exists("tree/a/b"))
            fs::rename(dir.Path("tree/a/b"), dir.Path("elsewhere/b"));
    };
    make();
    const auto count = static_cast<long>(CallsOf(remove).size());
    int told = 0;
    for (long number = 0; number < count; ++number)
    {
        make();
        const CountingSink sink;
        const FailingCalls meanwhile(number, move);
        remove();
        told += sink.count;
        EXPECT_EQ(dir.Read("elsewhere/kept"), "kept") << number;
        EXPECT_EQ(dir.Exists("tree"), sink.count > 0) << number;
    }
    EXPECT_GT(told, 0);
}

TEST(FileSystemFaults, DeletingALinkThatCannotBeRemovedIsTold)
{
    const TempDir dir;
    dir.Write("kept/file", "kept");
    const CString link = dir.Path("link").c_str();
    const std::multiset<std::string> failed = FailEachCall(
        EACCES,
        [&]
        {
            fs::remove(dir.Path("link"));
            fs::create_directory_symlink(dir.Path("kept"), dir.Path("link"));
        },
        [&] { CKUtility::GetInstance()->DeleteDirectory(link); },
        [&](const std::string& /*name*/, int told)
        {
            EXPECT_EQ(told, 1);
            EXPECT_TRUE(fs::is_symlink(dir.Path("link")));
        });
    EXPECT_TRUE(failed.contains("unlink"));
    EXPECT_EQ(dir.Read("kept/file"), "kept");
}

TEST(FileSystemFaults, MakingADirectoryThatIsThereIsAFailureOnlyWhenItCannotBeExamined)
{
    const TempDir dir;
    const CString path = dir.MakeDir("there").c_str();
    const std::multiset<std::string> failed = FailEachCall(
        EIO, [] {}, [&] { CKUtility::GetInstance()->MakeDirectory(path); },
        [](const std::string& /*name*/, int told) { EXPECT_EQ(told, 1); });
    EXPECT_EQ(failed, (std::multiset<std::string>{"fstatat", "mkdir"}));
}

TEST(FileSystemFaults, AFileOfWhichAPieceIsMissingIsNotReplaced)
{
    const TempDir dir;
    dir.Write("file", "old");
    {
        CReplacingFile file(dir.Path("file").c_str());
        {
            const FailingCalls failing(0, ENOSPC);
            EXPECT_FALSE(file.Write("first "));
            EXPECT_EQ(failing.Failed(), "fwrite");
        }
        EXPECT_FALSE(file.Write("second"));
        const FailingCalls failing(0, EIO); // closing fails as well: the first reason stays
        EXPECT_FALSE(file.Commit());
        EXPECT_EQ(file.Error(), ENOSPC);
    }
    EXPECT_EQ(dir.Read("file"), "old");
    EXPECT_EQ(EntriesOf(dir.Path()), 1U);
}

TEST(FileSystemFaults, AWriterTellsOnceWhateverFollowsTheFirstFailure)
{
    const TempDir dir;
    const CountingSink sink;
    auto out = std::make_unique<CTextWriter>(dir.Path("file").c_str(), "test", 1);
    {
        const FailingCalls failing(0, ENOSPC);
        *out << std::string(1'000'000, 'x');
        EXPECT_EQ(failing.Failed(), "fwrite");
    }
    EXPECT_EQ(sink.count, 1);
    EXPECT_FALSE(out->IsGood());
    const FailingCalls failing(0, EIO);
    out.reset();
    EXPECT_EQ(failing.Failed(), "fclose");
    EXPECT_EQ(sink.count, 1);
}

TEST(FileSystemFaults, AFileThatIsMadeMustBeClosedToo)
{
    const TempDir dir;
    const FailingCalls failing(1, ENOSPC);
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeReadWrite, &error));
    EXPECT_EQ(failing.Failed(), "fclose");
    EXPECT_EQ(error.m_cause, CFileException::diskFull);
}

// The program writes beside the old job and lets the two change places at the end.
TEST(FileSystemFaults, TheProgramKeepsTheOldJobWhenWritingFails)
{
    const Threads threads(1);
    const TempDir dir;
    const CurrentDir current(dir.MakeDir("empty"));
    const ReadOptions read{MakeSmallJob(dir), {}, "", true};
    WriteOptions write;
    write.directory = dir.MakeDir("out");
    write.name = "job";
    write.force = true;
    dir.Write("wanted/job/steps/old", "old");
    const auto oldJob = [&]
    {
        fs::remove_all(dir.Path("out/job"));
        fs::copy(dir.Path("wanted/job"), dir.Path("out/job"), fs::copy_options::recursive);
    };
    fs::remove_all(read.jobPath + "/symbols"); // named by paths: the program expects them to stay unwritten
    oldJob();
    const std::vector<std::string> calls = CallsOf([&] { RunWrite(read, write); });
    // Reading makes no directory: the first that the library makes is the job's. The exchange with the old one is the
    // last step of writing.
    const auto first = static_cast<long>(std::find(calls.begin(), calls.end(), "mkdir") - calls.begin());
    const auto last = static_cast<long>(std::find(calls.begin(), calls.end(), "renameat2") - calls.begin());
    ASSERT_GT(first, 10);
    ASSERT_LT(first + 20, last);
    ASSERT_LT(last, static_cast<long>(calls.size()));
    fs::copy(dir.Path("out"), dir.Path("written"), fs::copy_options::recursive);
    const auto isCall = [&](long number, const char* call) { return calls[static_cast<std::size_t>(number)] == call; };
    int flushed = 0;
    testing::internal::CaptureStderr();
    for (long number = first; number <= last; ++number)
    {
        oldJob();
        const FailingCalls failing(number);
        // What is opened and closed without a call in between was flushed: it is on the disk, closed or not.
        const bool isFlushed = isCall(number, "close") && isCall(number - 1, "open");
        flushed += isFlushed ? 1 : 0;
        if (isFlushed)
            EXPECT_NO_THROW(RunWrite(read, write)) << number;
        else
            EXPECT_THROW(RunWrite(read, write), ExitError) << number << " " << failing.Failed();
        EXPECT_EQ(EntriesOf(dir.Path("out")), 1U) << "something was left behind";
        ExpectSameFolder(dir.Path("out"), dir.Path(isFlushed ? "written" : "wanted"));
    }
    EXPECT_GT(flushed, 10);
    EXPECT_FALSE(testing::internal::GetCapturedStderr().empty());
}
