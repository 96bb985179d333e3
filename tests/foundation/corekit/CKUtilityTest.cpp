#include "foundation/corekit/CKUtility.h"
#include "JOBXCLSDLL.h"
#include "foundation/corekit/RecordingSink.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace k_utility_test
{
namespace
{
using List = std::vector<std::string>;

CKUtility& Utility()
{
    return *CKUtility::GetInstance();
}

CString Text(const std::string& text)
{
    return CString(std::string_view(text));
}

// The listing without the directory's own path.
List Relative(const CStringArray& list, const TempDir& dir)
{
    List result;
    for (INT_PTR i = 0; i < list.GetSize(); ++i)
    {
        const std::string path(list[i].View());
        EXPECT_EQ(path.rfind(dir.Path() + "/", 0), 0U) << path;
        result.push_back(path.substr(dir.Path().size() + 1));
    }
    return result;
}

List Files(const TempDir& dir, const char* pattern, int recurse)
{
    CStringArray list;
    Utility().GetAllFileListIn(Text(dir.Path()), list, pattern, recurse);
    return Relative(list, dir);
}

List Directories(const TempDir& dir, int recurse)
{
    CStringArray list;
    Utility().GetAllSubDirListIn(Text(dir.Path()), list, recurse);
    return Relative(list, dir);
}

std::string Found(const TempDir& dir, const char* name)
{
    return std::string(Utility().FindPath(Text(dir.Path()), name, __FILE__, __LINE__).View());
}

// Directories "d" in each other, a file in the innermost; in steps, as a whole path may be too long for the system.
void MakeNested(const TempDir& dir, int depth)
{
    const fs::path former = fs::current_path();
    fs::current_path(dir.Path());
    for (int i = 0; i < depth; ++i)
    {
        fs::create_directory("d");
        fs::current_path("d");
    }
    std::ofstream("file") << "x";
    fs::current_path(former);
}

// A test program that runs as the administrator is refused nothing, so it takes another user's rights for a while.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_isOrdinary(::geteuid() != 0 || ::seteuid(kNobody) == 0) {}
    ~OrdinaryUser()
    {
        if (::getuid() == 0 && ::seteuid(0) != 0)
            ADD_FAILURE() << "cannot become the administrator again";
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    bool IsOrdinary() const { return m_isOrdinary; }

private:
    static constexpr uid_t kNobody = 65534;
    bool m_isOrdinary;
};
} // namespace

TEST(CKUtility, PathCombine_PutsExactlyOneSeparatorBetween)
{
    const struct
    {
        const char* path;
        const char* segment;
        const char* expected;
    } kCases[] = {{"a", "b", "a/b"},
                  {"a/", "b", "a/b"},
                  {"a", "/b", "a/b"},
                  {"a//", "//b", "a/b"},
                  {"/", "b", "/b"},
                  {"//", "b", "/b"},
                  {"a", "", "a"},
                  {"a/", "", "a/"},
                  {"", "b", "b"},
                  {"", "/b", "b"},
                  {"", "", ""},
                  {"a", "/", "a"},
                  {"/x/y", "z/w", "/x/y/z/w"},
                  {"a", "b/", "a/b/"},
                  {"a b", "c\xFF", "a b/c\xFF"},
                  {"a\\", "b", "a\\/b"}};
    for (const auto& testCase : kCases)
        EXPECT_EQ(Utility().CKPathCombine(testCase.path, testCase.segment, __FILE__, __LINE__), testCase.expected)
            << testCase.path << " and " << testCase.segment;
}

TEST(CKUtility, GetSegment_SplitsAtTheLastSeparator)
{
    const struct
    {
        const char* path;
        const char* directory;
        const char* last;
    } kCases[] = {{"/jobs/board", "/jobs", "board"},
                  {"/jobs/board/", "/jobs", "board"},
                  {"/jobs/board///", "/jobs", "board"},
                  {"/jobs//board", "/jobs", "board"},
                  {"board", "", "board"},
                  {"board/", "", "board"},
                  {"/board", "/", "board"},
                  {"/", "", ""},
                  {"", "", ""},
                  {"a/..", "a", ".."},
                  {"symbols/s 1/features.Z", "symbols/s 1", "features.Z"}};
    for (const auto& testCase : kCases)
    {
        EXPECT_EQ(Utility().GetSegmntFromFilePath(testCase.path, 1), testCase.directory) << testCase.path;
        EXPECT_EQ(Utility().GetSegmntFromFilePath(testCase.path, 2), testCase.last) << testCase.path;
        EXPECT_EQ(Utility().GetSegmntFromFilePath(testCase.path, 0), "");
        EXPECT_EQ(Utility().GetSegmntFromFilePath(testCase.path, 3), "");
    }
}

TEST(CKUtility, ExistenceTests_TellFilesFromDirectories)
{
    const TempDir dir;
    const CString file = Text(dir.Write("file", "x"));
    const CString folder = Text(dir.MakeDir("folder"));
    const CString missing = Text(dir.Path("missing"));
    const RecordingSink sink;
    EXPECT_TRUE(Utility().IsFile(file));
    EXPECT_TRUE(Utility().DoesFileExist(file, __FILE__, __LINE__));
    EXPECT_TRUE(Utility().DoesFileOrDirExist(file, __FILE__, __LINE__));
    EXPECT_FALSE(Utility().IsDir(file));
    EXPECT_FALSE(Utility().IsFile(folder));
    EXPECT_FALSE(Utility().DoesFileExist(folder));
    EXPECT_TRUE(Utility().DoesFileOrDirExist(folder));
    EXPECT_TRUE(Utility().IsDir(folder));
    EXPECT_TRUE(Utility().IsDir(folder + "/"));
    for (const CString& path : {missing, missing + "/below", file + "/below", CString()})
    {
        EXPECT_FALSE(Utility().IsFile(path));
        EXPECT_FALSE(Utility().DoesFileExist(path));
        EXPECT_FALSE(Utility().DoesFileOrDirExist(path));
        EXPECT_FALSE(Utility().IsDir(path));
    }
    EXPECT_TRUE(sink.all.empty()) << "not being there is no failure";
}

TEST(CKUtility, ExistenceTests_AreExactInLetterCase)
{
    const TempDir dir;
    dir.Write("Features", "x");
    if (dir.Exists("FEATURES"))
        GTEST_SKIP() << "the file system ignores letter case";
    EXPECT_TRUE(Utility().IsFile(Text(dir.Path("Features"))));
    EXPECT_FALSE(Utility().IsFile(Text(dir.Path("features"))));
}

TEST(CKUtility, ExistenceTests_FollowLinks)
{
    const TempDir dir;
    dir.Write("file", "x");
    dir.MakeDir("folder");
    fs::create_symlink("file", dir.Path("to-file"));
    fs::create_directory_symlink("folder", dir.Path("to-folder"));
    fs::create_symlink("nowhere", dir.Path("to-nowhere"));
    EXPECT_TRUE(Utility().IsFile(Text(dir.Path("to-file"))));
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("to-folder"))));
    EXPECT_FALSE(Utility().DoesFileOrDirExist(Text(dir.Path("to-nowhere"))));
}

