#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/SlowBuild.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace fs = std::filesystem;

namespace
{
// Two copies of the sample, the second of which a test changes.
struct TwoJobs
{
    TempDir directoryA;
    TempDir directoryB;
    std::string a = CopySample(directoryA);
    std::string b = CopySample(directoryB);

    // Replaces the first `from` in a file of the second job.
    void Change(const std::string& file, const std::string& from, const std::string& to) const
    {
        std::string text = directoryB.Read("blinker/" + file);
        const std::size_t position = text.find(from);
        ASSERT_NE(position, std::string::npos) << file << " has no " << from;
        directoryB.Write("blinker/" + file, text.replace(position, from.size(), to));
    }

    ProgramResult Diff(std::vector<std::string> options = {"--ignore-line-numbers"}) const
    {
        options.insert(options.begin(), {"diff", a, b});
        return RunJobx(options);
    }
    ProgramResult LegacyDiff(std::vector<std::string> options = {"--ignore-line-numbers"}) const
    {
        options.emplace_back("--legacy");
        return Diff(options);
    }
};

std::string PadAt(double x, double y)
{
    return "P " + std::to_string(x) + " " + std::to_string(y) + " 0 P 0 0\n";
}

struct HandMade
{
    std::string file;
    std::string from;
    std::string to;
    std::string example; // the line that must be shown
    int differences;     // -1 where one change shows in many records
};
} // namespace

TEST(JobxDiff, EqualJobsAreIdentical)
{
    const TwoJobs jobs;
    const ProgramResult result = jobs.LegacyDiff({});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "identical\n");
    const ProgramResult json = jobs.LegacyDiff({"--json"});
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_TRUE(CountJson(json.out).isValid);
    EXPECT_THAT(json.out, HasSubstr("\"differences\":0,\"places\":0,\"groups\":[]"));
}

