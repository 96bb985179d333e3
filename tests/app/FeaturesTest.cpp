// What jobx features finds and prints.
#include "FileCounts.h"
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/TestPaths.h"

#include "model/SymbolBox.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
constexpr const char* kFeatures = "UNITS=MM\n"
                                  "$0 r1000\n$1 rect2000x1000\n$2 my_mark\n"
                                  "@0 .pad_usage\n@1 .smd\n@2 .string\n&0 hello\n"
                                  "#\n"
                                  "L 0 0 10 0 0 P 0\n"                  // 0, line 10
                                  "P 5 5 1 P 0 1 ;0=1,1\n"              // 1, line 11: 1 wide, 2 high
                                  "P 20 20 2 N 0 8 30 ;2=0\n"           // 2, line 12
                                  "\n"                                  //
                                  "A 0 30 0 20 0 25 0 P 0 Y\n"          // 3, line 14: the right half of a circle
                                  "T 30 30 standard P 0 2 2 1 'ab' 1\n" // 4, line 15
                                  "S P 0\n"                             // 5, line 16
                                  "OB 40 0 I\nOS 50 0\nOS 50 10\nOS 40 10\nOE\n"
                                  "OB 44 4 H\nOS 44 6\nOS 46 6\nOS 46 4\nOE\nSE\n";

std::string JobWithFeatures(const TempDir& directory)
{
    const std::string job = MakeJob(directory, kFeatures);
    directory.Write("job/misc/info", "UNITS=MM\n");
    directory.Write("job/steps/pcb/eda/data", "UNITS=MM\nLYR top\nNET GND\nSNT TRC\nFID C 0 0\nSNT VIA\nFID C 0 1\nNET "
                                              "Vcc\nSNT PLN S E 0\nFID C 0 5\n");
    return job;
}

// The indexes of the features that a command with these arguments finds.
std::vector<std::string> Found(const std::string& job, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"features", job, "--messages", "none", "--csv", "--columns", "index"});
    const ProgramResult result = RunJobx(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::vector<std::string> lines = WordsOf(result.out);
    lines.erase(lines.begin());
    return lines;
}

std::vector<std::string> CommaFields(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');)
        fields.push_back(field.substr(0, field.find('\r')));
    return fields;
}

// "LAYER INDEX" of each FID record, by net.
std::map<std::string, std::set<std::string>> FeaturesByNet(const std::string& edaFile)
{
    std::map<std::string, std::set<std::string>> found;
    std::vector<std::string> layers;
    std::string net;
    for (const std::string& line : LinesOf(FileBytes(edaFile)))
    {
        const std::vector<std::string> words = WordsOf(line.substr(0, line.find(';')));
        if (words.empty())
            continue;
        if (words[0] == "LYR")
            layers.assign(words.begin() + 1, words.end());
        else if (words[0] == "NET")
            net = words.at(1);
        else if (words[0] == "PKG")
            break;
        else if (words[0] == "FID")
            found[net].insert(layers.at(std::stoul(words.at(2))) + " " + words.at(3));
    }
    return found;
}
} // namespace

TEST(JobxFeatures, PrintsKindPlaceSymbolNetAndLine)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"features", JobWithFeatures(directory), "--messages", "none", "--columns",
                                          "index,kind,x,y,x2,y2,symbol,polarity,net,text,line,attributes"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(
        result.out,
        "Index  Kind     X mm  Y mm  X2 mm  Y2 mm  Symbol         Polarity  Net  Text  Line  Attributes\n"
        "-----  -------  ----  ----  -----  -----  -------------  --------  ---  ----  ----  -------------------\n"
        "    0  line        0     0     10      0  r1000          positive  GND          10\n"
        "    1  pad         5     5                rect2000x1000  positive  GND          11  .pad_usage=via .smd\n"
        "    2  pad        20    20                my_mark        negative               12  .string=hello\n"
        "    3  arc         0    30      0     20  r1000          positive               14\n"
        "    4  text       30    30                               positive       ab      15\n"
        "    5  surface    40     0     50     10                 positive  Vcc          16\n");
}

