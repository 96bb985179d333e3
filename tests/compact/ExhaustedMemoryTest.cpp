// Copies and placements when memory is exhausted.
#include "JOBXCLSDLL.h"
#include "compact/CompactMembers.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
// Runs `work` with no allocation, one, two, ... until it succeeds; every failure must be the framework's exception.
// Returns how often it failed.
template <class Work>
int FailuresUntilSuccess(Work work)
{
    for (int failures = 0;; ++failures)
    {
        const FailingAllocation failing(failures);
        try
        {
            work();
            return failures;
        }
        catch (CMemoryException* exception)
        {
            exception->Delete();
        }
    }
}
} // namespace

TEST(ExhaustedMemory, CloningRaisesTheMemoryExceptionAndKeepsTheSource)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CODB odb;
    Fill(odb);
    const Members before = MembersOf(odb);
    std::unique_ptr<CODB> copy;
    EXPECT_GT(FailuresUntilSuccess([&] { copy.reset(odb.clone()); }), 10);
    EXPECT_EQ(MembersOf(*copy), before);
    EXPECT_EQ(MembersOf(odb), before);
}

TEST(ExhaustedMemory, AssigningRaisesTheMemoryExceptionAndSucceedsLater)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CODB odb;
    Fill(odb);
    CODB target;
    Fill(target, 5000);
    EXPECT_GT(FailuresUntilSuccess([&] { target = odb; }), 10);
    EXPECT_EQ(MembersOf(target), MembersOf(odb));
}

TEST(ExhaustedMemory, AssigningANetRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CODBdataNet net;
    Fill(net);
    CODBdataNet target;
    EXPECT_GT(FailuresUntilSuccess([&] { target = net; }), 5);
    EXPECT_EQ(MembersOf(target), MembersOf(net));
}

TEST(ExhaustedMemory, MakingAJobRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    EXPECT_GT(FailuresUntilSuccess([] { const CODB odb; }), 0);
}

TEST(ExhaustedMemory, FlatteningRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CODBstepRepeatArray table;
    Fill(table);
    CODBstepRepeat parent;
    parent.m_ptCount.SetData(3, 4);
    std::unique_ptr<CODBstepRepeatArray> result;
    EXPECT_GT(FailuresUntilSuccess([&] { result.reset(table.Add_Parent(&parent)); }), 10);
    EXPECT_EQ(result->GetSize(), 24);
}

TEST(ExhaustedMemory, MakingGeometryRaisesTheMemoryExceptionAndKeepsTheList)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CODBdataPkgObjArray outlines;
    for (const char* const keyword : {"CR", "CT", "OE", "CE", "CR"})
    {
        outlines.Add(new CODBdataPkgObj);
        outlines.GetLastElement()->m_sKeyword = keyword;
        if (outlines.GetLastElement()->m_sKeyword == "CR")
            for (const char* const text : {"1", "2", "3"})
                outlines.GetLastElement()->m_arrParameters.Add(text);
    }
    EXPECT_GT(FailuresUntilSuccess([&] { outlines.vRescale(2.0); }), kRecordsHaveOwnBlocks ? 5 : 3);
    ASSERT_EQ(outlines.GetSize(), 3);
    for (const int i : {0, 2})
        EXPECT_EQ(dynamic_cast<CODBdataPkgObjCircle&>(*outlines.GetAt(i)).m_dRadius, 6.0);
}

TEST(ExhaustedMemory, MakingTheModelOfAStepRaisesTheMemoryException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    CJOBX job;
    job.m_pSteps->m_arrSteps.Add(new CJOBXstepObj);
    CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(0);
    for (const char* const name : {"comp_+_top", "comp_+_bot"})
    {
        step.m_arrLayers.Add(new CJOBXlayer);
        step.m_arrLayers.GetLastElement()->GetFeatures()->Add(new CJOBXlayObjText);
        step.m_arrLayers.GetLastElement()->m_sUnits = "UNITS=mm and a text too long to lie inside";
        step.m_arrComponents.Add(new CJOBXcomponents);
        step.m_arrComponents.GetLastElement()->m_sLayerName = name;
        step.m_arrComponents.GetLastElement()->m_arrAttributeNames.Add(name);
        step.m_arrComponents.GetLastElement()->m_arrAttributeNameNumbers.Add(0);
    }
    std::unique_ptr<CODB> model;
    EXPECT_GT(FailuresUntilSuccess([&] { model.reset(pMakeCompactModel(job, &step)); }), 10);
    EXPECT_EQ(model->m_arrLayers.GetSize(), 2);
    EXPECT_EQ(model->m_pComponents->m_arrAttributeNames.GetSize(), 2);
}
