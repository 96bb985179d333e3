// CJOBX::SaveODBData: a job that was read and saved.
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/corekit/LzwEncoder.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "reading/SmallJob.h"
#include "saving/SavedJob.h"
#include "step/CJOBXstephdr.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <cctype>
#include <functional>
#include <memory>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{
constexpr char kFeatures[] = "steps/pcb/layers/top/features";

// Saves the job beside its source; `out` is where.
std::vector<std::string> Save(const CJOBX& job, const std::string& out, int wanted = 1)
{
    RecordedMessages said;
    EXPECT_EQ(job.SaveODBData(ToPath(out), &said), wanted) << testing::PrintToString(said.lines);
    return said.lines;
}

void ExpectIdentity(const std::string& directory)
{
    const TempDir place;
    const std::string out = place.Path("out");
    EXPECT_THAT(Save(*ReadCompleteJob(directory), out), IsEmpty()) << directory;
    EXPECT_EQ(TreeOf(out), TreeOf(directory)) << directory;
}

// Every text file of a copy of the sample changed.
void ExpectIdentityOfChangedSample(const std::function<std::string(std::string)>& change)
{
    const TempDir place;
    const std::string job = place.Path("job");
    fs::copy(SamplesDir() + "/blinker", job, fs::copy_options::recursive);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(job))
        if (entry.is_regular_file() && entry.path().extension() != ".Z")
            place.Write(fs::relative(entry.path(), place.Path()).generic_string(),
                        change(FileBytes(entry.path().string())));
    ExpectIdentity(job);
}

TEST(SaveJob, SavesTheSampleToTheByte)
{
    ExpectIdentity(SamplesDir() + "/blinker");
}

TEST(SaveJob, SavesRealJobsToTheByte)
{
    const auto jobs = RealJobsDir();
    if (!jobs)
        GTEST_SKIP() << "no folder of real jobs at " << RealJobsPlace();
    for (const fs::directory_entry& entry : fs::directory_iterator(*jobs))
        if (entry.is_directory())
            ExpectIdentity(entry.path().string());
}

TEST(SaveJob, KeepsLineEnds)
{
    ExpectIdentityOfChangedSample([](const std::string& text) { return WithCrLf(text); });
    ExpectIdentityOfChangedSample(
        [](std::string text)
        {
            std::replace(text.begin(), text.end(), '\n', '\r');
            return text;
        });
    ExpectIdentityOfChangedSample(
        [](std::string text)
        {
            if (text.ends_with('\n'))
                text.pop_back();
            return text;
        });
}

TEST(SaveJob, KeepsBlanksCommentsAndUnknownRecords)
{
    ExpectIdentityOfChangedSample(
        [](const std::string& text)
        {
            std::string odd = "\xEF\xBB\xBF# a comment \xE4\n\n";
            for (const char character : text)
                odd += character == '\n' ? std::string(" \t\n") : std::string(1, character);
            return odd + "UNKNOWN 1  2\n   \n# the end";
        });
}

TEST(SaveJob, KeepsFilesThatItDoesNotRead)
{
    const SmallJob job;
    job.Write("steps/pcb/layers/top/notes", std::string("\0binary\xFF", 8));
    job.Write("steps/pcb/layers/unknown/thing", "x");
    job.Write("user/SomeThing.TXT", "");
    job.Write("misc/userattr", "TEXT {\nNAME=.mine\nENTITY=FEATURE\n}\n");
    job.dir.MakeDir("job/ext/empty");
    ExpectIdentity(job.Path(""));
}

TEST(SaveJob, KeepsCompressedFilesThatDidNotChange)
{
    const SmallJob job;
    fs::remove(job.Path(kFeatures));
    job.Write(std::string(kFeatures) + ".Z", EncodeLzw("$0 r10\nP 1 2 0 P 0 0\n"));
    ExpectIdentity(job.Path(""));
}