TEST(JobxFeatures, NdjsonIsOneObjectInALineInMillimetres)
{
    const TempDir directory;
    const std::string job = JobWithFeatures(directory);
    const std::string common = R"("polarity":"positive","net":)";
    const std::string file = R"("file":"steps/pcb/layers/top/features","line":)";
    const ProgramResult result = RunJobx({"features", job, "--messages", "none", "--ndjson"});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), 6U);
    for (const std::string& line : lines)
        EXPECT_TRUE(CountJson(line).isValid) << line;
    EXPECT_EQ(lines[0], R"({"step":"PCB","layer":"top","index":0,"kind":"line","start":[0,0],"end":[10,0],)"
                        R"("symbol":"r1000",)" +
                            common + R"("GND","attributes":{},)" + file + "10}");
    EXPECT_EQ(lines[1], R"({"step":"PCB","layer":"top","index":1,"kind":"pad","at":[5,5],"angle":90,"mirror":false,)"
                        R"("symbol":"rect2000x1000",)" +
                            common + R"("GND","attributes":{".pad_usage":"via",".smd":true},)" + file + "11}");
    EXPECT_THAT(lines[2],
                HasSubstr(R"("angle":30,"mirror":false,"symbol":"my_mark","polarity":"negative","net":null)"));
    EXPECT_THAT(lines[3], HasSubstr(R"("start":[0,30],"end":[0,20],"centre":[0,25],"clockwise":true,)"));
    EXPECT_THAT(lines[4], HasSubstr(R"("at":[30,30],"text":"ab","symbol":null)"));
    EXPECT_THAT(lines[5], HasSubstr(R"("box":[40,0,50,10],"contours":2,"symbol":null)"));
    EXPECT_EQ(RunJobx({"features", job, "--ndjson", "--units", "mm"}).exitCode, 2);
}

TEST(JobxFeatures, LayerNetSymbolAndAttributeChoose)
{
    const TempDir directory;
    const std::string job = JobWithFeatures(directory);
    EXPECT_THAT(Found(job, {"--net", "GND"}), ElementsAre("0", "1"));
    EXPECT_THAT(Found(job, {"--net", "v*"}), ElementsAre("5"));
    EXPECT_THAT(Found(job, {"--layer", "T?P", "--symbol", "r*"}), ElementsAre("0", "1", "3"));
    EXPECT_THAT(Found(job, {"--symbol", "R1000"}), ElementsAre("0", "3"));
    EXPECT_THAT(Found(job, {"--attribute", ".smd"}), ElementsAre("1"));
    EXPECT_THAT(Found(job, {"--attribute", ".pad_usage=via"}), ElementsAre("1"));
    EXPECT_THAT(Found(job, {"--attribute", ".pad_usage=toe*"}), IsEmpty());
    EXPECT_THAT(Found(job, {"--attribute", ".s*"}), ElementsAre("1", "2"));
    EXPECT_EQ(RunJobx({"features", job, "--messages", "none", "--symbol", "x"}).out, "no features\n");
    const ProgramResult wrong = RunJobx({"features", job, "--messages", "none", "--layer", "topp"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_EQ(wrong.err, "jobx: the job has no layer \"topp\"; did you mean \"top\"?\n");
}

TEST(JobxFeatures, NearFindsWhatIsAtThePlace)
{
    const TempDir directory;
    const std::string job = JobWithFeatures(directory);
    const struct
    {
        const char* place;
        const char* index; // of what is there; "" for nothing
    } cases[] = {
        {"5,0.4,0", "0"},  {"5,0.6,0", ""},     {"5,0.6,0.11", "0"}, {"10.4,0,0", "0"},    {"5,5.9,0", "1"},
        {"5.6,5,0", ""},   {"5.6,5,0.11", "1"}, {"20,20,0", "2"},    {"20.1,20,0.05", ""}, {"5.4,25,0", "3"},
        {"-5,25,0.4", ""}, {"0,25,4", ""},      {"0,30.4,0", "3"},   {"30.1,30,0.2", "4"}, {"42,1,0", "5"},
        {"45,5,0", ""},    {"45,5,1.01", "5"},  {"51,5,1.5", "5"},   {"100,100,1", ""},
    };
    for (const auto& [place, index] : cases)
    {
        const std::vector<std::string> found = Found(job, {"--near", place});
        EXPECT_EQ(found, *index == '\0' ? std::vector<std::string>() : std::vector<std::string>{index}) << place;
    }
    EXPECT_THAT(Found(job, {"--near", "0.196850393701,0.0157,0", "--units", "inch"}), ElementsAre("0"));
}

TEST(JobxFeatures, AWrongPlaceOrAttributeIsRefused)
{
    const TempDir directory;
    const std::string job = JobWithFeatures(directory);
    for (const std::string place : {"", "1", "1,2", "1,2,3,4", "1,2,-1", "a,b,c", "1,2,", "1,,2"})
        EXPECT_EQ(RunJobx({"features", job, "--near", place}).err,
                  "jobx: --near needs X,Y,R: three numbers, R at least 0, not \"" + place +
                      "\" (try: jobx features --help)\n");
    EXPECT_EQ(RunJobx({"features", job, "--attribute", "=x"}).exitCode, 2);
}

TEST(JobxFeatures, ACompressedFileHasNoLines)
{
    if (RunShell("gzip --version").exitCode != 0)
        GTEST_SKIP() << "needs gzip";
    const TempDir directory;
    const std::string job = JobWithFeatures(directory);
    ASSERT_EQ(RunShell("gzip " + ShellWord(job + "/steps/pcb/layers/top/features")).exitCode, 0);
    const std::vector<std::string> lines =
        LinesOf(RunJobx({"features", job, "--messages", "none", "--net", "Vcc", "--ndjson"}).out);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0],
                HasSubstr(R"("net":"Vcc","attributes":{},"file":"steps/pcb/layers/top/features.gz","line":null})"));
}

