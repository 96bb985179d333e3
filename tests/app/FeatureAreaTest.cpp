// Areas of symbols and features against areas computed by hand.
#include "RunProgram.h"

#include "diff/FeatureArea.h"
#include "model/SymbolArea.h"
#include "reading/JobReader.h"

#include <gmock/gmock.h>

#include <array>
#include <numbers>

namespace
{
constexpr double kPi = std::numbers::pi;

// The areas of the features of a job of one layer; -1 for those without.
std::vector<double> AreasOf(const std::string& jobPath)
{
    const ReadJob read = ReadJobSilently(jobPath);
    FeatureAreas areas(*read.job->m_pSpecialSymbols);
    const CJOBXlayer& layer = *read.job->m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.GetAt(0);
    std::vector<double> found;
    for (const CJOBXlayObj& feature : layer.GetFeatures()->Records())
        found.push_back(areas.AreaOf(feature, layer).value_or(-1.0));
    return found;
}

void ExpectAreas(const std::vector<double>& found, const std::vector<double>& expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_NEAR(found[i], expected[i], 1e-9) << "feature " << i;
}
} // namespace

TEST(SymbolArea, StandardSymbolsHaveTheAreaOfTheirFigure)
{
    const struct
    {
        const char* name;
        double area;
    } cases[] = {
        {"r10", 25.0 * kPi},
        {"s10", 100.0},
        {"rect40x20", 800.0},
        {"rect40x20xr5", 800.0 - 100.0 + 25.0 * kPi}, // four quarters of a circle in place of squares of 5
        {"rect40x20xr5x13", 800.0 - 50.0 + 12.5 * kPi},
        {"rect40x20xc4", 800.0 - 32.0},
        {"rect40x20xc4x2", 800.0 - 8.0},
        {"oval40x20", 20.0 * 20.0 + 100.0 * kPi},
        {"oval20x40", 20.0 * 20.0 + 100.0 * kPi},
        {"oval_h40x20", 30.0 * 20.0 + 50.0 * kPi}, // a rectangle and half a circle
        {"di40x20", 400.0},
        {"oct30x20x5", 600.0 - 50.0},
        {"hex_l40x20x10", 20.0 * 20.0 + 2.0 * 100.0}, // a rectangle and two triangles
        {"hex_s20x40x10", 20.0 * 20.0 + 2.0 * 100.0},
        {"donut_r20x10", 75.0 * kPi},
        {"donut_s20x10", 300.0},
        {"donut_s20x10xr6", (400.0 - 144.0 + 36.0 * kPi) - (100.0 - 4.0 + kPi)},
        {"donut_sr20x10", 400.0 - 25.0 * kPi},
        {"donut_rc40x20x5", 800.0 - 300.0},
        {"donut_o40x20x5", (400.0 + 100.0 * kPi) - (200.0 + 25.0 * kPi)},
        {"bfr10", 12.5 * kPi},
        {"bfs10", 50.0},
        {"tri40x20", 400.0},
        {"el40x20", 200.0 * kPi},
        {"null7", 0.0},
        {"r7.5", 14.0625 * kPi},
    };
    for (const auto& [name, area] : cases)
        EXPECT_NEAR(AreaOfSymbol(name).value_or(-1.0), area, 1e-9) << name;
}

TEST(SymbolArea, OtherNamesHaveNone)
{
    for (const char* const name :
         {"", "r", "r10_tp", "rect40", "rect40x20x5", "rect40x20xr", "logo7", "thr50x40x45x4x10", "R10", "r-5", "r10x"})
        EXPECT_FALSE(AreaOfSymbol(name)) << name;
}

TEST(SymbolArea, GrowthIsAddedToTheOutsideAndTakenFromTheInside)
{
    EXPECT_NEAR(AreaOfSymbol("r10", 2.0).value_or(-1.0), 36.0 * kPi, 1e-9);
    EXPECT_NEAR(AreaOfSymbol("rect40x20", -2.0).value_or(-1.0), 38.0 * 18.0, 1e-9);
    EXPECT_NEAR(AreaOfSymbol("donut_r20x10", 2.0).value_or(-1.0), 105.0 * kPi, 1e-9);
    EXPECT_NEAR(AreaOfSymbol("r10", -20.0).value_or(-1.0), 0.0, 1e-9);
}