// A file that was compressed is plain once it changes.
TEST(SaveJob, WritesAChangedCompressedFilePlain)
{
    const SmallJob small;
    fs::remove(small.Path(kFeatures));
    small.Write(std::string(kFeatures) + ".Z", EncodeLzw("$0 r10\nP 1 2 0 P 0 0\n"));
    const auto job = ReadCompleteJob(small.Path(""));
    job->m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.GetAt(0)->GetFeatures()->GetAt(0)->SetPolarity("N");
    const std::string out = small.dir.Path("out");
    EXPECT_THAT(Save(*job, out), IsEmpty());
    EXPECT_EQ(FileBytes(out + "/" + kFeatures), "$0 r10\nP 1 2 0 N 0 0\n");
    EXPECT_FALSE(fs::exists(out + "/" + kFeatures + ".Z"));
}

struct ChangedJob
{
    ChangedJob() : job(ReadCompleteJob(SamplesDir() + "/blinker")) {}

    CJOBXstepObj& Step() const { return *job->m_pSteps->m_arrSteps.GetAt(0); }
    CJOBXlayer& Layer(const char* name) const { return *Step().ScanLayerObjDataInLayer(name); }
    CJOBXdata& Eda() const { return *Step().GetEda()->m_pData; }
    std::vector<std::string> Changes()
    {
        const std::string out = place.Path("out");
        messages = Save(*job, out);
        return ChangesOf(SamplesDir() + "/blinker", out);
    }

    TempDir place;
    std::unique_ptr<CJOBX> job;
    std::vector<std::string> messages;
};

TEST(SaveJob, ChangesOneLineForAMovedPad)
{
    ChangedJob changed;
    for (CJOBXlayObj& feature : changed.Layer("bot").GetFeatures()->Records())
        if (auto* const pad = dynamic_cast<CJOBXlayObjPad*>(&feature))
        {
            pad->SetCenterPoint(CPointD(1.5, pad->GetCenterPoint().GetY()));
            break;
        }
    EXPECT_THAT(changed.Changes(), ElementsAre("steps/pcb/layers/bot/features -P 0.14 0.65 0 P 0 0;0=0,1=0",
                                               "steps/pcb/layers/bot/features +P 1.5 0.65 0 P 0 0;0=0,1=0"));
}

TEST(SaveJob, ChangesOneLineForARenamedNet)
{
    ChangedJob changed;
    changed.Eda().m_arrNets.GetNetData("GND")->m_sName = "0V";
    EXPECT_THAT(changed.Changes(), ElementsAre("steps/pcb/eda/data -NET GND", "steps/pcb/eda/data +NET 0V"));
}

// The references of the EDA data follow the features that they meant.
TEST(SaveJob, KeepsReferencesToFeaturesTrue)
{
    ChangedJob changed;
    CJOBXlayObjArray& features = *changed.Layer("bot").GetFeatures();
    const CJOBXlayer& layer = changed.Layer("bot");
    const auto before = ReadCompleteJob(SamplesDir() + "/blinker");
    const CJOBXlayObjArray& featuresBefore =
        *before->m_pSteps->m_arrSteps.GetAt(0)->ScanLayerObjDataInLayer("bot")->GetFeatures();
    delete features.GetAt(1);
    features.RemoveAt(1);
    CJOBXlayObj* const last = features.GetAt(features.GetSize() - 1);
    features.RemoveAt(features.GetSize() - 1);
    features.InsertAt(0, last);
    ASSERT_THAT(changed.Changes(), testing::Not(IsEmpty()));
    EXPECT_THAT(changed.messages, ElementsAre(HasSubstr("SAV007")));
    const auto after = ReadCompleteJob(changed.place.Path("out"));
    const CJOBXstepObj& step = *after->m_pSteps->m_arrSteps.GetAt(0);
    const CJOBXlayObjArray& featuresAfter = *step.ScanLayerObjDataInLayer(layer.m_sName)->GetFeatures();
    // In the order of the lines: what each reference to the layer leads to, but for the deleted feature.
    const auto lines = [](const CJOBX& job, const CJOBXlayObjArray& all)
    {
        std::vector<int> meant;
        const CJOBXdata& data = *job.m_pSteps->m_arrSteps.GetAt(0)->GetEda()->m_pData;
        for (const CJOBXdataNet& net : data.m_arrNets.Records())
            for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
                for (const CJOBXdataNetObj& object : subnet.m_arrNetObjs.Records())
                    if (data.m_arrLayerNames[object.m_nLayerIndex] == "bot")
                        meant.push_back(all.GetAt(object.m_nFeatureIndex)->GetSourceLine());
        return meant;
    };
    std::vector<int> wanted = lines(*before, featuresBefore);
    const int gone = featuresBefore.GetAt(1)->GetSourceLine();
    const int moved = featuresBefore.GetAt(featuresBefore.GetSize() - 1)->GetSourceLine();
    wanted.erase(std::remove(wanted.begin(), wanted.end(), gone), wanted.end());
    const int first = featuresBefore.GetAt(0)->GetSourceLine();
    for (int& line : wanted) // where its line is now
        line = line == moved ? first : (line < gone ? line + 1 : line);
    EXPECT_EQ(lines(*after, featuresAfter), wanted);
}

