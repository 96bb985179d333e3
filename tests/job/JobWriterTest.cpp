// Writing a whole job: the tree, what is replaced, what is never touched.
#include "JOBXCLSDLL.h"
#include "foundation/corekit/RecordingSink.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

// The tree below a directory: "name/" for a directory, "name" for anything else, sorted.
std::vector<std::string> Tree(const std::string& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        names.push_back(fs::relative(entry.path(), directory).string() + (entry.is_directory() ? "/" : ""));
    std::sort(names.begin(), names.end());
    return names;
}

void WriteSmallJob(const TempDir& dir)
{
    dir.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nNAME=TOP\n}\n");
    dir.Write("job/steps/pcb/profile", "S P 0\nOB 0 0 I\nOE\nSE\n");
    dir.Write("job/steps/pcb/layers/top/features", "L 0 0 1 1 0 P 0\n");
    dir.Write("job/steps/pcb/layers/comp_+_top/components", "# CMP 0\nCMP 0 1 2 0 N U1 X\n");
    dir.Write("job/steps/pcb/eda/data", "# NET 0\nNET A\n");
    dir.Write("job/steps/pcb/netlists/cadnet/netlist", "$0 A\n");
    dir.Write("job/symbols/sym1/features", "P 0 0 0 P 0 0\n");
    dir.Write("job/misc/info", "JOB_NAME=x\n");
}

void ReadChosen(CJOBX& job, const TempDir& dir)
{
    CStringArray names;
    ASSERT_EQ(job.ParseMatrixInODBOfMFC(dir.Path("job").c_str(), names), 1);
    ASSERT_EQ(job.ParseODBOfMFC(dir.Path("job").c_str(), names), 1);
}

const std::vector<std::string> kWholeTree = {
    "ext/",
    "fonts/",
    "input/",
    "matrix/",
    "matrix/matrix",
    "misc/",
    "output/",
    "stackups/",
    "steps/",
    "steps/PCB/",
    "steps/PCB/eda/",
    "steps/PCB/eda/data",
    "steps/PCB/layers/",
    "steps/PCB/layers/comp_+_top/",
    "steps/PCB/layers/comp_+_top/components",
    "steps/PCB/layers/top/",
    "steps/PCB/layers/top/features",
    "steps/PCB/netlists/",
    "steps/PCB/netlists/cadnet/",
    "steps/PCB/netlists/cadnet/netlist",
    "steps/PCB/profile",
    "steps/PCB/stephdr",
    "symbols/",
    "user/",
    "wheels/",
    "whltemps/",
};
} // namespace

TEST(JobWriter, WritesTheWholeTree)
{
    const TempDir dir;
    WriteSmallJob(dir);
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(dir.Path("job").c_str()), 1);
    dir.MakeDir("out");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(Tree(dir.Path("out/job")), kWholeTree); // the symbol's name is a path whose parent is not there
}

TEST(JobWriter, SymbolOfAChosenStepsReadLandsBesideSteps)
{
    const TempDir dir;
    WriteSmallJob(dir);
    CJOBX job;
    ReadChosen(job, dir);
    dir.MakeDir("out");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("out/job/sym1/features"));
    EXPECT_FALSE(dir.Exists("out/job/symbols/sym1"));
}

TEST(JobWriter, WithoutEdaNoStepHasEdaOrNetlist)
{
    const TempDir dir;
    WriteSmallJob(dir);
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(dir.Path("job").c_str()), 1);
    dir.MakeDir("out");
    job.WriteODBData(dir.Path("out").c_str(), 0);
    std::vector<std::string> expected;
    for (const std::string& name : kWholeTree)
        if (name.find("eda") == std::string::npos && name.find("netlists") == std::string::npos)
            expected.push_back(name);
    EXPECT_EQ(Tree(dir.Path("out/job")), expected);
}

