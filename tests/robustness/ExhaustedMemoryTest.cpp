// Memory runs out at every place of reading, changing and writing a whole job.
#include "JOBXCLSDLL.h"
#include "robustness/SampleJob.h"
#include "robustness/Threads.h"
#include "support/CountFailedAllocations.h"
#include "support/CurrentDir.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
// Every allocation of the small job fails, of the sample every eleventh, or fewer where it takes long, unless all are
// asked for.
long SampleStep()
{
    return std::getenv("JOBX_TEST_LARGE") != nullptr ? 1 : kIsSlowBuild ? 211 : 11;
}

// Reading only: one job that is made anew for every run.
struct Read
{
    CString path;
    void operator()() const
    {
        CJOBX job;
        job.ParseODBOfMFC(path);
    }
};

// Everything that follows reading, on one job that stays.
struct Write
{
    CJOBX& job;
    CString directory;
    void operator()() const { job.WriteODBData(directory, 1); }
};
} // namespace

TEST(ExhaustedMemory, ReadingAJobRaisesTheMemoryExceptionWhateverAllocationFails)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads threads(2);
    const TempDir dir;
    const Read read{MakeSmallJob(dir).c_str()};
    EXPECT_GT(CountFailedAllocations(read), 200);
    EXPECT_GT(CountFailedAllocations(read, Refused::One), 200);
}

TEST(ExhaustedMemory, ReadingTheSampleRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads threads(4);
    const TempDir dir;
    const Read read{CopySample(dir).c_str()};
    EXPECT_GT(CountFailedAllocations(read, Refused::Every, SampleStep()), 2000);
    EXPECT_GT(CountFailedAllocations(read, Refused::One, SampleStep()), 2000);
}

TEST(ExhaustedMemory, WritingAJobRaisesTheMemoryExceptionWhateverAllocationFails)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    dir.Write("standard", "");
    const CurrentDir current(dir.Path());
    CJOBX job;
    job.ParseODBOfMFC(MakeSmallJob(dir).c_str());
    const Write write{job, dir.MakeDir("out").c_str()};
    EXPECT_GT(CountFailedAllocations(write), 50);
    EXPECT_GT(CountFailedAllocations(write, Refused::One), 50);
}

TEST(ExhaustedMemory, AFileInMemoryThatCannotGrowKeepsItsBytes)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CMemFile file(4);
    file.Write("hello", 5);
    bool raised = false;
    {
        const FailingAllocation failing(0);
        try
        {
            file.SetLength(100'000);
        }
        catch (CMemoryException* error)
        {
            error->Delete();
            raised = true;
        }
    }
    EXPECT_TRUE(raised);
    ASSERT_EQ(file.GetLength(), 5U);
    EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(file.GetBufferPtr()), 5), "hello");
}
