// Reads a job, writes it, reads what was written: what does not come back, kind by kind. docs/roundtrip.md says why.
#include "JOBXCLSDLL.h"
#include "RunProgram.h"
#include "support/CurrentDir.h"
#include "support/SlowBuild.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <rapidjson/document.h>

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace
{
// How many differences there are of each "PART: KIND (FIELD) CHANGE"; parts are of all steps, layers and symbols.
using Counts = std::map<std::string, int>;

// "step PCB / layer top" becomes "layer", "matrix" stays.
std::string PartOf(const std::string& place)
{
    const std::size_t separator = place.find(" / ");
    if (separator == std::string::npos)
        return place.substr(0, place.find(' '));
    const std::string part = place.substr(separator + 3);
    return part.substr(0, part.find(' '));
}

void AddUp(Counts& counts, const std::string& json)
{
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    ASSERT_FALSE(document.HasParseError());
    for (const rapidjson::Value& group : document["groups"].GetArray())
    {
        const std::string field = group["field"].GetString();
        counts[PartOf(group["place"].GetString()) + ": " + group["kind"].GetString() +
               (field.empty() ? "" : " (" + field + ")") + " " + group["change"].GetString()] +=
            group["count"].GetInt();
    }
}

std::string Written(const std::string& job, const std::string& into)
{
    CJOBX read;
    EXPECT_EQ(read.ParseODBOfMFC(job.c_str()), 1);
    read.WriteODBData(into.c_str(), 1);
    return into + "/" + read.m_sName.GetString();
}

Counts Differences(const std::string& a, const std::string& b, const std::vector<std::string>& options = {})
{
    std::vector<std::string> arguments = {"diff", a, b, "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramResult result = RunLegacy(arguments);
    EXPECT_NE(result.exitCode, 3) << result.err;
    Counts counts;
    AddUp(counts, result.out);
    EXPECT_EQ(result.exitCode, counts.empty() ? 0 : 1);
    return counts;
}

// One line for each of them, in sorted order.
std::string TableOf(const Counts& counts)
{
    std::string table;
    for (const auto& [what, count] : counts)
        table += what + " " + std::to_string(count) + "\n";
    return table;
}

// More than half a unit of the sixth decimal by what a double cannot hold exactly.
const std::vector<std::string> kSixDecimals = {"--tolerance", "0.000000500001"};
} // namespace

TEST(RoundTrip, SampleLosesExactlyWhatIsExplained)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    EXPECT_EQ(TableOf(Differences(job, Written(job, directory.MakeDir("out")))), R"(components: attribute onlyInA 48
eda: attribute onlyInA 8
eda: eda (header) changed 1
eda: eda (layer names) changed 1
eda: line number (net object) changed 325
eda: line number (outline) changed 57
eda: line number (subnet) changed 109
font: character onlyInA 54
header: header (affecting BOM) changed 2
header: step-repeat onlyInA 2
info: info (creation date) changed 1
info: info (job name) changed 1
info: info (save application) changed 1
info: info (save date) changed 1
info: info (save user) changed 1
info: info (source) changed 1
info: info (version major) changed 1
job: symbol onlyInA 3
layer: attribute onlyInA 245
layer: feature B (E flag) changed 1
layer: feature B (background) changed 1
layer: feature B (height) changed 1
layer: feature B (shown text's place) changed 1
layer: feature B (shown text) changed 1
layer: feature B (text) changed 1
layer: feature B (width) changed 1
layer: feature T (text) changed 45
layer: feature T (width factor) changed 27
layer: feature T (x size) changed 27
layer: layer (units) changed 24
layer: line number (contour element) changed 304
netlist: netlist point (flags) changed 16
netlist: netlist point (staggered mark) changed 73
profile: line number (contour element) changed 22
profile: profile (units) changed 2
)");
}

TEST(RoundTrip, WritingAgainLosesOnlyWhatGrowsOrMoves)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string first = Written(job, directory.MakeDir("first"));
    const std::string second = Written(first, directory.MakeDir("second"));
    EXPECT_EQ(TableOf(Differences(first, second)), R"(layer: feature B (E flag) changed 1
layer: feature B (background) changed 1
layer: feature B (checksum) changed 1
layer: feature B (orientation) changed 1
layer: feature B (shown text's place) changed 1
layer: feature B (shown text) changed 1
layer: feature B (width) changed 1
layer: feature T (y size) changed 27
layer: layer (units) changed 24
netlist: netlist point (staggered mark) changed 73
profile: profile (units) changed 2
)");
}

TEST(RoundTrip, FirstRealJobLosesExactlyWhatIsExplained)
{
    if (kIsSlowBuild)
        GTEST_SKIP() << "takes long in this build; the second real job and the sample are written and compared";
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/beagleboneblack";
    const TempDir directory;
    const std::string written = Written(job, directory.Path());
    EXPECT_EQ(TableOf(Differences(job, written, kSixDecimals)), R"(components: attribute onlyInA 448
eda: attribute onlyInA 41
eda: line number (net object) changed 20299
eda: line number (outline) changed 1407
eda: line number (subnet) changed 5703
font: character onlyInA 94
header: header (affecting BOM) changed 1
info: info (creation date) changed 1
info: info (job name) changed 1
info: info (save application) changed 1
info: info (save date) changed 1
info: info (save user) changed 1
info: info (source) changed 1
info: info (version major) changed 1
layer: attribute onlyInA 142588
layer: layer (units) changed 21
layer: line number (contour element) changed 17821
netlist: netlist point (flags) changed 866
netlist: netlist point (staggered mark) changed 2635
profile: line number (contour element) changed 10
profile: profile (units) changed 1
)");
}

TEST(RoundTrip, SecondRealJobLosesExactlyWhatIsExplained)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/flat_hierarchy";
    const TempDir directory;
    EXPECT_EQ(TableOf(Differences(job, Written(job, directory.Path()))), R"(components: attribute onlyInA 64
eda: line number (net object) changed 1788
eda: line number (subnet) changed 802
eda: net (number) changed 112
font: character onlyInA 94
info: info (creation date) changed 1
info: info (job name) changed 1
info: info (save application) changed 1
info: info (save date) changed 1
info: info (source) changed 1
info: info (version major) changed 1
info: info (version minor) changed 1
layer: attribute onlyInA 176
layer: layer (units) changed 24
layer: line number (contour element) changed 16067
netlist: netlist point (flags) changed 7
netlist: netlist point (staggered mark) changed 254
profile: line number (contour element) changed 8
profile: profile (units) changed 1
)");
}

