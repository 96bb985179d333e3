// Writing on several threads gives what writing one after the other gives.
#include "foundation/CWriteTasks.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/RecordingSink.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <omp.h>
#include <stdexcept>
#include <string>

namespace
{
// Several threads, also on a machine with one processor.
class WriteTasks : public testing::Test
{
protected:
    void SetUp() override { omp_set_num_threads(4); }
    void TearDown() override { omp_set_num_threads(m_before); }

private:
    const int m_before = omp_get_max_threads();
};

void Tell(int number)
{
    CKUtility::GetInstance()->Report("test", number, "write", "somewhere", 1);
}
} // namespace

TEST_F(WriteTasks, EveryTaskIsDoneOnce)
{
    for (const int count : {0, 1, 2, 500})
    {
        std::vector<std::atomic<int>> runs(static_cast<std::size_t>(count));
        CWriteTasks tasks;
        for (int i = 0; i < count; ++i)
            tasks.Add(i % 7, [&runs, i] { ++runs[static_cast<std::size_t>(i)]; });
        tasks.Run();
        tasks.Run();
        for (const auto& run : runs)
            EXPECT_EQ(run.load(), 1);
    }
}

TEST_F(WriteTasks, DiagnosticsComeInTheOrderOfTheTasksWhateverTheirWeight)
{
    const TempDir dir;
    dir.Write("taken", "a file");
    RecordingSink sink;
    CWriteTasks tasks;
    for (int i = 0; i < 100; ++i)
    {
        tasks.Add(i, [i] { Tell(2 * i); });
        EXPECT_EQ(tasks.MakeEntryDirectory(dir.Path().c_str(), "taken", "test", 2 * i + 1), "");
    }
    EXPECT_TRUE(sink.all.empty());
    tasks.Run();
    ASSERT_EQ(sink.all.size(), 200U);
    for (std::size_t i = 0; i < sink.all.size(); ++i)
        EXPECT_EQ(sink.all[i].line, static_cast<int>(i));
}

TEST_F(WriteTasks, TheEarliestExceptionIsRaisedAfterTheDiagnosticsBeforeIt)
{
    RecordingSink sink;
    CWriteTasks tasks;
    for (int i = 0; i < 50; ++i)
        tasks.Add(i,
                  [i]
                  {
                      Tell(i);
                      if (i % 10 == 7)
                          throw std::runtime_error(std::to_string(i));
                  });
    std::string raised;
    try
    {
        tasks.Run();
    }
    catch (const std::runtime_error& error)
    {
        raised = error.what();
    }
    EXPECT_EQ(raised, "7");
    ASSERT_EQ(sink.all.size(), 8U);
    EXPECT_EQ(sink.all.back().line, 7);
}

TEST_F(WriteTasks, WhatStandsBeforeAReplacedDirectoryIsWrittenFirst)
{
    const TempDir dir;
    const CString parent = dir.Path().c_str();
    CWriteTasks tasks;
    const CString first = tasks.MakeFreshDirectory(parent, "d", "test", 1);
    tasks.Add(1, [&dir] { dir.Write("d/first", "x"); });
    EXPECT_FALSE(dir.Exists("d/first"));
    const CString second = tasks.MakeFreshDirectory(parent, "d", "test", 2);
    tasks.Add(1, [&dir] { dir.Write("d/second", "x"); });
    tasks.Run();
    EXPECT_EQ(first, second);
    EXPECT_FALSE(dir.Exists("d/first"));
    EXPECT_TRUE(dir.Exists("d/second"));
}

TEST_F(WriteTasks, DirectoriesThatLeadOutOrCannotBeMadeAreToldOnce)
{
    const TempDir dir;
    dir.MakeDir("in");
    dir.Write("victim/file", "x");
    const CString parent = dir.Path("in").c_str();
    RecordingSink sink;
    CWriteTasks tasks;
    EXPECT_EQ(tasks.MakeFreshDirectory(parent, "../victim", "test", 1), "");
    EXPECT_EQ(tasks.MakeFreshDirectory(parent, "", "test", 1), "");
    EXPECT_EQ(tasks.MakeFreshDirectory(parent, "none/below", "test", 1), "");
    EXPECT_EQ(tasks.MakeFreshDirectory(parent, CString("a\0b", 3), "test", 1), "");
    EXPECT_EQ(tasks.MakeEntryDirectory(parent, "..", "test", 1), "");
    tasks.Run();
    EXPECT_EQ(sink.all.size(), 5U);
    EXPECT_TRUE(dir.Exists("victim/file"));
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path("in")));
}

TEST_F(WriteTasks, ALinkInTheWayIsReplacedNotFollowed)
{
    const TempDir dir;
    dir.MakeDir("in");
    dir.Write("victim/file", "x");
    std::filesystem::create_directory_symlink(dir.Path("victim"), dir.Path("in/link"));
    CWriteTasks tasks;
    EXPECT_NE(tasks.MakeFreshDirectory(dir.Path("in").c_str(), "link", "test", 1), "");
    EXPECT_FALSE(std::filesystem::is_symlink(dir.Path("in/link")));
    EXPECT_TRUE(dir.Exists("victim/file"));
    std::filesystem::create_directory_symlink(dir.Path("victim"), dir.Path("in/other"));
    EXPECT_EQ(tasks.MakeEntryDirectory(dir.Path("in").c_str(), "other", "test", 1), "");
}
