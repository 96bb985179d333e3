#include "foundation/corekit/CFileBytes.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/CReplacingFile.h"
#include "foundation/corekit/RecordingSink.h"
#include "foundation/framework/CException.h"
#include "support/MemoryChecker.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{
CString Text(const std::string& text)
{
    return CString(std::string_view(text));
}

void ExpectZerosBehind(const CFileBytes& bytes)
{
    for (std::size_t i = 0; i < CFileBytes::kZeroBytes; ++i)
        ASSERT_EQ(bytes.View().data()[bytes.View().size() + i], '\0');
}
// How many files this process has open: the counting opens one itself, the same one each time.
std::size_t OpenFiles()
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}
// Limits the memory of this process for a while.
class AddressSpaceLimit
{
public:
    explicit AddressSpaceLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_AS, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_AS, &limit);
    }
    ~AddressSpaceLimit() { ::setrlimit(RLIMIT_AS, &m_old); }
    AddressSpaceLimit(const AddressSpaceLimit&) = delete;
    AddressSpaceLimit& operator=(const AddressSpaceLimit&) = delete;

private:
    rlimit m_old = {};
};
} // namespace

TEST(FileBytes, Load_GivesEveryByteAndZerosBehind)
{
    const TempDir dir;
    std::string all;
    for (int i = 0; i < 1000; ++i)
        all.push_back(static_cast<char>(i));
    for (const std::string& content : {std::string(), std::string("\0", 1), all, std::string(5000000, '\xFF')})
    {
        CFileBytes bytes;
        ASSERT_TRUE(bytes.Load(Text(dir.Write("file", content)), __FILE__, __LINE__));
        EXPECT_TRUE(bytes.View() == content);
        ExpectZerosBehind(bytes);
    }
}

TEST(FileBytes, Load_ReplacesWhatWasThere)
{
    const TempDir dir;
    CFileBytes bytes;
    ASSERT_TRUE(bytes.Load(Text(dir.Write("a", "first and long")), "", 0));
    ASSERT_TRUE(bytes.Load(Text(dir.Write("b", "second")), "", 0));
    EXPECT_EQ(bytes.View(), "second");
    EXPECT_FALSE(bytes.Load(Text(dir.Path("missing")), "", 0));
    EXPECT_EQ(bytes.View(), "");
    ExpectZerosBehind(bytes);
}

TEST(FileBytes, View_BeforeLoadingIsEmptyButNoNullAddress)
{
    const CFileBytes bytes;
    EXPECT_NE(bytes.View().data(), nullptr);
    EXPECT_EQ(bytes.View().size(), 0U);
    ExpectZerosBehind(bytes);
}

TEST(FileBytes, Load_ThatFailsReportsWhoAsked)
{
    const TempDir dir;
    const RecordingSink sink;
    CFileBytes bytes;
    EXPECT_FALSE(bytes.Load(Text(dir.Path("missing")), "Reader.cpp", 33));
    EXPECT_FALSE(bytes.Load(Text(dir.Path()), "Reader.cpp", 34));
    EXPECT_FALSE(bytes.Load("", "Reader.cpp", 35));
    ASSERT_EQ(sink.all.size(), 3U);
    EXPECT_EQ(sink.all[0].operation, "read");
    EXPECT_EQ(sink.all[0].sourceFile, "Reader.cpp");
    EXPECT_EQ(sink.all[0].line, 33);
    EXPECT_EQ(sink.all[0].path, Text(dir.Path("missing")));
    EXPECT_EQ(sink.all[0].systemError, ENOENT);
    EXPECT_EQ(sink.all[1].systemError, EISDIR);
}