TEST(JobxDiff, EveryKindOfRecordIsCompared)
{
    const std::string top = "steps/pcb/layers/top/features";
    const std::string bottom = "steps/pcb/layers/bot/features";
    const std::string notes = "steps/pcb/layers/notes/features";
    const std::string eda = "steps/pcb/eda/data";
    const std::string netlist = "steps/pcb/netlists/cadnet/netlist";
    const std::string components = "steps/pcb/layers/comp_+_bot/components";
    const std::vector<HandMade> table = {
        {"misc/info", "SAVE_USER=sample", "SAVE_USER=other", "info: save user \"sample\" -> \"other\"", 1},
        {"misc/info", "MAJOR=7", "MAJOR=8", "info: version major 7 -> 8", 1},
        {"matrix/matrix", "COL=2", "COL=3", "matrix / step PANEL: column 2 -> 3", 1},
        {"matrix/matrix", "TYPE=SILK_SCREEN", "TYPE=DOCUMENT",
         "matrix / layer SST: type \"SILK_SCREEN\" -> \"DOCUMENT\"", 1},
        {"matrix/matrix", "NAME=SST", "NAME=OTHER", "matrix / layer OTHER: only in B", 2},
        {"fonts/standard", "XSIZE  0.302000", "XSIZE  0.4", "font: x size 0.302 -> 0.4", 1},
        {"fonts/standard", "LINE 0.000000 0.200000 0.000000 0.000000 P R 0.012000", "LINE 0 0.2 0 0.1 P S 0.012000",
         "font / character ! / stroke 0: end y 0 -> 0.1", 2},
        {"fonts/standard", "CHAR \"", "CHAR \x01", "font / character \\x01: only in B", 2},
        {"symbols/led_mark/features", "L -0.066 -0.036", "L -0.067 -0.036",
         "symbol led_mark / feature 0 (L): start x -0.066 -> -0.067", 1},
        {"steps/pcb/stephdr", "X_DATUM=0", "X_DATUM=2", "step PCB / header: datum x 0 -> 2", 1},
        {"steps/pcb/stephdr", "ONLINE_DRC_MODE=DISABLED", "ONLINE_DRC_MODE=ENABLED",
         "step PCB / header: online DRC mode \"DISABLED\" -> \"ENABLED\"", 1},
        {"steps/panel/stephdr", "NX=2", "NX=3", "step PANEL / header / step-repeat 0 (PCB): nx 2 -> 3", 1},
        {"steps/panel/stephdr", "STEP-REPEAT {\n    NAME=PCB\n    X=3.9", "SKIPPED {",
         "step PANEL / header / step-repeat 1 (PCB): only in A", 1},
        {"steps/pcb/profile", "OS 0 0.9", "OS 0 0.8",
         "step PCB / profile / feature 0 (S) / contour 0 / element 1: y 0.9 -> 0.8", 1},
        {top, "U INCH", "U MM", "step PCB / layer top: units \"INCH\" -> \"MM\"", 1},
        {top, "$3 r62", "$3 r63", "step PCB / layer top / symbol name 3: text \"r62\" -> \"r63\"", 1},
        {top, "&1 PINR62-40", "&1 OTHER", "step PCB / layer top / attribute text 1: text \"PINR62-40\" -> \"OTHER\"",
         -1},
        {top, "@3 .critical_net", "@3 .other",
         "step PCB / layer top / attribute name 3: text \".critical_net\" -> \".other\"", -1},
        {top, "P 0.514 0.65 0 P 0 0;0,1=0", "P 0.514 0.66 0 N 0 1;0,1=0",
         "step PCB / layer top / feature 0 (P): polarity \"P\" -> \"N\"", 3},
        {top, "P 0.514 0.65 0 P 0 0;0,1=0", "P 0.514 0.65 0 P 0 0;0",
         "step PCB / layer top / feature 0 (P) / attribute .pad_usage: only in A", 1},
        {bottom, "OS 0.9 0.73", "OS 0.9 0.74",
         "step PCB / layer bot / feature 43 (S) / contour 0 / element 1: y 0.73 -> 0.74", 1},
        {notes, "A 0.1 0 0 0.1 0.1 0.1 0 P 0 Y", "A 0.1 0 0 0.1 0.1 0.1 0 P 0 N",
         "step PCB / layer notes / feature 4 (A): clockwise \"Y\" -> \"N\"", 1},
        {notes, "'1.600'", "'1.700'", "step PCB / layer notes / feature 30 (T): text \"1.600\" -> \"1.700\"", 1},
        {"steps/pcb/layers/ssb/features", "'BLK-A1'", "'BLK-A2'",
         "step PCB / layer ssb / feature 10 (B): text \"BLK-A1\" -> \"BLK-A2\"", 1},
        {eda, "HDR blinker", "HDR other", "step PCB / eda: header \"blinker sample board\" -> \"other sample board\"",
         1},
        {eda, "LYR top gnd", "LYR gnd top",
         "step PCB / eda: layer names \"top gnd pwr bot drill smt smb spt spb\" -> \"gnd top pwr bot drill smt smb spt "
         "spb\"",
         1},
        {eda, "# NET 19", "# NET 20", "step PCB / eda / net A6: number 19 -> 20", 1},
        {eda, "NET A6", "NET B6", "step PCB / eda / net B6: only in B", 2},
        {eda, "SNT PLN S E 0", "SNT PLN S C 0", "step PCB / eda / net GND / subnet 0 (PLN): cutout type \"E\" -> \"C\"",
         1},
        {eda, "SNT TOP T 0 6\nFID C 0 6", "SNT TOP T 0 6\nFID C 0 7",
         "step PCB / eda / net $NONE$ / subnet 0 (TOP) / object 0: feature 6 -> 7", 1},
        {eda, "PKG SOIC14 0.05", "PKG SOIC14 0.06", "step PCB / eda / package SOIC14: pitch 0.05 -> 0.06", 1},
        {eda, "RC -0.077 -0.172", "RC -0.078 -0.172",
         "step PCB / eda / package SOIC14 / outline 0 (RC): parameters \"-0.077 -0.172 0.154 0.344\" -> \"-0.078 "
         "-0.172 0.154 0.344\"",
         1},
        {eda, "PIN 1 S -0.106 0.15 0 E S", "PIN 1 S -0.106 0.16 0 M S",
         "step PCB / eda / package SOIC14 / pin 1: y 0.15 -> 0.16", 2},
        {eda, "PRP PACKAGE_NAME 'SOIC14'", "PRP PACKAGE_NAME 'SOIC15'",
         "step PCB / eda / net A6 / attribute PACKAGE_NAME: value \"'SOIC14'\" -> \"'SOIC15'\"", 1},
        {components, "CMP 3 0.62 0.6 180 M C3", "CMP 3 0.62 0.6 90 M C3",
         "step PCB / components comp_+_bot / component C3: rotation 180 -> 90", 1},
        {components, "0=0.032", "0=0.033",
         "step PCB / components comp_+_bot / component C3 / attribute .comp_height: value \"0.032\" -> \"0.033\"", 1},
        {components, "PRP VALUE '100N'", "PRP VALUE '101N'",
         "step PCB / components comp_+_bot / component C3 / property VALUE: value \"100N\" -> \"101N\"", 1},
        {components, "TOP 0 0.5885 0.6 180 M 2 5 1", "TOP 0 0.5885 0.6 180 M 2 6 1",
         "step PCB / components comp_+_bot / component C3 / toeprint 0: subnet 5 -> 6", 1},
        {components, "@2 .comp_variant_list", "@3 .comp_variant_list",
         "step PCB / components comp_+_bot / attribute name 3: only in B", 2},
        {netlist, "$19 A6", "$20 A6", "step PCB / netlist / net A6: number 19 -> 20", -1},
        {netlist, "1 0.02 0.14 0.55 B e e", "1 0.03 0.14 0.55 B e e",
         "step PCB / netlist / net GND / point 1: radius 0.02 -> 0.03", 1},
    };
    const TwoJobs jobs;
    int number = 0;
    for (const HandMade& each : table)
    {
        if (kIsSlowBuild && number++ % 4 != 0)
            continue;
        const std::string before = jobs.directoryB.Read("blinker/" + each.file);
        jobs.Change(each.file, each.from, each.to);
        const ProgramResult result = jobs.LegacyDiff();
        EXPECT_EQ(result.exitCode, 1) << each.example;
        EXPECT_THAT(LinesOf(result.out), Contains("    " + each.example)) << result.out;
        if (each.differences > 0)
        {
            EXPECT_EQ(LinesOf(result.out).back(), std::to_string(each.differences) + " difference" +
                                                      (each.differences == 1 ? "" : "s") + " in 1 place")
                << result.out;
        }
        jobs.directoryB.Write("blinker/" + each.file, before);
    }
}

