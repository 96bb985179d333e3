// Memory runs out at every place of reading, changing and writing a whole job.
#include "JOBXCLSDLL.h"
#include "robustness/SampleJob.h"
#include "robustness/Threads.h"
#include "support/CountFailedAllocations.h"
#include "support/CurrentDir.h"
#include "support/Golden.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace
{
// Every allocation of the small job fails, of the sample every eleventh, or fewer where it takes long, unless all are
// asked for.
long SampleStep()
{
    return std::getenv("JOBX_TEST_LARGE") != nullptr ? 1 : kIsSlowBuild ? 211 : 11;
}

// How much of everything a job has.
using Amounts = std::array<INT_PTR, 10>;

Amounts AmountsOf(const CJOBX& job)
{
    Amounts amounts{job.m_pSpecialSymbols->GetSize(), job.m_pSteps->m_arrSteps.GetSize()};
    for (INT_PTR i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
    {
        const CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(i);
        amounts[2] += step.m_arrLayers.GetSize();
        for (INT_PTR j = 0; j < step.m_arrLayers.GetSize(); ++j)
            amounts[3] += step.m_arrLayers.GetAt(j)->GetFeatures()->GetSize();
        amounts[4] += step.m_arrComponents.GetSize();
        for (INT_PTR j = 0; j < step.m_arrComponents.GetSize(); ++j)
            amounts[5] += step.m_arrComponents.GetAt(j)->m_arrCmps.GetSize();
        amounts[6] += step.m_pNetlist->m_arrNets.GetSize();
        amounts[7] += step.m_pEda->m_pData->m_arrNets.GetSize();
        amounts[8] += step.m_pEda->m_pData->m_arrPkgs.GetSize();
        amounts[9] += step.m_pProfile->GetFeatures()->GetSize();
    }
    return amounts;
}

// Reading only: a new job in every run.
struct ReadAgain
{
    CString path;
    Amounts* amounts = nullptr; // of the last job that was read
    void operator()() const
    {
        CJOBX job;
        job.ParseODBOfMFC(path);
        if (amounts != nullptr)
            *amounts = AmountsOf(job);
    }
};

// The same in complete reading.
struct ReadCompletelyAgain
{
    CString path;
    Amounts* amounts = nullptr; // of the last job that was read
    void operator()() const
    {
        class Sink : public CJOBXmessageSink
        {
            void OnMessage(const CJOBXmessage& message) override { const CString line(message.Line()); }
        } sink;
        CJOBX job;
        job.SetReading({.way = JOBXway::Complete, .pSink = &sink});
        job.ParseODBOfMFC(path);
        if (amounts != nullptr)
            *amounts = AmountsOf(job);
    }
};

// Everything that follows reading, on one job that stays.
struct WriteAgain
{
    CJOBX& job;
    CString directory;
    void operator()() const { job.WriteODBData(directory, 1); }
};

// The small job, and an empty current directory, from which a font would be taken.
class OpenJob
{
public:
    OpenJob() : m_current(m_dir.MakeDir("empty")) { job.ParseODBOfMFC(MakeSmallJob(m_dir).c_str()); }
    WriteAgain WriteTo(const char* name) { return {job, m_dir.MakeDir(name).c_str()}; }
    std::string Path(const char* name) const { return m_dir.Path(name); }
    CJOBX job;

private:
    TempDir m_dir;
    CurrentDir m_current;
};
} // namespace

TEST(ExhaustedMemory, ReadingAJobRaisesTheMemoryExceptionWhateverAllocationFails)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads one(1);
    const TempDir dir;
    const ReadAgain read{MakeSmallJob(dir).c_str()};
    EXPECT_GT(CountFailedAllocations(read), 200);
    EXPECT_GT(CountFailedAllocations(read, Refused::One), 200);
}

// Where there is no memory for a helper thread the others do its work, and nothing is raised.
TEST(ExhaustedMemory, ReadingAJobDoesWithoutAHelperThatCannotBeStarted)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads two(2);
    const TempDir dir;
    Amounts amounts{};
    const ReadAgain read{MakeSmallJob(dir).c_str(), &amounts};
    read(); // unpacks a symbol, which later reads find twice
    read();
    const Amounts all = amounts;
    EXPECT_EQ(std::count(all.begin(), all.end(), 0), 0);
    int without = 0;
    const auto isWhole = [&]
    {
        ++without;
        EXPECT_EQ(amounts, all);
        return true;
    };
    EXPECT_GT(CountFailedAllocations(read, Refused::Every, 1, isWhole), 200);
    EXPECT_EQ(without, 0) << "work that has a helper's memory refused needs more";
    EXPECT_GT(CountFailedAllocations(read, Refused::One, 1, isWhole), 200);
    EXPECT_GE(without, 2);
    EXPECT_LE(without, 8); // two allocations for each helper
}

TEST(ExhaustedMemory, ReadingTheSampleRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads threads(4);
    const TempDir dir;
    Amounts amounts{};
    const ReadAgain read{CopySample(dir).c_str(), &amounts};
    read(); // unpacks a symbol, which later reads find twice
    read();
    const auto isWhole = [&amounts, all = amounts]
    {
        EXPECT_EQ(amounts, all);
        return true;
    };
    EXPECT_GT(CountFailedAllocations(read, Refused::Every, SampleStep(), isWhole), 2000);
    EXPECT_GT(CountFailedAllocations(read, Refused::One, SampleStep(), isWhole), 2000);
}

TEST(ExhaustedMemory, ReadingAJobCompletelyRaisesTheMemoryExceptionWhateverAllocationFails)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads one(1);
    const TempDir dir;
    const ReadCompletelyAgain read{MakeSmallJob(dir).c_str()};
    EXPECT_GT(CountFailedAllocations(read), 400);
    EXPECT_GT(CountFailedAllocations(read, Refused::One), 400);
}

TEST(ExhaustedMemory, ReadingTheSampleCompletelyRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads threads(4);
    const TempDir dir;
    Amounts amounts{};
    const ReadCompletelyAgain read{CopySample(dir).c_str(), &amounts};
    read();
    const auto isWhole = [&amounts, all = amounts]
    {
        EXPECT_EQ(amounts, all);
        return true;
    };
    EXPECT_GT(CountFailedAllocations(read, Refused::Every, SampleStep(), isWhole), 2000);
    EXPECT_GT(CountFailedAllocations(read, Refused::One, SampleStep(), isWhole), 2000);
}

TEST(ExhaustedMemory, WritingAJobRaisesTheMemoryExceptionWhateverAllocationFails)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads one(1);
    OpenJob small;
    const WriteAgain write = small.WriteTo("out");
    EXPECT_GT(CountFailedAllocations(write), 50);
    EXPECT_GT(CountFailedAllocations(write, Refused::One), 50);
}

TEST(ExhaustedMemory, WritingAJobDoesWithoutAHelperThatCannotBeStarted)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const Threads two(2);
    OpenJob small;
    small.WriteTo("wanted")();
    const WriteAgain write = small.WriteTo("out");
    int without = 0;
    const auto isWhole = [&]
    {
        ++without;
        ExpectSameFolder(small.Path("out"), small.Path("wanted"));
        std::filesystem::remove_all(small.Path("out"));
        small.WriteTo("out");
        return true;
    };
    EXPECT_GT(CountFailedAllocations(write, Refused::One, 1, isWhole), 50);
    EXPECT_GE(without, 2);
    EXPECT_LE(without, 8);
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