TEST(CKUtility, ExistenceTests_ReportALinkThatLeadsToItself)
{
    const TempDir dir;
    fs::create_symlink("loop", dir.Path("loop"));
    RecordingSink sink;
    EXPECT_FALSE(Utility().DoesFileExist(Text(dir.Path("loop")), "Caller.cpp", 7));
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, ELOOP);
    EXPECT_EQ(sink.all[0].sourceFile, "Caller.cpp");
    EXPECT_EQ(sink.all[0].line, 7);
    EXPECT_EQ(sink.all[0].path, Text(dir.Path("loop")));
}

TEST(CKUtility, ExistenceTests_AreFalseForPipesDevicesAndSockets)
{
    const TempDir dir;
    const std::string pipe = dir.Path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string socketPath = dir.Path("socket");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(socketPath.size(), sizeof(address.sun_path));
    socketPath.copy(static_cast<char*>(address.sun_path), socketPath.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    for (const std::string& path : {pipe, socketPath, std::string("/dev/null")})
    {
        EXPECT_FALSE(Utility().IsFile(Text(path))) << path;
        EXPECT_FALSE(Utility().DoesFileOrDirExist(Text(path))) << path;
    }
    EXPECT_TRUE(Files(dir, "*.*", 1).empty());
    ::close(socket);
}

TEST(CKUtility, Paths_WithANulAreRefused)
{
    const TempDir dir;
    dir.Write("file", "x");
    const CString path = Text(dir.Path("file") + std::string("\0.Z", 3));
    RecordingSink sink;
    EXPECT_FALSE(Utility().DoesFileOrDirExist(path));
    Utility().DeleteDirectory(Text(dir.Path() + std::string("\0x", 2)));
    Utility().MakeDirectory(Text(dir.Path("new") + std::string("\0x", 2)));
    EXPECT_EQ(Utility().GDecompress(path), 0);
    CStringArray list;
    Utility().GetAllFileListIn(Text(dir.Path() + std::string("\0x", 2)), list, "*.*", 1);
    EXPECT_EQ(list.GetSize(), 0);
    EXPECT_EQ(sink.all.size(), 5U);
    const CString name = Text(std::string("FILE\0x", 6));
    EXPECT_EQ(Utility().FindPath(Text(dir.Path()), name), Utility().CKPathCombine(Text(dir.Path()), name));
    EXPECT_EQ(sink.all.size(), 6U);
    EXPECT_TRUE(dir.Exists("file"));
    EXPECT_FALSE(dir.Exists("new"));
}

TEST(CKUtility, FindPath_PrefersTheExactSpelling)
{
    const TempDir dir;
    dir.Write("PCB", "");
    dir.Write("pcb", "");
    EXPECT_EQ(Found(dir, "pcb"), dir.Path("pcb"));
    EXPECT_EQ(Found(dir, "PCB"), dir.Path("PCB"));
}

TEST(CKUtility, FindPath_TakesTheFirstInByteOrderIgnoringCase)
{
    const TempDir dir;
    for (const char* name : {"pcB", "pCb", "Pcb", "pcb1", "xpcb", "pc"})
        dir.Write(name, "");
    if (dir.Exists("PCB"))
        GTEST_SKIP() << "the file system ignores letter case";
    EXPECT_EQ(Found(dir, "PCB"), dir.Path("Pcb"));
    EXPECT_EQ(Found(dir, "pcb"), dir.Path("Pcb"));
    EXPECT_EQ(Found(dir, "PCB1"), dir.Path("pcb1"));
    for (const char* name : {"Net", "nEt", "neT"}) // whatever order the system lists them in
        dir.Write(name, "");
    EXPECT_EQ(Found(dir, "NET"), dir.Path("Net"));
}

TEST(CKUtility, FindPath_FoldsAsciiLettersOnly)
{
    const TempDir dir;
    dir.Write("a\xC4", "");
    EXPECT_EQ(Found(dir, "A\xC4"), dir.Path("a\xC4"));
    EXPECT_EQ(Found(dir, "A\xE4"), dir.Path("A\xE4"));
}

TEST(CKUtility, FindPath_ResolvesEveryComponent)
{
    const TempDir dir;
    dir.Write("NETLISTS/CadNet/Netlist", "");
    EXPECT_EQ(Found(dir, "netlists/cadnet/netlist"), dir.Path("NETLISTS/CadNet/Netlist"));
    EXPECT_EQ(Found(dir, "NETLISTS//cadnet/"), dir.Path("NETLISTS/CadNet"));
    EXPECT_EQ(Found(dir, "//netlists/cadnet"), dir.Path("NETLISTS/CadNet"));
    EXPECT_EQ(Found(dir, "netlists/refnet/netlist"), dir.Path("netlists/refnet/netlist"));
}

TEST(CKUtility, FindPath_GivesTheExactSpellingOfWhatIsMissing)
{
    const TempDir dir;
    dir.Write("file", "");
    const RecordingSink sink;
    EXPECT_EQ(Found(dir, "Missing"), dir.Path("Missing"));
    EXPECT_EQ(Found(dir, ""), dir.Path());
    EXPECT_EQ(Utility().FindPath(Text(dir.Path("no-dir")), "x"), Text(dir.Path("no-dir/x")));
    EXPECT_EQ(Utility().FindPath(Text(dir.Path("file")), "x"), Text(dir.Path("file/x")));
    EXPECT_TRUE(sink.all.empty());
}

TEST(CKUtility, FindPath_WithoutADirectoryLooksInTheCurrentOne)
{
    const TempDir dir;
    dir.Write("Standard", "");
    const fs::path former = fs::current_path();
    fs::current_path(dir.Path());
    const CString found = Utility().FindPath("", "STANDARD");
    const CString foundInDot = Utility().FindPath("./", "STANDARD");
    fs::current_path(former);
    EXPECT_EQ(found, "Standard");
    EXPECT_EQ(foundInDot, "./Standard");
}

TEST(CKUtility, FileList_IsSortedByByteValueAndHasFullPaths)
{
    const TempDir dir;
    for (const char* name : {"b", "a", "B", "a.b", "a0/x", "\xFFz", "sub/deep/er/c"})
        dir.Write(name, "");
    dir.MakeDir("empty");
    EXPECT_EQ(Files(dir, "*.*", 1), (List{"B", "a", "a.b", "a0/x", "b", "sub/deep/er/c", "\xFFz"}));
    EXPECT_EQ(Files(dir, "*.*", 0), (List{"B", "a", "a.b", "b", "\xFFz"}));
}

TEST(CKUtility, FileList_AppendsToTheList)
{
    const TempDir dir;
    dir.Write("a", "");
    CStringArray list;
    list.Add("before");
    Utility().GetAllFileListIn(Text(dir.Path() + "//"), list, "*.*", 1);
    ASSERT_EQ(list.GetSize(), 2);
    EXPECT_EQ(list[0], "before");
    EXPECT_EQ(list[1], Text(dir.Path("a")));
}

TEST(CKUtility, FileList_MatchesWildcardsIgnoringCase)
{
    const TempDir dir;
    for (const char* name : {"features", "FEATURES.Z", "features.z.bak", "f", "x.z", ".z"})
        dir.Write(name, "");
    const struct
    {
        const char* pattern;
        List expected;
    } kCases[] = {{"*.*", {".z", "FEATURES.Z", "f", "features", "features.z.bak", "x.z"}},
                  {"*", {".z", "FEATURES.Z", "f", "features", "features.z.bak", "x.z"}},
                  {"*.Z", {".z", "FEATURES.Z", "x.z"}},
                  {"?.z", {"x.z"}},
                  {"f*s*", {"FEATURES.Z", "features", "features.z.bak"}},
                  {"f", {"f"}},
                  {"*e*e*.z", {"FEATURES.Z"}},
                  {"**?", {".z", "FEATURES.Z", "f", "features", "features.z.bak", "x.z"}},
                  {"", {}},
                  {"?", {"f"}}};
    for (const auto& testCase : kCases)
        EXPECT_EQ(Files(dir, testCase.pattern, 0), testCase.expected) << testCase.pattern;
}

TEST(CKUtility, FileList_OfAPatternWithManyStarsStaysFast)
{
    const TempDir dir;
    dir.Write(std::string(250, 'a'), "");
    std::string pattern;
    for (int i = 0; i < 1000; ++i)
        pattern += "*a";
    EXPECT_TRUE(Files(dir, (pattern + "b").c_str(), 0).empty());
}

TEST(CKUtility, FileList_ListsLinksToFilesButFollowsNoLinkToADirectory)
{
    const TempDir dir;
    dir.Write("real/file", "");
    fs::create_symlink("real/file", dir.Path("to-file"));
    fs::create_directory_symlink("real", dir.Path("to-real"));
    fs::create_directory_symlink("..", dir.Path("real/up"));
    fs::create_symlink("nowhere", dir.Path("to-nowhere"));
    const RecordingSink sink;
    EXPECT_EQ(Files(dir, "*.*", 1), (List{"real/file", "to-file"}));
    EXPECT_TRUE(sink.all.empty());
}

TEST(CKUtility, FileList_ReportsALinkThatLeadsToItself)
{
    const TempDir dir;
    dir.Write("file", "");
    fs::create_symlink("loop", dir.Path("loop"));
    const RecordingSink sink;
    EXPECT_EQ(Files(dir, "*.*", 1), List{"file"});
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, ELOOP);
}

