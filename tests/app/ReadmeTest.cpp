#include "FileCounts.h"
#include "RunProgram.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(Readme, ItsProgramPrintsTheFeaturesOfEveryLayer)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result = RunShell(ShellWord(JOBX_README_EXAMPLE) + " " + ShellWord(job));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(LinesOf(result.out).size(), 24U);
    const std::string file = job + "/steps/pcb/layers/spt/features";
    EXPECT_THAT(result.out, HasSubstr("PCB/spt: " + std::to_string(CountLines(file, "P ")) + " features\n"));
}