TEST(JobxDiff, AGroupSaysHowManyAndShowsTheFirstFew)
{
    const TwoJobs jobs;
    std::string text = jobs.directoryB.Read("blinker/steps/pcb/layers/comp_+_bot/components");
    for (std::size_t at = 0; (at = text.find(" M ", at)) != std::string::npos; ++at)
        text.replace(at, 3, " N ");
    jobs.directoryB.Write("blinker/steps/pcb/layers/comp_+_bot/components", text);
    const std::vector<std::string> lines = LinesOf(jobs.LegacyDiff().out);
    EXPECT_THAT(lines, Contains("step PCB / components comp_+_bot: component (mirror): 3 changed"));
    EXPECT_THAT(lines, Contains("step PCB / components comp_+_bot: toeprint (mirror): 6 changed"));
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const std::string& line)
                            { return line.find("toeprint") != std::string::npos && line.starts_with("    "); }),
              3);
    EXPECT_EQ(lines.back(), "9 differences in 1 place");
}

TEST(JobxDiff, OneMoreRecordIsOneDifference)
{
    const TwoJobs jobs;
    const std::string top = jobs.directoryB.Read("blinker/steps/pcb/layers/top/features");
    jobs.directoryB.Write("blinker/steps/pcb/layers/top/features", top + "L 1 1 2 2 0 P 0\n");
    const ProgramResult result = jobs.Diff();
    EXPECT_EQ(result.out, "Step PCB\n"
                          "Features    top: 1 added (55.122 sq mm)\n"
                          "\n"
                          "step PCB / layer top: feature L: 1 only in B\n"
                          "    step PCB / layer top / feature 123 (L): only in B\n"
                          "1 difference in 1 place\n");
}