TEST(CKUtility, FileList_OfAMissingDirectoryAddsNothingAndIsReported)
{
    const TempDir dir;
    dir.Write("file", "");
    const RecordingSink sink;
    CStringArray list;
    Utility().GetAllFileListIn(Text(dir.Path("missing")), list, "*.*", 1);
    Utility().GetAllFileListIn(Text(dir.Path("file")), list, "*.*", 1);
    Utility().GetAllSubDirListIn(Text(dir.Path("missing")), list, 0);
    EXPECT_EQ(list.GetSize(), 0);
    ASSERT_EQ(sink.all.size(), 3U);
    EXPECT_EQ(sink.all[0].operation, "list");
    EXPECT_EQ(sink.all[0].systemError, ENOENT);
    EXPECT_EQ(sink.all[1].systemError, ENOTDIR);
}

TEST(CKUtility, FileList_GoesOnBehindADirectoryThatCannotBeRead)
{
    const TempDir dir;
    dir.Write("a/file", "");
    dir.Write("b/file", "");
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(dir.Path("a").c_str(), 0000), 0);
    List files;
    {
        const RecordingSink sink;
        const OrdinaryUser user;
        if (!user.IsOrdinary())
            GTEST_SKIP() << "needs a user whom the system refuses something";
        files = Files(dir, "*.*", 1);
        ASSERT_EQ(sink.all.size(), 1U);
        EXPECT_EQ(sink.all[0].systemError, EACCES);
        EXPECT_EQ(sink.all[0].path, Text(dir.Path("a")));
    }
    ASSERT_EQ(::chmod(dir.Path("a").c_str(), 0755), 0);
    EXPECT_EQ(files, List{"b/file"});
}

