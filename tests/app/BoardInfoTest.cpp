#include "RunProgram.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

using testing::HasSubstr;
using testing::Not;

namespace
{
std::string LayerRow(int row, const std::string& type, const std::string& name, const std::string& span = {})
{
    return "LAYER {\nROW=" + std::to_string(row) + "\nCONTEXT=BOARD\nTYPE=" + type + "\nNAME=" + name +
           "\nPOLARITY=POSITIVE\n" + span + "}\n";
}

// A job of four copper layers and the drill layers that `rows` adds to the matrix.
std::string MakeFourLayers(const TempDir& directory, const std::string& rows)
{
    const std::string job = MakeJob(directory, "");
    std::string matrix = "STEP {\nCOL=1\nNAME=PCB\n}\n";
    for (int i = 1; i <= 4; ++i)
        matrix += LayerRow(i, "SIGNAL", "L" + std::to_string(i));
    directory.Write("job/matrix/matrix", matrix + rows);
    return job;
}

void AddHoles(const TempDir& directory, const std::string& layer, int holes, const std::string& file = "$0 r10\n")
{
    std::string lines = file;
    for (int i = 0; i < holes; ++i)
        lines += "P 0 0 0 P 0 0\n";
    directory.Write("job/steps/pcb/layers/" + layer + "/features", lines);
}

// What the screen says about a job, as one line for each label; the lines of one fact are joined.
std::string FactOf(const std::string& job, const std::string& label)
{
    std::string fact;
    bool isInside = false;
    for (const std::string& line : LinesOf(RunJobx({"info", job, "--messages", "none"}).out))
    {
        if (!line.starts_with(' '))
            isInside = line.substr(0, 12) == label + std::string(12 - label.size(), ' ');
        if (isInside)
            fact += (fact.empty() ? "" : " ") + line.substr(12);
    }
    return fact;
}
} // namespace

TEST(BoardInfo, PrintsTheScreenOfTheSample)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"info", CopySample(directory)});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const std::string golden = TestDataDir() + "/app/board_blinker.txt";
    if (std::getenv("JOBX_REWRITE_GOLDEN") != nullptr)
        std::ofstream(golden, std::ios::binary) << result.out;
    EXPECT_EQ(result.out, FileBytes(golden));
}

TEST(BoardInfo, LegacyPrintsTheTablesAsBefore)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    RunLegacy({"info", job}); // unpacks a symbol, which the next reading finds beside the packed one
    const std::string before = RunLegacy({"info", job}).out;
    EXPECT_THAT(before, testing::StartsWith("Job               blinker\nName in the job   blinker\n"));
    EXPECT_EQ(RunLegacy({"info", job, "--all"}).out, before);
    EXPECT_THAT(RunLegacy({"info", job, "--json"}).out, Not(HasSubstr("\"board\"")));
}

TEST(BoardInfo, LayersAndSymbolsPrintTheirTablesAlone)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string layers = RunJobx({"info", job, "--layers"}).out;
    EXPECT_THAT(layers, testing::StartsWith("Matrix: 2 steps, 18 layers\n"));
    EXPECT_THAT(layers, HasSubstr("\nStep PANEL\n\n  Layer  Units"));
    EXPECT_THAT(layers, Not(HasSubstr("Profile")));
    EXPECT_THAT(layers, Not(HasSubstr("Symbols of the job")));
    EXPECT_THAT(RunJobx({"info", job, "--symbols"}).out, testing::StartsWith("Symbols of the job: 2\n\n  Symbol"));
    EXPECT_EQ(RunJobx({"info", job, "--symbols", "--layers"}).exitCode, 2);
}

TEST(BoardInfo, WhatTheJobDoesNotSayIsLeftOut)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/steps/pcb/profile", "#\n");
    EXPECT_EQ(RunJobx({"info", job, "--messages", "none"}).out, "Job         job\n"
                                                                "Board       step PCB\n"
                                                                "Copper      1 layer: TOP\n"
                                                                "Reading     no errors, no warnings\n");
}

