// The members that complete reading adds to the document and to comparisons, on small changes of the sample.
#include "RunProgram.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{
using Json = rapidjson::Value;

void Append(const std::string& path, const std::string& text)
{
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary | std::ios::app) << text;
}

void Replace(const std::string& path, const std::string& from, const std::string& to)
{
    std::string text = FileBytes(path);
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << path << " has no " << from;
    std::ofstream(path, std::ios::binary) << text.replace(at, from.size(), to);
}

// The sample with a document of its own.
struct Sample
{
    TempDir directory;
    std::string job = CopySample(directory);
    rapidjson::Document document;

    void Read()
    {
        const ProgramResult result = RunJobx({"json", job, "--messages", "none"});
        ASSERT_EQ(result.exitCode, 0) << result.err;
        document.Parse(result.out.c_str());
        ASSERT_FALSE(document.HasParseError());
    }
    const Json& Step(const std::string& name) const { return Named(document["steps"], name); }
    const Json& Layer(const std::string& name) const { return Named(Step("PCB")["layers"], name); }

    static const Json& Named(const Json& list, const std::string& name)
    {
        for (const Json& record : list.GetArray())
            if (record["name"].GetString() == name)
                return record;
        ADD_FAILURE() << "nothing is called " << name;
        return list;
    }
};

// "name=value (kind)" of each attribute.
std::vector<std::string> AttributesOf(const Json& owner)
{
    std::vector<std::string> texts;
    for (const Json& attribute : owner["attributeList"]["attributes"].GetArray())
        texts.push_back(std::string(attribute["name"].GetString()) + "=" + attribute["value"].GetString() + " (" +
                        attribute["kind"].GetString() + ")");
    return texts;
}

std::vector<std::string> KeysOf(const Json& object)
{
    std::vector<std::string> texts;
    for (const Json& key : object["furtherKeys"].GetArray())
        texts.push_back(std::string(key["name"].GetString()) + "=" + key["value"].GetString());
    return texts;
}

// What `jobx diff` prints about the sample and a copy that `change` changes.
ProgramResult DiffAfter(const std::function<void(const std::string& job)>& change,
                        const std::vector<std::string>& options = {})
{
    const TempDir one;
    const TempDir two;
    const std::string a = CopySample(one);
    const std::string b = CopySample(two);
    change(b);
    std::vector<std::string> arguments = {"diff", a, b, "--messages", "none"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunJobx(arguments);
}
} // namespace

TEST(CompleteMembers, AttributeListsOfJobStepsLayersComponentsAndSymbolsAreShown)
{
    Sample sample;
    Append(sample.job + "/symbols/led_mark/attrlist", "UNITS=MM\n.string = mark\n");
    sample.Read();
    EXPECT_THAT(AttributesOf(sample.document["misc"]),
                ElementsAre(".customer= (unknown)", ".comment=sample job (unknown)", ".board_thickness=0.062 (real)"));
    EXPECT_THAT(AttributesOf(sample.Step("PCB")),
                ElementsAre(".comment=one board (unknown)", ".out_name=blinker (unknown)"));
    EXPECT_THAT(AttributesOf(sample.Layer("diel_2")), ElementsAre(".layer_dielectric=0.04 (real)"));
    EXPECT_THAT(AttributesOf(sample.Step("PCB")["components"][0]), ElementsAre(".comment= (unknown)"));
    const Json& symbols = sample.document["symbols"];
    EXPECT_THAT(AttributesOf(symbols[0]["layer"]), ElementsAre(".string=mark (text)"));
    EXPECT_STREQ(symbols[0]["layer"]["attributeList"]["unit"].GetString(), "mm");
    EXPECT_STREQ(sample.document["misc"]["attributeList"]["unit"].GetString(), "inch");
    EXPECT_TRUE(symbols[1]["layer"]["attributeList"].IsNull());
    EXPECT_TRUE(sample.Step("PCB")["profile"]["attributeList"].IsNull());
}

TEST(CompleteMembers, ToolsHaveTheirUnitAndFurtherKeys)
{
    Sample sample;
    Replace(sample.job + "/steps/pcb/layers/drill/tools", "UNITS=INCH", "UNITS=MM\nVENDOR=none");
    Replace(sample.job + "/steps/pcb/layers/drill/tools", "    NUM=1", "    NUM=1\n    ID=77\n    SPEED=3");
    sample.Read();
    const Json& tools = sample.Layer("drill")["tools"];
    EXPECT_STREQ(tools["unit"].GetString(), "mm");
    EXPECT_THAT(KeysOf(tools), ElementsAre("VENDOR=none"));
    ASSERT_EQ(tools["tools"].Size(), 4U);
    EXPECT_EQ(tools["tools"][0]["id"].GetInt(), 77);
    EXPECT_THAT(KeysOf(tools["tools"][0]), ElementsAre("SPEED=3"));
    EXPECT_EQ(tools["tools"][0]["finishSize"].GetDouble(), 12.0);
    EXPECT_TRUE(tools["tools"][1]["id"].IsNull());
    EXPECT_EQ(sample.Layer("top")["tools"]["tools"].Size(), 0U);
}

