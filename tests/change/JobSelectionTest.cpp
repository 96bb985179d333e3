#include "change/SampleRead.h"

#include "support/TempDir.h"

#include <algorithm>
#include <filesystem>

namespace change_test
{
Strings LayerFoldersOf(const CJOBXstepObj& step)
{
    Strings names;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        names.push_back(Plain(layer.m_sName));
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        names.push_back(Plain(file.m_sLayerName));
    return names;
}

Strings CarriedFilesOf(const CJOBX& job)
{
    Strings paths;
    for (const CJOBXcarriedFile& file : job.m_pMisc->GetCarriedFiles()->Records())
        paths.push_back(Plain(file.GetPath()));
    return paths;
}

// The sample with files that no reader takes.
std::unique_ptr<CJOBX> ReadSampleWithNotes(const TempDir& dir)
{
    std::filesystem::copy(SamplesDir() + "/blinker", dir.Path("job"), std::filesystem::copy_options::recursive);
    dir.Write("job/steps/pcb/layers/top/notes", "a note\n");
    dir.Write("job/steps/panel/layers/top/notes", "a note\n");
    dir.Write("job/steps/pcb/layers/bot/notes.Z", "a note\n");
    dir.Write("job/misc/notes", "not of a layer\n");
    return ReadJob(dir.Path("job"));
}

TEST(JobSelection, KeepsAStepAndDropsTheOthersWithTheirFiles)
{
    const TempDir dir;
    const auto job = ReadSampleWithNotes(dir);
    EXPECT_TRUE(KeepSteps(*job, Texts({"Panel"})).IsDone());
    EXPECT_EQ(StepsOfMatrix(*job), Strings({"1 PANEL"}));
    ASSERT_EQ(job->m_pSteps->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(job->m_pSteps->m_arrSteps.GetAt(0)->m_sName, "PANEL");
    EXPECT_EQ(CarriedFilesOf(*job), Strings({"misc/notes", "steps/panel/layers/top/notes"}));
}

TEST(JobSelection, DropsTheStepRepeatsOfAStepThatGoes)
{
    const auto job = ReadSample();
    CJOBXstepRepeatArray& repeats = StepOf(*job, "PANEL").GetHeader()->m_arrStepRepeats;
    ASSERT_EQ(repeats.GetSize(), 2);
    repeats.GetAt(1)->m_sName = "coupon";
    EXPECT_TRUE(KeepSteps(*job, Texts({"PANEL"})).IsDone());
    ASSERT_EQ(repeats.GetSize(), 1);
    EXPECT_EQ(repeats.GetAt(0)->m_sName, "coupon");
}

TEST(JobSelection, RefusesNamesThatTheJobDoesNotHaveAndChangesNothing)
{
    const auto job = ReadSample();
    EXPECT_EQ(KeepSteps(*job, Texts({"PCB", "PNAEL"})).GetReason(), "the job has no step \"PNAEL\"");
    EXPECT_EQ(DropLayers(*job, Texts({"top", "tpo"})).GetReason(), "the job has no layer \"tpo\"");
    EXPECT_EQ(KeepLayers(*job, Texts({})).GetReason(), "no layer would be left");
    EXPECT_EQ(KeepSteps(*job, Texts({})).GetReason(), "no step would be left");
    EXPECT_EQ(StepsOfMatrix(*job).size(), 2U);
    EXPECT_EQ(LayersOfMatrix(*job).size(), 18U);
}

TEST(JobSelection, DropsALayerFromMatrixStepsAndEdaData)
{
    const TempDir dir;
    const auto job = ReadSampleWithNotes(dir);
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    EXPECT_TRUE(DropLayers(*job, Texts({"pwr", "TOP"})).IsDone());
    const References now(step);
    EXPECT_EQ(LayersOfMatrix(*job),
              Strings({"1 COMP_+_TOP", "2 SST", "3 SPT", "4 SMT", "5 DIEL_1", "6 GND", "7 DIEL_2", "8 DIEL_3", "9 BOT",
                       "10 SMB", "11 SPB", "12 SSB", "13 COMP_+_BOT", "14 DRILL", "15 ROUT", "16 NOTES"}));
    EXPECT_EQ(DataOf(step).m_arrLayerNames, Texts({"gnd", "bot", "drill", "smt", "smb", "spt", "spb"}));
    EXPECT_LT(now.features.size(), before.features.size());
    ExpectSame(before.features, now.features);
    for (const char* const name : {"PCB", "PANEL"})
    {
        const Strings folders = LayerFoldersOf(StepOf(*job, name));
        EXPECT_EQ(std::count(folders.begin(), folders.end(), "top"), 0) << name;
        EXPECT_EQ(std::count(folders.begin(), folders.end(), "bot"), 1) << name;
    }
    EXPECT_EQ(CarriedFilesOf(*job), Strings({"misc/notes", "steps/pcb/layers/bot/notes.Z"}));
}

TEST(JobSelection, KeepsTheGapsThatWereBetweenRows)
{
    const auto job = ReadSample();
    for (CJOBXmatrixLayer& row : job->m_pMatrix->m_arrLayers.Records())
        row.m_nRow *= 10;
    EXPECT_TRUE(KeepLayers(*job, Texts({"top", "gnd", "bot"})).IsDone());
    EXPECT_EQ(LayersOfMatrix(*job), Strings({"46 TOP", "65 GND", "102 BOT"}));
}

TEST(JobSelection, LetsSpansEndAtTheNextCopperLayerInside)
{
    const auto job = ReadSample();
    CJOBXmatrixLayer* const drill = job->m_pMatrix->GetMatrixLayerFromName(CString("drill").MakeUpper());
    ASSERT_NE(drill, nullptr);
    EXPECT_TRUE(DropLayers(*job, Texts({"top"})).IsDone());
    EXPECT_EQ(drill->m_sStartName, "GND");
    EXPECT_EQ(drill->m_sEndName, "BOT");
    EXPECT_TRUE(DropLayers(*job, Texts({"bot"})).IsDone());
    EXPECT_EQ(drill->m_sStartName, "GND");
    EXPECT_EQ(drill->m_sEndName, "PWR");
    std::swap(drill->m_sStartName, drill->m_sEndName); // a span may be written from below
    EXPECT_TRUE(DropLayers(*job, Texts({"pwr"})).IsDone());
    EXPECT_EQ(drill->m_sStartName, "GND");
    EXPECT_EQ(drill->m_sEndName, "GND");
    EXPECT_TRUE(DropLayers(*job, Texts({"gnd"})).IsDone());
    EXPECT_EQ(drill->m_sStartName, "");
    EXPECT_EQ(drill->m_sEndName, "");
}

TEST(JobSelection, OfALayerOfComponentsMakesTracesOfTheirPins)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    EXPECT_TRUE(DropLayers(*job, Texts({"comp_+_bot"})).IsDone());
    const References now(step);
    EXPECT_EQ(before.components.size() - now.components.size(), 6U);
    ExpectSame(before.components, now.components);
    EXPECT_EQ(ComponentsOf(step, "comp_+_bot"), nullptr);
}

TEST(JobSelection, DropsComponentsWithTheirLayersAndPackages)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    DropPart(*job, JOBXjobPart::Components);
    const References now(step);
    EXPECT_EQ(step.m_arrComponents.GetSize(), 0);
    EXPECT_EQ(DataOf(step).m_arrPkgs.GetSize(), 0);
    EXPECT_TRUE(now.components.empty());
    EXPECT_EQ(now.features, before.features);
    EXPECT_EQ(LayersOfMatrix(*job).size(), 16U);
    EXPECT_EQ(LayersOfMatrix(*job).front(), "1 SST");
    EXPECT_EQ(LayersOfMatrix(*job).back(), "16 NOTES");
}