TEST(SaveJob, RenamesTheFolderOfALayerAndWhatNamesIt)
{
    ChangedJob changed;
    changed.Layer("bot").m_sName = "renamed";
    std::vector<std::string> changes = changed.Changes();
    EXPECT_THAT(changes, testing::Contains("-steps/pcb/layers/bot"));
    EXPECT_THAT(changes, testing::Contains("+steps/pcb/layers/renamed/features"));
    const std::string eda = FileBytes(changed.place.Path("out/steps/pcb/eda/data"));
    const std::size_t layers = eda.find("LYR ");
    EXPECT_EQ(eda.substr(layers, eda.find('\n', layers) - layers), "LYR top gnd pwr renamed drill smt smb spt spb");
}

TEST(SaveJob, LeavesOutWhatIsDeleted)
{
    const SmallJob small;
    small.Write("symbols/one/features", "P 0 0 0 P 0 0\n");
    small.Write("symbols/one/notes", "x");
    small.Write("symbols/two/features", "P 0 0 0 P 0 0\n");
    const auto job = ReadCompleteJob(small.Path(""));
    CJOBXSpecialSymbolArray& symbols = *job->m_pSpecialSymbols;
    delete symbols.GetAt(0);
    symbols.RemoveAt(0);
    CJOBXlayerArray& layers = job->m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers;
    delete layers.GetAt(0);
    layers.RemoveAt(0);
    const std::string out = small.dir.Path("out");
    Save(*job, out);
    EXPECT_THAT(ChangesOf(small.Path(""), out),
                UnorderedElementsAre("-symbols/one", "-symbols/one/features", "-symbols/one/notes",
                                     "-steps/pcb/layers/top", std::string("-") + kFeatures));
}

TEST(SaveJob, MakesNewParts)
{
    const SmallJob small;
    const auto job = ReadCompleteJob(small.Path(""));
    auto layer = std::make_unique<CJOBXlayer>();
    layer->m_sName = "new";
    layer->SetUnit(JOBXunit::Millimetre);
    layer->m_sUnits = "MM";
    layer->m_arrSymbolNames.Add("r500");
    layer->m_arrSymbolNumbers.Add(0);
    layer->m_arrSymbolSecondFields.Add("");
    auto pad = std::make_unique<CJOBXlayObjPad>();
    pad->SetType("P");
    pad->SetSymbolNumber(0);
    pad->SetCenterPoint(CPointD(1, 0.1));
    layer->GetFeatures()->Own(std::move(pad));
    job->m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.Own(std::move(layer));
    const std::string out = small.dir.Path("out");
    Save(*job, out);
    EXPECT_THAT(ChangesOf(small.Path(""), out),
                UnorderedElementsAre("+steps/pcb/layers/new", "+steps/pcb/layers/new/features"));
    const std::string text = FileBytes(out + "/steps/pcb/layers/new/features");
    EXPECT_THAT(text, HasSubstr("UNITS=MM\n"));
    EXPECT_THAT(text, HasSubstr("$0 r500\n"));
    EXPECT_THAT(text, HasSubstr("P 1 0.1 0 P 0 0\n"));
}

