#include "JobArchive.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace std::string_literals;

namespace
{
std::size_t EntriesIn(const std::string& folder)
{
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        count += entry.exists() ? 1U : 0U;
    return count;
}
} // namespace

TEST(JobArchive, GivesBackThePackedFilesByteForByte)
{
    const TempDir dir;

    UnpackFiles(PackFile("a", "") + PackFile("b/c", "\n\nx\0y\n>>>\n"s) + PackFile("d", "last"), dir.Path());

    EXPECT_EQ(dir.Read("a"), "");
    EXPECT_EQ(dir.Read("b/c"), "\n\nx\0y\n>>>\n"s);
    EXPECT_EQ(dir.Read("d"), "last");
    EXPECT_EQ(EntriesIn(dir.Path()), 4U);
}

TEST(JobArchive, MakesADirectoryOfANameWithASeparatorAtItsEnd)
{
    const TempDir dir;

    UnpackFiles(">>> empty/\n>>> other/deep/\n", dir.Path());

    EXPECT_TRUE(std::filesystem::is_directory(dir.Path("empty")));
    EXPECT_TRUE(std::filesystem::is_directory(dir.Path("other/deep")));
}

TEST(JobArchive, MakesNothingOutsideItsFolderWhateverTheNames)
{
    const TempDir dir;
    const std::string inner = dir.MakeDir("inner");
    const std::string outside = dir.Path("outside");

    UnpackFiles(PackFile("../outside", "x") + PackFile(outside, "x") + PackFile("..", "x") + PackFile("//./", "x") +
                    PackFile("deep/../../../outside", "x") + PackFile("", "x"),
                inner);

    for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
        EXPECT_EQ(entry.path().filename(), "inner");
    EXPECT_EQ(dir.Read("inner/outside"), "x");
    EXPECT_EQ(dir.Read("inner/deep/outside"), "x");
}

TEST(JobArchive, BytesBeforeTheFirstNameAreNoArchive)
{
    const TempDir dir;

    UnpackFiles("x\n>>> a\nb\n", dir.Path());

    EXPECT_EQ(EntriesIn(dir.Path()), 0U);
}