TEST(JobxDiff, PartsThatWereComparedAloneAreNamedAsIdentical)
{
    const TwoJobs jobs;
    EXPECT_EQ(jobs.Diff({}).out, "identical\n");
    EXPECT_THAT(jobs.Diff({"--json"}).out,
                HasSubstr(R"("compared":["info","matrix","font","symbols","headers","layers","components",)"
                          R"("packages","nets","netlists","files"],)"));
    jobs.Change("misc/info", "SAVE_USER=sample", "SAVE_USER=other");
    const ProgramResult result = jobs.Diff({"--only", "netlists,matrix"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "identical in matrix, netlists\n");
    EXPECT_THAT(jobs.Diff({"--only", "nets", "--json"}).out, HasSubstr(R"("compared":["nets"],)"));
}

TEST(JobxDiff, NetsOfPinsBelongToTheNetsAndNotToTheComponents)
{
    const TwoJobs jobs;
    const std::string components = "steps/pcb/layers/comp_+_top/components";
    jobs.Change(components, "TOP 0 0.514 0.65 0 N 2 1 1", "TOP 0 0.514 0.65 0 N 6 1 1");
    EXPECT_EQ(jobs.Diff({"--only", "components"}).out, "identical in components\n");
    const ProgramResult nets = jobs.Diff({"--only", "nets"});
    EXPECT_EQ(nets.exitCode, 1) << nets.err;
    EXPECT_THAT(nets.out, HasSubstr("\nNets        1 pins on another net (U1.1 from VCC to XT1)\n\n"));
    EXPECT_THAT(nets.out, HasSubstr("toeprint (net): 1 changed\n"));
    EXPECT_THAT(nets.out, EndsWith("\n1 difference in 1 place\n"));
    EXPECT_EQ(jobs.Diff({"--only", "nets,components"}).out, nets.out);

    jobs.Change(components, "TOP 1 0.514 0.6 0", "TOP 1 0.524 0.6 0"); // what else a pin has belongs to the component
    EXPECT_EQ(jobs.Diff({"--only", "nets"}).out, nets.out);
    EXPECT_THAT(jobs.Diff({"--only", "components"}).out, EndsWith("\n1 difference in 1 place\n"));
    EXPECT_THAT(jobs.Diff({}).out, EndsWith("\n2 differences in 1 place\n"));
}

TEST(JobxDiff, TheSummaryNamesComponentsWithAnotherProperty)
{
    const TwoJobs jobs;
    const std::string components = "steps/pcb/layers/comp_+_top/components";
    jobs.Change(components, "'8 BIT, 14 PINS'", "'16 BIT'");
    const ProgramResult one = jobs.Diff({});
    EXPECT_THAT(one.out,
                HasSubstr("\nComponents  1 with another property (U1 VALUE 8 BIT, 14 PINS -> 16 BIT)\n\nstep PCB"));
    EXPECT_THAT(jobs.Diff({"--json"}).out,
                HasSubstr(R"("otherProperty":["U1 VALUE 8 BIT, 14 PINS -> 16 BIT"],"otherSide":[])"));
    jobs.Change(components, "PRP PART_NAME 'MCU14-BLK'", "PRP NEW 'MCU14-BLK'");
    EXPECT_THAT(jobs.Diff({}).out, HasSubstr("\nComponents  1 with another property (U1 PART_NAME removed and "
                                             "2 more)\n\nstep PCB"));
}

TEST(JobxDiff, TheSummaryHasTheAreaOfAddedAndRemovedFeatures)
{
    const std::string head = "UNITS=MM\n$0 r1000\n$1 s2000\n$2 moire1x2x3x4x5x6\n";
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + "P 1 1 1 P 0 0\nP 5 5 0 P 0 0\n");
    const std::string b = MakeJob(directoryB, head + "P 1 1 1 P 0 0\nL 0 0 10 0 0 P 0\nL 0 9 10 9 0 P 0\n"
                                                     "P 7 7 1 N 0 0\nP 8 8 2 P 0 0\n");
    EXPECT_THAT(RunJobx({"diff", a, b, "--messages", "none"}).out,
                testing::StartsWith("Features    top: 4 added (21.571 sq mm, 1 negative of 4 sq mm, 1 without area),\n"
                                    "              1 removed (0.785 sq mm)\n\n"));
    EXPECT_THAT(RunJobx({"diff", a, b, "--messages", "none", "--json"}).out,
                HasSubstr(R"({"layer":"top","added":4,"removed":1,"moved":0,)"
                          R"("addedArea":{"positive":21.5707963267949,"negative":4,"negativeFeatures":1,)"
                          R"("withoutArea":1},"removedArea":{"positive":0.7853981633974483,"negative":0,)"
                          R"("negativeFeatures":0,"withoutArea":0},"movedBy":null})"));
}

TEST(JobxDiff, AFeatureThatIsElsewhereWasMoved)
{
    const std::string head = "UNITS=MM\n$0 r1000\n$1 r500\n";
    const std::string surface = "S P 0\nOB 10 0 I\nOC -10 0 0 0 N\nOS 10 0\nOE\nSE\n";
    const std::string moved = "S P 0\nOB 11 -2 I\nOC -9 -2 1 -2 N\nOS 11 -2\nOE\nSE\n";
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + "P 1 1 1 P 0 0\nL 0 0 10 0 0 P 0\n" + surface);
    const std::string b = MakeJob(directoryB, head + "P 2 -1 1 P 0 0\nL 1 -2 11 -2 0 P 0\n" + moved);
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none"}).out,
              "Features    top: 3 moved by 1, -2 mm\n"
              "\n"
              "step PCB / layer top: feature P (place): 1 changed\n"
              "    step PCB / layer top / feature 0 (P): place 1, 1 -> 2, -1\n"
              "step PCB / layer top: feature L (place): 1 changed\n"
              "    step PCB / layer top / feature 1 (L): place 0, 0 -> 1, -2\n"
              "step PCB / layer top: feature S (place): 1 changed\n"
              "    step PCB / layer top / feature 2 (S): place 10, 0 -> 11, -2\n"
              "3 differences in 1 place\n");
    EXPECT_THAT(RunJobx({"diff", a, b, "--messages", "none", "--json"}).out,
                HasSubstr(R"x("examples":[{"path":"step PCB / layer top / feature 0 (P)","a":[1,1],"b":[2,-1]}])x"));
}

