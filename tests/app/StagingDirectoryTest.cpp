// The directory through which a job goes to its place.
#include "write/StagingDirectory.h"

#include "output/ExitError.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

TEST(StagingDirectory, IsGoneWithEverythingInIt)
{
    const TempDir directory;
    {
        const StagingDirectory staging(directory.Path("out"));
        fs::create_directories(staging.Inside() / "job" / "steps");
        EXPECT_TRUE(directory.Exists("out"));
    }
    EXPECT_FALSE(directory.Exists("out"));
}

TEST(StagingDirectory, AnOutputDirectoryThatWasThereStays)
{
    const TempDir directory;
    directory.MakeDir("out");
    {
        const StagingDirectory staging(directory.Path("out"));
    }
    EXPECT_TRUE(directory.Exists("out"));
    EXPECT_TRUE(fs::is_empty(directory.Path("out")));
}

TEST(StagingDirectory, TwoStandSideBySide)
{
    const TempDir directory;
    const StagingDirectory first(directory.Path("out"));
    const StagingDirectory second(directory.Path("out"));
    EXPECT_NE(first.Inside(), second.Inside());
}

TEST(StagingDirectory, MovesANewJobIntoPlace)
{
    const TempDir directory;
    {
        StagingDirectory staging(directory.Path("out"));
        fs::create_directories(staging.Inside() / "job" / "steps");
        staging.MoveIntoPlace("job", false);
    }
    EXPECT_TRUE(directory.Exists("out/job/steps"));
}

TEST(StagingDirectory, ReplacesOnlyWhenAllowed)
{
    const TempDir directory;
    directory.Write("out/job/old", "old");
    {
        StagingDirectory staging(directory.Path("out"));
        fs::create_directories(staging.Inside() / "job" / "new");
        EXPECT_THROW(staging.MoveIntoPlace("job", false), ExitError);
        EXPECT_EQ(directory.Read("out/job/old"), "old");
        staging.MoveIntoPlace("job", true);
    }
    EXPECT_TRUE(directory.Exists("out/job/new"));
    EXPECT_FALSE(directory.Exists("out/job/old"));
}

TEST(StagingDirectory, TwoRenamesReplaceWhereNothingCanBeExchanged)
{
    const TempDir directory;
    directory.MakeDir("fresh/new");
    directory.Write("target/old", "old");
    bool isTargetAside = true;
    ReplaceByRenames(directory.Path("fresh"), directory.Path("target"), directory.Path("aside"), isTargetAside);
    EXPECT_FALSE(isTargetAside);
    EXPECT_TRUE(directory.Exists("target/new"));
    EXPECT_EQ(directory.Read("aside/old"), "old");
}

TEST(StagingDirectory, TheOldOneIsPutBackWhenTheNewOneCannotTakeItsPlace)
{
    const TempDir directory;
    directory.Write("target/old", "old");
    bool isTargetAside = true;
    EXPECT_THROW(
        ReplaceByRenames(directory.Path("missing"), directory.Path("target"), directory.Path("aside"), isTargetAside),
        ExitError);
    EXPECT_FALSE(isTargetAside);
    EXPECT_EQ(directory.Read("target/old"), "old");
    EXPECT_FALSE(directory.Exists("aside"));
}
