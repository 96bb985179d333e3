// The nets, packages and components of whole jobs, against what a plain walk through their files counts.
#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "job/CJOBX.h"
#include "job/CJOBXsteps.h"
#include "netlist/CJOBXnetlist.h"
#include "reading/RecordedMessages.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace real_steps_test
{
namespace fs = std::filesystem;
using Counts = std::map<std::string, __int64>; // by keyword

// Lines by their first word; the nets of a netlist count as "$", its points as "0".
Counts CountFiles(const fs::path& job)
{
    Counts counts;
    for (const auto& entry : fs::recursive_directory_iterator(job / "steps"))
    {
        const std::string name = entry.path().filename().string();
        if (!entry.is_regular_file() || (name != "data" && name != "components" && name != "netlist"))
            continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
        {
            const std::string word = line.substr(0, line.find(' '));
            for (const char* const wanted : {"NET", "SNT", "FID", "PKG", "PIN", "FGR", "CMP", "TOP", "PRP"})
                counts[wanted] += word == wanted ? 1 : 0;
            counts["$"] += name == "netlist" && line.starts_with('$') ? 1 : 0;
            counts["0"] += name == "netlist" && !line.empty() && line[0] >= '0' && line[0] <= '9' ? 1 : 0;
        }
    }
    return counts;
}

void CountEda(const CJOBXdata& data, Counts& counts)
{
    counts["FGR"] += data.GetFeatureGroups()->GetSize();
    for (const CJOBXdataNet& net : data.m_arrNets.Records())
    {
        ++counts["NET"];
        counts["PRP"] += net.m_arrProperties.GetSize();
        EXPECT_EQ(net.m_sName.View().find(';'), std::string_view::npos);
        for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
        {
            ++counts["SNT"];
            counts["FID"] += subnet.m_arrNetObjs.GetSize();
        }
    }
    for (const CJOBXdataPkg& package : data.m_arrPkgs.Records())
    {
        ++counts["PKG"];
        counts["PIN"] += package.m_arrPins.GetSize();
        counts["PRP"] += package.m_arrProperties.GetSize();
    }
}

Counts CountModel(const CJOBX& job)
{
    Counts counts{{"FGR", 0}};
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        CountEda(*step.GetEda()->m_pData, counts);
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            for (const CJOBXcmp& component : file.m_arrCmps.Records())
            {
                ++counts["CMP"];
                counts["TOP"] += component.m_arrTops.GetSize();
                counts["PRP"] += component.m_arrProperties.GetSize();
            }
        for (const CJOBXnet& net : step.GetNetlist()->m_arrNets.Records())
        {
            ++counts["$"];
            counts["0"] += net.m_arrPts.GetSize();
        }
    }
    return counts;
}

void ExpectAllInTheModel(const fs::path& path)
{
    SCOPED_TRACE(path.string());
    RecordedMessages sink;
    CJOBX job;
    job.SetReading(sink.Reading());
    ASSERT_EQ(job.ParseODBOfMFC(path.string().c_str()), 1);
    EXPECT_EQ(CountModel(job), CountFiles(path));
    for (const std::string& line : sink.lines)
        EXPECT_EQ(line.find(": error "), std::string::npos) << line;
}

TEST(RealSteps, OfTheSampleAreAllInTheModelWithoutAnError)
{
    ExpectAllInTheModel(SamplesDir() + "/blinker");
}

TEST(RealSteps, OfRealJobsAreAllInTheModelWithoutAnError)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const job : {"/beagleboneblack", "/flat_hierarchy"})
        ExpectAllInTheModel(jobs + job);
}
} // namespace real_steps_test