TEST(CKUtility, Names_MayHoldAnyBytes)
{
    const TempDir dir;
    const List names{" lead", "100%s %n", "a\nb", "quote'\"`$", "trail ", "\x01\x7F", "\xC3\xA4", "\xE4\xFF\x80"};
    for (const std::string& name : names)
        dir.Write(name, name);
    EXPECT_EQ(Files(dir, "*.*", 0),
              (List{"\x01\x7F", " lead", "100%s %n", "a\nb", "quote'\"`$", "trail ", "\xC3\xA4", "\xE4\xFF\x80"}));
    for (const std::string& name : names)
    {
        EXPECT_TRUE(Utility().IsFile(Text(dir.Path(name)))) << name;
        EXPECT_EQ(Found(dir, name.c_str()), dir.Path(name));
        const CString folder = Text(dir.Path("dir " + name));
        Utility().MakeDirectory(folder);
        EXPECT_TRUE(Utility().IsDir(folder)) << name;
        Utility().DeleteDirectory(folder);
        EXPECT_FALSE(Utility().DoesFileOrDirExist(folder)) << name;
    }
}

TEST(CKUtility, SubDirList_IsSortedAndTakesLinksWithoutFollowingThem)
{
    const TempDir dir;
    dir.Write("top/features", "");
    dir.Write("bottom/inner/features", "");
    dir.Write("file", "");
    fs::create_directory_symlink("bottom", dir.Path("link"));
    EXPECT_EQ(Directories(dir, 0), (List{"bottom", "link", "top"}));
    EXPECT_EQ(Directories(dir, 1), (List{"bottom", "bottom/inner", "link", "top"}));
}