TEST(JobxDiff, AlignedSurfacesAreEqual)
{
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, "UNITS=MM\nS P 0\nOB 10 0 I\nOC -10 0 0 0 N\nOS 10 0\nOE\nSE\n");
    const std::string b = MakeJob(directoryB, "UNITS=MM\nS P 0\nOB 13 4 I\nOC -7 4 3 4 N\nOS 13 4\nOE\nSE\n");
    directoryB.Write("job/steps/pcb/stephdr", "UNITS=MM\nX_DATUM=3\nY_DATUM=4\nX_ORIGIN=3\nY_ORIGIN=4\n");
    directoryA.Write("job/steps/pcb/profile", "UNITS=MM\nS P 0\nOB 0 0 I\nOS 9 0\nOS 9 9\nOE\nSE\n");
    directoryB.Write("job/steps/pcb/profile", "UNITS=MM\nS P 0\nOB 3 4 I\nOS 12 4\nOS 12 13\nOE\nSE\n");
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none", "--align"}).out,
              "Aligned     B lies 3, 4 mm from A\nidentical\n");
}

TEST(JobxDiff, LikeFeaturesAreMovedTheWayThatMostOfThemAre)
{
    const std::string head = "UNITS=MM\n$0 r1000\n";
    std::string before;
    std::string after = "P -5 33 0 P 0 0\n"; // one more, which comes first
    for (int i = 0; i < 20; ++i)
    {
        before += PadAt(i * i, i % 3);
        after += PadAt(i * i + 0.25, i % 3);
    }
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + before);
    const std::string b = MakeJob(directoryB, head + after);
    EXPECT_THAT(RunJobx({"diff", a, b, "--messages", "none"}).out,
                testing::StartsWith("Features    top: 1 added (0.785 sq mm), 20 moved by 0.25, 0 mm\n\n"));
    directoryB.Write("job/steps/pcb/layers/top/features", head + after + "P 400 7 0 P 0 0\n");
    directoryA.Write("job/steps/pcb/layers/top/features", head + before + "P 400 3 0 P 0 0\nP -5 33 0 P 0 0\n");
    EXPECT_THAT(RunJobx({"diff", a, b, "--messages", "none"}).out,
                testing::StartsWith("Features    top: 21 moved by up to 4 mm (157.48 mil)\n"));
}

TEST(JobxDiff, EqualUniqueNumbersSayWhichFeatureWasMoved)
{
    const std::string head = "UNITS=MM\n$0 r1000\n";
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + "P 1 0 0 P 0 0;;ID=7\nP 2 0 0 P 0 0;;ID=8\n");
    const std::string b = MakeJob(directoryB, head + "P 11 0 0 P 0 0;;ID=8\nP 12 0 0 P 0 0;;ID=7\n");
    const std::string text = RunJobx({"diff", a, b, "--messages", "none"}).out;
    EXPECT_THAT(text, HasSubstr("feature 0 (P): place 1, 0 -> 12, 0\n"));
    EXPECT_THAT(text, HasSubstr("feature 1 (P): place 2, 0 -> 11, 0\n"));
    EXPECT_THAT(text, EndsWith("2 differences in 1 place\n"));
}

TEST(JobxDiff, OtherUniqueNumbersAreToldAndNothingElse)
{
    const std::string head = "UNITS=MM\n$0 r1000\n";
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + "P 1 0 0 P 0 0;;ID=7\nP 2 0 0 P 0 0;;ID=8\n");
    const std::string b = MakeJob(directoryB, head + "P 1 0 0 P 0 0;;ID=9\nP 2 0 0 P 0 0;;ID=8\n");
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none"}).out, "Other       step PCB / layer top: feature P (1)\n\n"
                                                                 "step PCB / layer top: feature P (id): 1 changed\n"
                                                                 "    step PCB / layer top / feature 0 (P): id 7 -> 9\n"
                                                                 "1 difference in 1 place\n");
}