TEST(CompleteMembers, NetlistsBesideCadnetHaveTheNamesOfTheirFolders)
{
    Sample sample;
    const std::string netlists = sample.job + "/steps/pcb/netlists/";
    fs::create_directory(netlists + "refnet");
    fs::copy(netlists + "cadnet/netlist", netlists + "refnet/netlist");
    Append(netlists + "curnet/netlist", "UNITS=MM\n$0 A\n0 0.1 1 2 T e e\n");
    sample.Read();
    const Json& step = sample.Step("PCB");
    EXPECT_STREQ(step["netlist"]["name"].GetString(), "cadnet");
    const Json& further = step["furtherNetlists"];
    ASSERT_EQ(further.Size(), 2U);
    EXPECT_STREQ(further[0]["name"].GetString(), "curnet");
    EXPECT_STREQ(further[0]["unit"].GetString(), "mm");
    EXPECT_EQ(further[0]["nets"][0]["points"].Size(), 1U);
    EXPECT_STREQ(further[1]["name"].GetString(), "refnet");
    EXPECT_EQ(further[1]["nets"].Size(), step["netlist"]["nets"].Size());
    EXPECT_EQ(sample.Step("PANEL")["furtherNetlists"].Size(), 0U);
}

TEST(CompleteMembers, IntendedShortsAreShownLineByLine)
{
    Sample sample;
    Append(sample.job + "/steps/pcb/eda/shortf", "# nets\nSHORT 1 2\n\n  SHORT 3 4\n");
    sample.Read();
    const Json& shorts = sample.Step("PCB")["shorts"];
    ASSERT_EQ(shorts.Size(), 2U);
    EXPECT_STREQ(shorts[0].GetString(), "SHORT 1 2");
    EXPECT_STREQ(shorts[1].GetString(), "SHORT 3 4");
}

TEST(CompleteMembers, FurtherKeysAndIDsOfInfoMatrixAndHeaderAreShown)
{
    Sample sample;
    Append(sample.job + "/misc/info", "MAX_UID=9\nCOLOUR=red\n");
    Replace(sample.job + "/matrix/matrix", "    COL=1", "    COL=1\n    ID=5\n    STAGE=2");
    Replace(sample.job + "/matrix/matrix", "    ROW=1\n", "    ROW=1\n    ID=6\n    WEIGHT=3\n");
    Append(sample.job + "/matrix/matrix", "PANEL {\n    SIZE=4\n}\n");
    Replace(sample.job + "/steps/panel/stephdr", "X_DATUM", "ID=7\nSHADE=dark\nX_DATUM");
    Replace(sample.job + "/steps/panel/stephdr", "    NX=", "    ID=8\n    TILT=1\n    NX=");
    sample.Read();
    EXPECT_THAT(KeysOf(sample.document["misc"]), testing::Contains("COLOUR=red"));
    const Json& matrix = sample.document["matrix"];
    EXPECT_THAT(KeysOf(matrix), ElementsAre("PANEL.SIZE=4"));
    EXPECT_THAT(KeysOf(matrix["steps"][0]), ElementsAre("STAGE=2"));
    EXPECT_EQ(matrix["steps"][0]["id"].GetInt(), 5);
    EXPECT_THAT(KeysOf(matrix["layers"][0]), ElementsAre("WEIGHT=3"));
    EXPECT_EQ(matrix["layers"][0]["id"].GetInt(), 6);
    EXPECT_TRUE(matrix["layers"][1]["id"].IsNull());
    const Json& header = sample.Step("PANEL")["header"];
    EXPECT_THAT(KeysOf(header), ElementsAre("SHADE=dark"));
    EXPECT_EQ(header["id"].GetInt(), 7);
    EXPECT_THAT(KeysOf(header["stepRepeats"][0]), ElementsAre("TILT=1"));
    EXPECT_EQ(header["stepRepeats"][0]["id"].GetInt(), 8);
}

TEST(CompleteMembers, TheUniqueNumberOfAFeaturesFileIsShown)
{
    Sample sample;
    Replace(sample.job + "/steps/pcb/layers/top/features", "#", "ID=35\n#");
    sample.Read();
    EXPECT_EQ(sample.Layer("top")["id"].GetInt(), 35);
    EXPECT_TRUE(sample.Layer("bot")["id"].IsNull());
}