TEST(CKUtility, Listings_TakeDirectoriesNestedDeeply)
{
    const TempDir dir;
    constexpr int kDepth = 600;
    std::string path;
    for (int i = 0; i < kDepth; ++i)
        path += "d/";
    MakeNested(dir, kDepth);
    EXPECT_EQ(Files(dir, "*.*", 1), List{path + "file"});
    EXPECT_EQ(Directories(dir, 1).size(), static_cast<std::size_t>(kDepth));
    Utility().DeleteDirectory(Text(dir.Path("d")));
    EXPECT_FALSE(dir.Exists("d"));
}

TEST(CKUtility, Directories_WithPathsLongerThanTheSystemTakesAreReportedAndDeletable)
{
    const TempDir dir;
    MakeNested(dir, 2100);
    const RecordingSink sink;
    EXPECT_TRUE(Files(dir, "*.*", 1).empty());
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].systemError, ENAMETOOLONG);
    Utility().DeleteDirectory(Text(dir.Path("d")));
    EXPECT_FALSE(dir.Exists("d"));
    EXPECT_EQ(sink.all.size(), 1U);
}

TEST(CKUtility, MakeDirectory_MakesOneLevelOnly)
{
    const TempDir dir;
    const RecordingSink sink;
    Utility().MakeDirectory(Text(dir.Path("new")));
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("new"))));
    Utility().MakeDirectory(Text(dir.Path("new")));
    EXPECT_TRUE(sink.all.empty()) << "a directory that is there already is fine";
    Utility().MakeDirectory(Text(dir.Path("no/parent")));
    EXPECT_FALSE(dir.Exists("no"));
    dir.Write("file", "x");
    Utility().MakeDirectory(Text(dir.Path("file")));
    EXPECT_EQ(dir.Read("file"), "x");
    ASSERT_EQ(sink.all.size(), 2U);
    EXPECT_EQ(sink.all[0].operation, "make directory");
    EXPECT_EQ(sink.all[0].systemError, ENOENT);
}

