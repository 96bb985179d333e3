#include "eda/CJOBXeda.h"
#include "eda/EdaText.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

namespace eda_real_jobs_test
{
namespace
{
// How often each first word occurs in a file, and a few things more that no reader of the library counted.
struct LineCounts
{
    std::map<std::string, int> firstWords;
    int numberedNets = 0; // "# NET" lines with a "NET" line behind
    int packagesWithAttributes = 0;
    int outlines = 0; // lines of the shapes
    std::string lastNet;
};

LineCounts Count(const std::string& path)
{
    LineCounts counts;
    std::ifstream file(path);
    std::string previous;
    for (std::string line; std::getline(file, line); previous = line)
    {
        const std::string word = line.substr(0, line.find(' '));
        ++counts.firstWords[word];
        if (word == "NET")
        {
            counts.numberedNets += previous.rfind("# NET", 0) == 0 ? 1 : 0;
            counts.lastNet = line.substr(4, line.find_last_not_of(" \r") - 3);
        }
        if (word == "PKG" && line.find(';') != std::string::npos)
            ++counts.packagesWithAttributes;
        for (const char* const outline : {"CR", "SQ", "RC", "CT", "OB", "OS", "OC", "OE", "CE"})
            counts.outlines += word == outline ? 1 : 0;
    }
    return counts;
}

struct ModelCounts
{
    int subnets = 0;
    int netObjects = 0;
    int netProperties = 0;
    int pins = 0;
    int outlines = 0;
    int packageProperties = 0;
};

ModelCounts Count(const CJOBXdata& data)
{
    ModelCounts counts;
    for (__int64 i = 0; i < data.m_arrNets.GetSize(); ++i)
    {
        const CJOBXdataNet& net = *data.m_arrNets.GetAt(i);
        counts.subnets += static_cast<int>(net.m_arrSnts.GetSize());
        counts.netProperties += static_cast<int>(net.m_arrProperties.GetSize());
        for (__int64 k = 0; k < net.m_arrSnts.GetSize(); ++k)
            counts.netObjects += static_cast<int>(net.m_arrSnts.GetAt(k)->m_arrNetObjs.GetSize());
    }
    for (__int64 i = 0; i < data.m_arrPkgs.GetSize(); ++i)
    {
        const CJOBXdataPkg& package = *data.m_arrPkgs.GetAt(i);
        counts.pins += static_cast<int>(package.m_arrPins.GetSize());
        counts.packageProperties += static_cast<int>(package.m_arrProperties.GetSize());
        counts.outlines += static_cast<int>(package.m_arrOutlines.GetSize());
        for (__int64 k = 0; k < package.m_arrPins.GetSize(); ++k)
            counts.outlines += static_cast<int>(package.m_arrPins.GetAt(k)->m_arrOutlines.GetSize());
    }
    return counts;
}
} // namespace

TEST(EdaRealJobs, NumberedNetsAndPackagesWithoutAttributesAreAllRead)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string directory = jobs + "/beagleboneblack/steps/stp/eda";
    if (!std::filesystem::exists(directory))
        GTEST_SKIP() << "no " << directory;
    LineCounts lines = Count(directory + "/data");
    CJOBXeda eda;
    ASSERT_EQ(eda.ParseODBOfMFC(directory.c_str()), 1);
    const CJOBXdata& data = *eda.m_pData;
    const ModelCounts model = Count(data);

    ASSERT_GT(lines.firstWords["NET"], 100);
    ASSERT_EQ(lines.packagesWithAttributes, 0);
    EXPECT_EQ(data.m_arrNets.GetSize(), lines.firstWords["NET"]);
    EXPECT_EQ(lines.numberedNets, lines.firstWords["NET"]);
    for (int i = 0; i < static_cast<int>(data.m_arrNets.GetSize()); ++i)
        EXPECT_EQ(data.m_arrNets.GetAt(i)->m_nNumber, i);
    EXPECT_EQ(model.subnets, lines.firstWords["SNT"]);
    EXPECT_EQ(model.netObjects, lines.firstWords["FID"] + lines.firstWords["FGR"]);
    EXPECT_EQ(data.m_arrPkgs.GetSize(), lines.firstWords["PKG"]);
    EXPECT_EQ(model.pins, lines.firstWords["PIN"]);
    EXPECT_EQ(model.outlines, lines.outlines);
    // Every property of this file stands between a package and its first pin, so the last net has them all.
    EXPECT_EQ(model.packageProperties, 0);
    EXPECT_EQ(data.m_arrNets.GetLastElement()->m_arrProperties.GetSize(), lines.firstWords["PRP"]);
    EXPECT_EQ(model.netProperties, lines.firstWords["PRP"]);
    EXPECT_EQ(std::string(data.m_arrNets.GetLastElement()->m_sName), lines.lastNet);
    EXPECT_EQ(data.m_arrLayerNames.GetSize(), 11);

    const std::string written = WrittenFile(data);
    const auto again = ReadEda(written);
    EXPECT_EQ(WrittenFile(*again), written);
    EXPECT_EQ(Count(*again).netObjects, model.netObjects);
    EXPECT_EQ(Count(*again).outlines, model.outlines);

    // A unit change turns every shape and every contour of this file into geometry.
    eda.m_pData->UnitConvert(25.4);
    EXPECT_EQ(Count(data).outlines,
              lines.firstWords["CR"] + lines.firstWords["SQ"] + lines.firstWords["RC"] + lines.firstWords["CT"]);
}

TEST(EdaRealJobs, NetsBehindACommentWithoutABlankHaveNoNumberAndPackagesWithAttributesAreLeftOut)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string directory = jobs + "/flat_hierarchy/steps/pcb/eda";
    if (!std::filesystem::exists(directory))
        GTEST_SKIP() << "no " << directory;
    LineCounts lines = Count(directory + "/data");
    CJOBXeda eda;
    ASSERT_EQ(eda.ParseODBOfMFC(directory.c_str()), 1);
    const CJOBXdata& data = *eda.m_pData;
    const ModelCounts model = Count(data);

    ASSERT_GT(lines.firstWords["NET"], 100);
    EXPECT_EQ(lines.numberedNets, 0);
    EXPECT_EQ(lines.firstWords["#NET"], lines.firstWords["NET"]);
    EXPECT_EQ(data.m_arrNets.GetSize(), lines.firstWords["NET"]);
    for (__int64 i = 0; i < data.m_arrNets.GetSize(); ++i)
        EXPECT_EQ(data.m_arrNets.GetAt(i)->m_nNumber, -1);
    EXPECT_EQ(model.subnets, lines.firstWords["SNT"]);
    EXPECT_EQ(model.netObjects, lines.firstWords["FID"] + lines.firstWords["FGR"]);
    EXPECT_EQ(std::string(data.m_arrNets.GetLastElement()->m_sName), lines.lastNet);
    ASSERT_GT(lines.firstWords["PKG"], 0);
    EXPECT_EQ(lines.packagesWithAttributes, lines.firstWords["PKG"]);
    EXPECT_EQ(data.m_arrPkgs.GetSize(), 0);
    EXPECT_EQ(data.m_arrLayerNames.GetSize(), 5);
    EXPECT_STREQ(data.m_sUnits, "INCH") << "the units line is passed over";
}
} // namespace eda_real_jobs_test