TEST(RoundTrip, KeepsCoordinatesToSixDecimals)
{
    if (kIsSlowBuild)
        GTEST_SKIP() << "takes long in this build; other tests here read, write and compare jobs";
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/beagleboneblack";
    const TempDir directory;
    const std::string written = Written(job, directory.Path());
    const Counts exact = Differences(job, written);
    const Counts rounded = Differences(job, written, kSixDecimals);
    Counts onlyExact;
    for (const auto& [what, count] : exact)
        if (!rounded.contains(what))
            onlyExact[what] = count;
        else
            EXPECT_EQ(rounded.at(what), count) << what;
    EXPECT_EQ(TableOf(onlyExact), R"(eda: package (pitch) changed 5
eda: package (upper right x) changed 1
eda: pin (y) changed 3
layer: contour element (centre x) changed 2781
layer: contour element (centre y) changed 3017
layer: contour element (x) changed 9485
layer: contour element (y) changed 6332
layer: feature A (centre x) changed 80
layer: feature A (centre y) changed 72
layer: feature A (end x) changed 13
layer: feature A (end y) changed 7
layer: feature A (start x) changed 13
layer: feature A (start y) changed 8
layer: feature L (end x) changed 110124
layer: feature L (end y) changed 97042
layer: feature L (start x) changed 110050
layer: feature L (start y) changed 96809
layer: feature P (x) changed 2168
layer: feature P (y) changed 2259
netlist: netlist point (radius) changed 8
netlist: netlist point (x) changed 11
netlist: netlist point (y) changed 5
)");
}

