#include "JobGenerator.h"

#include "JOBXCLSDLL.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>

namespace
{
namespace fs = std::filesystem;

JobPlan SmallPlan()
{
    JobPlan plan;
    plan.megabytes = 1.5;
    plan.layers = 3;
    plan.steps = 2;
    plan.symbols = 4;
    return plan;
}

JobCounts Generate(const JobPlan& plan, const TempDir& directory)
{
    return GenerateJob(plan, fs::path(directory.Path("job")));
}

void CountFeature(JobCounts& counts, const CJOBXlayObj& feature)
{
    const std::string type(feature.GetType().GetString());
    ++counts.features;
    counts.lines += type == "L";
    counts.pads += type == "P";
    counts.arcs += type == "A";
    counts.surfaces += type == "S";
    counts.texts += type == "T";
    counts.barcodes += type == "B";
    counts.featureAttributes += feature.nGetPropertyCount();
    if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
        counts.contours += surface->GetContours()->GetSize();
}

void CountEda(JobCounts& counts, const CJOBXdata& data)
{
    counts.nets += data.m_arrNets.GetSize();
    for (__int64 i = 0; i < data.m_arrNets.GetSize(); ++i)
    {
        const CJOBXdataNet& net = *data.m_arrNets.GetAt(i);
        counts.subnets += net.m_arrSnts.GetSize();
        for (__int64 k = 0; k < net.m_arrSnts.GetSize(); ++k)
            counts.netFeatures += net.m_arrSnts.GetAt(k)->m_arrNetObjs.GetSize();
    }
    counts.packages += data.m_arrPkgs.GetSize();
    for (__int64 i = 0; i < data.m_arrPkgs.GetSize(); ++i)
        counts.pins += data.m_arrPkgs.GetAt(i)->m_arrPins.GetSize();
}

void CountComponents(JobCounts& counts, const CJOBXcomponents& file)
{
    counts.components += file.m_arrCmps.GetSize();
    for (__int64 i = 0; i < file.m_arrCmps.GetSize(); ++i)
    {
        counts.toeprints += file.m_arrCmps.GetAt(i)->m_arrTops.GetSize();
        counts.componentProperties += file.m_arrCmps.GetAt(i)->m_arrProperties.GetSize();
    }
}

void CountStep(JobCounts& counts, const CJOBXstepObj& step)
{
    ++counts.steps;
    counts.layers += step.m_arrLayers.GetSize();
    for (__int64 i = 0; i < step.m_arrLayers.GetSize(); ++i)
    {
        const CJOBXlayObjArray& features = *step.m_arrLayers.GetAt(i)->GetFeatures();
        for (__int64 k = 0; k < features.GetSize(); ++k)
            CountFeature(counts, *features.GetAt(k));
    }
    for (__int64 i = 0; i < step.m_arrComponents.GetSize(); ++i)
        CountComponents(counts, *step.m_arrComponents.GetAt(i));
    CountEda(counts, *step.GetEda()->m_pData);
    const CJOBXnetArray& nets = step.GetNetlist()->m_arrNets;
    for (__int64 i = 0; i < nets.GetSize(); ++i)
        counts.netPoints += nets.GetAt(i)->m_arrPts.GetSize();
}

// What the library reads in the job.
JobCounts CountModel(const std::string& path)
{
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(path.c_str()), 1);
    JobCounts counts;
    for (__int64 i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
        CountStep(counts, *job.m_pSteps->m_arrSteps.GetAt(i));
    counts.symbols = job.m_pSpecialSymbols->GetSize();
    for (__int64 i = 0; i < job.m_pSpecialSymbols->GetSize(); ++i)
        counts.symbolFeatures += job.m_pSpecialSymbols->GetAt(i)->GetLayer()->GetFeatures()->GetSize();
    return counts;
}

void ExpectSameRecords(const JobCounts& read, const JobCounts& generated)
{
    EXPECT_EQ(read.steps, generated.steps);
    EXPECT_EQ(read.layers, generated.layers);
    EXPECT_EQ(read.symbols, generated.symbols);
    EXPECT_EQ(read.symbolFeatures, generated.symbolFeatures);
    EXPECT_EQ(read.features, generated.features);
    EXPECT_EQ(read.lines, generated.lines);
    EXPECT_EQ(read.pads, generated.pads);
    EXPECT_EQ(read.arcs, generated.arcs);
    EXPECT_EQ(read.surfaces, generated.surfaces);
    EXPECT_EQ(read.texts, generated.texts);
    EXPECT_EQ(read.barcodes, generated.barcodes);
    EXPECT_EQ(read.contours, generated.contours);
    EXPECT_EQ(read.featureAttributes, generated.featureAttributes);
    EXPECT_EQ(read.nets, generated.nets);
    EXPECT_EQ(read.subnets, generated.subnets);
    EXPECT_EQ(read.netFeatures, generated.netFeatures);
    EXPECT_EQ(read.packages, generated.packages);
    EXPECT_EQ(read.pins, generated.pins);
    EXPECT_EQ(read.components, generated.components);
    EXPECT_EQ(read.componentProperties, generated.componentProperties);
    EXPECT_EQ(read.toeprints, generated.toeprints);
    EXPECT_EQ(read.netPoints, generated.netPoints);
}

std::map<std::string, std::string> Tree(const std::string& root)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), root).generic_string()] = FileBytes(entry.path().string());
    return files;
}

std::uintmax_t LayerSize(const TempDir& directory, int layer)
{
    return fs::file_size(directory.Path("job/steps/step1/layers/layer" + std::to_string(layer) + "/features"));
}
} // namespace

