#include "change/SampleRead.h"

#include "support/TempDir.h"

#include <filesystem>

namespace change_test
{
TEST(JobNames, RenamesAStepInMatrixRepeatsAndFolder)
{
    const auto job = ReadSample();
    EXPECT_TRUE(RenameStep(*job, "pcb", "Board").IsDone());
    EXPECT_EQ(StepsOfMatrix(*job), Strings({"1 BOARD", "2 PANEL"}));
    EXPECT_EQ(job->m_pSteps->m_arrSteps.GetAt(0)->m_sName, "BOARD");
    for (const CJOBXstepRepeat& repeat : StepOf(*job, "PANEL").GetHeader()->m_arrStepRepeats.Records())
        EXPECT_EQ(repeat.m_sName, "BOARD");
}

TEST(JobNames, RenamesALayerInMatrixSpansFoldersAndEdaData)
{
    const TempDir dir;
    std::filesystem::copy(SamplesDir() + "/blinker", dir.Path("job"), std::filesystem::copy_options::recursive);
    dir.Write("job/steps/pcb/layers/top/notes", "a note\n");
    const auto job = ReadJob(dir.Path("job"));
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    EXPECT_TRUE(RenameLayer(*job, "Top", "l01_top").IsDone());
    const References now(step);
    EXPECT_EQ(now.features, before.features);
    EXPECT_EQ(LayersOfMatrix(*job)[4], "5 L01_TOP");
    const CJOBXmatrixLayer* const drill = job->m_pMatrix->m_arrLayers.GetMatrixLayer("drill");
    EXPECT_EQ(drill->m_sStartName, "L01_TOP");
    EXPECT_EQ(drill->m_sEndName, "BOT");
    EXPECT_EQ(DataOf(step).m_arrLayerNames[0], "l01_top");
    for (const char* const name : {"PCB", "PANEL"})
    {
        EXPECT_EQ(StepOf(*job, name).ScanLayerObjDataInLayer("top"), nullptr);
        ASSERT_NE(StepOf(*job, name).ScanLayerObjDataInLayer("l01_top"), nullptr);
        EXPECT_EQ(StepOf(*job, name).ScanLayerObjDataInLayer("l01_top")->m_sName, "l01_top");
    }
    EXPECT_EQ(job->m_pMisc->GetCarriedFiles()->GetAt(0)->GetPath(), "steps/pcb/layers/l01_top/notes");
}

TEST(JobNames, RenamesTheFolderOfComponents)
{
    const auto job = ReadSample();
    EXPECT_TRUE(RenameLayer(*job, "comp_+_top", "parts").IsDone());
    const CJOBXcomponents* const file = ComponentsOf(StepOf(*job, "PCB"), "parts");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->m_sRelativePath, "parts/components");
}

TEST(JobNames, MayChangeTheLetterCaseOnly)
{
    const auto job = ReadSample();
    EXPECT_TRUE(RenameLayer(*job, "top", "TOP").IsDone());
    EXPECT_EQ(LayersOfMatrix(*job)[4], "5 TOP");
    EXPECT_NE(StepOf(*job, "PCB").ScanLayerObjDataInLayer("top"), nullptr);
}

TEST(JobNames, RefusesOtherNamesAndThoseOfOthers)
{
    const auto job = ReadSample();
    const auto reason = [](const CJOBXresult& result) { return Plain(result.GetReason()); };
    EXPECT_EQ(reason(RenameLayer(*job, "tpo", "x")), "the job has no layer \"tpo\"");
    EXPECT_EQ(reason(RenameStep(*job, "pbc", "x")), "the job has no step \"pbc\"");
    EXPECT_EQ(reason(RenameLayer(*job, "top", "Bot")), "the job has another layer \"Bot\"");
    EXPECT_EQ(reason(RenameStep(*job, "pcb", "panel")), "the job has another step \"panel\"");
    const CStringArray illegal = Texts({"", "-a", ".a", "+a", "a.", "a b", "a/b", "..", "\xC3\xA4",
                                        "a1234567890123456789012345678901234567890123456789012345678901234"});
    for (INT_PTR i = 0; i < illegal.GetSize(); ++i)
    {
        const std::string start = "\"" + Plain(illegal[i]) + "\" is not a legal name";
        EXPECT_EQ(reason(RenameLayer(*job, "top", illegal[i])).substr(0, start.size()), start);
        EXPECT_EQ(reason(RenameJob(*job, illegal[i])).substr(0, start.size()), start);
    }
    EXPECT_EQ(LayersOfMatrix(*job)[4], "5 TOP");
    EXPECT_EQ(job->m_sName, "blinker");
}

