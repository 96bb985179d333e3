// Jobs that are read in two ways at once.
#include "JOBXCLSDLL.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace two_ways_test
{
class CountingSink : public CJOBXmessageSink
{
public:
    void OnMessage(const CJOBXmessage& /*message*/) override { ++messages; }
    int messages = 0;
};

// The attributes of all layers of a job.
__int64 AttributesOf(const CJOBX& job)
{
    __int64 count = 0;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            if (const CJOBXattributeList* const list = layer.pGetAttributeList())
                count += list->GetAttributes()->GetSize();
    return count;
}

std::unique_ptr<CJOBX> Read(const std::string& path, const CJOBXreading& reading)
{
    auto job = std::make_unique<CJOBX>();
    job->SetReading(reading);
    job->ParseODBOfMFC(path.c_str());
    return job;
}

// A copy of the sample with a fault, for the messages.
std::string FaultySample(const TempDir& dir, const char* name)
{
    const std::string job = dir.Path(name);
    std::filesystem::copy(SamplesDir() + "/blinker", job, std::filesystem::copy_options::recursive);
    dir.Write(std::string(name) + "/misc/attrlist", "no attribute\n");
    return job;
}

TEST(TwoWays, OfReadingAtOnceOnTwoThreadsDoNotMix)
{
    const TempDir dir;
    const std::string forClassic = FaultySample(dir, "classic"); // classic reading unpacks files
    const std::string forComplete = FaultySample(dir, "complete");
    for (int round = 0; round < 5; ++round)
    {
        CountingSink sink;
        std::unique_ptr<CJOBX> complete;
        std::thread other([&] { complete = Read(forComplete, {.way = JOBXway::Complete, .pSink = &sink}); });
        const std::unique_ptr<CJOBX> classic = Read(forClassic, {});
        other.join();
        EXPECT_EQ(AttributesOf(*classic), 0);
        EXPECT_GT(AttributesOf(*complete), 0);
        EXPECT_EQ(sink.messages, 1);
        EXPECT_EQ(complete->m_pSteps->m_arrSteps.GetSize(), classic->m_pSteps->m_arrSteps.GetSize());
    }
}

TEST(TwoWays, TwoCompleteReadingsAtOnceReportToTheirOwnSinks)
{
    const TempDir dir;
    const std::string faulty = FaultySample(dir, "job");
    const std::string sound = SamplesDir() + "/blinker";
    for (int round = 0; round < 5; ++round)
    {
        CountingSink ofFaulty;
        CountingSink ofSound;
        std::thread other([&] { Read(faulty, {.way = JOBXway::Complete, .pSink = &ofFaulty}); });
        Read(sound, {.way = JOBXway::Complete, .pSink = &ofSound});
        other.join();
        EXPECT_EQ(ofFaulty.messages, 1);
        EXPECT_EQ(ofSound.messages, 0);
    }
}
} // namespace two_ways_test
