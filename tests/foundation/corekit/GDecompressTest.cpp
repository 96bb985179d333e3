#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/LzwEncoder.h"
#include "foundation/corekit/RecordingSink.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace g_decompress_test
{
namespace
{
CString Text(const std::string& text)
{
    return CString(std::string_view(text));
}

int Decompress(const std::string& path)
{
    return CKUtility::GetInstance()->GDecompress(Text(path));
}

std::size_t EntryCount(const TempDir& dir)
{
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(dir.Path()))
        count += entry.path().empty() ? 0 : 1;
    return count;
}

std::string RandomBytes(std::size_t size)
{
    std::mt19937 random(static_cast<unsigned>(size));
    std::string text(size, '\0');
    for (char& c : text)
        c = static_cast<char>(random());
    return text;
}

std::string Lines(int count, const char* form)
{
    CString text;
    for (int i = 0; i < count; ++i)
        text.AppendFormat(form, i * 0.001, i % 977 * 0.01, i % 7);
    return std::string(text.View());
}

// Limits the size of files that this process may write, for a while.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_old = {};
    void (*m_oldHandler)(int);
};

class DecompressionLimit
{
public:
    explicit DecompressionLimit(ULONGLONG bytes) : m_nOld(CKUtility::GetInstance()->GetDecompressionLimit())
    {
        CKUtility::GetInstance()->SetDecompressionLimit(bytes);
    }
    ~DecompressionLimit() { CKUtility::GetInstance()->SetDecompressionLimit(m_nOld); }
    DecompressionLimit(const DecompressionLimit&) = delete;
    DecompressionLimit& operator=(const DecompressionLimit&) = delete;

private:
    ULONGLONG m_nOld;
};

bool HasCompressProgram()
{
    return std::system("compress -V >/dev/null 2>&1") == 0;
}
} // namespace

TEST(GDecompress, Result_StandsBesideWithoutTheSuffix)
{
    const TempDir dir;
    for (const char* suffix : {".Z", ".z"})
    {
        const std::string path = dir.Write(std::string("features") + suffix, EncodeLzw("UNITS=MM\n"));
        EXPECT_EQ(Decompress(path), 1);
        EXPECT_EQ(dir.Read("features"), "UNITS=MM\n");
        EXPECT_TRUE(dir.Exists(std::string("features") + suffix)) << "the compressed file stays";
        fs::remove(dir.Path("features"));
    }
    EXPECT_EQ(EntryCount(dir), 2U);
}

TEST(GDecompress, Result_ReplacesAnOlderFile)
{
    const TempDir dir;
    dir.Write("features", "old and longer than the new text");
    EXPECT_EQ(Decompress(dir.Write("features.Z", EncodeLzw("new"))), 1);
    EXPECT_EQ(dir.Read("features"), "new");
    EXPECT_EQ(EntryCount(dir), 2U);
}

TEST(GDecompress, Result_InTheCurrentDirectoryWorks)
{
    const TempDir dir;
    dir.Write("f.Z", EncodeLzw("text"));
    const fs::path former = fs::current_path();
    fs::current_path(dir.Path());
    const int result = Decompress("f.Z");
    fs::current_path(former);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(dir.Read("f"), "text");
}

TEST(GDecompress, Path_WithoutTheSuffixFails)
{
    const TempDir dir;
    const RecordingSink sink;
    EXPECT_EQ(Decompress(dir.Write("features", EncodeLzw("x"))), 0);
    EXPECT_EQ(Decompress(dir.Write("features.Z.old", EncodeLzw("x"))), 0);
    EXPECT_EQ(Decompress(dir.Write(".Z", EncodeLzw("x"))), 0);
    EXPECT_EQ(Decompress(dir.Path("features.Z/")), 0);
    EXPECT_EQ(Decompress(""), 0);
    EXPECT_EQ(EntryCount(dir), 3U);
    EXPECT_EQ(sink.all.size(), 5U);
}

TEST(GDecompress, File_ThatIsMissingFails)
{
    const TempDir dir;
    const RecordingSink sink;
    EXPECT_EQ(Decompress(dir.Path("features.Z")), 0);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, ENOENT);
    EXPECT_EQ(EntryCount(dir), 0U);
}

