#include "FileCounts.h"
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/SlowBuild.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <filesystem>

using testing::HasSubstr;

namespace
{
// What a step's files hold, counted by lines.
struct StepFiles
{
    std::string directory;

    std::int64_t Eda(std::string_view beginning) const { return CountLines(directory + "/eda/data", beginning); }
    std::int64_t Components(std::string_view beginning) const
    {
        return CountLinesBelow(directory + "/layers", "components", beginning);
    }
    std::int64_t Features(std::string_view beginning) const
    {
        return CountLinesBelow(directory + "/layers", "features", beginning);
    }
    std::int64_t Netlist(std::string_view beginning) const
    {
        return CountLines(directory + "/netlists/cadnet/netlist", beginning);
    }
};

std::string Place(std::string_view tail)
{
    return "steps/" + std::string(tail);
}

JsonCounts CountsOf(const std::string& job, const std::string& step, bool isLegacy = false)
{
    const ProgramResult result =
        isLegacy ? RunLegacy({"json", job, "--steps", step}) : RunJobx({"json", job, "--steps", step});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return CountJson(result.out);
}

// What reads alike in every job: features, components, the netlist and the font.
void ExpectCountsAsInFiles(const JsonCounts& counts, const std::string& job, const StepFiles& files)
{
    ASSERT_TRUE(counts.isValid);
    for (const std::string kind : {"L", "P", "A", "T", "B", "S"})
        EXPECT_EQ(counts.Texts(Place("layers/features/type"), kind), files.Features(kind + " ")) << kind;
    EXPECT_EQ(counts.Texts(Place("layers/features/contours/kind"), "OB"), files.Features("OB "));
    EXPECT_EQ(counts.Texts(Place("layers/features/contours/kind"), "OS"), files.Features("OS "));
    EXPECT_EQ(counts.Texts(Place("layers/features/contours/kind"), "OC"), files.Features("OC "));
    EXPECT_EQ(counts.Objects(Place("components/components")), files.Components("# CMP"));
    EXPECT_EQ(counts.Objects(Place("components/components/toeprints")), files.Components("TOP "));
    EXPECT_EQ(counts.Objects(Place("components/components/properties")), files.Components("PRP "));
    EXPECT_EQ(counts.Objects(Place("netlist/nets")), files.Netlist("$"));
    EXPECT_EQ(counts.Objects(Place("netlist/nets/points")),
              files.Netlist("") - files.Netlist("$") - files.Netlist("#") - files.Netlist("H"));
    EXPECT_EQ(counts.Objects(Place("eda/nets")), files.Eda("NET "));
    EXPECT_EQ(counts.Objects(Place("eda/nets/subnets")), files.Eda("SNT "));
    EXPECT_EQ(counts.Objects(Place("eda/nets/subnets/objects")), files.Eda("FID "));
    EXPECT_EQ(counts.Objects("font/characters"), CountLines(job + "/fonts/standard", "CHAR"));
    EXPECT_EQ(counts.Objects("font/characters/strokes"), CountLines(job + "/fonts/standard", "LINE"));
}
} // namespace

TEST(JobxJson, CountsOfTheSampleAreTheLinesOfItsFiles)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const StepFiles files{job + "/steps/pcb"};
    const JsonCounts counts = CountsOf(job, "pcb");
    ExpectCountsAsInFiles(counts, job, files);
    EXPECT_EQ(counts.Objects(Place("eda/packages")), files.Eda("PKG "));
    EXPECT_EQ(counts.Objects(Place("eda/packages/pins")), files.Eda("PIN "));
    for (const std::string kind : {"TOP", "VIA", "TRC", "PLN"})
        EXPECT_EQ(counts.Texts(Place("eda/nets/subnets/kind"), kind), files.Eda("SNT " + kind)) << kind;
    EXPECT_EQ(counts.Objects("symbols"), 2);
    EXPECT_GT(counts.Objects("symbols/layer/features"), 0);
}