TEST(JobGenerator, ModelHasExactlyTheRecordsThatWereGenerated)
{
    const TempDir directory;
    const JobCounts generated = Generate(SmallPlan(), directory);
    EXPECT_EQ(generated.steps, 2);
    EXPECT_EQ(generated.layers, 6);
    EXPECT_EQ(generated.symbols, 4);
    for (const std::int64_t some : {generated.lines, generated.pads, generated.arcs, generated.surfaces,
                                    generated.texts, generated.barcodes, generated.pins, generated.toeprints})
        EXPECT_GT(some, 0);
    ExpectSameRecords(CountModel(directory.Path("job")), generated);
}

TEST(JobGenerator, CompressedSymbolsAreReadLikePlainOnes)
{
    const TempDir directory;
    JobPlan plan = SmallPlan();
    plan.symbols = 20;
    plan.compressSymbols = true;
    const JobCounts generated = Generate(plan, directory);
    EXPECT_TRUE(directory.Exists("job/symbols/user0/features.Z"));
    EXPECT_FALSE(directory.Exists("job/symbols/user0/features"));
    EXPECT_EQ(generated.symbols, 20);
    ExpectSameRecords(CountModel(directory.Path("job")), generated);
}

TEST(JobGenerator, GivesEachFeatureOfALayerANumberThatAClassicReaderPassesOver)
{
    const TempDir directory;
    JobPlan plan = SmallPlan();
    plan.uniqueNumbers = true;
    plan.steps = 1;
    const JobCounts generated = Generate(plan, directory);
    const JobCounts read = CountModel(directory.Path("job"));
    EXPECT_EQ(read.features, generated.features);
    EXPECT_EQ(read.lines, generated.lines);
    EXPECT_EQ(read.texts, generated.texts);
    std::int64_t tails = 0;
    for (const auto& [name, text] : Tree(directory.Path("job")))
        for (std::size_t at = 0; (at = text.find(";ID=", at)) != std::string::npos; ++at)
            ++tails;
    EXPECT_EQ(tails, generated.features);
}

TEST(JobGenerator, JobHasTheSizeAndTheNumbersThatWereAskedFor)
{
    const TempDir directory;
    JobPlan plan = SmallPlan();
    plan.nets = 101;
    plan.components = 75;
    const JobCounts counts = Generate(plan, directory);
    EXPECT_EQ(counts.nets, 101);
    EXPECT_EQ(counts.components, 75);
    EXPECT_NEAR(static_cast<double>(counts.bytes), 1.5e6, 15e3);
    std::uintmax_t bytes = 0;
    std::int64_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(directory.Path("job")))
        if (entry.is_regular_file())
        {
            bytes += entry.file_size();
            ++files;
        }
    EXPECT_EQ(counts.bytes, bytes);
    EXPECT_EQ(counts.files, files);
}

TEST(JobGenerator, JobWithoutNetsAndComponentsHasNoFilesForThem)
{
    const TempDir directory;
    JobPlan plan = SmallPlan();
    plan.nets = 0;
    plan.components = 0;
    const JobCounts generated = Generate(plan, directory);
    EXPECT_FALSE(directory.Exists("job/steps/step1/eda"));
    EXPECT_FALSE(directory.Exists("job/steps/step1/netlists"));
    EXPECT_FALSE(directory.Exists("job/steps/step1/layers/comp_+_top"));
    ExpectSameRecords(CountModel(directory.Path("job")), generated);
}

TEST(JobGenerator, BalanceSaysHowMuchTheFirstLayerHas)
{
    JobPlan plan = SmallPlan();
    plan.steps = 1;
    plan.megabytes = 3.0;
    const TempDir equal;
    Generate(plan, equal);
    EXPECT_NEAR(static_cast<double>(LayerSize(equal, 1)), static_cast<double>(LayerSize(equal, 3)), 3e3);
    plan.balance = 0.0;
    const TempDir oneHasAll;
    Generate(plan, oneHasAll);
    EXPECT_GT(LayerSize(oneHasAll, 1), 100 * LayerSize(oneHasAll, 2));
}

TEST(JobGenerator, SameSeedGivesSameBytesAndAnotherSeedOthers)
{
    const TempDir first;
    const TempDir again;
    const TempDir other;
    JobPlan plan = SmallPlan();
    plan.megabytes = 0.3;
    Generate(plan, first);
    Generate(plan, again);
    plan.seed = 2;
    Generate(plan, other);
    const auto files = Tree(first.Path("job"));
    EXPECT_EQ(files, Tree(again.Path("job")));
    EXPECT_NE(files, Tree(other.Path("job")));
}

TEST(JobGenerator, RefusesADirectoryThatHoldsSomethingAndPlansWithoutSense)
{
    const TempDir directory;
    directory.Write("job/note", "mine");
    EXPECT_THROW(Generate(SmallPlan(), directory), std::runtime_error);
    EXPECT_EQ(Tree(directory.Path("job")), (std::map<std::string, std::string>{{"note", "mine"}}));
    const TempDir empty;
    for (const double size : {0.0, -1.0, 1e300, std::nan("")})
    {
        JobPlan plan = SmallPlan();
        plan.megabytes = size;
        EXPECT_THROW(Generate(plan, empty), std::invalid_argument);
    }
    JobPlan plan = SmallPlan();
    plan.layers = 0;
    EXPECT_THROW(Generate(plan, empty), std::invalid_argument);
    plan = SmallPlan();
    plan.balance = 1.5;
    EXPECT_THROW(Generate(plan, empty), std::invalid_argument);
    EXPECT_FALSE(empty.Exists("job"));
}
