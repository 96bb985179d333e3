// The team of worker threads: its size, and that all of it works at the same time and ends with the work.
#include "foundation/WorkerTeam.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <omp.h>
#include <set>
#include <stdexcept>
#include <string>

namespace
{
class WorkerTeam : public testing::Test
{
protected:
    WorkerTeam() { omp_set_num_threads(4); }
    ~WorkerTeam() override { omp_set_num_threads(m_before); }

private:
    const int m_before = omp_get_max_threads();
};

// The environment is read when a program starts, so a program of its own looks at it.
void ExpectSizeUnder(const char* variable, const char* value, int size)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const char* const before = std::getenv(variable);
    const std::string kept = before != nullptr ? before : "";
    ::setenv(variable, value, 1);
    EXPECT_EXIT(std::exit(WorkerTeamSize(200)), testing::ExitedWithCode(size), "") << variable << "=" << value;
    before != nullptr ? ::setenv(variable, kept.c_str(), 1) : ::unsetenv(variable);
}
} // namespace

TEST_F(WorkerTeam, IsNoLargerThanItsTasksWhatTheRuntimeAllowsAndTheBound)
{
    EXPECT_EQ(WorkerTeamSize(0), 1);
    EXPECT_EQ(WorkerTeamSize(1), 1);
    EXPECT_EQ(WorkerTeamSize(3), 3);
    EXPECT_EQ(WorkerTeamSize(1000), 4);
    omp_set_num_threads(100'000);
    EXPECT_EQ(WorkerTeamSize(200), 200);
    EXPECT_EQ(WorkerTeamSize(1'000'000), kMostWorkers);
    omp_set_num_threads(1);
    EXPECT_EQ(WorkerTeamSize(1000), 1);
}

TEST(WorkerTeamDeathTest, FollowsTheEnvironmentOfTheRuntime)
{
    ExpectSizeUnder("OMP_NUM_THREADS", "3", 3);
    ExpectSizeUnder("OMP_NUM_THREADS", "100000", 200);
    ExpectSizeUnder("OMP_THREAD_LIMIT", "1", 1);
}

TEST_F(WorkerTeam, IsOneThreadInAParallelRegionOfTheHost)
{
    std::atomic<int> most{0};
#pragma omp parallel num_threads(2)
    most = std::max(most.load(), WorkerTeamSize(10));
    EXPECT_EQ(most.load(), 1);
    EXPECT_EQ(WorkerTeamSize(10), 4);
}

TEST_F(WorkerTeam, IsOneThreadInTheWorkOfATeam)
{
    std::atomic<int> most{0};
    RunOnTeam(4, [&most] { most = std::max(most.load(), WorkerTeamSize(10)); });
    EXPECT_EQ(most.load(), 1);
    EXPECT_EQ(WorkerTeamSize(10), 4);
}

TEST_F(WorkerTeam, AllItsThreadsWorkAtTheSameTimeAndTheCallersIsOneOfThem)
{
    std::mutex mutex;
    std::set<std::thread::id> members;
    const auto count = [&]
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return members.size();
    };
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    RunOnTeam(4,
              [&]
              {
                  {
                      const std::lock_guard<std::mutex> lock(mutex);
                      members.insert(std::this_thread::get_id());
                  }
                  while (count() < 4 && std::chrono::steady_clock::now() < giveUp)
                      std::this_thread::yield();
              });
    EXPECT_EQ(members.size(), 4U);
    EXPECT_EQ(members.count(std::this_thread::get_id()), 1U);
}

TEST_F(WorkerTeam, MembersThatWaitForTheLastUseNoProcessorTime)
{
    constexpr auto kLastOneTakes = std::chrono::milliseconds(400);
    constexpr double kMostSeconds = 0.2;
    for (const bool isCallerLast : {false, true})
    {
        const auto caller = std::this_thread::get_id();
        std::atomic<bool> hasLast{false};
        const std::clock_t begin = std::clock(); // of the whole process
        RunOnTeam(4,
                  [&]
                  {
                      if ((std::this_thread::get_id() == caller) == isCallerLast && !hasLast.exchange(true))
                          std::this_thread::sleep_for(kLastOneTakes);
                  });
        EXPECT_TRUE(hasLast);
        EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, kMostSeconds);
    }
}
