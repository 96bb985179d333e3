#include "output/NearestName.h"
#include "RunProgram.h"

#include <gtest/gtest.h>

namespace
{
const std::vector<std::string> kNames = {"info", "nets", "components", "packages", "panel"};

// The whole of what the program says when it ends with the code for wrong usage.
std::string WrongUsageOf(const std::vector<std::string>& arguments)
{
    const ProgramResult result = RunJobx(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    return result.err;
}
} // namespace

TEST(JobxNearestName, OneLetterMoreLessOrOtherIsNear)
{
    EXPECT_EQ(NearestName("netts", kNames), "nets");
    EXPECT_EQ(NearestName("nts", kNames), "nets");
    EXPECT_EQ(NearestName("bets", kNames), "nets");
    EXPECT_EQ(NearestName("nets", kNames), "nets");
}

TEST(JobxNearestName, TwoNeighboursTheOtherWayRoundAreOneChange)
{
    EXPECT_EQ(NearestName("inof", kNames), "info");
    EXPECT_EQ(NearestName("ifno", kNames), "info");
    EXPECT_EQ(NearestName("ofin", kNames), "");
}

TEST(JobxNearestName, TheCaseOfAsciiLettersDoesNotCount)
{
    EXPECT_EQ(NearestName("INOF", kNames), "info");
    EXPECT_EQ(NearestName("pcb", {"PDB", "PCB"}), "PCB");
    EXPECT_EQ(NearestName("\xC3\x84", {"\xC3\xA4"}), "\xC3\xA4") << "one byte differs";
}

TEST(JobxNearestName, AThirdOfWhatWasTypedMayDifferUpToThreeChanges)
{
    EXPECT_EQ(NearestName("abXY", {"abcd"}), "") << "two of four";
    EXPECT_EQ(NearestName("abcdXY", {"abcdef"}), "abcdef") << "two of six";
    EXPECT_EQ(NearestName("abcXYZ", {"abcdef"}), "") << "three of six";
    EXPECT_EQ(NearestName("abcdefXYZ", {"abcdefghi"}), "abcdefghi") << "three of nine";
    EXPECT_EQ(NearestName("abcdefghWXYZ", {"abcdefghijkl"}), "") << "four of twelve";
    EXPECT_EQ(NearestName("abcdefghi", {"abcdefghijkl"}), "abcdefghijkl");
    EXPECT_EQ(NearestName("abcdefghi", {"abcdefghijklm"}), "");
}

TEST(JobxNearestName, OfNamesAsNearAsEachOtherTheFirstIsTaken)
{
    EXPECT_EQ(NearestName("layer3", {"top", "layer1", "layer2"}), "layer1");
    EXPECT_EQ(NearestName("layer3", {"top", "layer2", "layer1"}), "layer2");
    EXPECT_EQ(NearestName("layer12", {"layer1", "layer12", "layer2"}), "layer12");
}

TEST(JobxNearestName, NothingIsNearASingleLetterAnEmptyNameOrAVeryLongOne)
{
    EXPECT_EQ(NearestName("", {"a", ""}), "");
    EXPECT_EQ(NearestName("b", {"a", "c"}), "");
    EXPECT_EQ(NearestName(std::string(101, 'a'), {std::string(101, 'a')}), "");
    EXPECT_EQ(NearestName("info", {}), "");
    EXPECT_EQ(NearestName("info", {"", std::string(1'000'000, 'i')}), "");
}

TEST(JobxNearestName, IsPrintable)
{
    EXPECT_EQ(DidYouMean("to\x1B", {"to\x1Bp"}), "; did you mean \"to\\x1Bp\"?");
    EXPECT_EQ(DidYouMean("bottom", {"top"}), "");
}

TEST(JobxNearestName, IsOfferedForACommand)
{
    EXPECT_EQ(WrongUsageOf({"inof"}), "jobx: there is no command \"inof\"; did you mean \"info\"?\n");
    EXPECT_EQ(WrongUsageOf({"Component", "board", "--csv"}),
              "jobx: there is no command \"Component\"; did you mean \"components\"?\n");
    EXPECT_EQ(WrongUsageOf({"jsno", "info", "board"}), "jobx: there is no command \"jsno\"; did you mean \"json\"?\n");
    EXPECT_EQ(WrongUsageOf({"frobnicate"}), "jobx: there is no command \"frobnicate\" (try: jobx --help)\n");
}

TEST(JobxNearestName, IsOfferedForAnOptionOfTheCommand)
{
    EXPECT_EQ(WrongUsageOf({"info", "board", "--jsno"}),
              "jobx: info has no option \"--jsno\"; did you mean \"--json\"?\n");
    EXPECT_EQ(WrongUsageOf({"nets", "board", "-csv"}), "jobx: nets has no option \"-csv\"; did you mean \"--csv\"?\n");
    EXPECT_EQ(WrongUsageOf({"diff", "a", "b", "--tolerence=0.1"}),
              "jobx: diff has no option \"--tolerence\"; did you mean \"--tolerance\"?\n");
    EXPECT_EQ(WrongUsageOf({"--verison"}), "jobx: jobx has no option \"--verison\"; did you mean \"--version\"?\n");
    EXPECT_EQ(WrongUsageOf({"--quiet", "info", "board"}), "jobx: jobx has no option \"--quiet\" (try: jobx --help)\n");
    EXPECT_EQ(WrongUsageOf({"info", "board", "--tolerance", "1"}),
              "jobx: info has no option \"--tolerance\" (try: jobx info --help)\n");
    EXPECT_EQ(WrongUsageOf({"info", "board", "-q"}), "jobx: info has no option \"-q\" (try: jobx info --help)\n");
}

TEST(JobxNearestName, AMistypedOptionIsNamedBeforeWhatItTookThePlaceOf)
{
    EXPECT_EQ(WrongUsageOf({"write", "board", "--ouput", "out"}),
              "jobx: write has no option \"--ouput\"; did you mean \"--output\"?\n");
}

TEST(JobxNearestName, IsOfferedForAStepAfterTheListOfThem)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json"})
    {
        SCOPED_TRACE(command);
        EXPECT_EQ(WrongUsageOf({command, job, "--step", "panle"}),
                  "jobx: the job has no step \"panle\"; its steps are: PCB, PANEL; did you mean \"PANEL\"?\n");
        EXPECT_EQ(WrongUsageOf({command, job, "--step", "back"}),
                  "jobx: the job has no step \"back\"; its steps are: PCB, PANEL\n");
    }
}