TEST(JobSelection, DropsNetsWithNetlistsAndDisconnectsAllPins)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    step.GetEda()->GetShorts().Add("SHORT 1 2");
    step.pMakeFurtherNetlists()->Own(std::make_unique<CJOBXnetlist>());
    DropPart(*job, JOBXjobPart::Nets);
    EXPECT_EQ(DataOf(step).m_arrNets.GetSize(), 0);
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), 0);
    EXPECT_EQ(step.GetNetlist()->GetName(), "");
    EXPECT_EQ(step.pGetFurtherNetlists()->GetSize(), 0);
    EXPECT_EQ(step.GetEda()->GetShorts().GetSize(), 0);
    EXPECT_GT(DataOf(step).m_arrPkgs.GetSize(), 0);
    int pins = 0;
    for (const CJOBXcmp& component : ComponentsOf(step, "comp_+_top")->m_arrCmps.Records())
        for (const CJOBXcmpTop& top : component.m_arrTops.Records())
        {
            ++pins;
            EXPECT_EQ(top.m_nNet, -1);
            EXPECT_EQ(top.m_nSubnet, -1);
        }
    EXPECT_GT(pins, 30);
}

TEST(JobSelection, DropsNetlistsAndKeepsTheNetsOfTheEdaData)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    DropPart(*job, JOBXjobPart::Netlists);
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), 0);
    EXPECT_EQ(DataOf(step).m_arrNets.GetSize(), 20);
}

