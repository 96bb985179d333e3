// What tables show of a job that is read completely: units, columns, order, names.
#include "FileCounts.h"
#include "RunProgram.h"
#include "support/TestPaths.h"

#include "model/Glob.h"
#include "output/ExitError.h"
#include "output/NaturalOrder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace
{
// The fields of one line of CSV whose fields need no quotes.
std::vector<std::string> FieldsOf(std::string line)
{
    std::vector<std::string> fields;
    std::erase(line, '\r');
    std::istringstream stream(line + ",");
    for (std::string field; std::getline(stream, field, ',');)
        fields.push_back(field);
    return fields;
}

// The lines below the heads of an aligned table, each as its words.
std::vector<std::vector<std::string>> RowsOf(const std::string& table)
{
    std::vector<std::vector<std::string>> rows;
    const std::vector<std::string> lines = LinesOf(table);
    for (std::size_t i = 2; i < lines.size(); ++i)
        rows.push_back(WordsOf(lines[i]));
    return rows;
}

// The first words of these lines.
std::vector<std::string> FirstWords(const std::string& table)
{
    std::vector<std::string> words;
    for (const std::vector<std::string>& row : RowsOf(table))
        words.push_back(row.at(0));
    return words;
}

// A job in millimetres with a components file in inch.
std::string JobOfTwoUnits(const TempDir& directory)
{
    const std::string job = MakeJob(directory, "");
    directory.Write("job/misc/info", "UNITS=MM\nODB_VERSION_MAJOR=8\n");
    directory.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\n"
                                         "LAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=COMPONENT\nNAME=COMP_+_TOP\n}\n"
                                         "LAYER {\nROW=2\nCONTEXT=BOARD\nTYPE=SIGNAL\nNAME=TOP\n}\n"
                                         "LAYER {\nROW=3\nCONTEXT=BOARD\nTYPE=COMPONENT\nNAME=COMP_+_BOT\n}\n");
    directory.Write("job/steps/pcb/eda/data", "UNITS=MM\nNET GND\nNET Vcc\nPKG P1 1.27 -1 -2 3 4\nPIN A1 S 0 0 0 E S\n"
                                              "PKG P2 2.54 0 0 1 1\nPIN 1 T 0 0 0 E T\n");
    directory.Write("job/steps/pcb/layers/comp_+_top/components",
                    "UNITS=INCH\n@0 .comp_height\nCMP 0 1 2 0 N R10 part ;0=0.1\nTOP 0 1 2 0 N 1 -1 1\n"
                    "CMP 1 0 0 90 N R2 part\n");
    directory.Write("job/steps/pcb/layers/comp_+_bot/components",
                    "UNITS=MM\nCMP 0 5.08 0.3 0 N C1 part\nPRP Value '10 uF'\nTOP 0 5.08 0.3 0 N 0 -1 7\n");
    return job;
}
} // namespace

TEST(JobxTableView, LengthsAreInTheJobsUnitWhateverTheUnitOfTheFile)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"components", JobOfTwoUnits(directory), "--messages", "none"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Name  Part  Package  Value  Mount  Side    X mm  Y mm  Angle  Height mm\n"
                          "----  ----  -------  -----  -----  ------  ----  ----  -----  ---------\n"
                          "C1    part  P1       10 uF  smt    bottom  5.08   0.3      0\n"
                          "R10   part  P1              smt    top     25.4  50.8      0       2.54\n"
                          "R2    part  P2              thmt   top        0     0     90\n");
}

TEST(JobxTableView, UnitsCanBeChosenAndCsvHasThemInAColumn)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const ProgramResult result = RunJobx({"components", job, "--units", "inch", "--csv", "--messages", "none"});
    EXPECT_EQ(result.out,
              "step,layer,number,name,part,package,x,y,rotation,mirror,toeprints,properties,attributes,value,"
              "mount,side,height,unit\r\n"
              "PCB,comp_+_bot,0,C1,part,P1,0.2,0.011811023622,0,0,1,1,0,10 uF,smt,bottom,,inch\r\n"
              "PCB,comp_+_top,0,R10,part,P1,1,2,0,0,1,0,1,,smt,top,0.1,inch\r\n"
              "PCB,comp_+_top,1,R2,part,P2,0,0,90,0,0,0,0,,thmt,top,,inch\r\n");
    const std::string packages = RunJobx({"packages", job, "--json", "--messages", "none"}).out;
    EXPECT_THAT(packages, HasSubstr(R"("pitch":1.27,"left":-1,"bottom":-2,"right":3,"top":4,"pins":1,"outlines":0,)"
                                    R"("components":2,"sizeX":4,"sizeY":6,"designators":["C1","R10"],"unit":"mm")"));
}