TEST(JobxFeatures, TenNetsOfEachRealJobHaveTheFeaturesOfTheirRecords)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const std::string step : {"beagleboneblack/steps/stp", "flat_hierarchy/steps/pcb"})
    {
        const auto expected = FeaturesByNet(jobs + "/" + step + "/eda/data");
        ASSERT_GE(expected.size(), 10U);
        const std::size_t distance = expected.size() / 10;
        std::size_t number = 0;
        std::size_t nets = 0;
        for (const auto& [net, features] : expected)
        {
            if (number++ % distance != 0 || nets == 10)
                continue;
            ++nets;
            std::set<std::string> found;
            const std::vector<std::string> lines =
                LinesOf(RunJobx({"features", jobs + "/" + step.substr(0, step.find('/')), "--messages", "none", "--net",
                                 net, "--csv", "--columns", "layer,index,net"})
                            .out);
            for (std::size_t i = 1; i < lines.size(); ++i)
            {
                const std::vector<std::string> fields = CommaFields(lines[i]);
                found.insert(fields.at(0) + " " + fields.at(1));
                EXPECT_EQ(fields.at(2), net);
            }
            EXPECT_EQ(found.size(), lines.size() - 1) << net;
            EXPECT_EQ(found, features) << net;
        }
        EXPECT_EQ(nets, 10U) << step;
    }
}

TEST(JobxFeatures, LinesOfRealJobsAreThoseOfTheRecords)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::map<std::string, char> letters = {
        {"line", 'L'}, {"pad", 'P'}, {"arc", 'A'}, {"text", 'T'}, {"surface", 'S'}};
    for (const std::string layer :
         {"beagleboneblack/steps/stp/layers/top", "flat_hierarchy/steps/pcb/layers/bottom_copper"})
    {
        const std::vector<std::string> file = LinesOf(FileBytes(jobs + "/" + layer + "/features"));
        const std::vector<std::string> rows =
            LinesOf(RunJobx({"features", jobs + "/" + layer.substr(0, layer.find('/')), "--messages", "none", "--layer",
                             layer.substr(layer.rfind('/') + 1), "--csv", "--columns", "kind,x,line"})
                        .out);
        std::size_t records = 0;
        for (const std::string& line : file)
            records +=
                line.size() > 1 && line[1] == ' ' && std::string("LPATBS").find(line[0]) != std::string::npos ? 1 : 0;
        ASSERT_EQ(rows.size(), records + 1) << layer;
        for (std::size_t i = 1; i < rows.size(); ++i)
        {
            const std::vector<std::string> fields = CommaFields(rows[i]);
            const std::string& line = file.at(std::stoul(fields.at(2)) - 1);
            ASSERT_EQ(line[0], letters.at(fields.at(0))) << rows[i];
            if (line[0] != 'S')
            {
                ASSERT_DOUBLE_EQ(std::stod(WordsOf(line).at(1)), std::stod(fields.at(1))) << rows[i];
            }
        }
    }
}

TEST(SymbolBox, StandardNamesHaveASizeAndUsersNamesNone)
{
    const auto textOf = [](const char* name)
    {
        const std::optional<SymbolBox> box = BoxOfSymbol(name);
        return box ? std::to_string(box->width) + "x" + std::to_string(box->height) + (box->isRound ? "r" : "") : "";
    };
    EXPECT_EQ(textOf("r10"), "10.000000x10.000000r");
    EXPECT_EQ(textOf("s7.5"), "7.500000x7.500000");
    EXPECT_EQ(textOf("rect40x20xr5x13"), "40.000000x20.000000");
    EXPECT_EQ(textOf("oval_h3x2"), "3.000000x2.000000");
    EXPECT_EQ(textOf("donut_r30x20"), "30.000000x30.000000r");
    for (const char* const name : {"", "r", "r10_tp", "rect40", "logo7", "moire1x2x3x4x5x6", "null5", "R10"})
        EXPECT_EQ(textOf(name), "") << name;
}