TEST(JobWriter, FontNeedsAFileNamedStandardInTheCurrentDirectory)
{
    const TempDir dir;
    WriteSmallJob(dir);
    dir.Write("here/standard", "");
    dir.MakeDir("out");
    const fs::path before = fs::current_path();
    fs::current_path(dir.Path("here"));
    {
        CJOBX job;
        job.SetODBProjectName("job");
        job.WriteODBData(dir.Path("out").c_str(), 1);
    }
    fs::current_path(before);
    EXPECT_TRUE(dir.Exists("out/job/fonts/standard"));
}

TEST(JobWriter, WritingTwiceLeavesTheSecondTreeOnly)
{
    const TempDir dir;
    WriteSmallJob(dir);
    CJOBX first;
    ReadChosen(first, dir);
    dir.MakeDir("out");
    first.WriteODBData(dir.Path("out").c_str(), 1);
    dir.Write("out/job/steps/PCB/layers/old/features", "x");
    CJOBX second;
    ASSERT_EQ(second.ParseODBOfMFC(dir.Path("job").c_str()), 1);
    second.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(Tree(dir.Path("out/job")), kWholeTree);
}

TEST(JobWriter, EmptyNameDeletesNothing)
{
    const TempDir dir;
    dir.Write("out/kept", "x");
    for (const char* name : {"", ".", "..", "a/b", "../out", "/"})
    {
        CJOBX job;
        job.SetODBProjectName(name);
        job.WriteODBData(dir.Path("out").c_str(), 1);
        EXPECT_EQ(Tree(dir.Path()), (std::vector<std::string>{"out/", "out/kept"})) << name;
    }
}

TEST(JobWriter, StepNamesThatLeadOutAreLeftUnwritten)
{
    const TempDir dir;
    dir.Write("out/victim/file", "x");
    CJOBX job;
    job.SetODBProjectName("job");
    for (const char* name : {"..", "../..", "../../victim", "", ".", "a/b", "ok"})
        job.m_pSteps->m_arrSteps.Own(std::make_unique<CJOBXstepObj>())->m_sName = name;
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("out/victim/file"));
    EXPECT_TRUE(dir.Exists("out/job/matrix/matrix"));
    EXPECT_TRUE(dir.Exists("out/job/steps/ok/profile"));
    EXPECT_FALSE(dir.Exists("out/job/steps/profile"));
    EXPECT_FALSE(dir.Exists("out/job/profile"));
    EXPECT_FALSE(dir.Exists("out/job/steps/a"));
}

TEST(JobWriter, SymbolNamesThatLeadOutAreLeftUnwritten)
{
    const TempDir dir;
    dir.Write("victim/file", "x");
    dir.MakeDir("out");
    CJOBX job;
    job.SetODBProjectName("job");
    for (const char* name : {"..", "../../victim", "", ".", "a/../../../victim", "ok"})
        job.m_pSpecialSymbols->Own(std::make_unique<CJOBXSpecialSymbol>())->m_sName = name;
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("victim/file"));
    EXPECT_TRUE(dir.Exists("out/job/matrix/matrix"));
    EXPECT_TRUE(dir.Exists("out/job/ok/features"));
    EXPECT_FALSE(dir.Exists("out/features"));
    EXPECT_FALSE(dir.Exists("out/job/features"));
}

TEST(JobWriter, LinkInPlaceOfTheJobIsReplacedNotFollowed)
{
    const TempDir dir;
    dir.Write("victim/file", "x");
    dir.MakeDir("out");
    fs::create_directory_symlink(dir.Path("victim"), dir.Path("out/job"));
    CJOBX job;
    job.SetODBProjectName("job");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(Tree(dir.Path("victim")), std::vector<std::string>{"file"});
    EXPECT_FALSE(fs::is_symlink(dir.Path("out/job")));
    EXPECT_TRUE(dir.Exists("out/job/matrix/matrix"));
}