TEST(BoardInfo, TheBoardIsTheStepWithComponentsThatRepeatsNoOther)
{
    const TempDir directory;
    EXPECT_THAT(FactOf(CopySample(directory), "Board"), testing::StartsWith("step PCB, "));
    const TempDir other;
    const std::string job = MakeJob(other, "$0 r1\nP 0 0 0 P 0 0\n");
    other.Write("job/matrix/matrix",
                "STEP {\nCOL=1\nNAME=COUPON\n}\nSTEP {\nCOL=2\nNAME=PCB\n}\n" + LayerRow(1, "SIGNAL", "TOP"));
    other.Write("job/steps/coupon/profile", "UNITS=MM\nS P 0\nOB 0 0 I\nOS 2 0\nOS 2 5.08\nOE\nSE\n");
    EXPECT_EQ(FactOf(job, "Board"), "step PCB, 25.4 x 25.4 mm (1 x 1 inch)");
    EXPECT_EQ(FactOf(job, "Other steps"), "COUPON 2 x 5.08 mm (0.0787 x 0.2 inch)");
    EXPECT_EQ(FactOf(job, "Panel"), "");
}

TEST(BoardInfo, HolesAreThroughBlindOrBuriedByTheLayersAtTheirEnds)
{
    const TempDir directory;
    const std::string job = MakeFourLayers(directory, LayerRow(5, "DRILL", "ALL") +
                                                          LayerRow(6, "DRILL", "A", "START_NAME=L1\nEND_NAME=L4\n") +
                                                          LayerRow(7, "DRILL", "B", "START_NAME=l2\nEND_NAME=l1\n") +
                                                          LayerRow(8, "DRILL", "C", "START_NAME=L2\nEND_NAME=L3\n") +
                                                          LayerRow(9, "DRILL", "D", "START_NAME=L3\nEND_NAME=L4\n") +
                                                          LayerRow(10, "DRILL", "E", "START_NAME=L3\nEND_NAME=L9\n") +
                                                          LayerRow(11, "DRILL", "F", "START_NAME=L2\nEND_NAME=L3\n"));
    for (const char* const layer : {"all", "a", "b", "c", "d", "e"})
        AddHoles(directory, layer, layer[0] == 'a' ? 1 : 2);
    AddHoles(directory, "f", 40);
    EXPECT_EQ(FactOf(job, "Drill spans"), "1 through, 1 through (L1 to L4), 2 blind (l2 to l1), 42 buried (L2 to L3), "
                                          "2 blind (L3 to L4), 2 (L3 to L9)");
    EXPECT_EQ(FactOf(job, "Drilled"), "50 holes");
}

