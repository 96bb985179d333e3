// The features of whole jobs, against what a plain walk through their files counts.
#include "job/CJOBX.h"
#include "job/CJOBXsteps.h"
#include "reading/RecordedMessages.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace fs = std::filesystem;

namespace
{
struct Counts
{
    std::map<std::string, int> records; // by their letter
    int attributes = 0;
    int flags = 0;
    int numbered = 0; // with a unique number
    int tableLines = 0;
    int metricFiles = 0;

    bool operator==(const Counts&) const = default;
};

void CountTail(const std::string& line, Counts& counts)
{
    const std::size_t tail = line.find(';', line.rfind('\'') == std::string::npos ? 0 : line.rfind('\''));
    if (tail == std::string::npos)
        return;
    const std::size_t end = line.find(';', tail + 1);
    const std::string list = line.substr(tail + 1, end == std::string::npos ? end : end - tail - 1);
    counts.numbered += line.find(";ID=") != std::string::npos ? 1 : 0;
    for (std::size_t at = 0; at < list.size();)
    {
        const std::size_t comma = std::min(list.find(',', at), list.size());
        ++counts.attributes;
        counts.flags += list.substr(at, comma - at).find('=') == std::string::npos ? 1 : 0;
        at = comma + 1;
    }
}

void CountFile(const fs::path& path, Counts& counts)
{
    std::ifstream file(path);
    bool isMetric = false;
    for (std::string line; std::getline(file, line);)
    {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        counts.tableLines += line.starts_with('$') || line.starts_with('@') || line.starts_with('&') ? 1 : 0;
        isMetric = isMetric || line == "UNITS=MM";
        if (line.size() < 2 || line[1] != ' ' || std::string("LPATBS").find(line[0]) == std::string::npos)
            continue;
        ++counts.records[line.substr(0, 1)];
        CountTail(line, counts);
    }
    counts.metricFiles += isMetric ? 1 : 0;
}

Counts CountFiles(const fs::path& job)
{
    Counts counts;
    for (const auto& entry : fs::recursive_directory_iterator(job / "steps"))
        if (entry.path().filename() == "features" || entry.path().filename() == "profile")
            CountFile(entry.path(), counts);
    return counts;
}

void CountLayer(const CJOBXlayer& layer, Counts& counts)
{
    counts.tableLines += static_cast<int>(layer.m_arrSymbolNames.GetSize() + layer.m_arrAttributeNames.GetSize() +
                                          layer.m_arrAttributeTexts.GetSize());
    counts.metricFiles += layer.GetUnit() == JOBXunit::Millimetre ? 1 : 0;
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
    {
        const CJOBXlayObj& feature = *layer.GetFeatures()->GetAt(i);
        ++counts.records[std::string(feature.GetType().View())];
        counts.numbered += feature.GetID() != CJOBXidentified::kNoID ? 1 : 0;
        counts.attributes += feature.nGetPropertyCount();
        for (int k = 0; k < feature.nGetPropertyCount(); ++k)
            counts.flags += feature.pGetProperty(k)->GetKind() == JOBXattributeKind::Flag ? 1 : 0;
    }
}

Counts CountModel(const std::string& path, RecordedMessages& sink)
{
    CJOBX job;
    job.SetReading(sink.Reading());
    job.ParseODBOfMFC(CString(std::string_view(path)));
    Counts counts;
    for (__int64 i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
    {
        const CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(i);
        CountLayer(*step.GetProfile(), counts);
        for (__int64 k = 0; k < step.m_arrLayers.GetSize(); ++k)
            CountLayer(*step.m_arrLayers.GetAt(k), counts);
    }
    return counts;
}

void ExpectAllOf(const std::string& path, RecordedMessages& sink)
{
    const Counts files = CountFiles(path);
    const Counts model = CountModel(path, sink);
    EXPECT_EQ(model.records, files.records);
    EXPECT_EQ(model.attributes, files.attributes);
    EXPECT_EQ(model.flags, files.flags);
    EXPECT_EQ(model.numbered, files.numbered);
    EXPECT_EQ(model.tableLines, files.tableLines);
    EXPECT_EQ(model.metricFiles, files.metricFiles);
    EXPECT_GT(files.attributes, 0);
}

TEST(RealFeatures, OfTheSampleAreAllInTheModelWithoutAnError)
{
    RecordedMessages sink;
    ExpectAllOf(SamplesDir() + "/blinker", sink);
    for (const std::string& line : sink.lines)
        EXPECT_EQ(line.find(": error "), std::string::npos) << line;
}

TEST(RealFeatures, OfRealJobsAreAllInTheModel)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const job : {"/beagleboneblack", "/flat_hierarchy"})
    {
        RecordedMessages sink;
        ExpectAllOf(jobs + job, sink);
        for (const std::string& line : sink.lines)
            if (line.find("error FEA") != std::string::npos)
                ADD_FAILURE() << line;
    }
}
} // namespace