TEST(JobxDiff, AChangedAttributeIsToldAtItsFeature)
{
    const std::string head = "UNITS=MM\n$0 r1000\n@0 .smd\n@1 .string\n&0 one\n&1 two\n";
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, head + "P 1 0 0 P 0 0;0\nP 2 0 0 P 0 0;1=0\nP 3 0 0 P 0 0\n");
    const std::string b = MakeJob(directoryB, head + "P 1 0 0 P 0 0\nP 2 0 0 P 0 0;1=1\nP 3 0 0 P 0 0\n");
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none"}).out,
              "Other       step PCB / layer top: attribute (2)\n\n"
              "step PCB / layer top: attribute: 1 only in A\n"
              "    step PCB / layer top / feature 0 (P) / attribute .smd: only in A\n"
              "step PCB / layer top: attribute (value): 1 changed\n"
              "    step PCB / layer top / feature 1 (P) / attribute .string: value \"one\" -> \"two\"\n"
              "2 differences in 1 place\n");
}

TEST(JobxDiff, ManyMovedFeaturesTakeNoMoreThanTheirShare)
{
    // All alike, each moved by another way; quadratic work would not end in time.
    constexpr int kCount = kIsSlowBuild ? 10'000 : 100'000;
    std::string before = "UNITS=MM\n$0 r1000\n";
    std::string after = before;
    for (int i = 0; i < kCount; ++i)
    {
        before += PadAt(i, 0);
        after += PadAt(i * 1.5, 5);
    }
    const TempDir directoryA;
    const TempDir directoryB;
    EXPECT_THAT(RunJobx({"diff", MakeJob(directoryA, before), MakeJob(directoryB, after), "--messages", "none"}).out,
                HasSubstr("Features    top: " + std::to_string(kCount) + " moved by up to "));
}

TEST(JobxDiff, ManyFeaturesOfOnePlaceMovedToAnotherTakeNoMoreThanTheirShare)
{
    // They differ in y only; comparing each with each would not end in time.
    constexpr int kCount = kIsSlowBuild ? 10'000 : 100'000;
    std::string before = "UNITS=MM\n$0 r1000\n";
    std::string after = before;
    for (int i = 0; i < kCount; ++i)
    {
        before += PadAt(1, 0);
        after += PadAt(1, 5.5);
    }
    const TempDir directoryA;
    const TempDir directoryB;
    EXPECT_THAT(RunJobx({"diff", MakeJob(directoryA, before), MakeJob(directoryB, after), "--messages", "none"}).out,
                HasSubstr("Features    top: " + std::to_string(kCount) + " moved by 0, 5.5 mm"));
}

TEST(JobxDiff, NumbersWithinTheToleranceAreEqualWhereverTheyLie)
{
    // On both sides of multiples of the tolerance.
    constexpr int kCount = 1000;
    std::string before = "UNITS=MM\n$0 r1000\n";
    std::string after = before;
    for (int i = 0; i < kCount; ++i)
    {
        before += PadAt(i * 0.0137, -i * 0.0071);
        after += PadAt(i * 0.0137 + 0.0099, -i * 0.0071 - 0.0099);
    }
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, before);
    const std::string b = MakeJob(directoryB, after);
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none", "--tolerance", "0.01"}).exitCode, 0);
    EXPECT_EQ(RunJobx({"diff", a, b, "--messages", "none", "--tolerance", "0.0098"}).exitCode, 1);
}

TEST(JobxDiff, RecordsOfOneKindMakePairsWhateverStandsBetween)
{
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, "L 0 0 1 1 0 P 0\nP 5 5 0 P 0 0\nL 2 2 3 3 0 P 0\n");
    const std::string b = MakeJob(directoryB, "P 5 6 0 P 0 0\nL 0 0 1 1 0 P 0\nL 2 2 3 4 0 P 0\n");
    EXPECT_EQ(RunLegacy({"diff", a, b}).out, "step PCB / layer top: feature L (end y): 1 changed\n"
                                             "    step PCB / layer top / feature 2 (L): end y 3 -> 4\n"
                                             "step PCB / layer top: feature P (y): 1 changed\n"
                                             "    step PCB / layer top / feature 1 (P): y 5 -> 6\n"
                                             "step PCB / layer top: layer (order of kinds): 1 changed\n"
                                             "    step PCB / layer top: order of kinds changed\n"
                                             "3 differences in 1 place\n");
}