TEST(CKUtility, DeleteDirectory_RemovesEverythingInIt)
{
    const TempDir dir;
    dir.Write("job/a/b/c", "x");
    dir.Write("job/a/.hidden", "x");
    dir.Write("job/d", "x");
    dir.MakeDir("job/empty/inner");
    ASSERT_EQ(::mkfifo(dir.Path("job/pipe").c_str(), 0600), 0);
    dir.Write("job2", "x");
    const RecordingSink sink;
    Utility().DeleteDirectory(Text(dir.Path("job")));
    EXPECT_FALSE(dir.Exists("job"));
    EXPECT_TRUE(dir.Exists("job2"));
    EXPECT_TRUE(sink.all.empty());
}

TEST(CKUtility, DeleteDirectory_OfAMissingOneDoesNothing)
{
    const TempDir dir;
    const RecordingSink sink;
    Utility().DeleteDirectory(Text(dir.Path("missing")));
    Utility().DeleteDirectory(Text(dir.Path("missing/below")));
    Utility().DeleteDirectory(Text(dir.Write("file", "kept") + "/below"));
    EXPECT_EQ(dir.Read("file"), "kept");
    EXPECT_TRUE(sink.all.empty());
    EXPECT_TRUE(dir.Exists(""));
}

TEST(CKUtility, DeleteDirectory_NeverFollowsALink)
{
    const TempDir dir;
    dir.Write("outside/file", "x");
    dir.MakeDir("job");
    fs::create_directory_symlink(dir.Path("outside"), dir.Path("job/link"));
    fs::create_directory_symlink(dir.Path("outside"), dir.Path("link"));
    fs::create_directory_symlink(dir.Path("outside"), dir.Path("link2"));
    Utility().DeleteDirectory(Text(dir.Path("job")));
    Utility().DeleteDirectory(Text(dir.Path("link")));
    Utility().DeleteDirectory(Text(dir.Path("link2/")));
    EXPECT_FALSE(dir.Exists("job"));
    EXPECT_FALSE(fs::is_symlink(dir.Path("link")));
    EXPECT_FALSE(fs::is_symlink(dir.Path("link2")));
    EXPECT_EQ(dir.Read("outside/file"), "x");
}

TEST(CKUtility, DeleteDirectory_RefusesAFileAndADotPath)
{
    const TempDir dir;
    dir.Write("job/file", "x");
    const RecordingSink sink;
    const List refused{dir.Path("job/file"), dir.Path("job/."), dir.Path("job/.."), dir.Path("job/../"), "", "/", "//"};
    for (const std::string& path : refused)
        Utility().DeleteDirectory(Text(path));
    EXPECT_EQ(sink.all.size(), refused.size());
    EXPECT_EQ(dir.Read("job/file"), "x");
}

