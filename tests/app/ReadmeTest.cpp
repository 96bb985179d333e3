#include "FileCounts.h"
#include "RunProgram.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(Readme, ItsProgramPrintsTheFeaturesOfEveryLayer)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result =
        RunShell(ShellWord(JOBX_README_EXAMPLE) + " " + ShellWord(job) + " " + ShellWord(directory.MakeDir("out")));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(LinesOf(result.out).size(), 24U);
    const std::string file = job + "/steps/pcb/layers/spt/features";
    EXPECT_THAT(result.out, HasSubstr("PCB/spt: " + std::to_string(CountLines(file, "P ")) + " features\n"));
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(directory.Exists("out/blinker/steps/PCB/layers/spt/features"));
}

TEST(Readme, ItsProgramFailsWhenTheJobCannotBeWritten)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string nowhere = directory.Path("nowhere/out");
    const ProgramResult result =
        RunShell(ShellWord(JOBX_README_EXAMPLE) + " " + ShellWord(job) + " " + ShellWord(nowhere));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err, HasSubstr("cannot make directory " + nowhere));
}