TEST(FileBytes, Load_RefusesPipesAndDevicesWithoutWaiting)
{
    const TempDir dir;
    ASSERT_EQ(::mkfifo(dir.Path("pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", dir.Path("to-pipe"));
    CFileBytes bytes;
    EXPECT_FALSE(bytes.Load(Text(dir.Path("pipe")), "", 0));
    EXPECT_FALSE(bytes.Load(Text(dir.Path("to-pipe")), "", 0));
    EXPECT_FALSE(bytes.Load("/dev/zero", "", 0));
    EXPECT_FALSE(bytes.Load("/dev/null", "", 0));
}

TEST(FileBytes, Load_FollowsLinksToFilesAndEndsLinkLoops)
{
    const TempDir dir;
    dir.Write("file", "text");
    fs::create_symlink("file", dir.Path("link"));
    fs::create_symlink("loop", dir.Path("loop"));
    CFileBytes bytes;
    EXPECT_TRUE(bytes.Load(Text(dir.Path("link")), "", 0));
    EXPECT_EQ(bytes.View(), "text");
    const RecordingSink sink;
    EXPECT_FALSE(bytes.Load(Text(dir.Path("loop")), "", 0));
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, ELOOP);
}

TEST(FileBytes, Load_RefusesAPathWithANul)
{
    const TempDir dir;
    dir.Write("file", "text");
    CFileBytes bytes;
    EXPECT_FALSE(bytes.Load(Text(dir.Path("file") + std::string("\0x", 2)), "", 0));
}

TEST(FileBytes, Load_OfAFileThatChangesMeanwhileGivesWhatWasRead)
{
    const TempDir dir;
    const std::string path = dir.Write("file", std::string(100000, 'x'));
    std::atomic<bool> stop{false};
    std::thread changer(
        [&]
        {
            for (off_t size = 0; !stop; size = (size + 37117) % 200000)
                EXPECT_EQ(::truncate(path.c_str(), size), 0);
        });
    for (int round = 0; round < 2000; ++round)
    {
        CFileBytes bytes;
        EXPECT_TRUE(bytes.Load(Text(path), "", 0));
        EXPECT_LT(bytes.View().size(), 200000U);
        ExpectZerosBehind(bytes);
    }
    stop = true;
    changer.join();
}

TEST(FileBytes, Load_LeavesNoFileOpen)
{
    const TempDir dir;
    const std::string path = dir.Write("file", "text");
    const std::size_t before = OpenFiles();
    for (const std::string& name : {path, dir.Path("missing"), dir.Path(".")})
    {
        CFileBytes bytes;
        bytes.Load(Text(name), "", 0);
        EXPECT_EQ(OpenFiles(), before) << name;
    }
}

TEST(ReplacingFile, ThatIsGivenUpLeavesNoFileOpenAndNoneBehind)
{
    const TempDir dir;
    dir.Write("file", "old");
    const std::size_t before = OpenFiles();
    {
        CReplacingFile file(Text(dir.Path("file")));
        EXPECT_TRUE(file.Write("new"));
    }
    EXPECT_EQ(OpenFiles(), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path(".")), fs::directory_iterator()), 1);
}

TEST(FileBytes, Load_OfAFileLargerThanTheMemoryRaisesTheMemoryException)
{
#if defined(JOBX_MEMORY_CHECKER)
    GTEST_SKIP() << "the checker ends the process when memory is refused";
#endif
    const TempDir dir;
    const std::string path = dir.Write("file", "");
    ASSERT_EQ(::truncate(path.c_str(), off_t{1} << 32U), 0); // holes only
    const AddressSpaceLimit limit(rlim_t{1} << 30U);
    CFileBytes bytes;
    try
    {
        bytes.Load(Text(path), "", 0);
        FAIL() << "no memory could hold that";
    }
    catch (CMemoryException* exception)
    {
        exception->Delete();
    }
    EXPECT_EQ(bytes.View().size(), 0U);
}

namespace
{
// Sets a boundary for a while.
struct Boundary
{
    explicit Boundary(const CString& directory) { CKUtility::GetInstance()->SetLinkBoundary(directory); }
    Boundary(const Boundary&) = delete;
    Boundary& operator=(const Boundary&) = delete;
    ~Boundary() { CKUtility::GetInstance()->SetLinkBoundary(""); }
};
} // namespace

TEST(FileBytes, LinksOutOfTheBoundaryAreNotOpened)
{
    const TempDir dir;
    dir.Write("secret", "secret");
    dir.Write("job/file", "x");
    fs::create_symlink(dir.Path("secret"), dir.Path("job/out"));
    fs::create_symlink("file", dir.Path("job/in"));
    const CString out = Text(dir.Path("job/out"));
    CFileBytes bytes;
    CFilePieces inside;
    CFilePieces outside;
    EXPECT_TRUE(bytes.Load(out, "", 0)) << "followed until a boundary is set";
    const Boundary boundary(Text(dir.Path("job")));
    const RecordingSink sink;
    EXPECT_TRUE(bytes.Load(Text(dir.Path("job/in")), "", 0));
    EXPECT_TRUE(inside.Open(Text(dir.Path("job/in")), "", 0));
    EXPECT_TRUE(sink.all.empty());
    EXPECT_FALSE(bytes.Load(out, "", 0));
    EXPECT_EQ(bytes.View(), "");
    EXPECT_FALSE(outside.Open(out, "", 0));
    ASSERT_EQ(sink.all.size(), 2U);
    EXPECT_EQ(sink.all[1].operation, "follow");
    EXPECT_EQ(sink.all[1].systemError, EXDEV);
    EXPECT_EQ(sink.all[1].path, out);
}

TEST(FileBytes, AMissingFileIsMissingAndNotOutOfTheBoundary)
{
    const TempDir dir;
    dir.MakeDir("job");
    const Boundary boundary(Text(dir.Path("job")));
    const RecordingSink sink;
    CFileBytes bytes;
    EXPECT_FALSE(bytes.Load(Text(dir.Path("job/gone")), "", 0));
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].operation, "read");
    EXPECT_EQ(sink.all[0].systemError, ENOENT);
}
