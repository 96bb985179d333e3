// What complete reading adds to the JSON document, against what a plain walk through the job's files counts.
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;

namespace
{
// Of records in files: how many there are, and what stands behind their first semicolon.
struct Tails
{
    std::int64_t records = 0;
    std::int64_t ids = 0;
    std::int64_t attributes = 0;
    std::int64_t flags = 0;

    bool operator==(const Tails&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Tails& tails)
{
    return stream << tails.records << " records, " << tails.ids << " IDs, " << tails.attributes << " attributes, "
                  << tails.flags << " flags";
}

void AddTail(const std::string& line, Tails& tails)
{
    ++tails.records;
    const std::size_t quote = line.rfind('\'');
    const std::size_t tail = line.find(';', quote == std::string::npos ? 0 : quote);
    if (tail == std::string::npos)
        return;
    const std::size_t end = std::min(line.find(';', tail + 1), line.size());
    tails.ids += line.find(";ID=", tail) != std::string::npos ? 1 : 0;
    for (std::size_t at = tail + 1; at < end;)
    {
        const std::size_t comma = std::min(line.find(',', at), end);
        ++tails.attributes;
        tails.flags += line.substr(at, comma - at).find('=') == std::string::npos ? 1 : 0;
        at = comma + 1;
    }
}

// Those of the lines that begin with one of the keywords, in all files of that name of a step.
Tails TailsIn(const std::string& step, const std::string& fileName, const std::vector<std::string>& keywords)
{
    Tails tails;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(step))
    {
        if (entry.path().filename() != fileName)
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        for (std::string line; std::getline(file, line);)
        {
            while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
                line.pop_back();
            for (const std::string& keyword : keywords)
                if (line.starts_with(keyword + " "))
                    AddTail(line, tails);
        }
    }
    return tails;
}

// Those of the records at a place of the document; `list` has their attributes.
Tails TailsAt(const JsonCounts& counts, const std::string& place, const std::string& list = "attributes")
{
    const std::string attributes = place + "/" + list;
    return {counts.Objects(place), counts.Texts(place + "/id", JsonCounts::kNumber), counts.Objects(attributes),
            counts.Texts(attributes + "/kind", "flag")};
}

JsonCounts StrictCountsOf(const std::string& job, const std::string& step)
{
    const ProgramResult result = RunJobx({"json", job, "--steps", step, "--strict"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return CountJson(result.out);
}

void ExpectAllOf(const std::string& job, const std::string& stepName, const std::string& stepFolder)
{
    const std::string step = job + "/steps/" + stepFolder;
    const JsonCounts counts = StrictCountsOf(job, stepName);
    ASSERT_TRUE(counts.isValid);
    EXPECT_EQ(TailsAt(counts, "steps/layers/features", "properties"),
              TailsIn(step, "features", {"L", "P", "A", "T", "B", "S"}));
    EXPECT_EQ(TailsAt(counts, "steps/components/components"), TailsIn(step, "components", {"CMP"}));
    EXPECT_EQ(TailsAt(counts, "steps/components/components/toeprints"), TailsIn(step, "components", {"TOP"}));
    EXPECT_EQ(TailsAt(counts, "steps/eda/nets"), TailsIn(step, "data", {"NET"}));
    EXPECT_EQ(TailsAt(counts, "steps/eda/nets/subnets"), TailsIn(step, "data", {"SNT"}));
    EXPECT_EQ(TailsAt(counts, "steps/eda/packages"), TailsIn(step, "data", {"PKG"}));
    EXPECT_EQ(TailsAt(counts, "steps/eda/packages/pins"), TailsIn(step, "data", {"PIN"}));
    EXPECT_EQ(TailsAt(counts, "steps/eda/featureGroups"), TailsIn(step, "data", {"FGR"}));
    EXPECT_EQ(counts.Objects("steps/eda/nets/properties") + counts.Objects("steps/eda/packages/properties") +
                  counts.Objects("steps/eda/featureGroups/properties"),
              TailsIn(step, "data", {"PRP"}).records);
    EXPECT_EQ(counts.Objects("steps/eda/nets/subnets/objects") + counts.Objects("steps/eda/featureGroups/objects"),
              TailsIn(step, "data", {"FID"}).records);
    EXPECT_GT(counts.Objects("steps/eda/packages"), 0);
}

// How many of the files of that name say that they are metric.
std::int64_t MetricFiles(const std::string& step, const std::string& fileName)
{
    std::int64_t count = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(step))
        if (entry.path().filename() == fileName)
            count += FileBytes(entry.path().string()).find("UNITS=MM") != std::string::npos ? 1 : 0;
    return count;
}

// Appends the text to every line of the file that begins with one of the keywords.
void AppendTo(const std::string& path, const std::vector<std::string>& keywords,
              const std::function<std::string()>& tail)
{
    std::string text;
    for (std::string line : LinesOf(FileBytes(path)))
    {
        for (const std::string& keyword : keywords)
            if (line.starts_with(keyword + " "))
                line += (line.find(';') == std::string::npos ? ";" : "") + tail();
        text += line + "\n";
    }
    std::ofstream(path, std::ios::binary) << text;
}
} // namespace

TEST(CompleteJson, TailsRecordsAndIDsOfTheSampleAreThoseOfItsFiles)
{
    const TempDir directory;
    ExpectAllOf(CopySample(directory), "pcb", "pcb");
}

TEST(CompleteJson, TailsRecordsAndIDsOfARealJobAreThoseOfItsFiles)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    ExpectAllOf(jobs + "/flat_hierarchy", "pcb", "pcb");
}

