#include "support/CommaLocale.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace std::string_literals;

namespace
{
std::string PrintedByC(double value)
{
    char text[32] = {};
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string PrintedByStream(double value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}
} // namespace

TEST(TempDir, GivesBackTheBytesItWrote)
{
    const TempDir dir;
    const std::string bytes = "a\r\nb\0c\xff"s;

    const std::string path = dir.Write("steps/pcb/data", bytes);

    EXPECT_EQ(dir.Read("steps/pcb/data"), bytes);
    EXPECT_EQ(path, dir.Path("steps/pcb/data"));
    EXPECT_EQ(std::filesystem::file_size(path), bytes.size());
}

TEST(TempDir, IsGoneWithItsContentsAfterwards)
{
    std::string path;
    {
        const TempDir dir;
        path = dir.Path();
        dir.Write("deep/er/file", "x");
        EXPECT_TRUE(dir.Exists("deep/er/file"));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TempDir, TwoOfThemAreDifferent)
{
    const TempDir first;
    const TempDir second;
    EXPECT_NE(first.Path(), second.Path());
}

TEST(TempDir, MissingFileIsAnError)
{
    const TempDir dir;
    EXPECT_THROW(dir.Read("none"), std::runtime_error);
}

TEST(TestPaths, SamplesAndDataExist)
{
    EXPECT_TRUE(std::filesystem::is_directory(SamplesDir() + "/blinker/matrix")) << SamplesDir();
    EXPECT_TRUE(std::filesystem::is_directory(TestDataDir())) << TestDataDir();
}

TEST(TestPaths, RealJobsAreADirectoryWhenFound)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    EXPECT_TRUE(std::filesystem::is_directory(jobs)) << jobs;
    EXPECT_EQ(jobs, RealJobsPlace());
}

TEST(CommaLocale, PrintsACommaAndBringsTheOldLocaleBack)
{
    {
        JOBX_REQUIRE_COMMA_LOCALE(comma);
        EXPECT_EQ(PrintedByC(0.5), "0,5");
        EXPECT_EQ(PrintedByStream(0.5), "0,5");
        EXPECT_EQ(std::strtod("0,5", nullptr), 0.5);
    }
    EXPECT_EQ(PrintedByC(0.5), "0.5");
    EXPECT_EQ(PrintedByStream(0.5), "0.5");
}