TEST(JobxJson, CountsOfABoardWithNumberedNetsAreTheLinesOfItsFiles)
{
    if (kIsSlowBuild)
        GTEST_SKIP() << "takes long in this build; the test of the other board prints the same kinds of records";
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/beagleboneblack";
    const StepFiles files{job + "/steps/stp"};
    const JsonCounts counts = CountsOf(job, "stp");
    ExpectCountsAsInFiles(counts, job, files);
    EXPECT_EQ(counts.Objects(Place("eda/packages")), files.Eda("PKG "));
    EXPECT_EQ(counts.Objects(Place("eda/packages/pins")), files.Eda("PIN "));
    // A property line behind a package line goes to the net before it, one behind a pin to the package.
    EXPECT_EQ(counts.Objects(Place("eda/nets/properties")) + counts.Objects(Place("eda/packages/properties")),
              files.Eda("PRP "));
}

TEST(JobxJson, InLegacyReadingABoardWhosePackagesCarryAttributesHasNone)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/flat_hierarchy";
    const StepFiles files{job + "/steps/pcb"};
    const JsonCounts counts = CountsOf(job, "pcb", true);
    ExpectCountsAsInFiles(counts, job, files);
    ASSERT_GT(files.Eda("PKG "), 0);
    ASSERT_GT(files.Eda("PIN "), 0);
    EXPECT_EQ(counts.Objects(Place("eda/packages")), 0);
    EXPECT_EQ(counts.Objects(Place("eda/packages/pins")), 0);
}

TEST(JobxJson, NetCommentsWithoutABlankNumberNoNet)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const ProgramResult result = RunLegacy({"nets", jobs + "/flat_hierarchy", "--csv"});
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(static_cast<std::int64_t>(lines.size()) - 1,
              CountLines(jobs + "/flat_hierarchy/steps/pcb/eda/data", "#NET "));
    EXPECT_EQ(CountLines(jobs + "/flat_hierarchy/steps/pcb/eda/data", "# NET"), 0);
    for (std::size_t i = 1; i < lines.size(); ++i)
        EXPECT_THAT(lines[i], testing::StartsWith("PCB," + std::to_string(i - 1) + ",-1,"));

    const ProgramResult numbered = RunLegacy({"nets", jobs + "/beagleboneblack", "--csv"});
    const std::vector<std::string> others = LinesOf(numbered.out);
    ASSERT_EQ(static_cast<std::int64_t>(others.size()) - 1,
              CountLines(jobs + "/beagleboneblack/steps/stp/eda/data", "# NET"));
    EXPECT_THAT(others[1], testing::StartsWith("STP,0,0,DGND,"));
}

TEST(JobxJson, WithoutFeaturesHasAllElse)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    JsonCounts all = CountJson(RunJobx({"json", job}).out);
    const JsonCounts facts = CountJson(RunJobx({"json", job, "--no-features"}).out);
    ASSERT_TRUE(facts.isValid);
    EXPECT_GT(all.Objects(Place("layers/features")), 0);
    std::erase_if(all.objects, [](const auto& each) { return each.first.starts_with("steps/layers/features"); });
    std::erase_if(all.texts, [](const auto& each) { return each.first.first.starts_with("steps/layers/features"); });
    EXPECT_EQ(facts.objects, all.objects);
    EXPECT_EQ(facts.texts, all.texts);
    EXPECT_THAT(all.firstKeys[Place("layers")], HasSubstr(" features "));
    EXPECT_THAT(facts.firstKeys.at(Place("layers")), testing::Not(HasSubstr("features ")));
    EXPECT_GT(facts.Objects(Place("profile/features")), 0);
    EXPECT_GT(facts.Objects("symbols/layer/features"), 0);
}

TEST(JobxJson, WithoutFeaturesTheFactsOfALargeBoardAreFewBytes)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string job = jobs + "/beagleboneblack";
    const std::size_t facts = RunJobx({"json", job, "--messages", "none", "--no-features"}).out.size();
    const std::size_t one =
        RunJobx({"json", job, "--messages", "none", "--layer", "comp_+_*", "--layer", "TOP"}).out.size();
    EXPECT_GT(facts, 1'000'000U);
    EXPECT_LT(facts, 20'000'000U);
    EXPECT_GT(one, facts);
}