TEST(CompleteJson, TailsRecordsAndIDsOfALargeRealJobAreThoseOfItsFiles)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    ExpectAllOf(jobs + "/beagleboneblack", "stp", "stp");
}

TEST(CompleteJson, EveryRecordThatMayHaveAUniqueNumberShowsIt)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string step = job + "/steps/pcb";
    std::int64_t next = 0;
    const auto tail = [&next] { return ";ID=" + std::to_string(++next); };
    AppendTo(step + "/eda/data", {"NET", "SNT", "PKG", "PIN"}, tail);
    AppendTo(step + "/layers/comp_+_top/components", {"CMP", "TOP"}, tail);
    AppendTo(step + "/layers/top/features", {"L", "P", "A", "T", "B", "S"}, tail);
    const std::int64_t appended = next;
    ExpectAllOf(job, "pcb", "pcb");
    const JsonCounts counts = StrictCountsOf(job, "pcb");
    std::int64_t shown = 0;
    for (const auto& [place, count] : counts.texts)
        shown += place.second == JsonCounts::kNumber ? count : 0;
    EXPECT_GT(appended, 300);
    EXPECT_EQ(shown, appended);
}

TEST(CompleteJson, UnitsHaveTheSameWordsEverywhere)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const auto& [name, step] :
         std::vector<std::pair<std::string, std::string>>{{"flat_hierarchy", "pcb"}, {"beagleboneblack", "stp"}})
    {
        SCOPED_TRACE(name);
        const std::string path = jobs + "/" + name + "/steps/" + step;
        const JsonCounts counts = StrictCountsOf(jobs + "/" + name, step);
        EXPECT_EQ(counts.Texts("steps/layers/unit", "mm"), MetricFiles(path, "features"));
        EXPECT_EQ(counts.Texts("steps/layers/unit", "mm") + counts.Texts("steps/layers/unit", "inch"),
                  counts.Objects("steps/layers"));
        EXPECT_EQ(counts.Texts("steps/components/unit", "mm"), MetricFiles(path, "components"));
        EXPECT_EQ(counts.Texts("steps/eda/unit", "mm"), MetricFiles(path, "data"));
        for (const std::string place : {"font", "misc", "steps/profile", "steps/header", "steps/netlist"})
            EXPECT_EQ(counts.Texts(place + "/unit", "mm") + counts.Texts(place + "/unit", "inch"), 1) << place;
    }
}

TEST(CompleteJson, AnAttributeHasNameKindAndValueAndAFlagHasTrue)
{
    const TempDir directory;
    const std::string job =
        MakeJob(directory, "$0 r10\n@0 .smd\n@1 .string\n@2 .pad_usage\n&0 one two\nP 0 0 0 P 0 0;0,1=0,2=1;ID=7\n");
    const std::string complete = RunJobx({"json", job}).out;
    EXPECT_THAT(
        complete,
        HasSubstr(R"({"name":".smd","number":0,"value":true,"textNumber":-1,"furtherValues":[],"kind":"flag"})"));
    EXPECT_THAT(
        complete,
        HasSubstr(
            R"({"name":".string","number":1,"value":"one two","textNumber":0,"furtherValues":[],"kind":"text"})"));
    EXPECT_THAT(complete, HasSubstr(R"("kind":"option"})"));
    EXPECT_THAT(complete, HasSubstr(R"("id":7,)"));
    EXPECT_THAT(complete, HasSubstr(R"({"result":1,"schemaVersion":2,)"));
    const std::string legacy = RunLegacy({"json", job}).out;
    for (const std::string key : {"\"kind\":\"flag\"", "\"id\"", "\"unit\"", "schemaVersion", "featureGroups"})
        EXPECT_THAT(legacy, Not(HasSubstr(key))) << key;
}

