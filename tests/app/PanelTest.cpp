#include "FileCounts.h"
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/SlowBuild.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
// One entry of a step-and-repeat table.
struct Entry
{
    std::string name{};
    double x = 0, y = 0;
    double dx = 0, dy = 0;
    int nx = 1, ny = 1;
    int angle = 0;
    std::string mirror{"NO"};
    std::string flip{"NO"};
};

// A job of steps with their headers and one layer without features.
class PanelJob
{
public:
    // `head`: the first lines of its header.
    void AddStep(const std::string& name, const std::vector<Entry>& entries, const std::string& head = "")
    {
        m_matrix += "STEP {\nCOL=" + std::to_string(++m_steps) + "\nNAME=" + name + "\n}\n";
        m_directory.Write("job/steps/" + name + "/profile", "UNITS=INCH\n");
        m_directory.Write("job/steps/" + name + "/layers/top/features", "#\n");
        std::ostringstream header;
        header << head << "X_DATUM=0\n";
        for (const Entry& entry : entries)
            header << "STEP-REPEAT {\nNAME=" << entry.name << "\nX=" << entry.x << "\nY=" << entry.y
                   << "\nDX=" << entry.dx << "\nDY=" << entry.dy << "\nNX=" << entry.nx << "\nNY=" << entry.ny
                   << "\nANGLE=" << entry.angle << "\nMIRROR=" << entry.mirror << "\nFLIP=" << entry.flip << "\n}\n";
        m_directory.Write("job/steps/" + name + "/stephdr", header.str());
    }
    ProgramResult Run(std::vector<std::string> options) const
    {
        m_directory.Write("job/matrix/matrix", m_matrix + "LAYER {\nROW=1\nNAME=TOP\n}\n");
        options.insert(options.begin(), {"panel", m_directory.Path("job")});
        return RunJobx(options);
    }

private:
    TempDir m_directory;
    std::string m_matrix;
    int m_steps = 0;
};

constexpr const char* kHeader = "step,number,level,parent,name,x,y,angle,mirror,flip,unit\r\n";
} // namespace

TEST(JobxPanel, PrintsThePlacementsOfTheSampleAsItAlwaysDid)
{
    const TempDir directory;
    const ProgramResult result = RunLegacy({"panel", CopySample(directory), "--step", "panel"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Step   Number  Level  Parent  Placed step     X      Y  Angle  Mirror  Flip\n"
                          "-----  ------  -----  ------  -----------  ----  -----  -----  ------  ----\n"
                          "PANEL       1      1          PCB           0.4    0.4      0  NO      NO\n"
                          "PANEL       2      1          PCB           0.4   1.55      0  NO      NO\n"
                          "PANEL       3      1          PCB          2.15    0.4      0  NO      NO\n"
                          "PANEL       4      1          PCB          2.15   1.55      0  NO      NO\n"
                          "PANEL       5      1          PCB           3.9  2.275     90  NO      NO\n");
}

TEST(JobxPanel, LengthsAreInTheUnitThatIsAskedFor)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"panel", CopySample(directory), "--step", "panel", "--units", "mm"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Number  Placed step   X mm    Y mm  Angle  Mirror  Flip\n"
                          "------  -----------  -----  ------  -----  ------  ----\n"
                          "     1  PCB          10.16   10.16      0  NO      NO\n"
                          "     2  PCB          10.16   39.37      0  NO      NO\n"
                          "     3  PCB          54.61   10.16      0  NO      NO\n"
                          "     4  PCB          54.61   39.37      0  NO      NO\n"
                          "     5  PCB          99.06  57.785     90  NO      NO\n");
}

TEST(JobxPanel, StepHeadersOfDifferentUnitsGiveOnePlace)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("array", {{"board", 1, 2}});
    job.AddStep("panel", {{"array", 10, 20}}, "UNITS=MM\n");
    const std::string header = kHeader;
    EXPECT_EQ(job.Run({"--step", "panel", "--csv"}).out,
              header + "panel,1,1,,array,0.393700787402,0.787401574803,0,NO,NO,inch\r\n"
                       "panel,2,2,1,board,1.3937007874,2.7874015748,0,NO,NO,inch\r\n");
    EXPECT_EQ(job.Run({"--step", "panel", "--csv", "--units", "mm"}).out,
              header + "panel,1,1,,array,10,20,0,NO,NO,mm\r\n"
                       "panel,2,2,1,board,35.4,70.8,0,NO,NO,mm\r\n");
}

TEST(JobxPanel, PrintsTheSampleAsCsv)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"panel", CopySample(directory), "--csv"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, std::string(kHeader) + "PANEL,1,1,,PCB,0.4,0.4,0,NO,NO,inch\r\n"
                                                 "PANEL,2,1,,PCB,0.4,1.55,0,NO,NO,inch\r\n"
                                                 "PANEL,3,1,,PCB,2.15,0.4,0,NO,NO,inch\r\n"
                                                 "PANEL,4,1,,PCB,2.15,1.55,0,NO,NO,inch\r\n"
                                                 "PANEL,5,1,,PCB,3.9,2.275,90,NO,NO,inch\r\n");
}