TEST(CKUtility, DeleteDirectory_ReportsWhatItMayNotRemove)
{
    const TempDir dir;
    dir.Write("job/file", "x");
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(dir.Path("job").c_str(), 0555), 0);
    {
        const RecordingSink sink;
        const OrdinaryUser user;
        if (!user.IsOrdinary())
            GTEST_SKIP() << "needs a user whom the system refuses something";
        Utility().DeleteDirectory(Text(dir.Path("job")));
        ASSERT_EQ(sink.all.size(), 1U);
        EXPECT_EQ(sink.all[0].operation, "delete directory");
        EXPECT_EQ(sink.all[0].systemError, EACCES);
    }
    ASSERT_EQ(::chmod(dir.Path("job").c_str(), 0755), 0);
    EXPECT_EQ(dir.Read("job/file"), "x");
}

namespace
{
// Takes boundary and limit away again.
struct Limits
{
    Limits() = default;
    Limits(const Limits&) = delete;
    Limits& operator=(const Limits&) = delete;
    ~Limits()
    {
        Utility().SetLinkBoundary("");
        Utility().SetListingLimit(~0ULL);
    }
};
} // namespace

TEST(CKUtilityListing, MoreEntriesThanTheLimitAddNothingAndAreReported)
{
    const Limits limits;
    const RecordingSink sink;
    const TempDir dir;
    dir.Write("a", "");
    dir.Write("sub/b", "");
    EXPECT_EQ(Utility().GetListingLimit(), ~0ULL);
    Utility().SetListingLimit(3);
    EXPECT_EQ(Files(dir, "*.*", 1), (List{"a", "sub/b"}));
    Utility().SetListingLimit(2);
    EXPECT_EQ(Files(dir, "*.*", 1), List{});
    EXPECT_EQ(Files(dir, "*.*", 0), List{"a"});
    ASSERT_EQ(sink.all.size(), 1U);
    EXPECT_EQ(sink.all[0].operation, "list");
    EXPECT_EQ(sink.all[0].systemError, EOVERFLOW);
    EXPECT_EQ(sink.all[0].Text(), "cannot list " + Text(dir.Path()) + ": it has more entries than allowed");
}

TEST(CKUtilityBoundary, LinksToDirectoriesOutsideAreNotThere)
{
    const Limits limits;
    const TempDir outside;
    outside.Write("inner/file", "x");
    const TempDir dir;
    dir.Write("job/real/file", "x");
    fs::create_directory_symlink(outside.Path(), dir.Path("job/out"));
    fs::create_directory_symlink("real", dir.Path("job/in"));
    const CString job = Text(dir.Path("job"));
    Utility().SetLinkBoundary(job);
    EXPECT_EQ(Utility().GetLinkBoundary(), Text(fs::canonical(dir.Path("job")).string()));
    const RecordingSink sink;
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("job/in"))));
    EXPECT_TRUE(Utility().IsFile(Text(dir.Path("job/in/file"))));
    EXPECT_TRUE(sink.all.empty());
    EXPECT_FALSE(Utility().IsDir(Text(dir.Path("job/out"))));
    EXPECT_FALSE(Utility().IsFile(Text(dir.Path("job/out/inner/file")))) << "through a link above";
    EXPECT_FALSE(Utility().DoesFileOrDirExist(Text(dir.Path("job2"))));
    ASSERT_FALSE(sink.all.empty());
    EXPECT_EQ(sink.all[0].operation, "follow");
    EXPECT_EQ(sink.all[0].systemError, EXDEV);
    CStringArray list;
    Utility().GetAllSubDirListIn(job, list, 1);
    ASSERT_EQ(list.GetSize(), 2);
    EXPECT_EQ(list[0], Text(dir.Path("job/in")));
    EXPECT_EQ(list[1], Text(dir.Path("job/real")));
    Utility().GetAllFileListIn(Text(dir.Path("job/out")), list, "*.*", 1);
    EXPECT_EQ(list.GetSize(), 2) << "the list's own directory leads out";
    Utility().SetLinkBoundary("");
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("job/out"))));
}