TEST(SaveJob, SavesAJobMadeFromNothing)
{
    const TempDir place;
    CJOBX job;
    auto row = std::make_unique<CJOBXmatrixStep>();
    row->m_sName = "pcb";
    job.m_pMatrix->m_arrSteps.Own(std::move(row));
    auto step = std::make_unique<CJOBXstepObj>();
    step->m_sName = "pcb";
    job.m_pSteps->m_arrSteps.Own(std::move(step));
    EXPECT_THAT(Save(job, place.Path("out")), IsEmpty());
    const auto read = ReadCompleteJob(place.Path("out"));
    ASSERT_EQ(read->m_pSteps->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(read->m_pSteps->m_arrSteps.GetAt(0)->m_sName, "pcb");
}

TEST(SaveJob, KeepsTextsIfAsked)
{
    const SmallJob small;
    const auto before = TreeOf(small.Path(""));
    const auto job = ReadCompleteJob(small.Path(""), true);
    fs::remove_all(small.Path(""));
    EXPECT_THAT(Save(*job, small.dir.Path("out")), IsEmpty());
    EXPECT_EQ(TreeOf(small.dir.Path("out")), before);
    EXPECT_THAT(TreeOf(small.dir.Path()).size(), before.size() + 1); // nothing else is left
}

// What brings each message about, in a small job that has been read.
using Trigger = std::function<void(const SmallJob& small, CJOBX& job)>;
const std::map<std::string, Trigger>& Triggers()
{
    static const std::map<std::string, Trigger> triggers = {
        {"SAV001", [](const SmallJob& small, CJOBX& job) { job.ParseODBOfMFC(small.JobPath()); }},
        {"SAV002", [](const SmallJob& small, CJOBX&) { small.Write(kFeatures, "$0 r10\nP 1 3 0 P 0 0\n"); }},
        {"SAV003", [](const SmallJob& small, CJOBX&) { small.dir.Write("out/x", ""); }},
        {"SAV004", [](const SmallJob&, CJOBX&) {}}, // saved where there is no directory
        {"SAV005", [](const SmallJob&, CJOBX& job) { job.m_pMatrix->m_arrSteps.GetAt(0)->m_sName = "two\nlines"; }},
        {"SAV006", [](const SmallJob&, CJOBX& job)
         { job.m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.GetAt(0)->m_sName = "../top"; }},
        {"SAV007",
         [](const SmallJob&, CJOBX& job)
         {
             CJOBXlayObjArray& features = *job.m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.GetAt(0)->GetFeatures();
             delete features.GetAt(0);
             features.RemoveAt(0);
         }},
        {"SAV008", [](const SmallJob&, CJOBX& job)
         { job.m_pSteps->m_arrSteps.GetAt(0)->m_arrLayers.GetAt(0)->GetFeatures()->GetAt(0)->SetPolarity("N"); }},
        {"SAV009", [](const SmallJob& small, CJOBX&) { fs::create_symlink("nowhere", small.Path("link")); }},
    };
    return triggers;
}

TEST(SaveJob, HasNoMessageThatNothingBringsAbout)
{
    for (int i = 0; const CJOBXmessageKind* const kind = pGetJOBXmessageKind(i); ++i)
    {
        const std::string code = kind->code;
        if (!code.starts_with("SAV"))
            continue;
        ASSERT_TRUE(Triggers().contains(code)) << code;
        const SmallJob small;
        small.Write("steps/pcb/eda/data", "LYR top\nNET A\nSNT TRC\nFID C 0 0\n");
        small.Write("steps/pcb/layers/top/.features.sum", "sum\n");
        const auto job = ReadCompleteJob(small.Path(""));
        Triggers().at(code)(small, *job);
        const auto tree = TreeOf(small.dir.Path());
        const bool isError = kind->severity == JOBXseverity::Error;
        const std::vector<std::string> said =
            Save(*job, small.dir.Path(code == "SAV004" ? "gone/out" : "out"), isError ? 0 : 1);
        EXPECT_THAT(said, testing::Contains(HasSubstr(" " + code + " "))) << code;
        EXPECT_TRUE(!isError || TreeOf(small.dir.Path()) == tree) << code;
    }
}
} // namespace