TEST(JobxPanel, PrintsTheSampleAsJson)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"panel", CopySample(directory), "--step", "PANEL", "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(CountJson(result.out).isValid);
    EXPECT_EQ(CountJson(result.out).Objects(""), 5);
    EXPECT_THAT(result.out,
                testing::StartsWith(R"([{"step":"PANEL","number":1,"level":1,"parent":null,"name":"PCB","x":0.4,)"
                                    R"("y":0.4,"angle":0,"mirror":"NO","flip":"NO","unit":"inch"},)"));
}

TEST(JobxPanel, StepWithoutRepeatsPlacesNothing)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    EXPECT_EQ(RunJobx({"panel", job, "--step", "pcb", "--csv"}).out, kHeader);
    EXPECT_EQ(RunJobx({"panel", job, "--step", "pcb", "--json"}).out, "[]\n");
    EXPECT_EQ(RunJobx({"panel", job, "--step", "pcb"}).out, "no placements\n");
}

TEST(JobxPanel, NestedStepsLieInTheStepsThatRepeatThem)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("array", {{"board", 1, 2, 10, 0, 2, 1}, {"coupon", 0, 5}});
    job.AddStep("coupon", {});
    job.AddStep("panel", {{"ARRAY", 100, 200, 0, 50, 1, 2}, {"coupon", 7, 8}});
    const ProgramResult result = job.Run({"--step", "panel", "--csv"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, std::string(kHeader) + "panel,1,1,,ARRAY,100,200,0,NO,NO,inch\r\n"
                                                 "panel,2,2,1,board,101,202,0,NO,NO,inch\r\n"
                                                 "panel,3,2,1,board,111,202,0,NO,NO,inch\r\n"
                                                 "panel,4,2,1,coupon,100,205,0,NO,NO,inch\r\n"
                                                 "panel,5,1,,ARRAY,100,250,0,NO,NO,inch\r\n"
                                                 "panel,6,2,5,board,101,252,0,NO,NO,inch\r\n"
                                                 "panel,7,2,5,board,111,252,0,NO,NO,inch\r\n"
                                                 "panel,8,2,5,coupon,100,255,0,NO,NO,inch\r\n"
                                                 "panel,9,1,,coupon,7,8,0,NO,NO,inch\r\n");
}

TEST(JobxPanel, TurnsAndMirrorsOfTheParentReachWhatLiesInIt)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("array", {{"board", 1, 2, 10, 0, 2, 1, 30, "YES", "YES"}});
    job.AddStep("panel", {{"array", 100, 200, 0, 0, 1, 1, 90, "YES", "NO"}});
    // A quarter turn clockwise takes (1, 2) to (2, -1) and the column at (11, 2) to (2, -11).
    EXPECT_EQ(job.Run({"--step", "panel", "--csv"}).out, std::string(kHeader) +
                                                             "panel,1,1,,array,100,200,90,YES,NO,inch\r\n"
                                                             "panel,2,2,1,board,102,199,120,YES,NO,inch\r\n"
                                                             "panel,3,2,1,board,102,189,120,YES,NO,inch\r\n");
}

TEST(JobxPanel, EveryPlaceOfANestedTableTurnsByAnyAngle)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("array", {{"board", 0, 0, 10, 0, 2, 1}});
    job.AddStep("panel", {{"array", 0, 0, 0, 0, 1, 1, 30}});
    const std::vector<std::string> lines = LinesOf(job.Run({"--step", "panel"}).out);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_THAT(WordsOf(lines[3]), ElementsAre("2", "2", "1", "board", "0", "0", "30", "NO", "NO"));
    EXPECT_THAT(WordsOf(lines[4]), ElementsAre("3", "2", "1", "board", "8.66025", "-5", "30", "NO", "NO"));
}

TEST(JobxPanel, WithoutANameEveryStepIsPrinted)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("array", {{"board", 1, 1}});
    job.AddStep("panel", {{"array", 2, 2}});
    EXPECT_EQ(job.Run({"--csv"}).out, std::string(kHeader) + "array,1,1,,board,1,1,0,NO,NO,inch\r\n"
                                                             "panel,1,1,,array,2,2,0,NO,NO,inch\r\n"
                                                             "panel,2,2,1,board,3,3,0,NO,NO,inch\r\n");
}

TEST(JobxPanel, StepThatRepeatsItselfIsAnError)
{
    const struct
    {
        std::vector<std::pair<std::string, std::string>> repeats; // by whom, and which
        const char* error;
    } cases[] = {
        {{{"a", "a"}}, "jobx: step \"a\" repeats itself\n"},
        {{{"a", "A"}}, "jobx: step \"a\" repeats itself\n"},
        {{{"a", "b"}, {"b", "a"}}, "jobx: step \"a\" repeats itself: step \"b\" in it repeats it again\n"},
        {{{"a", "b"}, {"b", "c"}, {"c", "b"}}, "jobx: step \"b\" repeats itself: step \"c\" in it repeats it again\n"},
    };
    for (const auto& [repeats, error] : cases)
    {
        SCOPED_TRACE(error);
        PanelJob job;
        for (const auto& [step, repeated] : repeats)
            job.AddStep(step, {Entry{repeated}});
        const ProgramResult result = job.Run({"--step", "a"});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, error);
    }
}