TEST(CKUtilityBoundary, LinksToFilesOutsideAreNotThere)
{
    const Limits limits;
    const TempDir dir;
    dir.Write("secret", "secret");
    dir.Write("secret.Z", "x");
    dir.Write("job/file", "x");
    fs::create_symlink(dir.Path("secret"), dir.Path("job/out"));
    fs::create_symlink("../secret.Z", dir.Path("job/out.Z"));
    fs::create_symlink("file", dir.Path("job/in"));
    const CString out = Text(dir.Path("job/out"));
    EXPECT_TRUE(Utility().IsFile(out)) << "followed until a boundary is set";
    Utility().SetLinkBoundary(Text(dir.Path("job")));
    const RecordingSink sink;
    CStringArray list;
    EXPECT_TRUE(Utility().IsFile(Text(dir.Path("job/in"))));
    EXPECT_TRUE(sink.all.empty());
    EXPECT_FALSE(Utility().IsFile(out));
    EXPECT_FALSE(Utility().DoesFileOrDirExist(out));
    EXPECT_EQ(Utility().GDecompress(Text(dir.Path("job/out.Z"))), 0);
    Utility().GetAllFileListIn(Text(dir.Path("job")), list, "*.*", 0);
    ASSERT_EQ(list.GetSize(), 2);
    EXPECT_EQ(list[0], Text(dir.Path("job/file")));
    EXPECT_EQ(list[1], Text(dir.Path("job/in")));
    ASSERT_FALSE(sink.all.empty());
    for (const CKDiagnostic& diagnostic : sink.all)
    {
        EXPECT_EQ(diagnostic.operation, "follow");
        EXPECT_EQ(diagnostic.systemError, EXDEV);
    }
}

TEST(CKUtilityBoundary, TheLinkThatLeadsOutIsReportedForWhatLiesBehindIt)
{
    const Limits limits;
    const TempDir outside;
    outside.Write("inner/file", "x");
    const TempDir dir;
    dir.MakeDir("job/sub");
    fs::create_directory_symlink(outside.Path(), dir.Path("job/sub/out"));
    Utility().SetLinkBoundary(Text(dir.Path("job")));
    const RecordingSink sink;
    EXPECT_FALSE(Utility().IsFile(Text(dir.Path("job/sub/out/inner/file"))));
    EXPECT_FALSE(Utility().IsFile(Text(outside.Path("inner/file"))));
    ASSERT_EQ(sink.all.size(), 2U);
    EXPECT_EQ(sink.all[0].path, Text(dir.Path("job/sub/out")));
    EXPECT_EQ(sink.all[1].path, Text(outside.Path("inner/file"))) << "no link leads there";
}

TEST(CKUtilityBoundary, ADirectoryOfALongerNameIsOutsideAndOneThatDoesNotExistHoldsNothing)
{
    const Limits limits;
    const RecordingSink sink;
    const TempDir dir;
    dir.MakeDir("job");
    dir.MakeDir("job-other");
    Utility().SetLinkBoundary(Text(dir.Path("job")));
    EXPECT_FALSE(Utility().IsDir(Text(dir.Path("job-other"))));
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("job"))));
    Utility().SetLinkBoundary(Text(dir.Path("gone")));
    EXPECT_FALSE(Utility().IsDir(Text(dir.Path("job"))));
    Utility().SetLinkBoundary("/");
    EXPECT_TRUE(Utility().IsDir(Text(dir.Path("job"))));
}

TEST(CKUtilityBytesRead, CountsWhatReadersReadAndNothingElse)
{
    const TempDir dir;
    const std::string matrix(5000, '#');
    dir.Write("job/matrix/matrix", matrix);
    dir.MakeDir("job/steps");
    const ULONGLONG before = Utility().GetBytesRead();
    EXPECT_TRUE(Utility().IsFile(Text(dir.Path("job/matrix/matrix"))));
    EXPECT_EQ(Utility().GetBytesRead(), before);
    CJOBX job;
    CStringArray steps;
    job.ParseMatrixInODBOfMFC(Text(dir.Path("job")), steps);
    EXPECT_EQ(Utility().GetBytesRead(), before + matrix.size());
}
} // namespace k_utility_test