TEST(RoundTrip, HandMadeJobShowsWhatTheOthersDoNotHold)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, R"(UNITS=MM
$0 r10
@0 .flag
@1 .text
&0 some text
P 1 2 0 P 0 8 30;0
P 1 2 0 P 0 9 45;1=0
P 1 2 -1 0 1.5 P 0 0
T 1 2 standard P 9 30 0.1 0.2 0.5 'nine' 1
T 1 2 standard P 8 30 0.1 0.2 0.5 'eight' 1
T 1 2 standard P 1 0.1 0.2 0.5 'one' 2
)");
    directory.Write("job/steps/pcb/stephdr", "X_ORIGIN=1\nY_ORIGIN=2\nX_DATUM=1.23456789\nONLINE_NET_BEEP_TONE=loud\n"
                                             "AFFECTING_BOM=YES\nSTEP-REPEAT {\nNAME=SUB\nNX=1\nNY=1\n}\n");
    directory.Write("job/steps/pcb/eda/data",
                    "HDR job\nLYR top\n# NET 5\nNET A\nSNT TRC\nFGR 1 2\nFID C 0 0\n# PKG 7\nPKG P 0.1 0 0 1 1\nCT\nOB "
                    "0 0 I\nOS 1 1\nOE\nCE\nPRP OF_NET 'x'\nPIN 1 S 0 0 0 E S\nCR 0 0 0.5\nPRP OF_PACKAGE 'y'\n# PKG "
                    "8\nPKG Q 0.1 0 0 1 1;ID=3\n");
    directory.Write("job/steps/pcb/layers/comp_+_top/components",
                    "UNITS=MM\n@0 .height\n# CMP 9\nCMP 0 1 2 90 N R1 10k ;0=3\nPRP VALUE '10k'\nTOP 0 1 2 45 N 0 0 1 "
                    ";0=4\nTOP 1 1 2 90 M 0 0 2\n");
    directory.Write("job/steps/pcb/netlists/cadnet/netlist",
                    "$5 A\n5 0.01 1 2 T e e staggered 3 4 0.5 v f\n5 0.01 1 2 T e e v 1 2 3\n5 0 1 2 T 0.1 0.2 e e\n");
    directory.Write("job/symbols/mark/features", "P 0 0 0 P 0 0\n");
    directory.Write("job/misc/info", "JOB_NAME=other\n");
    EXPECT_EQ(TableOf(Differences(job, Written(job, directory.MakeDir("out")))), R"(components: attribute onlyInA 2
components: toeprint (rotation) changed 1
eda: attribute onlyInA 2
eda: line number (net object) changed 2
eda: line number (outline) changed 6
eda: line number (subnet) changed 1
eda: net (number) changed 1
eda: net object (text) changed 1
eda: package (number) changed 1
header: header (affecting BOM) changed 1
header: header (datum x) changed 1
header: header (online net beep tone) changed 1
header: header (origin y) changed 1
header: step-repeat onlyInA 1
info: info (job name) changed 1
job: symbol onlyInA 1
layer: attribute onlyInA 1
layer: feature T (angle) changed 1
layer: feature T (text) changed 3
layer: feature T (version) changed 1
layer: feature T (width factor) changed 1
layer: feature T (x size) changed 1
layer: feature T (y size) changed 1
layer: layer (units) changed 1
netlist: netlist point (flags) changed 1
netlist: netlist point (staggered mark) changed 2
netlist: netlist point (staggered radius) changed 2
netlist: netlist point (staggered x) changed 2
netlist: netlist point (staggered y) changed 2
profile: line number (contour element) changed 4
profile: profile (units) changed 1
)");
}

TEST(RoundTrip, FontComesBackOnlyWithAFileStandardInTheCurrentDirectory)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/fonts/standard", "XSIZE 0.1\nYSIZE 0.2\nOFFSET 0.3\nCHAR A\nLINE 0 0 1.2345678 1 P R "
                                          "0.1\nECHAR\n");
    const std::string elsewhere = directory.MakeDir("elsewhere");
    {
        const CurrentDir current(elsewhere);
        EXPECT_EQ(TableOf(Differences(job, Written(job, directory.MakeDir("without")))), R"(eda: eda (header) changed 1
eda: eda (layer names) changed 1
font: character onlyInA 1
font: font (offset) changed 1
font: font (x size) changed 1
font: font (y size) changed 1
layer: layer (units) changed 1
profile: line number (contour element) changed 4
profile: profile (units) changed 1
)");
    }
    directory.Write("elsewhere/standard", "");
    std::string written;
    {
        const CurrentDir current(elsewhere);
        written = Written(job, directory.MakeDir("with"));
    }
    EXPECT_EQ(TableOf(Differences(job, written)), R"(eda: eda (header) changed 1
eda: eda (layer names) changed 1
font: font (offset) changed 1
font: font (y size) changed 1
font: stroke (end x) changed 1
layer: layer (units) changed 1
profile: line number (contour element) changed 4
profile: profile (units) changed 1
)");
}

TEST(RoundTrip, SymbolsOfAChosenStepsReadLandBesideTheStepsWhereNoReadFindsThem)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    CJOBX read;
    CStringArray names;
    ASSERT_EQ(read.ParseMatrixInODBOfMFC(job.c_str(), names), 1);
    ASSERT_EQ(read.ParseODBOfMFC(job.c_str(), names), 1);
    read.WriteODBData(directory.MakeDir("out").c_str(), 1);
    EXPECT_TRUE(fs::is_regular_file(directory.Path("out/blinker/led_mark/features")));
    const Counts counts = Differences(job, directory.Path("out/blinker"));
    // One comes twice: reading left its features beside the compressed ones, and the next read takes both.
    EXPECT_EQ(counts.at("job: symbol onlyInA"), 3);
}

TEST(RoundTrip, WithoutEdaDataNeitherItNorTheNetlistComesBack)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    CJOBX read;
    ASSERT_EQ(read.ParseODBOfMFC(job.c_str()), 1);
    read.WriteODBData(directory.MakeDir("out").c_str(), 0);
    const Counts counts = Differences(job, directory.Path("out/blinker"));
    EXPECT_EQ(counts.at("eda: net onlyInA"), 20);
    EXPECT_EQ(counts.at("eda: package onlyInA"), 8);
    EXPECT_EQ(counts.at("netlist: netlist net onlyInA"), 20);
}
