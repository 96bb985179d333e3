#include "FileCounts.h"
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/SlowBuild.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
std::string JobWithComponents(const TempDir& directory)
{
    const std::string job = MakeJob(directory, "");
    directory.Write(
        "job/steps/pcb/layers/comp_+_top/components",
        "# CMP 0\nCMP 1 1.5 -2 90 N R\"1,2 10k\xE9\n# CMP 1\nCMP 7 0 0 0.5 M C\x1B[2J part;\nPRP PART_NAME 'real "
        "part'\nTOP 0 0 0 0 N 0 0 1\n");
    directory.Write("job/steps/pcb/eda/data",
                    "# PKG 1\nPKG SOT23 0.95 -1 -2 3 4\nPIN 1 S 0 0 0 E S\nPIN 2 S 1 0 0 E S\n");
    return job;
}
} // namespace

TEST(JobxTables, CsvQuotesWhatNeedsItAndEndsLinesWithCrLf)
{
    const TempDir directory;
    const ProgramResult result = RunLegacy({"components", JobWithComponents(directory), "--csv"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "step,layer,number,name,part,package,x,y,rotation,mirror,toeprints,properties,attributes\r\n"
                          "PCB,comp_+_top,0,\"R\"\"1,2\",10k\xE9,SOT23,1.5,-2,90,0,0,0,0\r\n"
                          "PCB,comp_+_top,1,C\x1B[2J,real part,,0,0,0.5,1,1,1,0\r\n");
}

TEST(JobxTables, JsonCarriesNumbersAsNumbersAndWhatIsMissingAsNull)
{
    const TempDir directory;
    const ProgramResult result = RunLegacy({"components", JobWithComponents(directory), "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(CountJson(result.out).isValid);
    EXPECT_THAT(result.out,
                HasSubstr("{\"step\":\"PCB\",\"layer\":\"comp_+_top\",\"number\":0,\"name\":\"R\\\"1,2\","
                          "\"part\":\"10k\xC3\xA9\",\"package\":\"SOT23\",\"x\":1.5,\"y\":-2,\"rotation\":90,"
                          "\"mirror\":0,\"toeprints\":0,\"properties\":0,\"attributes\":0}"));
    EXPECT_THAT(result.out, HasSubstr("\"part\":\"real part\",\"package\":null,"));
}

TEST(JobxTables, AlignedColumnsShowControlCharacters)
{
    const TempDir directory;
    const ProgramResult result = RunLegacy({"components", JobWithComponents(directory)});
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_THAT(WordsOf(lines[0]), ElementsAre("Step", "Layer", "Number", "Name", "Part", "Package", "X", "Y",
                                               "Rotation", "Mirror", "Toeprints", "Properties", "Attributes"));
    EXPECT_THAT(WordsOf(lines[2]), ElementsAre("PCB", "comp_+_top", "0", "R\"1,2", "10k\\xE9", "SOT23", "1.5", "-2",
                                               "90", "0", "0", "0", "0"));
    EXPECT_THAT(lines[3], HasSubstr("C\\x1B[2J  real part"));
}

TEST(JobxTables, PackagesCountTheirPinsAndTheComponentsOfThem)
{
    const TempDir directory;
    EXPECT_EQ(RunLegacy({"packages", JobWithComponents(directory), "--csv"}).out,
              "step,index,number,name,pitch,left,bottom,right,top,pins,outlines,components\r\n"
              "PCB,0,1,SOT23,0.95,-1,-2,3,4,2,0,1\r\n");
}

TEST(JobxTables, NetsCountTheirSubnetsAndAddWhatOnlyTheNetlistKnows)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/steps/pcb/eda/data",
                    "# NET 4\nNET GND\nSNT TOP T 0 0\nFID C 0 1\nFID C 0 2\nSNT VIA\nSNT TRC\n"
                    "SNT PLN S C 0.1\nSNT top\n# NET 5\nNET VCC\n");
    directory.Write("job/steps/pcb/netlists/cadnet/netlist",
                    "H optimize n staggered n\n$0 GND\n$1 ONLY\n0 0.1 0 0 T e e\n0 0.1 1 0 T e e\n1 0.1 2 0 T e e\n");
    EXPECT_EQ(RunLegacy({"nets", job, "--csv"}).out,
              "step,index,number,name,subnets,toeprints,vias,traces,planes,others,features,netlistPoints\r\n"
              "PCB,0,4,GND,5,1,1,1,1,1,2,2\r\n"
              "PCB,1,5,VCC,0,0,0,0,0,0,0,\r\n"
              "PCB,,1,ONLY,,,,,,,,1\r\n");
}

TEST(JobxTables, OneStepCanBeChosen)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    EXPECT_EQ(RunJobx({"nets", job, "--step", "panel", "--json"}).out, "[]\n");
    const std::string nets = RunJobx({"nets", job, "--step", "pcb", "--csv"}).out;
    EXPECT_EQ(static_cast<std::int64_t>(LinesOf(nets).size()) - 1, CountLines(job + "/steps/pcb/eda/data", "NET "));
    EXPECT_EQ(nets, RunJobx({"nets", job, "--csv"}).out); // the panel has none
}

TEST(JobxTables, RowsOfRealJobsAreTheRecordsOfTheirFiles)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string step = jobs + "/beagleboneblack/steps/stp";
    const auto rows = [&](const std::string& command) {
        return static_cast<std::int64_t>(LinesOf(RunJobx({command, jobs + "/beagleboneblack", "--csv"}).out).size()) -
               1;
    };
    EXPECT_EQ(rows("components"), CountLinesBelow(step + "/layers", "components", "# CMP"));
    if (kIsSlowBuild)
        return; // each command reads the whole job
    EXPECT_EQ(rows("packages"), CountLines(step + "/eda/data", "PKG "));
    EXPECT_EQ(rows("nets"), CountLines(step + "/eda/data", "NET "));
}
