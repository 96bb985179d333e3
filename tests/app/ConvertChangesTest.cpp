// The changes of jobx convert, on the sample in memory.
#include "convert/ConvertChanges.h"
#include "output/ExitError.h"
#include "reading/JobReader.h"
#include "support/TestPaths.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace convert_changes_test
{
ReadJob Converted(const std::string& options)
{
    CLI::App app;
    ConvertChanges changes;
    AddConvertChanges(app, changes);
    app.parse(options);
    ReadJob read = ReadJobSilently(SamplesDir() + "/blinker");
    MakeConvertChanges(*read.job, changes);
    return read;
}

std::string Refusal(const std::string& options)
{
    try
    {
        Converted(options);
    }
    catch (const ExitError& error)
    {
        return error.what();
    }
    return "";
}
} // namespace convert_changes_test

TEST(JobxConvertChanges, FlattenAPanelAndKeepItAloneInMillimetres)
{
    const ReadJob read = convert_changes_test::Converted("--flatten panel --steps panel --units mm");
    const CJOBXstepObjArray& steps = read.job->m_pSteps->m_arrSteps;
    ASSERT_EQ(steps.GetSize(), 1);
    const CJOBXstepObj& panel = *steps.GetAt(0);
    EXPECT_EQ(panel.GetHeader()->m_arrStepRepeats.GetSize(), 0);
    EXPECT_EQ(panel.GetEda()->m_pData->m_arrNets.GetAt(1)->m_sName, "GND#1");
    EXPECT_EQ(panel.GetEda()->m_pData->GetUnit(), JOBXunit::Millimetre);
    EXPECT_EQ(panel.ScanLayerObjDataInLayer("top")->m_arrSymbolNames[0], "r1016");
    EXPECT_EQ(read.job->m_pMisc->GetUnit(), JOBXunit::Millimetre);
}

TEST(JobxConvertChanges, OfferTheNearestStepToFlatten)
{
    EXPECT_EQ(convert_changes_test::Refusal("--flatten panl"), "the job has no step \"panl\"; did you mean \"PANEL\"?");
}
