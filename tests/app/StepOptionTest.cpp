#include "RunProgram.h"
#include "support/SlowBuild.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace
{
// A job of three steps with a net, a package and a component each; two of them repeat the first.
std::string JobOfThreeSteps(const TempDir& directory)
{
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nSTEP {\nCOL=2\nNAME=ARRAY\n}\nSTEP {\nCOL=3\n"
                                         "NAME=PANEL\n}\nLAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=SIGNAL\nNAME=TOP\n}\n");
    for (const std::string step : {"pcb", "array", "panel"})
    {
        directory.Write("job/steps/" + step + "/profile", "S P 0\nOB 0 0 I\nOS 1 0\nOS 1 1\nOE\nSE\n");
        directory.Write("job/steps/" + step + "/layers/top/features", "L 0 0 1 1 0 P 0\n");
        directory.Write("job/steps/" + step + "/eda/data",
                        "# NET 0\nNET NET_OF_" + step + "\n# PKG 0\nPKG PKG_OF_" + step + " 1 0 0 1 1\n");
        directory.Write("job/steps/" + step + "/layers/comp_+_top/components",
                        "# CMP 0\nCMP 0 1 2 0 N CMP_OF_" + step + " part\n");
        directory.Write("job/steps/" + step + "/stephdr",
                        step == "pcb" ? "" : "STEP-REPEAT {\nNAME=PCB\nX=1\nY=2\nNX=1\nNY=1\n}\n");
    }
    return job;
}
} // namespace

TEST(JobxStepOption, EitherNameTakesOneStepOrSeveralInEveryCommand)
{
    const TempDir directory;
    const std::string job = JobOfThreeSteps(directory);
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json"})
    {
        const std::string ofAllSteps = RunJobx({command, job}).out;
        for (const std::string steps : {"panel", "panel,ARRAY", "PANEL,panel,array"})
        {
            if (kIsSlowBuild && command != "nets" && steps != "panel,ARRAY")
                continue;
            SCOPED_TRACE(command + " " + steps);
            const ProgramResult one = RunJobx({command, job, "--step", steps});
            EXPECT_EQ(one.exitCode, 0) << one.err;
            EXPECT_NE(one.out, ofAllSteps);
            const ProgramResult other = RunJobx({command, job, "--steps=" + steps});
            EXPECT_EQ(other.exitCode, 0) << other.err;
            EXPECT_EQ(other.out, one.out);
        }
    }
}

TEST(JobxStepOption, TablesHaveTheRowsOfTheStepsInTheOrderGiven)
{
    const TempDir directory;
    const std::string job = JobOfThreeSteps(directory);
    const auto placed = [&](const std::string& steps) { return RunJobx({"panel", job, "--csv", "--step", steps}).out; };
    EXPECT_EQ(placed("panel,array"), "step,number,level,parent,name,x,y,angle,mirror,flip,unit\r\n"
                                     "PANEL,1,1,,PCB,1,2,0,NO,,inch\r\n"
                                     "ARRAY,1,1,,PCB,1,2,0,NO,,inch\r\n");
    EXPECT_EQ(placed("array,panel,Array"), "step,number,level,parent,name,x,y,angle,mirror,flip,unit\r\n"
                                           "ARRAY,1,1,,PCB,1,2,0,NO,,inch\r\n"
                                           "PANEL,1,1,,PCB,1,2,0,NO,,inch\r\n");
    for (const std::string command : {"nets", "components", "packages"})
    {
        SCOPED_TRACE(command);
        const std::string rows = RunJobx({command, job, "--csv", "--step", "panel,array"}).out;
        EXPECT_THAT(rows, HasSubstr("OF_panel"));
        EXPECT_GT(rows.find("OF_array"), rows.find("OF_panel"));
        EXPECT_EQ(LinesOf(rows).size(), 3U);
    }
}

TEST(JobxStepOption, WriteTakesEitherName)
{
    const TempDir directory;
    const std::string job = JobOfThreeSteps(directory);
    for (const std::string option : {"--step", "--steps"})
    {
        const std::string out = directory.MakeDir("out" + option);
        EXPECT_EQ(RunJobx({"write", job, "--quiet", "-o", out, option, "pcb,panel"}).exitCode, 0);
        EXPECT_TRUE(directory.Exists("out" + option + "/job/steps/PCB"));
        EXPECT_TRUE(directory.Exists("out" + option + "/job/steps/PANEL"));
        EXPECT_FALSE(directory.Exists("out" + option + "/job/steps/ARRAY"));
    }
}

TEST(JobxStepOption, IgnoresBlanksAroundNames)
{
    const TempDir directory;
    const std::string job = JobOfThreeSteps(directory);
    for (const std::string command : {"nets", "panel", "json"})
    {
        const ProgramResult result = RunJobx({command, job, "--steps", " panel,  array "});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(result.out, RunJobx({command, job, "--steps", "panel,array"}).out);
    }
}

TEST(JobxStepOption, MayBeGivenOnceAndWithoutGaps)
{
    const TempDir directory;
    const std::string job = JobOfThreeSteps(directory);
    EXPECT_EQ(RunJobx({"nets", job, "--step", "pcb", "--steps", "panel"}).exitCode, 2);
    for (const std::string steps : {"", ",", "pcb,", ",pcb", "pcb,,panel", " ", "pcb, ,panel"})
        for (const std::string command : {"nets", "panel"})
            EXPECT_EQ(RunJobx({command, job, "--step", steps}).err,
                      "jobx: --step needs step names, separated by commas (try: jobx " + command + " --help)\n")
                << steps;
}
