#include "JOBXCLSDLL.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
std::unique_ptr<CODB> ModelAsTheGuideMakesIt(const CJOBX& job)
{
#include "hosts_guide_example.inc"
    return model;
}
} // namespace

TEST(HostsGuide, ItsLinesGiveTheProfilesUnitToWhatKnowsNone)
{
    CJOBX job;
    EXPECT_EQ(ModelAsTheGuideMakesIt(job), nullptr);
    job.m_pSteps->m_arrSteps.Add(new CJOBXstepObj);
    CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(0);
    step.m_sName = "PCB";
    step.m_arrComponents.Add(new CJOBXcomponents);
    step.m_arrComponents.GetAt(0)->m_arrCmps.Add(new CJOBXcmp);
    step.m_arrComponents.GetAt(0)->m_arrCmps.GetAt(0)->m_ptLocation.SetData(254.0, 508.0);
    EXPECT_EQ(ModelAsTheGuideMakesIt(job)->m_pComponents->m_sUnits, "INCH");

    step.GetProfile()->m_sUnits = "UNITS=MM";
    const std::unique_ptr<CODB> model = ModelAsTheGuideMakesIt(job);
    EXPECT_EQ(model->m_pData->m_sUnits, "MM");
    model->vChangeUnit(1);
    EXPECT_EQ(model->m_pComponents->m_arrCmps.GetAt(0)->m_ptLocation, CPointD(10.0, 20.0));
}