TEST(JobNames, RenamesTheJobInItsInformationToo)
{
    const auto job = ReadSample();
    EXPECT_TRUE(RenameJob(*job, "Blinker-2.1").IsDone());
    EXPECT_EQ(job->m_sName, "blinker-2.1");
    EXPECT_EQ(job->m_pMisc->m_sJobName, "blinker-2.1");
}

TEST(JobNames, OrdersStepsByTheirColumnsAndInTheMatrix)
{
    const auto job = ReadSample();
    job->m_pMatrix->m_arrSteps.GetAt(1)->m_nColumn = 5;
    EXPECT_TRUE(OrderSteps(*job, Texts({"panel"})).IsDone());
    EXPECT_EQ(StepsOfMatrix(*job), Strings({"1 PANEL", "5 PCB"}));
    EXPECT_EQ(job->m_pSteps->m_arrSteps.GetAt(0)->m_sName, "PANEL");
    EXPECT_EQ(OrderSteps(*job, Texts({"pcb", "PCB"})).GetReason(), "the step \"PCB\" is named twice");
    EXPECT_EQ(OrderSteps(*job, Texts({"pcbs"})).GetReason(), "the job has no step \"pcbs\"");
}

TEST(JobNames, MayBeGivenAsTheMembersThatChange)
{
    const TempDir dir;
    std::filesystem::copy(SamplesDir() + "/blinker", dir.Path("job"), std::filesystem::copy_options::recursive);
    dir.Write("job/steps/pcb/layers/top/notes", "a note\n");
    const auto job = ReadJob(dir.Path("job"));
    CJOBXstepObj& step = StepOf(*job, "PCB");
    EXPECT_TRUE(RenameNet(step, DataOf(step).m_arrNets.GetAt(1)->m_sName, "0V").IsDone());
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetAt(1)->m_sName, "0V");
    EXPECT_TRUE(RenameLayer(*job, job->m_pMatrix->m_arrLayers.GetAt(4)->m_sName, "l01").IsDone());
    EXPECT_NE(step.ScanLayerObjDataInLayer("l01"), nullptr);
    EXPECT_TRUE(RenameStep(*job, job->m_pMatrix->m_arrSteps.GetAt(0)->m_sName, "board").IsDone());
    EXPECT_EQ(step.m_sName, "BOARD");
    EXPECT_EQ(job->m_pMisc->GetCarriedFiles()->GetAt(0)->GetPath(), "steps/board/layers/l01/notes");
}

TEST(JobNames, RenamesANetInEdaDataAndNetlists)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    EXPECT_TRUE(RenameNet(step, "GND", "0V").IsDone());
    EXPECT_EQ(DataOf(step).m_arrNets.GetAt(1)->m_sName, "0V");
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetAt(1)->m_sName, "0V");
    EXPECT_EQ(RenameNet(step, "0V", "VCC").GetReason(), "the step has another net \"VCC\"");
    EXPECT_EQ(RenameNet(step, "0v", "X").GetReason(), "the step has no net \"0v\"");
    EXPECT_EQ(RenameNet(step, "0V", "A B").GetReason(), "\"A B\" is not a legal name of a net");
    EXPECT_EQ(DataOf(step).m_arrNets.GetAt(1)->m_sName, "0V");
}
} // namespace change_test