TEST(CompleteJson, DiffComparesWhatCompleteReadingAdds)
{
    const TempDir one;
    const TempDir two;
    const std::string features = "$0 r10\n@0 .smd\nP 0 0 0 P 0 0;0;ID=7\n";
    const std::string a = MakeJob(one, features);
    EXPECT_EQ(RunJobx({"diff", a, MakeJob(two, features)}).out, "identical\n");
    const std::string otherID = MakeJob(two, "$0 r10\n@0 .smd\nP 0 0 0 P 0 0;0;ID=8\n");
    EXPECT_THAT(RunJobx({"diff", a, otherID}).out, HasSubstr("feature 0 (P): id 7 -> 8\n"));
    EXPECT_THAT(RunJobx({"diff", a, otherID, "--ignore-line-numbers"}).out, HasSubstr("id 7 -> 8\n"));
    const std::string otherUnit = MakeJob(two, "UNITS=MM\n" + features);
    EXPECT_THAT(RunJobx({"diff", a, otherUnit}).out, HasSubstr("feature 0 (P): only in A\n")); // a smaller symbol
    const std::string noFlag = MakeJob(two, "$0 r10\n@0 .smd\nP 0 0 0 P 0 0;0=1;ID=7\n");
    EXPECT_EQ(RunJobx({"diff", a, noFlag}).exitCode, 1);
}

TEST(CompleteJson, ZeroIsAUniqueNumber)
{
    const TempDir directory;
    EXPECT_THAT(RunJobx({"json", MakeJob(directory, "$0 r10\nP 0 0 0 P 0 0;;ID=0\n")}).out, HasSubstr(R"("id":0,)"));
}

TEST(CompleteJson, EachKindOfAttributeHasItsWord)
{
    const TempDir directory;
    const std::string job =
        MakeJob(directory, "$0 r10\n@0 .flag\n@1 .count\n@2 .size\n@3 .words\n@4 .choice\n@5 .other\n"
                           "&0 abc\nP 0 0 0 P 0 0;0,1=7,2=0.5,3=0,4=1,5=3\n");
    directory.Write(
        "job/misc/userattr",
        "BOOLEAN {\nNAME=.flag\n}\nINTEGER {\nNAME=.count\n}\nFLOAT {\nNAME=.size\n}\nTEXT {\nNAME=.words\n}\n"
        "OPTION {\nNAME=.choice\nOPTIONS=a;b\n}\n");
    const std::string document = RunJobx({"json", job, "--strict"}).out;
    const std::vector<std::pair<std::string, std::string>> words = {
        {R"(".flag","number":0,"value":true,"textNumber":-1)", "flag"},
        {R"(".count","number":1,"value":"7","textNumber":-1)", "integer"},
        {R"(".size","number":2,"value":"0.5","textNumber":-1)", "real"},
        {R"(".words","number":3,"value":"abc","textNumber":0)", "text"},
        {R"(".choice","number":4,"value":"b","textNumber":1)", "option"},
        {R"(".other","number":5,"value":"3","textNumber":-1)", "integer"}};
    for (const auto& [beginning, word] : words)
        EXPECT_THAT(document, HasSubstr(beginning + R"(,"furtherValues":[],"kind":")" + word + "\"")) << word;
}

TEST(CompleteJson, DiffIsStrictAboutBothJobs)
{
    const TempDir one;
    const TempDir two;
    const std::string sound = MakeJob(one, "$0 r10\nP 0 0 0 P 0 0\n");
    const std::string faulty = MakeJob(two, "$0 r10\nP 0 0 7 P 0 0\n");
    EXPECT_EQ(RunJobx({"diff", sound, faulty, "--strict"}).exitCode, 5);
    EXPECT_EQ(RunJobx({"diff", faulty, sound, "--strict"}).exitCode, 5);
    EXPECT_EQ(RunJobx({"diff", sound, faulty}).exitCode, 1);
}