TEST(JobxDiff, NamedRecordsMakePairsAndTheirOrderIsToldOnce)
{
    const TempDir directoryA;
    const TempDir directoryB;
    const std::string a = MakeJob(directoryA, "");
    const std::string b = MakeJob(directoryB, "");
    directoryA.Write("job/steps/pcb/eda/data", "NET A\nNET B\nNET B\nNET C\n");
    directoryB.Write("job/steps/pcb/eda/data", "NET B\nNET C\nNET A\nNET D\n");
    EXPECT_EQ(RunLegacy({"diff", a, b}).out, "step PCB / eda: net: 1 only in A\n"
                                             "    step PCB / eda / net B: only in A\n"
                                             "step PCB / eda: net: 1 only in B\n"
                                             "    step PCB / eda / net D: only in B\n"
                                             "step PCB / eda: net (order): 1 changed\n"
                                             "    step PCB / eda: order changed\n"
                                             "3 differences in 1 place\n");
}

TEST(JobxDiff, TheToleranceIsForCoordinatesAndLengthsOnly)
{
    const TwoJobs jobs;
    jobs.Change("steps/pcb/layers/top/features", "P 0.514 0.65 0 P", "P 0.514 0.6505 0 P");
    jobs.Change("steps/pcb/eda/data", "RC -0.077 -0.172", "RC -0.0775 -0.172");
    EXPECT_THAT(jobs.Diff().out, EndsWith("2 differences in 2 places\n"));
    EXPECT_EQ(jobs.Diff({"--tolerance", "0.0254"}).exitCode, 0);
    EXPECT_THAT(jobs.Diff({"--tolerance", "0.00254"}).out, EndsWith("2 differences in 2 places\n"));
    jobs.Change("steps/pcb/layers/comp_+_bot/components", "CMP 3 0.62 0.6 180 M", "CMP 3 0.62 0.6 180.0001 M");
    const ProgramResult result = jobs.Diff({"--tolerance", "0.0254"});
    EXPECT_THAT(result.out, HasSubstr("component C3: rotation 180 -> 180.0001\n"));
    EXPECT_THAT(result.out, EndsWith("1 difference in 1 place\n"));
}

TEST(JobxDiff, LineNumbersAreAKindOfTheirOwn)
{
    const TwoJobs jobs;
    jobs.Change("steps/pcb/layers/top/features", "#\n", "#\n#\n");
    jobs.Change("steps/pcb/eda/data", "HDR", "#\nHDR");
    const ProgramResult result = jobs.LegacyDiff({});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("step PCB / eda: line number (subnet): 109 changed\n    step PCB / eda / net "
                                      "$NONE$ / subnet 0 (TOP): subnet 10 -> 11\n"));
    EXPECT_THAT(result.out, HasSubstr("step PCB / eda: line number (net object): 325 changed\n"));
    EXPECT_THAT(result.out, HasSubstr("step PCB / eda: line number (outline): 57 changed\n"));
    EXPECT_THAT(result.out, EndsWith("507 differences in 2 places\n"));
    const ProgramResult without = jobs.LegacyDiff({"--ignore-line-numbers"});
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_EQ(without.out, "identical\n");
    jobs.Change("steps/pcb/profile", "#\n", "#\n#\n");
    EXPECT_THAT(jobs.LegacyDiff({}).out, HasSubstr("step PCB / profile: line number (contour element): 16 changed\n"));
}