TEST(JobWriter, FileInPlaceOfTheJobStays)
{
    const TempDir dir;
    dir.Write("out/job", "a file");
    CJOBX job;
    job.SetODBProjectName("job");
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(dir.Read("out/job"), "a file");
}

TEST(JobWriter, LaterComponentsOfOneLayerReplaceEarlierOnes)
{
    const TempDir dir;
    dir.MakeDir("steps");
    CJOBXstepObj step;
    step.m_sName = "pcb";
    for (const char* name : {"U1", "U2"})
    {
        CJOBXcomponents* const file = step.m_arrComponents.Own(std::make_unique<CJOBXcomponents>());
        file->m_sLayerName = "comp_+_top";
        file->m_arrCmps.Own(std::make_unique<CJOBXcmp>())->m_sName = name;
    }
    step.m_arrComponents.Own(std::make_unique<CJOBXcomponents>())->m_sLayerName = "..";
    step.WriteODBData(dir.Path("steps").c_str(), 0);
    const std::string written = dir.Read("steps/pcb/layers/comp_+_top/components");
    EXPECT_EQ(written.find("U1"), std::string::npos);
    EXPECT_NE(written.find("U2"), std::string::npos);
    EXPECT_FALSE(dir.Exists("steps/pcb/components"));
}

TEST(JobWriter, LaterLayersAndStepsOfOneNameReplaceEarlierOnes)
{
    const TempDir dir;
    dir.MakeDir("out");
    CJOBX job;
    job.SetODBProjectName("job");
    for (const char* const units : {"FIRST", "SECOND"})
    {
        CJOBXstepObj* const step = job.m_pSteps->m_arrSteps.Own(std::make_unique<CJOBXstepObj>());
        step->m_sName = "pcb";
        for (const char* const name : {"top", units, "top", "bottom"})
        {
            CJOBXlayer* const layer = step->m_arrLayers.Own(std::make_unique<CJOBXlayer>());
            layer->m_sName = name;
            layer->m_sUnits = CString(units) + (step->m_arrLayers.GetSize() == 1 ? " EARLIER" : "");
        }
    }
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(
        Tree(dir.Path("out/job/steps/pcb/layers")),
        (std::vector<std::string>{"SECOND/", "SECOND/features", "bottom/", "bottom/features", "top/", "top/features"}));
    EXPECT_NE(dir.Read("out/job/steps/pcb/layers/top/features").find("UNITS=SECOND\n"), std::string::npos);
}

TEST(JobWriter, TheStepsComponentsReplaceThoseOfALayersOwn)
{
    const TempDir dir;
    dir.MakeDir("steps");
    CJOBXstepObj step;
    step.m_sName = "pcb";
    CJOBXlayer* const layer = step.m_arrLayers.Own(std::make_unique<CJOBXlayer>());
    layer->m_sName = "comp_+_top";
    layer->GetComponents()->Own(std::make_unique<CJOBXcomponents>())->m_sUnits = "LAYER";
    for (const char* const units : {"FIRST", "SECOND"})
    {
        CJOBXcomponents* const components = step.m_arrComponents.Own(std::make_unique<CJOBXcomponents>());
        components->m_sLayerName = "comp_+_top";
        components->m_sUnits = units;
    }
    step.WriteODBData(dir.Path("steps").c_str(), 0);
    EXPECT_NE(dir.Read("steps/pcb/layers/comp_+_top/components").find("UNITS=SECOND\n"), std::string::npos);
}

TEST(JobWriter, ASymbolNamedAsTheFileOfAnotherStaysUnwritten)
{
    const TempDir dir;
    dir.MakeDir("out");
    CJOBX job;
    job.SetODBProjectName("job");
    for (const char* const name : {"a", "a/features", "a/b", "c", "a"})
        job.m_pSpecialSymbols->Own(std::make_unique<CJOBXSpecialSymbol>())->m_sName = name;
    job.m_pSpecialSymbols->GetAt(4)->GetLayer()->m_sUnits = "LAST";
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_EQ(Tree(dir.Path("out/job/a")), std::vector<std::string>{"features"});
    EXPECT_NE(dir.Read("out/job/a/features").find("UNITS=LAST\n"), std::string::npos);
    EXPECT_TRUE(dir.Exists("out/job/c/features"));
}

