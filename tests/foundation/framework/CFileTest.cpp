#include "foundation/framework/CFile.h"

#include "foundation/framework/CStdioFile.h"
#include "foundation/framework/RaisedPointer.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace
{
void Put(CFile& file, std::string_view bytes)
{
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

std::string Get(CFile& file, UINT count)
{
    std::string bytes(count, '\0');
    bytes.resize(file.Read(bytes.data(), count));
    return bytes;
}

// The current directory while it lives.
class InDirectory
{
public:
    explicit InDirectory(const std::string& path) : m_before(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ~InDirectory() { std::filesystem::current_path(m_before); }
    InDirectory(const InDirectory&) = delete;
    InDirectory& operator=(const InDirectory&) = delete;

private:
    std::filesystem::path m_before;
};
} // namespace

TEST(File, Open_OfAMissingFileTellsWhy)
{
    const TempDir dir;
    const std::string path = dir.Path("none");
    for (const UINT flags : {CFile::modeRead, CFile::modeWrite, CFile::modeReadWrite})
    {
        CFile file;
        CFileException error;
        EXPECT_FALSE(file.Open(path.c_str(), flags, &error));
        EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
        EXPECT_GT(error.m_lOsError, 0);
        EXPECT_EQ(error.m_strFileName, path.c_str());
        EXPECT_FALSE(file.Open(path.c_str(), flags));
        EXPECT_FALSE(file.IsOpen());
        EXPECT_EQ(CauseOf<CFileException>([&] { CFile(path.c_str(), flags); }), CFileException::fileNotFound);
    }
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(File, Open_OfWhatIsNoFileFails)
{
    const TempDir dir;
    dir.Write("file", "x");
    CFile file;
    CFileException error;
    for (const UINT flags : {0U + CFile::modeRead, 0U + CFile::modeWrite, CFile::modeCreate | CFile::modeWrite})
    {
        EXPECT_FALSE(file.Open(dir.Path().c_str(), flags, &error));
        EXPECT_EQ(error.m_cause, CFileException::accessDenied);
    }
    EXPECT_FALSE(file.Open(dir.Path("file/below").c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
    EXPECT_FALSE(file.Open("", CFile::modeRead));
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
    EXPECT_FALSE(file.Open(dir.Path("file").c_str(), CFile::modeWrite | CFile::modeReadWrite));
    EXPECT_EQ(dir.Read("file"), "x");
}

TEST(File, Open_KeepsTheBytesUnlessToldToCreate)
{
    const TempDir dir;
    const std::string path = dir.Write("file", "hello");
    for (const UINT flags : {0U + CFile::modeRead, 0U + CFile::modeWrite, 0U + CFile::modeReadWrite,
                             CFile::modeCreate | CFile::modeNoTruncate | CFile::modeRead,
                             CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite,
                             CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite,
                             CFile::modeWrite | CFile::modeNoTruncate | CFile::shareDenyNone | CFile::typeBinary})
    {
        CFile file(path.c_str(), flags);
        EXPECT_EQ(file.GetLength(), 5U);
        EXPECT_EQ(file.GetPosition(), 0U);
        file.Close();
        EXPECT_EQ(dir.Read("file"), "hello") << flags;
    }
    for (const UINT access : {CFile::modeRead, CFile::modeWrite, CFile::modeReadWrite})
    {
        dir.Write("file", "hello");
        CFile file(path.c_str(), CFile::modeCreate | access);
        EXPECT_EQ(file.GetLength(), 0U);
        EXPECT_EQ(dir.Read("file"), "") << access;
    }
}

TEST(File, Open_WithCreateMakesTheFile)
{
    const TempDir dir;
    for (const UINT access : {CFile::modeRead, CFile::modeWrite, CFile::modeReadWrite})
        for (const UINT keep : {0U, 0U + CFile::modeNoTruncate})
        {
            const std::string name = "made" + std::to_string(access) + std::to_string(keep);
            const CFile file(dir.Path(name).c_str(), CFile::modeCreate | access | keep);
            EXPECT_TRUE(dir.Exists(name));
        }
}

TEST(File, Open_ClosesWhatWasOpenBefore)
{
    const TempDir dir;
    CFile file(dir.Path("one").c_str(), CFile::modeCreate | CFile::modeWrite);
    Put(file, "1");
    ASSERT_TRUE(file.Open(dir.Path("two").c_str(), CFile::modeCreate | CFile::modeWrite));
    Put(file, "2");
    EXPECT_FALSE(file.Open(dir.Path("none").c_str(), CFile::modeRead));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(dir.Read("one"), "1");
    EXPECT_EQ(dir.Read("two"), "2");
}

TEST(File, Write_IsThereAtOnce)
{
    const TempDir dir;
    CFile file(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeWrite);
    Put(file, "hello");
    EXPECT_EQ(dir.Read("file"), "hello");
    file.Flush();
    EXPECT_EQ(file.GetLength(), 5U);
}

TEST(File, ReadsAndWrites_MayAlternate)
{
    const TempDir dir;
    CFile file(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    Put(file, "hello world");
    file.Seek(2, CFile::begin);
    EXPECT_EQ(Get(file, 2), "ll");
    Put(file, "O_W");
    EXPECT_EQ(Get(file, 2), "or");
    EXPECT_EQ(file.GetPosition(), 9U);
    EXPECT_EQ(Get(file, 100), "ld");
    EXPECT_EQ(Get(file, 100), "");
    Put(file, "!");
    file.SeekToBegin();
    EXPECT_EQ(Get(file, 100), "hellO_World!");
}

TEST(File, Read_SeesWhatWasAddedAfterTheEndWasMet)
{
    const TempDir dir;
    CFile writer(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeWrite);
    CFile reader(dir.Path("file").c_str(), CFile::modeRead);
    EXPECT_EQ(Get(reader, 10), "");
    Put(writer, "more");
    EXPECT_EQ(Get(reader, 10), "more");
}

TEST(File, Access_ThatWasNotAskedForIsDenied)
{
    const TempDir dir;
    const std::string path = dir.Write("file", "hello");
    CFile reader(path.c_str(), CFile::modeRead);
    EXPECT_EQ(CauseOf<CFileException>([&] { Put(reader, "x"); }), CFileException::accessDenied);
    EXPECT_EQ(CauseOf<CFileException>([&] { reader.SetLength(0); }), CFileException::accessDenied);
    CFile writer(path.c_str(), CFile::modeWrite);
    EXPECT_EQ(CauseOf<CFileException>([&] { Get(writer, 1); }), CFileException::accessDenied);
    EXPECT_EQ(dir.Read("file"), "hello");
}

TEST(File, Closed_RaisesOnUse)
{
    CFile file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.GetFilePath(), "");
    EXPECT_EQ(CauseOf<CFileException>([&] { Get(file, 1); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { Put(file, "x"); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.SeekToBegin(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { (void)file.GetLength(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { (void)file.GetPosition(); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.SetLength(1); }), CFileException::invalidFile);
    file.Flush();
    file.Close();
    file.Abort();
}

TEST(File, Seek_GoesFromEveryPlace)
{
    const TempDir dir;
    CFile file(dir.Write("file", "hello").c_str(), CFile::modeRead);
    EXPECT_EQ(file.Seek(-2, CFile::end), 3U);
    EXPECT_EQ(Get(file, 5), "lo");
    EXPECT_EQ(file.Seek(-4, CFile::current), 1U);
    EXPECT_EQ(Get(file, 1), "e");
    EXPECT_EQ(file.Seek(100, CFile::begin), 100U);
    EXPECT_EQ(Get(file, 1), "");
    EXPECT_EQ(file.SeekToEnd(), 5U);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Seek(-6, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Seek(0, 3); }));
    EXPECT_EQ(file.GetPosition(), 5U);
}

TEST(File, SetLength_CutsExtendsAndMovesToTheEnd)
{
    const TempDir dir;
    const std::string path = dir.Write("file", std::string(10000, 'x'));
    CFile file(path.c_str(), CFile::modeReadWrite);
    EXPECT_EQ(Get(file, 5000).size(), 5000U);
    file.SetLength(10);
    EXPECT_EQ(file.GetPosition(), 10U);
    EXPECT_EQ(Get(file, 100), "");
    file.Seek(5, CFile::begin);
    EXPECT_EQ(Get(file, 100), "xxxxx");
    file.SetLength(12);
    EXPECT_EQ(file.GetLength(), 12U);
    EXPECT_EQ(dir.Read("file"), std::string(10, 'x') + std::string(2, '\0'));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.SetLength(~0ULL); }));
}

TEST(File, SetLength_FollowsNoChangeOfTheCurrentDirectory)
{
    const TempDir dir;
    dir.MakeDir("below");
    const InDirectory here(dir.Path());
    CFile file("file", CFile::modeCreate | CFile::modeReadWrite);
    Put(file, "hello");
    const InDirectory below(dir.Path("below"));
    file.SetLength(2);
    EXPECT_EQ(dir.Read("file"), "he");
}

TEST(File, Paths_AreAsGiven)
{
    const TempDir dir;
    const std::string path = dir.Path("part.list.txt");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(file.GetFilePath(), path.c_str());
    EXPECT_EQ(file.GetFileName(), "part.list.txt");
    EXPECT_EQ(file.GetFileTitle(), "part.list");
    file.SetFilePath("x/.hidden");
    EXPECT_EQ(file.GetFileName(), ".hidden");
    EXPECT_EQ(file.GetFileTitle(), ".hidden");
    file.Close();
    EXPECT_EQ(file.GetFilePath(), "");
    EXPECT_EQ(file.GetFileTitle(), "");
}

TEST(File, Remove_DeletesFilesOnly)
{
    const TempDir dir;
    const std::string path = dir.Write("file", "x");
    CFile::Remove(path.c_str());
    EXPECT_FALSE(dir.Exists("file"));
    EXPECT_EQ(CauseOf<CFileException>([&] { CFile::Remove(path.c_str()); }), CFileException::fileNotFound);
    const std::string folder = dir.MakeDir("folder");
    EXPECT_EQ(CauseOf<CFileException>([&] { CFile::Remove(folder.c_str()); }), CFileException::accessDenied);
    EXPECT_TRUE(dir.Exists("folder"));
}

TEST(File, Rename_NeverReplaces)
{
    const TempDir dir;
    const std::string one = dir.Write("one", "1");
    const std::string two = dir.Write("two", "2");
    const std::string three = dir.Path("three");
    EXPECT_EQ(CauseOf<CFileException>([&] { CFile::Rename(one.c_str(), two.c_str()); }), CFileException::accessDenied);
    CFile::Rename(one.c_str(), three.c_str());
    EXPECT_EQ(CauseOf<CFileException>([&] { CFile::Rename(one.c_str(), dir.Path("four").c_str()); }),
              CFileException::fileNotFound);
    EXPECT_EQ(dir.Read("two"), "2");
    EXPECT_EQ(dir.Read("three"), "1");
}

TEST(File, NullBuffers_RaiseInvalidArgument)
{
    const TempDir dir;
    CFile file(dir.Write("file", "x").c_str(), CFile::modeReadWrite);
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Read(nullptr, 1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { file.Write(nullptr, 1); }));
    EXPECT_EQ(file.Read(nullptr, 0), 0U);
    file.Write(nullptr, 0);
    EXPECT_EQ(dir.Read("file"), "x");
}

TEST(File, AFullDiskRaisesDiskFull)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "needs a device that is always full";
    CFile file("/dev/full", CFile::modeWrite);
    try
    {
        Put(file, "x");
        ADD_FAILURE();
    }
    catch (CFileException* error)
    {
        EXPECT_EQ(error->m_cause, CFileException::diskFull);
        EXPECT_EQ(error->m_strFileName, "/dev/full");
        error->Delete();
    }
}

TEST(File, Abort_ClosesAndForgetsTheFile)
{
    const TempDir dir;
    CFile file(dir.Path("file").c_str(), CFile::modeCreate | CFile::modeWrite);
    Put(file, "x");
    file.Abort();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.GetFilePath(), "");
    EXPECT_EQ(dir.Read("file"), "x");
    file.Abort();
    if (std::filesystem::exists("/dev/full"))
    {
        CStdioFile full("/dev/full", CFile::modeWrite);
        full.WriteString("lost");
        full.Abort(); // drops the failure
        EXPECT_FALSE(full.IsOpen());
    }
}

TEST(File, Open_WithCreateTellsWhyThereIsNoFile)
{
    const TempDir dir;
    CFile file;
    CFileException error;
    for (const UINT more : {0U + CFile::modeReadWrite, CFile::modeReadWrite | CFile::modeNoTruncate})
    {
        EXPECT_FALSE(file.Open(dir.Path("none/file").c_str(), CFile::modeCreate | more, &error));
        EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    }
}

TEST(File, APipeHasNoPositions)
{
    const TempDir dir;
    const std::string path = dir.Path("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    CFile file(path.c_str(), CFile::modeReadWrite); // both ends: nothing waits
    Put(file, "ab");
    EXPECT_EQ(Get(file, 1), "a");
    EXPECT_EQ(CauseOf<CFileException>([&] { Put(file, "c"); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.GetPosition(); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.GetLength(); }), CFileException::badSeek);
    EXPECT_EQ(CauseOf<CFileException>([&] { file.Seek(0, CFile::begin); }), CFileException::badSeek);
    CFile writing(path.c_str(), CFile::modeReadWrite);
    EXPECT_EQ(CauseOf<CFileException>([&] { writing.SetLength(1); }), CFileException::badPath);
}