TEST(JobSelection, DropsEdaDataAndLeavesNoReferenceToThem)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    DropPart(*job, JOBXjobPart::Eda);
    EXPECT_EQ(DataOf(step).m_arrNets.GetSize(), 0);
    EXPECT_EQ(DataOf(step).m_arrPkgs.GetSize(), 0);
    EXPECT_EQ(DataOf(step).m_arrLayerNames.GetSize(), 0);
    EXPECT_EQ(DataOf(step).m_sHeader, "");
    const CJOBXcmp& component = *ComponentsOf(step, "comp_+_top")->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nPkgRef, -1);
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_nNet, -1);
}

TEST(JobSelection, DropsAttributesWithTheirTablesAndKeepsUniqueNumbers)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    CJOBXdataNet& net = *DataOf(step).m_arrNets.GetAt(1);
    net.SetID(7);
    CJOBXProperty* const attribute = net.pMakeTailAttributes()->Own(std::make_unique<CJOBXProperty>());
    attribute->m_nNumber = 0;
    CJOBXdataNetObj& object = *net.m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0);
    object.m_sText = "0=1,2;ID=5";
    CJOBXdataPkgPin& pin = *DataOf(step).m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0);
    pin.pMakeTailAttributes()->Own(std::make_unique<CJOBXProperty>()); // a property, without a number
    CJOBXlayer& top = *step.ScanLayerObjDataInLayer("top");
    ASSERT_GT(top.m_arrAttributeNames.GetSize(), 0);
    ASSERT_NE(job->m_pMisc->pGetAttributeList(), nullptr);
    DropPart(*job, JOBXjobPart::Attributes);
    EXPECT_EQ(net.GetID(), 7);
    EXPECT_EQ(net.pGetTailAttributes(), nullptr);
    EXPECT_EQ(object.m_sText, ";ID=5");
    ASSERT_NE(pin.pGetTailAttributes(), nullptr);
    EXPECT_EQ(job->m_pMisc->pGetAttributeList(), nullptr);
    EXPECT_EQ(step.pGetAttributeList(), nullptr);
    EXPECT_EQ(top.pGetAttributeList(), nullptr);
    EXPECT_EQ(top.m_arrAttributeNames.GetSize() + top.m_arrAttributeNameNumbers.GetSize(), 0);
    EXPECT_EQ(top.m_arrAttributeTexts.GetSize() + top.m_arrAttributeTextNumbers.GetSize(), 0);
    for (const CJOBXlayObj& feature : top.GetFeatures()->Records())
        EXPECT_EQ(feature.nGetPropertyCount(), 0);
    const CJOBXcomponents& file = *ComponentsOf(step, "comp_+_top");
    EXPECT_EQ(file.m_arrAttributeNames.GetSize(), 0);
    EXPECT_EQ(file.pGetAttributeList(), nullptr);
    EXPECT_EQ(file.m_arrCmps.GetAt(0)->m_arrAttributes.GetSize(), 0);
    EXPECT_EQ(file.m_arrCmps.GetAt(0)->m_arrProperties.GetSize(), 2);
}

TEST(JobSelection, DropsPropertiesAndKeepsAttributes)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    DropPart(*job, JOBXjobPart::Properties);
    const CJOBXcmp& component = *ComponentsOf(step, "comp_+_top")->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_arrProperties.GetSize(), 0);
    EXPECT_EQ(component.m_arrAttributes.GetSize(), 2);
    EXPECT_EQ(DataOf(step).m_arrPkgs.GetAt(0)->m_arrProperties.GetSize(), 0);
}

TEST(JobSelection, DropsTheNotesOfLayersAndTheFont)
{
    const TempDir dir;
    const auto job = ReadSampleWithNotes(dir);
    DropPart(*job, JOBXjobPart::Notes);
    EXPECT_EQ(CarriedFilesOf(*job), Strings({"misc/notes"}));
    DropPart(*job, JOBXjobPart::Others);
    EXPECT_EQ(CarriedFilesOf(*job), Strings());
    ASSERT_GT(job->m_pFonts->m_arrCharacters.GetSize(), 0);
    DropPart(*job, JOBXjobPart::Fonts);
    EXPECT_EQ(job->m_pFonts->m_arrCharacters.GetSize(), 0);
    EXPECT_EQ(job->m_pFonts->m_dXSize, 0.0);
}
} // namespace change_test
