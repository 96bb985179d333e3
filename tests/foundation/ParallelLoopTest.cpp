// The parallel loops: every index once, results in order, exceptions carried to the caller.
#include "foundation/ParallelLoop.h"

#include "foundation/framework/CException.h"

#include <gtest/gtest.h>

#include <omp.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{
struct Element
{
    explicit Element(int newIndex) : index(newIndex) {}
    virtual ~Element() = default;
    int index;
};
} // namespace

TEST(ParallelLoop, RunsEveryIndexOnce)
{
    for (const int count : {0, 1, 2, 1000})
    {
        std::vector<std::atomic<int>> runs(static_cast<std::size_t>(count));
        ParallelLoop(count, [&](int i) { ++runs[static_cast<std::size_t>(i)]; });
        for (const auto& run : runs)
            EXPECT_EQ(run.load(), 1);
    }
}

TEST(ParallelLoop, RaisesTheExceptionOfTheLowestIndexAfterTheLoop)
{
    std::atomic<int> finished{0};
    std::string raised;
    try
    {
        ParallelLoop(100,
                     [&](int i)
                     {
                         if (i % 10 == 7)
                             throw std::runtime_error(std::to_string(i));
                         ++finished;
                     });
    }
    catch (const std::runtime_error& error)
    {
        raised = error.what();
    }
    EXPECT_EQ(raised, "7");
    EXPECT_EQ(finished.load(), 90);
}

TEST(ParallelLoop, CarriesTheFrameworksExceptionsToo)
{
    bool raised = false;
    try
    {
        ParallelLoop(10, [](int) { AfxThrowMemoryException(); });
    }
    catch (CMemoryException* exception)
    {
        exception->Delete();
        raised = true;
    }
    EXPECT_TRUE(raised);
}

TEST(ParallelLoop, EachThreadTakesOneContiguousBlock)
{
    std::vector<int> threads(200);
    ParallelLoop(static_cast<int>(threads.size()),
                 [&](int i)
                 {
                     threads[static_cast<std::size_t>(i)] = omp_get_thread_num();
                     std::this_thread::sleep_for(std::chrono::microseconds(200)); // so that others come to their turn
                 });
    EXPECT_TRUE(std::is_sorted(threads.begin(), threads.end()));
}

TEST(ParallelLoop, AppendedElementsStandInTheOrderOfTheIndices)
{
    COwningPtrArray<Element> array;
    array.Own(std::make_unique<Element>(-1));
    CParallelAppend<Element> appended(array);
    ParallelLoop(1000,
                 [&](int i)
                 {
                     if (i % 3 != 0)
                         appended.Append(i, std::make_unique<Element>(i));
                 });
    appended.PutInOrder();
    ASSERT_EQ(array.GetSize(), 667);
    int expected = -1;
    for (__int64 at = 0; at < array.GetSize(); ++at)
    {
        EXPECT_EQ(array.GetAt(at)->index, expected);
        expected += expected < 0 || expected % 3 == 2 ? 2 : 1;
    }
}