TEST(JobxPanel, StepThatRepeatsItselfNoTimesIsAnErrorToo)
{
    PanelJob job;
    job.AddStep("a", {{"a", 0, 0, 0, 0, 0, 0}});
    EXPECT_EQ(job.Run({"--step", "a"}).exitCode, 3);
}

TEST(JobxPanel, StepThatManyRepeatIsNoCycle)
{
    PanelJob job;
    job.AddStep("panel", {Entry{"left"}, Entry{"right"}, Entry{"board"}});
    job.AddStep("left", {Entry{"board"}});
    job.AddStep("right", {Entry{"board"}});
    job.AddStep("board", {});
    const ProgramResult result = job.Run({"--step", "panel", "--csv"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(LinesOf(result.out).size(), 6U);
}

TEST(JobxPanel, StepThatIsNotInTheJobIsPlacedWithAWarning)
{
    PanelJob job;
    job.AddStep("panel", {{"gone", 1, 2}, {"gone", 3, 4}});
    const ProgramResult result = job.Run({"--step", "panel", "--csv"});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.err);
    ASSERT_EQ(lines.size(), 3U);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_NE(lines[i].find("error HDR007 The step \"gone\" is not in the matrix."), std::string::npos) << lines[i];
    EXPECT_EQ(lines[2], "jobx: warning: step \"gone\" is repeated but not in the job");
    EXPECT_EQ(LinesOf(result.out).size(), 3U);
}

TEST(JobxPanel, UnknownStepIsWrongUsage)
{
    PanelJob job;
    job.AddStep("panel", {});
    const ProgramResult result = job.Run({"--step", "back"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "jobx: the job has no step \"back\"; its steps are: panel\n");
}

TEST(JobxPanel, CountsBelowOnePlaceNothing)
{
    PanelJob job;
    job.AddStep("board", {});
    job.AddStep("panel", {{"board", 0, 0, 1, 1, 0, 5}, {"board", 0, 0, 1, 1, 5, -2}, {"board", 9, 9}});
    EXPECT_EQ(job.Run({"--step", "panel", "--csv"}).out,
              std::string(kHeader) + "panel,1,1,,board,9,9,0,NO,NO,inch\r\n");
}

TEST(JobxPanel, HugeCountsAreRefusedAtOnce)
{
    const struct
    {
        int nx, ny;
        int exitCode;
    } cases[] = {{2147483647, 2147483647, 3}, {1, 100001, 3}, {1, 100000, 0}, {400, 251, 3}};
    for (const auto& [nx, ny, exitCode] : cases)
    {
        if (kIsSlowBuild && exitCode == 0)
            continue; // prints all of them
        SCOPED_TRACE(testing::Message() << nx << " x " << ny);
        PanelJob job;
        job.AddStep("board", {});
        job.AddStep("panel", {{"board", 0, 0, 1, 1, nx, ny}});
        const ProgramResult result = job.Run({"--step", "panel", "--csv"});
        EXPECT_EQ(result.exitCode, exitCode);
        if (exitCode == 0)
            EXPECT_EQ(LinesOf(result.out).size(), 100001U);
        else
            EXPECT_EQ(result.err, "jobx: more than 100000 placements, counted up to step \"panel\"\n");
    }
}

TEST(JobxPanel, CountsOfAllLevelsTogetherAreLimited)
{
    PanelJob job;
    job.AddStep("s0", {});
    for (int i = 1; i <= 100; ++i) // doubles a hundred times
        job.AddStep("s" + std::to_string(i), {{"s" + std::to_string(i - 1), 0, 0, 1, 1, 2, 1}});
    EXPECT_EQ(job.Run({"--step", "s100"}).err, "jobx: more than 100000 placements, counted up to step \"s100\"\n");
    EXPECT_EQ(LinesOf(job.Run({"--step", "s10", "--csv"}).out).size(), 2047U);
    EXPECT_EQ(job.Run({"--csv"}).exitCode, 3); // each of the first fits, all of them do not
}

TEST(JobxPanel, NestsAThousandLevelsDeep)
{
    PanelJob job;
    job.AddStep("s0", {});
    for (int i = 1; i <= 1000; ++i)
        job.AddStep("s" + std::to_string(i), {{"s" + std::to_string(i - 1), 1, 0}});
    const ProgramResult result = job.Run({"--step", "s1000", "--csv"});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), 1001U);
    EXPECT_EQ(lines.back(), "s1000,1000,1000,999,s0,1000,0,0,NO,NO,inch\r");
}