TEST(FeatureArea, OfEachKindIsAsComputedByHand)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "UNITS=MM\n"
                                               "$0 r1000\n$1 rect2000x1000\n$2 my_mark\n$3 s1000\n$4 moire1x2x3x4x5x6\n"
                                               "L 0 0 3 4 0 P 0\n"
                                               "L 0 0 3 4 3 P 0\n"
                                               "L 0 0 3 0 1 P 0\n"
                                               "L 1 1 1 1 0 P 0\n"
                                               "L 0 0 3 0 2 P 0\n"
                                               "P 5 5 1 P 0 1\n"
                                               "P 5 5 -1 1 200 P 0 0\n"
                                               "P 5 5 2 N 0 8 30\n"
                                               "P 5 5 4 P 0 0\n"
                                               "A 0 30 0 20 0 25 0 P 0 Y\n"
                                               "A 0 30 5 25 0 25 0 P 0 N\n"
                                               "A 0 30 0 30 0 25 0 P 0 N\n"
                                               "A 0 25.25 0 25.25 0 25 0 P 0 N\n"
                                               "T 30 30 standard P 0 2 2 1 'ab' 1\n"
                                               "S P 0\n"
                                               "OB 40 0 I\nOS 50 0\nOS 50 10\nOS 40 10\nOE\n"
                                               "OB 44 4 H\nOS 44 6\nOS 46 6\nOS 46 4\nOE\nSE\n"
                                               "S P 0\n"
                                               "OB 10 0 I\nOC -10 0 0 0 N\nOS 10 0\nOE\nSE\n"
                                               "S P 0\n"
                                               "OB 10 0 I\nOC 10 0 0 0 Y\nOE\n"
                                               "OB 2 0 H\nOC 2 0 0 0 N\nOE\nSE\n");
    directory.Write("job/misc/info", "UNITS=MM\n");
    directory.Write("job/symbols/my_mark/features",
                    "UNITS=INCH\n$0 s1000\n$1 r500\nP 0 0 0 P 0 0\nP 0 0 1 N 0 0\n"); // an inch with a hole
    const double mark = 25.4 * 25.4 - kPi / 4.0 * 12.7 * 12.7;
    ExpectAreas(AreasOf(job), {
                                  5.0 + kPi / 4.0,               // length times width and two half circles
                                  1.0 + 3.0 + 4.0,               // what a square sweeps
                                  3.0 * 1.0 + 2.0,               // a rectangle, 1 high
                                  kPi / 4.0,                     // without length: the symbol
                                  -1.0,                          // with a user symbol
                                  2.0,                           // whichever way it is turned
                                  2.2 * 1.2,                     // larger by 200 microns
                                  mark,                          //
                                  -1.0,                          //
                                  5.0 * kPi + kPi / 4.0,         // half a circle
                                  1.5 * 5.0 * kPi + kPi / 4.0,   // three quarters, counter-clockwise
                                  kPi * (5.5 * 5.5 - 4.5 * 4.5), // a ring
                                  kPi * 0.75 * 0.75,             // a ring without a hole
                                  -1.0,                          // a text
                                  100.0 - 4.0,                   // a hole
                                  50.0 * kPi,                    // half a disc
                                  96.0 * kPi,                    // a disc with a round hole
                              });
}

TEST(FeatureArea, AFileInInchesIsMeasuredInSquareMillimetres)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "UNITS=INCH\n$0 r10\n$1 r100 M\nL 0 0 1 0 0 P 0\nP 0 0 1 P 0 0\n"
                                               "P 0 0 -1 0 2 P 0 0\nS P 0\nOB 0 0 I\nOS 1 0\nOS 1 1\nOE\nSE\n");
    ExpectAreas(AreasOf(job), {25.4 * 0.254 + kPi / 4.0 * 0.254 * 0.254, kPi / 4.0 * 0.1 * 0.1,
                               kPi / 4.0 * 0.3048 * 0.3048, 25.4 * 25.4 / 2.0});
}

TEST(FeatureArea, ASymbolInsideItselfHasNone)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "$0 mark\nP 0 0 0 P 0 0\n");
    directory.Write("job/symbols/mark/features", "$0 mark\nP 0 0 0 P 0 0\n");
    ExpectAreas(AreasOf(job), {-1.0});
}