TEST(JobxTableView, ColumnsAreChosenByKeyOrTitleAndAWrongOneGetsTheNearestName)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const auto run = [&](const std::string& columns) {
        return RunJobx({"components", job, "--messages", "none", "--columns", columns});
    };
    EXPECT_EQ(run("x,NAME, angle").out, "X mm  Name  Angle\n----  ----  -----\n"
                                        "5.08  C1        0\n25.4  R10       0\n   0  R2       90\n");
    EXPECT_EQ(run("rotation").out, "Angle\n-----\n    0\n    0\n   90\n");
    const ProgramResult wrong = run("name,packge");
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err,
              "jobx: the table of components has no column \"packge\"; its columns are: step, layer, number, "
              "name, part, package, x, y, rotation, mirror, toeprints, properties, attributes, value, mount, "
              "side, height, unit; did you mean \"package\"?\n");
    EXPECT_EQ(RunJobx({"components", job, "--sort", "nam"}).exitCode, 2);
    EXPECT_EQ(run("name,x,Name").err, "jobx: the column \"Name\" is given twice\n");
}

TEST(JobxTableView, WideShowsEveryColumn)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const std::string heads = LinesOf(RunJobx({"components", job, "--messages", "none", "--wide"}).out).at(0);
    EXPECT_THAT(WordsOf(heads),
                ElementsAre("Step", "Name", "Part", "Package", "Value", "Mount", "Side", "X", "mm", "Y", "mm", "Angle",
                            "Height", "mm", "Layer", "Number", "Mirror", "Pins", "Properties", "Attributes", "Unit"));
}

TEST(JobxTableView, RowsAreSortedAsAPersonSorts)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const auto sorted = [&](const std::string& column) {
        return FirstWords(RunJobx({"components", job, "--messages", "none", "--sort", column}).out);
    };
    EXPECT_THAT(sorted("name"), ElementsAre("C1", "R2", "R10"));
    EXPECT_THAT(sorted("-name"), ElementsAre("R10", "R2", "C1"));
    EXPECT_THAT(sorted("x"), ElementsAre("R2", "C1", "R10"));
    EXPECT_THAT(sorted("-X"), ElementsAre("R10", "C1", "R2"));
    EXPECT_THAT(sorted("-height"), ElementsAre("R10", "C1", "R2")); // empty ones last
}

TEST(JobxTableView, OptionsOfTheNewTablesCannotBeCombinedWithLegacy)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{{"--units", "mm"},
                                                                                       {"--wide"},
                                                                                       {"--columns", "name"},
                                                                                       {"--sort", "name"},
                                                                                       {"--net", "A"},
                                                                                       {"--pins"},
                                                                                       {"--component", "A"}})
    {
        std::vector<std::string> arguments = {"nets", job};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const ProgramResult result = RunLegacy(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err, HasSubstr(" cannot be combined")) << words[0];
        EXPECT_THAT(result.err, HasSubstr(words[0]));
    }
}

TEST(JobxTableView, ATableWithoutRowsSaysSo)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    EXPECT_EQ(RunJobx({"nets", job}).out, "no nets\n");
    EXPECT_EQ(RunJobx({"nets", job, "--pins"}).out, "no pins\n");
    EXPECT_EQ(RunJobx({"components", job, "--wide"}).out, "no components\n");
    EXPECT_EQ(RunJobx({"packages", job}).out, "no packages\n");
    EXPECT_EQ(RunJobx({"panel", job}).out, "no placements\n");
    EXPECT_EQ(RunJobx({"packages", job, "--json"}).out, "[]\n");
    EXPECT_EQ(LinesOf(RunLegacy({"packages", job}).out).size(), 2U); // heads and rules
}