TEST(CompleteMembers, FilesThatNoReaderTookAreListedWithTheirSizes)
{
    Sample sample;
    sample.Read();
    EXPECT_EQ(sample.document["carriedFiles"].Size(), 0U);
    Append(sample.job + "/user/notes.txt", "12345");
    Append(sample.job + "/input/a", "");
    sample.Read();
    const Json& carried = sample.document["carriedFiles"];
    ASSERT_EQ(carried.Size(), 2U);
    EXPECT_STREQ(carried[0]["path"].GetString(), "input/a");
    EXPECT_EQ(carried[0]["size"].GetInt(), 0);
    EXPECT_STREQ(carried[1]["path"].GetString(), "user/notes.txt");
    EXPECT_EQ(carried[1]["size"].GetInt(), 5);
}

TEST(CompleteMembers, LegacyDocumentsHaveNoneOfThem)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    Append(job + "/steps/pcb/eda/shortf", "SHORT 1 2\n");
    const std::string document = RunLegacy({"json", job}).out;
    for (const std::string key : {"attributeList", "furtherKeys", "furtherNetlists", "shorts", "carriedFiles"})
        EXPECT_THAT(document, Not(HasSubstr("\"" + key + "\""))) << key;
}

TEST(CompleteMembers, DiffComparesEachOfThem)
{
    struct Change
    {
        std::string file;
        std::string from; // "" to append
        std::string to;
        std::string shown;
        int differences = 1;
    };
    const std::string tools = "steps/pcb/layers/drill/tools";
    const std::vector<Change> changes = {
        {"misc/attrlist", "sample job", "job", "    info / attribute .comment: value \"sample job\" -> \"job\"\n"},
        {"steps/pcb/attrlist", "", ".x=1\n", "    step PCB / attribute .x: only in B\n"},
        {"steps/pcb/layers/diel_2/attrlist", "0.04", "0.05",
         "attribute .layer_dielectric: value \"0.04\" -> \"0.05\"\n"},
        {"steps/pcb/layers/diel_2/attrlist", "", "UNITS=MM\n", "attribute .layer_dielectric: value 1.016 -> 0.04\n"},
        {"steps/pcb/layers/comp_+_top/attrlist", "", ".x=1\n", "components comp_+_top / attribute .x: only in B\n"},
        {"symbols/led_mark/attrlist", "", ".x=1\n", "symbol led_mark: attribute list: 1 only in B\n"},
        {tools, "DRILL_SIZE=", "DRILL_SIZE=1", "layer drill / tool 0: drill size "},
        {tools, "UNITS=INCH", "UNITS=MM", "layer drill / tool 1: drill size 1.016 -> 0.04\n", 16},
        {tools, "", "SPEED=3\n", "layer drill / key SPEED: only in B\n"},
        {"steps/pcb/netlists/refnet/netlist", "", "$0 A\n", "    step PCB / netlist refnet: only in B\n"},
        {"steps/pcb/eda/shortf", "", "SHORT 1 2\n", "    step PCB / shorts / short SHORT 1 2: only in B\n"},
        {"misc/info", "", "COLOUR=red\n", "    info / key COLOUR: only in B\n"},
        {"matrix/matrix", "COL=1", "COL=1\n    STAGE=2", "    matrix / step PCB / key STAGE: only in B\n"},
        {"matrix/matrix", "ROW=1\n", "ROW=1\n    ID=6\n", "id -1 -> 6\n"},
        {"steps/panel/stephdr", "X_DATUM", "SHADE=dark\nX_DATUM", "header / key SHADE: only in B\n"},
        {"user/notes.txt", "", "12345", "    files not read / file user/notes.txt: only in B\n"},
    };
    for (const Change& change : changes)
    {
        SCOPED_TRACE(change.file + " " + change.to);
        const ProgramResult result = DiffAfter(
            [&](const std::string& job)
            {
                const std::string path = job + "/" + change.file;
                change.from.empty() ? Append(path, change.to) : Replace(path, change.from, change.to);
            });
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.out, HasSubstr(change.shown));
        EXPECT_THAT(result.out, HasSubstr("\n" + std::to_string(change.differences) + " difference"));
    }
}

TEST(CompleteMembers, DiffComparesTheInsideOfFurtherNetlistsAndTheSizesOfCarriedFiles)
{
    const TempDir one;
    const TempDir two;
    const std::string a = CopySample(one);
    const std::string b = CopySample(two);
    Append(a + "/steps/pcb/netlists/refnet/netlist", "$0 A\n0 0.1 1 2 T e e\n");
    Append(b + "/steps/pcb/netlists/refnet/netlist", "$0 A\n0 0.1 1 3 T e e\n");
    Append(a + "/user/notes.txt", "1234");
    Append(b + "/user/notes.txt", "123456");
    const std::string out = RunJobx({"diff", a, b}).out;
    EXPECT_THAT(out, HasSubstr("    step PCB / netlist refnet / net A / point 0: only in A\n"));
    EXPECT_THAT(out, HasSubstr("    files not read / file user/notes.txt: size 4 -> 6\n"));
    EXPECT_THAT(out, HasSubstr("\n3 differences in 2 places\n"));
}