TEST(JobWriter, FailuresAreToldInTheOrderOfTheJob)
{
    const TempDir dir;
    dir.MakeDir("steps");
    CJOBXstepObj step;
    step.m_sName = "pcb";
    std::vector<std::string> expected;
    for (char number = '0'; number <= '9'; ++number)
    {
        const std::string name(300, number); // longer than any name on disk
        step.m_arrLayers.Own(std::make_unique<CJOBXlayer>())->m_sName = name.c_str();
        step.m_arrLayers.Own(std::make_unique<CJOBXlayer>())->m_sName = CString(number);
        step.m_arrLayers.GetLastElement()->m_sUnits = CString(number);
        expected.push_back(dir.Path("steps/pcb/layers/") + name);
    }
    step.m_arrComponents.Own(std::make_unique<CJOBXcomponents>())->m_sLayerName = "..";
    expected.emplace_back("..");
    const RecordingSink sink;
    step.WriteODBData(dir.Path("steps").c_str(), 1);
    std::vector<std::string> told;
    for (const CKDiagnostic& diagnostic : sink.all)
        told.emplace_back(diagnostic.path.View());
    EXPECT_EQ(told, expected);
    EXPECT_TRUE(dir.Exists("steps/pcb/layers/9/features"));
}

TEST(JobWriter, RealAndSampleJobsReadBackWithTheSameFeatures)
{
    std::vector<std::string> jobs{SamplesDir() + "/blinker"};
    if (const auto real = RealJobsDir())
    {
        jobs.push_back(*real + "/beagleboneblack");
        jobs.push_back(*real + "/flat_hierarchy");
    }
    for (const std::string& path : jobs)
    {
        SCOPED_TRACE(path);
        const TempDir dir;
        fs::copy(path, dir.Path("job"), fs::copy_options::recursive);
        CJOBX first;
        ASSERT_EQ(first.ParseODBOfMFC(dir.Path("job").c_str()), 1);
        dir.MakeDir("out");
        first.WriteODBData(dir.Path("out").c_str(), 1);
        CJOBX second;
        ASSERT_EQ(second.ParseODBOfMFC(dir.Path("out/job").c_str()), 1);
        ASSERT_EQ(second.m_pSteps->m_arrSteps.GetSize(), first.m_pSteps->m_arrSteps.GetSize());
        for (__int64 i = 0; i < first.m_pSteps->m_arrSteps.GetSize(); ++i)
        {
            const CJOBXlayerArray& before = first.m_pSteps->m_arrSteps.GetAt(i)->m_arrLayers;
            const CJOBXlayerArray& after = second.m_pSteps->m_arrSteps.GetAt(i)->m_arrLayers;
            ASSERT_EQ(after.GetSize(), before.GetSize());
            for (__int64 k = 0; k < before.GetSize(); ++k)
            {
                SCOPED_TRACE(before.GetAt(k)->m_sName.GetString());
                ASSERT_EQ(after.GetAt(k)->m_sName, before.GetAt(k)->m_sName);
                const CJOBXlayObjArray& features = *before.GetAt(k)->GetFeatures();
                const CJOBXlayObjArray& again = *after.GetAt(k)->GetFeatures();
                ASSERT_EQ(again.GetSize(), features.GetSize());
                for (__int64 n = 0; n < features.GetSize(); ++n)
                {
                    ASSERT_EQ(again.GetAt(n)->GetType(), features.GetAt(n)->GetType()) << n;
                    ASSERT_EQ(again.GetAt(n)->GetPolarity(), features.GetAt(n)->GetPolarity()) << n;
                }
            }
        }
    }
}