TEST(JobxTableView, StepIsShownOnlyWhereStepsDiffer)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    EXPECT_THAT(RunJobx({"nets", job, "--messages", "none"}).out, StartsWith("Name"));
    directory.Write("job/matrix/matrix", FileBytes(job + "/matrix/matrix") + "STEP {\nCOL=2\nNAME=TWIN\n}\n");
    fs::copy(job + "/steps/pcb", job + "/steps/twin", fs::copy_options::recursive);
    const std::string nets = RunJobx({"nets", job, "--messages", "none"}).out;
    EXPECT_THAT(nets, StartsWith("Step  Name"));
    EXPECT_THAT(FirstWords(nets), ElementsAre("PCB", "PCB", "TWIN", "TWIN"));
}

TEST(JobxTableView, NamesAreChosenWithWildcards)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const auto chosen = [&](const std::string& command, const std::string& option, const std::string& pattern) {
        return FirstWords(RunJobx({command, job, "--messages", "none", option, pattern, "--columns", "name"}).out);
    };
    EXPECT_THAT(chosen("nets", "--net", "*"), ElementsAre("GND", "Vcc"));
    EXPECT_THAT(chosen("nets", "--net", "G?D"), ElementsAre("GND"));
    EXPECT_THAT(chosen("nets", "--net", "vcc"), ElementsAre("Vcc")); // nothing matches with that case
    EXPECT_THAT(chosen("components", "--name", "R*"), ElementsAre("R10", "R2"));
    EXPECT_THAT(chosen("layers", "--layer", "*top"), ElementsAre("COMP_+_TOP", "TOP"));
    const ProgramResult wrong = RunJobx({"nets", job, "--messages", "none", "--net", "GNT"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_EQ(wrong.err, "jobx: the job has no net \"GNT\"; did you mean \"GND\"?\n");
}

TEST(JobxTableView, PinsOfNetsNameComponentPinSideAndPlace)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    EXPECT_EQ(RunJobx({"nets", job, "--messages", "none", "--pins"}).out,
              "Net  Component  Pin  Side    X mm  Y mm\n---  ---------  ---  ------  ----  ----\n"
              "GND  C1         7    bottom  5.08   0.3\nVcc  R10        1    top     25.4  50.8\n");
    EXPECT_THAT(RowsOf(RunJobx({"nets", job, "--messages", "none", "--pins", "--net", "GND"}).out),
                ElementsAre(ElementsAre("GND", "C1", "7", "bottom", "5.08", "0.3")));
}

TEST(JobxTableView, ComponentsOfOneSideCanBeChosen)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const auto namesOn = [&](const std::string& side) {
        return FirstWords(RunJobx({"components", job, "--messages", "none", "--side", side, "--columns", "name"}).out);
    };
    EXPECT_THAT(namesOn("top"), ElementsAre("R10", "R2"));
    EXPECT_THAT(namesOn("bottom"), ElementsAre("C1"));
    EXPECT_EQ(RunJobx({"components", job, "--messages", "none", "--side", "bottom", "--name", "R*"}).out,
              "no components\n");
    EXPECT_THAT(RunLegacy({"components", job, "--side", "top"}).err, HasSubstr(" cannot be combined"));
}