TEST(JobxJson, LayersAreChosenByTheirNames)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const auto layersOf = [&](const std::vector<std::string>& options)
    {
        std::vector<std::string> words = {"json", job};
        words.insert(words.end(), options.begin(), options.end());
        rapidjson::Document document;
        document.Parse(RunJobx(words).out.c_str());
        std::vector<std::string> names;
        for (const auto& step : document["steps"].GetArray())
            for (const auto& layer : step["layers"].GetArray())
                names.emplace_back(layer["name"].GetString());
        EXPECT_EQ(document["steps"][0]["components"].Size(), 2U);
        return names;
    };
    EXPECT_THAT(layersOf({"--layer", "TOP"}), testing::ElementsAre("top", "top"));
    EXPECT_THAT(layersOf({"--step", "pcb", "--layer", "ss?", "--layer", "*ou*"}),
                testing::ElementsAre("rout", "ssb", "sst"));
    EXPECT_GT(layersOf({}).size(), 20U);
    const ProgramResult wrong = RunJobx({"json", job, "--layer", "top", "--layer", "topp"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err, "jobx: the job has no layer \"topp\"; did you mean \"top\"?\n");
}

TEST(JobxJson, TheDocumentOfEarlierVersionsIsNotLimited)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    EXPECT_THAT(RunLegacy({"json", job, "--no-features"}).err, HasSubstr("cannot be combined"));
    EXPECT_EQ(RunLegacy({"json", job, "--layer", "top"}).exitCode, 2);
}

TEST(JobxJson, WithLegacyHasExactlyTheAgreedKeysInTheirOrder)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult result = RunLegacy({"json", job, "--sysattr", job + "/misc/sysattr"});
    const auto keys = CountJson(result.out).firstKeys;
    const std::pair<std::string, std::string> expected[] = {
        {"", "result versionMajor versionMinor name font matrix misc steps symbols sysAttrs "},
        {"font", "xSize ySize offset characters "},
        {"font/characters", "name strokes "},
        {"font/characters/strokes", "start end polarity shape width "},
        {"matrix/steps", "column name "},
        {"matrix/layers", "endName startName polarity name type context addType oldName color row "},
        {"misc", "versionMajor versionMinor jobName source creationDate saveDate saveApp saveUser "},
        {"steps", "name profile header layers components eda netlist "},
        {"steps/layers", "name rescaleFactor units features attributeTexts attributeTextNumbers attributeNames "
                         "attributeNameNumbers symbolNames symbolNumbers symbolSecondFields components tools "
                         "featureLineNo "},
        {"steps/header/stepRepeats", "name position pitch count angle mirror flip "},
        {"steps/eda", "header layerNames nets packages properties units attributeNames attributeTexts "},
        {"steps/eda/nets", "number name subnets properties "},
        {"steps/eda/nets/subnets",
         "line kind side component toeprint fillType cutoutType fillSize point text objects "},
        {"steps/eda/nets/subnets/objects", "feature layer kind second line "},
        {"steps/eda/packages", "number name pitch lowerLeft upperRight outlines pins properties attributes "},
        {"steps/eda/packages/outlines", "line keyword params "},
        {"steps/eda/packages/pins", "name type centre finishedHoleSize electricalType mountType outlines "},
        {"steps/components", "layerName relativePath units components attributeNames attributeNameNumbers "
                             "attributeTexts attributeTextNumbers "},
        {"steps/components/components",
         "number toeprints partName name mirror rotation location package properties attributes "},
        {"steps/components/components/toeprints", "name net subnet mirror rotation location pin "},
        {"steps/netlist", "units points nets "},
        {"steps/netlist/nets", "number name points "},
        {"steps/netlist/nets/points", "side staggeredMark staggeredRadius exposure endPoint height width position "
                                      "staggeredPosition radius flags "},
        {"symbols", "texts name path layer "},
        {"sysAttrs", "options name "}};
    for (const auto& [place, names] : expected)
        EXPECT_EQ(keys.at(place), names) << place;
}

TEST(JobxJson, NumbersAreTheShortestThatReadBackEqual)
{
    const TempDir directory;
    const std::string job =
        MakeJob(directory, "P 0.1 -0.0 0 P 0 0\nP 1e21 1e-7 0 P 0 0\nP 5.000 123456.75 0 P 0 0\n"
                           "P 0.30000000000000004 1.7976931348623157e308 0 P 0 0\nP 5e-324 -25.40 0 P 0 0\n");
    const ProgramResult result = RunJobx({"json", job});
    ASSERT_EQ(result.exitCode, 0);
    EXPECT_TRUE(CountJson(result.out).isValid);
    for (const char* const expected :
         {"\"centre\":[0.1,-0.0]", "\"centre\":[1e+21,1e-07]", "\"centre\":[5,123456.75]",
          "\"centre\":[0.30000000000000004,1.7976931348623157e+308]", "\"centre\":[5e-324,-25.4]"})
        EXPECT_THAT(result.out, HasSubstr(expected));
}