TEST(GDecompress, File_ThatIsADirectoryPipeOrDeviceIsNotOpened)
{
    const TempDir dir;
    dir.MakeDir("dir.Z");
    ASSERT_EQ(::mkfifo(dir.Path("pipe.Z").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", dir.Path("device.Z"));
    for (const char* name : {"dir.Z", "pipe.Z", "device.Z"})
        EXPECT_EQ(Decompress(dir.Path(name)), 0) << name;
    EXPECT_EQ(EntryCount(dir), 3U);
}

TEST(GDecompress, Target_ThatIsALinkIsReplacedAndNotWrittenThrough)
{
    const TempDir dir;
    dir.Write("precious", "keep");
    fs::create_symlink("precious", dir.Path("features"));
    EXPECT_EQ(Decompress(dir.Write("features.Z", EncodeLzw("new"))), 1);
    EXPECT_EQ(dir.Read("precious"), "keep");
    EXPECT_FALSE(fs::is_symlink(dir.Path("features")));
    EXPECT_EQ(dir.Read("features"), "new");
}

TEST(GDecompress, Target_ThatIsADirectoryStays)
{
    const TempDir dir;
    dir.Write("features/inside", "keep");
    const RecordingSink sink;
    EXPECT_EQ(Decompress(dir.Write("features.Z", EncodeLzw("new"))), 0);
    EXPECT_EQ(dir.Read("features/inside"), "keep");
    EXPECT_EQ(EntryCount(dir), 2U);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, EISDIR);
}

TEST(GDecompress, EveryTruncation_LeavesNothingBehindAndAnOlderTargetAsItWas)
{
    const TempDir dir;
    const std::string text = Lines(40, "L %.3f %.2f %d P 0\n");
    const std::string data = EncodeLzw(text, {12, true, 200});
    int failed = 0;
    for (std::size_t size = 0; size < data.size(); ++size)
    {
        dir.Write("features", "older");
        const RecordingSink sink;
        const int result = Decompress(dir.Write("features.Z", data.substr(0, size)));
        EXPECT_EQ(sink.all.size(), result == 0 ? 1U : 0U) << size;
        // Where the cut falls between two codes nothing tells it from the end of a shorter text.
        const std::string now = dir.Read("features");
        EXPECT_TRUE(result == 0 ? now == "older" : text.starts_with(now)) << size;
        failed += result == 0 ? 1 : 0;
        EXPECT_EQ(EntryCount(dir), 2U) << size;
    }
    EXPECT_GT(failed, 0);
    EXPECT_EQ(Decompress(dir.Write("features.Z", data)), 1);
    EXPECT_EQ(dir.Read("features"), text);
}

TEST(GDecompress, Damage_LeavesNoFileBehindAndIsReported)
{
    const TempDir dir;
    std::string data = EncodeLzw(Lines(20000, "L %.3f %.2f %d P 0\n"));
    data.resize(data.size() - 1);
    data.back() = '\xFF';
    data += "\xFF\xFF\xFF\xFF";
    const RecordingSink sink;
    EXPECT_EQ(Decompress(dir.Write("features.Z", data)), 0);
    EXPECT_EQ(EntryCount(dir), 1U);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].operation, "decompress");
    EXPECT_EQ(sink.all[0].systemError, EBADMSG);
}

TEST(GDecompress, Limit_StopsABomb)
{
    const TempDir dir;
    const std::string path = dir.Write("bomb.Z", EncodeLzw(std::string(3000000, '\0')));
    EXPECT_EQ(CKUtility::GetInstance()->GetDecompressionLimit(), 1ULL << 30U);
    {
        const DecompressionLimit limit(2999999);
        const RecordingSink sink;
        EXPECT_EQ(CKUtility::GetInstance()->GetDecompressionLimit(), 2999999U);
        EXPECT_EQ(Decompress(path), 0);
        EXPECT_EQ(EntryCount(dir), 1U);
        ASSERT_EQ(sink.all.size(), 1U);
        EXPECT_EQ(sink.all[0].systemError, EFBIG);
    }
    const DecompressionLimit limit(3000000);
    EXPECT_EQ(Decompress(path), 1);
}

TEST(GDecompress, FullDisk_LeavesNoFileBehindAndAnOlderTargetAsItWas)
{
    const TempDir dir;
    dir.Write("features", "older");
    const std::string path = dir.Write("features.Z", EncodeLzw(std::string(1000000, 'x')));
    RecordingSink sink;
    {
        const FileSizeLimit limit(100000);
        EXPECT_EQ(Decompress(path), 0);
    }
    EXPECT_EQ(dir.Read("features"), "older");
    EXPECT_EQ(EntryCount(dir), 2U);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, EFBIG);
}