TEST(BoardInfo, ANameOfEndlessLengthIsCut)
{
    // Shortening it sign by sign would not end in time.
    std::string name;
    for (int i = 0; i < 500'000; ++i)
        name += "\u00e4";
    const TempDir directory;
    const std::string job = MakeFourLayers(directory, LayerRow(5, "SIGNAL", name));
    EXPECT_THAT(FactOf(job, "Copper"), testing::EndsWith("\u00e4..."));
}

TEST(BoardInfo, PlatingComesFromTheAttributeElseFromTheTools)
{
    const TempDir directory;
    const std::string job = MakeFourLayers(directory, LayerRow(5, "DRILL", "D"));
    directory.Write("job/steps/pcb/layers/d/features", "UNITS=MM\n$0 r600\n$1 r800\n$2 r900\n$3 rect9x9\n@0 .drill\n"
                                                       "P 0 0 0 P 0 0\nP 1 0 0 P 0 0;0=1\nP 2 0 1 P 0 0\n"
                                                       "P 3 0 2 P 0 0\nL 4 0 5 0 0 P 0;0=0\nP 6 0 3 P 0 0;0=2\n");
    EXPECT_EQ(FactOf(job, "Drilled"), "5 holes, 1 slot: 1 via, 1 other plated, 1 non-plated");
    directory.Write("job/steps/pcb/layers/d/tools",
                    "UNITS=MM\nTOOLS {\nNUM=1\nTYPE=VIA\nFINISH_SIZE=550\nDRILL_SIZE=600\n}\n"
                    "TOOLS {\nNUM=2\nTYPE=PLATED\nFINISH_SIZE=800\nDRILL_SIZE=850\n}\n"
                    "TOOLS {\nNUM=3\nTYPE=PLATED\nDRILL_SIZE=900\n}\n"
                    "TOOLS {\nNUM=4\nTYPE=NON_PLATED\nDRILL_SIZE=900\n}\n");
    EXPECT_EQ(FactOf(job, "Drilled"), "5 holes, 1 slot: 2 vias, 2 other plated, 1 non-plated");
    EXPECT_EQ(FactOf(job, "Drill sizes"), "3 sizes, smallest 0.6 mm (23.62 mil); in mm: 0.6 x 3, 0.8 x 1, 0.9 x 1");
}

TEST(BoardInfo, ThicknessAndCopperWeightAreThoseOfTheAttributesInTheirUnit)
{
    const TempDir directory;
    const std::string job = MakeFourLayers(directory, "");
    for (int i = 1; i <= 4; ++i)
        AddHoles(directory, "l" + std::to_string(i), 1);
    directory.Write("job/misc/attrlist", "UNITS=MM\n.board_thickness = 1.6\n");
    directory.Write("job/steps/pcb/layers/l1/attrlist", "UNITS=MM\n.copper_weight = 35\n");
    directory.Write("job/steps/pcb/layers/l2/attrlist", "UNITS=INCH\n.copper_weight = 0.5\n");
    directory.Write("job/steps/pcb/layers/l3/attrlist", "UNITS=INCH\n.copper_weight = 0\n");
    EXPECT_EQ(FactOf(job, "Thickness"), "1.6 mm (0.063 inch)");
    EXPECT_EQ(FactOf(job, "Copper"), "4 layers: L1 35 micron, L2 0.5 oz, L3, L4");
    directory.Write("job/steps/pcb/attrlist", "UNITS=INCH\n.board_thickness = 0.1\n");
    EXPECT_EQ(FactOf(job, "Thickness"), "2.54 mm (0.1 inch)");
}

TEST(BoardInfo, SmallestLineHasTheUnitOfItsSymbol)
{
    const TempDir directory;
    const std::string job = MakeJob(
        directory, "UNITS=MM\n$0 r300\n$1 r5 I\n$2 r0\n$3 donut_r9x1\n$4 s200\nL 0 0 1 0 0 P 0\nL 0 0 1 0 1 P 0\n"
                   "L 0 0 1 0 2 P 0\nL 0 0 1 0 3 P 0\nP 0 0 4 P 0 0\n");
    EXPECT_EQ(FactOf(job, "Line width"), "smallest 0.127 mm (5 mil) on TOP");
}

TEST(BoardInfo, LongListsAreCutToThreeLinesOfEightyCharacters)
{
    const TempDir directory;
    std::string matrix = "STEP {\nCOL=1\nNAME=PCB\n}\n";
    for (int i = 1; i <= 64; ++i)
        matrix += LayerRow(i, "SIGNAL", "INNER_SIGNAL_LAYER_" + std::to_string(i));
    const std::string job = MakeJob(directory, "");
    directory.Write("job/matrix/matrix", matrix + LayerRow(65, "SIGNAL", std::string(200, 'X')));
    const std::vector<std::string> lines = LinesOf(RunJobx({"info", job, "--messages", "none"}).out);
    EXPECT_LT(lines.size(), 24U);
    for (const std::string& line : lines)
        EXPECT_TRUE(line.size() <= 80U || line.starts_with("First ")) << line;
    EXPECT_EQ(FactOf(job, "Copper"), "65 layers: INNER_SIGNAL_LAYER_1, INNER_SIGNAL_LAYER_2, INNER_SIGNAL_LAYER_3, "
                                     "INNER_SIGNAL_LAYER_4, INNER_SIGNAL_LAYER_5, INNER_SIGNAL_LAYER_6, "
                                     "INNER_SIGNAL_LAYER_7, and 58 more");
}

TEST(BoardInfo, SaysWhatReadingFoundWrong)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "$0 r1\nP 0 0 7 P 0 0\nWHAT 1\n");
    const std::string fact = FactOf(job, "Reading");
    EXPECT_EQ(fact, "1 error, no warnings");
    EXPECT_EQ(FactOf(job, "First"), "steps/pcb/layers/top/features:2: error FEA004 No symbol has the number 7.");
    EXPECT_THAT(RunJobx({"info", job, "--json", "--messages", "none"}).out,
                HasSubstr("\"reading\":{\"errors\":1,\"warnings\":0,\"missingParts\":0,\"first\":\"steps/pcb/"));
}

TEST(BoardInfo, JsonLengthsHaveNoDigitsThatComeFromTheChangeOfUnits)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/steps/pcb/profile", "UNITS=INCH\nS P 0\nOB 0 0 I\nOS 0 2.95\nOS 5.3 2.95\nOS 5.3 0\nOE\nSE\n");
    EXPECT_THAT(RunJobx({"info", job, "--json", "--messages", "none"}).out, HasSubstr("\"size\":[134.62,74.93],"));
}