TEST(JobxJson, InfinitiesAndNanAreTexts)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "P inf -inf 0 P 0 0\nP nan -nan 0 P 0 0\nP 1e999 -1e999 0 P 0 0\n");
    const ProgramResult result = RunJobx({"json", job});
    ASSERT_EQ(result.exitCode, 0);
    EXPECT_TRUE(CountJson(result.out).isValid);
    EXPECT_THAT(result.out, HasSubstr(R"("centre":["inf","-inf"]})"));
    EXPECT_THAT(result.out, HasSubstr(R"("centre":["nan","-nan"]})"));
}

TEST(JobxJson, TextThatIsUtf8IsCarriedAsItIsAndOtherTextByteByByte)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "@0 caf\xC3\xA9\n@1 caf\xE9\n@2 \xED\xA0\x80\n@3 a\"b\\\x01\t\x7F\n");
    const ProgramResult plain = RunJobx({"json", job});
    EXPECT_TRUE(CountJson(plain.out).isValid);
    EXPECT_THAT(plain.out, HasSubstr("\"attributeNames\":[\"caf\xC3\xA9\",\"caf\xC3\xA9\",\"\xC3\xAD\xC2\xA0\xC2\x80\","
                                     "\"a\\\"b\\\\\\u0001\\t\x7F\"]"));
    const ProgramResult latin1 = RunJobx({"json", job, "--latin1"});
    EXPECT_TRUE(CountJson(latin1.out).isValid);
    EXPECT_THAT(latin1.out, HasSubstr("\"attributeNames\":[\"caf\xC3\x83\xC2\xA9\",\"caf\xC3\xA9\","));
}

TEST(JobxJson, LayersComponentsAndSymbolsAreSorted)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    for (const std::string layer : {"zeta", "Alpha", "mid"})
    {
        directory.Write("job/steps/pcb/layers/" + layer + "/features", "");
        directory.Write("job/steps/pcb/layers/" + layer + "/components", "");
    }
    directory.Write("job/symbols/b/features", "");
    directory.Write("job/symbols/a/features", "");
    const ProgramResult result = RunJobx({"json", job, "--steps", "PCB"});
    const auto isInOrder = [&](const std::vector<std::string>& texts)
    {
        std::size_t at = 0;
        for (const std::string& text : texts)
            if ((at = result.out.find(text, at)) == std::string::npos)
                return false;
        return true;
    };
    EXPECT_TRUE(isInOrder({R"("layers":[{"name":"Alpha")", R"({"name":"mid")", R"({"name":"top")", R"({"name":"zeta")",
                           R"("components":[{"layerName":"Alpha")", R"({"layerName":"mid")", R"({"layerName":"zeta")",
                           R"("symbols":[{"texts":[],"name":"a")", R"({"texts":[],"name":"b")"}));
}

TEST(JobxJson, AWholeJobReadNamesSymbolsByTheirPath)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string path = job + "/symbols/led_mark";
    EXPECT_THAT(RunLegacy({"json", job}).out,
                HasSubstr("{\"texts\":[],\"name\":\"" + path + "\",\"path\":\"" + path + "\""));
    EXPECT_THAT(RunLegacy({"json", job, "--steps", "pcb"}).out,
                HasSubstr("{\"texts\":[],\"name\":\"led_mark\",\"path\":\"" + path + "\""));
}

TEST(JobxJson, TwoRunsPrintTheSame)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const ProgramResult first = RunJobx({"json", job});
    std::filesystem::remove(job + "/symbols/mount_ring/features"); // unpacked by the first run
    EXPECT_TRUE(first.out == RunJobx({"json", job}).out);
}

TEST(JobxJson, TellsOfADirectoryThatHoldsNoJobInTheDocumentToo)
{
    const TempDir directory;
    const ProgramResult result = RunJobx({"json", directory.MakeDir("empty")});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out, testing::StartsWith(R"({"result":0,"schemaVersion":2,"name":"empty")"));
    EXPECT_TRUE(CountJson(result.out).isValid);
}