TEST(GDecompress, ReadOnlyDirectory_FailsAndIsReported)
{
    const TempDir dir;
    const std::string path = dir.Write("features.Z", EncodeLzw("x"));
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0555), 0);
    const bool isAdministrator = ::geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (isAdministrator && ::seteuid(kNobody) != 0)
        GTEST_SKIP() << "needs a user whom the system refuses something";
    RecordingSink sink;
    const int result = Decompress(path);
    ASSERT_TRUE(!isAdministrator || ::seteuid(0) == 0);
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0755), 0);
    EXPECT_EQ(result, 0);
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, EACCES);
    EXPECT_EQ(EntryCount(dir), 1U);
}

TEST(GDecompress, Result_HasTheAccessRightsOfANewFile)
{
    const TempDir dir;
    const std::string path = dir.Write("features.Z", EncodeLzw("x"));
    ASSERT_EQ(::chmod(path.c_str(), 0400), 0);
    dir.Write("ordinary", "x");
    ASSERT_EQ(Decompress(path), 1);
    EXPECT_EQ(fs::status(dir.Path("features")).permissions(), fs::status(dir.Path("ordinary")).permissions());
}

TEST(GDecompress, CompressProgram_FilesOfEveryKindComeBack)
{
    if (!HasCompressProgram())
        GTEST_SKIP() << "needs the program compress";
    const TempDir dir;
    const std::string text = Lines(20000, "P %.5f %.3f %d P 0 0;0=1\n");
    // What changes its character makes the program empty its table.
    const std::string changing = text + RandomBytes(300000) + text + std::string(200000, 'q') + RandomBytes(300000);
    const std::string texts[] = {"",   "x",     "xx", std::string(500000, 'a'), RandomBytes(77), RandomBytes(200000),
                                 text, changing};
    for (int bits = 9; bits <= 16; bits += kIsSlowBuild ? 7 : 1)
        for (const char* mode : {"", "-C "}) // with it, without code 256 as a mark
            for (const std::string& original : texts)
            {
                const std::string file = dir.Write("file", original);
                const std::string command = std::string("compress -c -f ") + mode + "-b " + std::to_string(bits);
                const std::string label = command + " of " + std::to_string(original.size()) + " bytes";
                const bool isWritten = std::system((command + " " + file + " >" + file + ".Z 2>&1").c_str()) == 0;
                // Its releases differ in whether they write these forms, and write them so that they read them again.
                const bool mayBeWrong = bits == 9 || *mode != '\0';
                const std::string check = "uncompress -c " + file + ".Z 2>&1 | cmp -s - " + file;
                if (mayBeWrong && (!isWritten || std::system(check.c_str()) != 0))
                    continue;
                ASSERT_TRUE(isWritten) << label;
                fs::remove(file);
                ASSERT_EQ(Decompress(file + ".Z"), 1) << label;
                ASSERT_TRUE(dir.Read("file") == original) << label;
            }
}

TEST(GDecompress, CompressProgram_EveryTruncationFailsOrGivesTheStartOfTheText)
{
    if (!HasCompressProgram())
        GTEST_SKIP() << "needs the program compress";
    const TempDir dir;
    const std::string text = Lines(100, "A %.3f %.2f %d N\n");
    dir.Write("file", text);
    ASSERT_EQ(std::system(("compress -f " + dir.Path("file")).c_str()), 0);
    const std::string data = dir.Read("file.Z");
    for (std::size_t size = 0; size < data.size(); ++size)
        if (Decompress(dir.Write("file.Z", data.substr(0, size))) == 1)
        {
            EXPECT_TRUE(text.starts_with(dir.Read("file"))) << size;
            EXPECT_LT(dir.Read("file").size(), text.size());
            fs::remove(dir.Path("file"));
        }
        else
        {
            EXPECT_EQ(EntryCount(dir), 1U) << size;
        }
}

TEST(GDecompress, DamagedBytes_NeverCrashNorLeaveUnfinishedFiles)
{
    const TempDir dir;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string data = EncodeLzw(Lines(500, "A %.3f %.2f %d N\n"));
    for (int round = 0; round < 500; ++round)
    {
        std::string copy = data;
        copy[random() % copy.size()] = static_cast<char>(random());
        copy[random() % copy.size()] = static_cast<char>(random());
        const int result = Decompress(dir.Write("f.Z", copy));
        EXPECT_EQ(EntryCount(dir), result == 1 ? 2U : 1U);
        fs::remove(dir.Path("f"));
    }
}
} // namespace g_decompress_test