TEST(JobxTableView, PinsOfComponentsCanBeChosen)
{
    const TempDir directory;
    const std::string job = JobOfTwoUnits(directory);
    const auto pins = [&](const std::vector<std::string>& words)
    {
        std::vector<std::string> arguments = {"nets", job, "--messages", "none"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return RunJobx(arguments);
    };
    EXPECT_THAT(RowsOf(pins({"--pins", "--component", "r*"}).out),
                ElementsAre(ElementsAre("Vcc", "R10", "1", "top", "25.4", "50.8")));
    EXPECT_EQ(pins({"--pins", "--component", "R10", "--net", "GND"}).out, "no pins\n");
    EXPECT_EQ(pins({"--pins", "--component", "R11"}).err,
              "jobx: the job has no component \"R11\"; did you mean \"R10\"?\n");
    const ProgramResult alone = pins({"--component", "R10"});
    EXPECT_EQ(alone.exitCode, 2);
    EXPECT_EQ(alone.err, "jobx: --component needs --pins (try: jobx nets --help)\n");
}

TEST(JobxTableView, PinsOfTheNetForPinsWithoutANetComeLast)
{
    const TempDir directory;
    const std::vector<std::string> nets =
        FirstWords(RunJobx({"nets", CopySample(directory), "--pins", "--columns", "net"}).out);
    const auto first = std::find(nets.begin(), nets.end(), "$NONE$");
    EXPECT_EQ(nets.front(), "GND");
    EXPECT_GT(nets.end() - first, 0);
    EXPECT_EQ(std::count(first, nets.end(), "$NONE$"), nets.end() - first);
}

TEST(JobxTableView, LayersHaveTheirRowsAndWhatTheirAttributesSay)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::vector<std::string> lines = LinesOf(RunJobx({"layers", job, "--csv"}).out);
    ASSERT_EQ(static_cast<std::int64_t>(lines.size()) - 1, CountLines(job + "/matrix/matrix", "LAYER {"));
    EXPECT_EQ(lines[0], "row,name,context,type,polarity,span,features,components,thickness,copperWeight,copperUnit,"
                        "dielectric,dielectricConstant,unit\r");
    const auto featuresOf = [&](const std::string& layer)
    {
        std::int64_t count = 0;
        for (const std::string step : {"pcb", "panel"})
            for (const char* const record : {"L ", "P ", "A ", "T ", "B ", "S "})
                count += CountLines(job + "/steps/" + step + "/layers/" + layer + "/features", record);
        return std::to_string(count);
    };
    EXPECT_EQ(lines[5], "5,TOP,BOARD,SIGNAL,POSITIVE,," + featuresOf("top") + ",0,,1,oz,,,inch\r");
    EXPECT_EQ(lines[6], "6,DIEL_1,BOARD,DIELECTRIC,POSITIVE,," + featuresOf("diel_1") + ",0,0.008,,,,,inch\r");
    EXPECT_EQ(lines[16], "16,DRILL,BOARD,DRILL,POSITIVE,TOP - BOT," + featuresOf("drill") + ",0,,,,,,inch\r");
    const std::string top = job + "/steps/pcb/layers/comp_+_top/components";
    EXPECT_EQ(FieldsOf(lines[1]).at(7), std::to_string(CountLines(top, "CMP ")));
}

TEST(JobxTableView, PackagesAndComponentsNameEachOther)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    std::map<std::string, std::string> designators; // by package
    for (const std::vector<std::string>& row :
         RowsOf(RunJobx({"components", job, "--columns", "name,package", "--sort", "name"}).out))
        designators[row.at(1)] += " " + row.at(0);
    ASSERT_EQ(designators.size(), 8U);
    for (const std::vector<std::string>& row : RowsOf(RunJobx({"packages", job, "--columns", "name,designators"}).out))
    {
        std::string names;
        for (std::size_t i = 1; i < row.size(); ++i)
            names += " " + row[i];
        EXPECT_EQ(names, designators[row.at(0)]) << row.at(0);
    }
}

TEST(JobxTableView, LongListsOfComponentsAreShortened)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string table = RunJobx({"packages", jobs + "/beagleboneblack", "--messages", "none"}).out;
    EXPECT_THAT(table, HasSubstr(" more\n"));
    for (const std::string& line : LinesOf(table))
        EXPECT_LE(line.size(), 140U);
    EXPECT_THAT(RunJobx({"packages", jobs + "/beagleboneblack", "--messages", "none", "--wide"}).out,
                testing::Not(HasSubstr(" more")));
}