TEST(JobxDiff, MissingPartsAreToldOnce)
{
    const TwoJobs jobs;
    fs::remove_all(jobs.b + "/steps/panel");
    fs::remove_all(jobs.b + "/steps/pcb/layers/notes");
    fs::remove_all(jobs.a + "/steps/pcb/layers/comp_+_bot");
    fs::remove_all(jobs.b + "/symbols/led_mark");
    const ProgramResult result = jobs.LegacyDiff({"--quiet"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "job: symbol: 1 only in A\n"
                          "    job / symbol led_mark: only in A\n"
                          "step PCB: layer: 1 only in A\n"
                          "    step PCB / layer notes: only in A\n"
                          "step PCB: components: 1 only in B\n"
                          "    step PCB / components comp_+_bot: only in B\n"
                          "job: step: 1 only in A\n"
                          "    job / step PANEL: only in A\n"
                          "4 differences in 2 places\n");
}

TEST(JobxDiff, LayersMakePairsWhateverTheirLetterCase)
{
    const TwoJobs jobs;
    fs::rename(jobs.b + "/steps/pcb/layers/top", jobs.b + "/steps/pcb/layers/Top");
    EXPECT_EQ(jobs.Diff().out, "Other       step PCB / layer top: layer (1)\n"
                               "\n"
                               "step PCB / layer top: layer (name): 1 changed\n"
                               "    step PCB / layer top: name \"top\" -> \"Top\"\n"
                               "1 difference in 1 place\n");
}

TEST(JobxDiff, JsonIsOneDocumentAlsoWithTextsOfNoKnownEncoding)
{
    const TwoJobs jobs;
    jobs.Change("misc/info", "SAVE_USER=sample", "SAVE_USER=s\xE9\x1B");
    jobs.Change("steps/pcb/stephdr", "X_DATUM=0", "X_DATUM=nan");
    jobs.Change("steps/pcb/stephdr", "Y_DATUM=0", "Y_DATUM=1.5");
    jobs.Change("steps/pcb/eda/data", "NET A6", "NET \"6");
    const ProgramResult result = jobs.LegacyDiff({"--json", "--ignore-line-numbers"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(CountJson(result.out).isValid) << result.out;
    EXPECT_THAT(result.out,
                HasSubstr("\"differences\":5,\"places\":3,\"groups\":[{\"place\":\"info\",\"kind\":\"info\","
                          "\"change\":\"changed\",\"field\":\"save user\",\"count\":1,\"examples\":[{"
                          "\"path\":\"info\",\"a\":\"sample\",\"b\":\"s\xC3\xA9\\u001B\"}]}"));
    EXPECT_THAT(result.out, HasSubstr("\"a\":0,\"b\":\"nan\""));
    EXPECT_THAT(result.out, HasSubstr("\"a\":0,\"b\":1.5"));
    EXPECT_THAT(result.out, HasSubstr("\"change\":\"onlyInB\",\"field\":\"\",\"count\":1,\"examples\":[{\"path\":"
                                      "\"step PCB / eda / net \\\"6\"}]"));
}

TEST(JobxDiff, ControlCharactersAreShownInPaths)
{
    const TwoJobs jobs;
    jobs.Change("steps/pcb/eda/data", "NET A6", "NET \x1B[2J");
    jobs.Change("steps/panel/stephdr", "NAME=PCB", "NAME=\x1B[2J");
    const ProgramResult result = jobs.Diff();
    EXPECT_THAT(result.out, Not(HasSubstr("\x1B")));
    EXPECT_THAT(result.out, HasSubstr("net \\x1B[2J: only in B"));
}

TEST(JobxDiff, ExitCodesTellEqualDifferentWrongUsageAndUnreadable)
{
    const TwoJobs jobs;
    EXPECT_EQ(jobs.Diff({}).exitCode, 0);
    EXPECT_EQ(RunJobx({"diff", jobs.a}).exitCode, 2);
    EXPECT_EQ(RunJobx({"diff", jobs.a, jobs.b, "--tolerance", "-1"}).exitCode, 2);
    EXPECT_EQ(RunJobx({"diff", jobs.a, jobs.b, "--tolerance", "wide"}).exitCode, 2);
    EXPECT_EQ(RunJobx({"diff", jobs.a, jobs.b, "--unknown"}).exitCode, 2);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"diff", jobs.a, jobs.directoryB.Path("nowhere")},
          std::vector<std::string>{"diff", jobs.directoryB.Path("nowhere"), jobs.b},
          std::vector<std::string>{"diff", jobs.a, jobs.b + "/matrix"}})
    {
        const ProgramResult result = RunJobx(arguments);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, MatchesRegex("jobx: [^\n]*\n"));
    }
    jobs.Change("misc/info", "SAVE_USER=sample", "SAVE_USER=other");
    EXPECT_EQ(jobs.Diff({}).exitCode, 1);
}

TEST(JobxDiff, TwiceTheRecordsTakeNoMoreThanTheirShare)
{
    // All features differ and no two nets have a partner at their own position; quadratic work would not end in time.
    const TempDir directoryA;
    const TempDir directoryB;
    std::string featuresA;
    std::string featuresB;
    std::string netsA;
    std::string netsB;
    constexpr int kCount = kIsSlowBuild ? 10'000 : 100'000;
    for (int i = 0; i < kCount; ++i)
    {
        featuresA += "L 0 0 1 " + std::to_string(i) + " 0 P 0\n";
        featuresB += "L 0 0 2 " + std::to_string(i) + " 0 P 0\n";
        netsA += "NET N" + std::to_string(i) + "\n";
        netsB += "NET N" + std::to_string(kCount - 1 - i) + "\n";
    }
    const std::string a = MakeJob(directoryA, featuresA);
    const std::string b = MakeJob(directoryB, featuresB);
    directoryA.Write("job/steps/pcb/eda/data", netsA);
    directoryB.Write("job/steps/pcb/eda/data", netsB);
    const ProgramResult result = RunLegacy({"diff", a, b});
    EXPECT_THAT(result.out,
                HasSubstr("step PCB / layer top: feature L (end x): " + std::to_string(kCount) + " changed\n"));
    EXPECT_THAT(result.out, EndsWith(std::to_string(kCount + 1) + " differences in 2 places\n"));
}