TEST(JobxTableView, PinsAreTheToeprintsOfTheFilesWithTheirNets)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::pair<std::string, std::size_t> cases[] = {{"beagleboneblack/steps/stp", 1769},
                                                         {"flat_hierarchy/steps/pcb", 247}};
    const auto placeOf = [](const std::vector<std::string>& words, std::size_t at)
    { return std::to_string(std::stod(words.at(at))) + "," + std::to_string(std::stod(words.at(at + 1))); };
    for (const auto& [step, count] : cases)
    {
        std::vector<std::string> nets;
        for (const std::string& line : LinesOf(FileBytes(jobs + "/" + step + "/eda/data")))
            if (line.starts_with("NET "))
                nets.push_back(WordsOf(line.substr(0, line.find(';'))).at(1));
        std::vector<std::string> expected;
        for (const std::string layer : {"comp_+_top", "comp_+_bot"})
        {
            std::string component;
            std::ifstream file(jobs + "/" + step + "/layers/" + layer + "/components");
            for (std::string line; std::getline(file, line);)
                if (line.starts_with("CMP "))
                    component = WordsOf(line).at(6);
                else if (line.starts_with("TOP "))
                {
                    const std::vector<std::string> words = WordsOf(line);
                    expected.push_back(nets.at(std::stoul(words.at(6))) + "," + component + "," + words.at(8) + "," +
                                       (layer == "comp_+_bot" ? "bottom" : "top") + "," + placeOf(words, 2));
                }
        }
        std::vector<std::string> found;
        const std::string job = jobs + "/" + step.substr(0, step.find('/'));
        std::vector<std::string> lines = LinesOf(RunJobx({"nets", job, "--messages", "none", "--pins", "--csv"}).out);
        for (std::size_t i = 1; i < lines.size(); ++i)
        {
            const std::vector<std::string> fields = FieldsOf(lines[i]);
            found.push_back(fields.at(1) + "," + fields.at(2) + "," + fields.at(3) + "," + fields.at(4) + "," +
                            placeOf(fields, 5));
        }
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found.size(), count) << step;
        EXPECT_EQ(found, expected) << step;
    }
}

TEST(Glob, StarsAndQuestionMarksMatchAsInAShell)
{
    const struct
    {
        const char* pattern;
        const char* text;
        bool matches;
    } cases[] = {
        {"", "", true},       {"", "a", false},        {"*", "", true},          {"a?c", "abc", true},
        {"a?c", "ac", false}, {"a*", "a", true},       {"*a*b*", "xaxbx", true}, {"*a*b", "abx", false},
        {"**", "a", true},    {"a*b*c", "abbc", true}, {"?", "", false},         {"*.x", "a.x.x", true},
        {"[a]", "a", false},  {"A", "a", false},
    };
    for (const auto& [pattern, text, matches] : cases)
        EXPECT_EQ(MatchesGlob(pattern, text, LetterCase::Respected), matches) << pattern << " " << text;
    EXPECT_TRUE(MatchesGlob("*TOP", "comp_+_top", LetterCase::Ignored));
    const std::string many(50000, 'a');
    EXPECT_FALSE(MatchesGlob("*a*a*a*a*b", many, LetterCase::Respected));
}

TEST(Glob, CaseCountsUnlessNothingMatches)
{
    const std::vector<std::string> names = {"gnd", "GND", "Vcc"};
    const NameFilter exact("gnd", "net", names, LetterCase::Respected);
    EXPECT_TRUE(exact.Passes("gnd"));
    EXPECT_FALSE(exact.Passes("GND"));
    EXPECT_TRUE(NameFilter("VCC", "net", names, LetterCase::Respected).Passes("Vcc"));
    EXPECT_THROW(NameFilter("x*", "net", names, LetterCase::Respected), ExitError);
    EXPECT_TRUE(NameFilter().Passes("anything"));
}

TEST(NaturalOrder, NumbersCountAsNumbersAndCaseDecidesLast)
{
    std::vector<std::string> names = {"r10", "R2", "R10", "R02", "C1", "R1A", "R1", "", "R", "U1.10", "U1.9"};
    std::sort(names.begin(), names.end(), IsNaturallyBefore);
    EXPECT_THAT(names, ElementsAre("", "C1", "R", "R1", "R1A", "R02", "R2", "R10", "r10", "U1.9", "U1.10"));
}
