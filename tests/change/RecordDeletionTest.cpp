#include "change/SampleRead.h"

namespace change_test
{
TEST(RecordDeletion, OfFeaturesKeepsEveryOtherReferenceToItsFeature)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    CJOBXlayer& top = *step.ScanLayerObjDataInLayer("top");
    const References before(step);
    const void* const sixth = top.GetFeatures()->GetAt(6);
    const __int64 count = top.GetFeatures()->GetSize();
    DeleteFeatures(step, top, Places({6, 13, 13, -1, 100000}));
    const References now(step);
    EXPECT_EQ(top.GetFeatures()->GetSize(), count - 2);
    EXPECT_EQ(top.GetFeatures()->GetAt(6)->GetFeatureIndex(), 6);
    EXPECT_EQ(top.GetFeatures()->GetAt(12)->GetFeatureIndex(), 12);
    EXPECT_EQ(before.features.size() - now.features.size(), 2U);
    ExpectSame(before.features, now.features);
    for (const auto& [record, feature] : now.features)
        EXPECT_NE(feature, sixth);
}

TEST(RecordDeletion, OfAllFeaturesLeavesTheNetsWithThoseOfOtherLayers)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    CJOBXlayer& bottom = *step.ScanLayerObjDataInLayer("bot");
    const References before(step);
    CArrayN all;
    for (int i = 0; i < bottom.GetFeatures()->GetSize(); ++i)
        all.Add(i);
    DeleteFeatures(step, bottom, all);
    const References now(step);
    EXPECT_EQ(bottom.GetFeatures()->GetSize(), 0);
    EXPECT_LT(now.features.size(), before.features.size());
    ExpectSame(before.features, now.features);
}

TEST(RecordDeletion, OfComponentsMakesTracesOfTheirPinsAndKeepsThoseOfTheOthers)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    CJOBXcomponents& file = *ComponentsOf(step, "comp_+_top");
    const References before(step);
    const __int64 pins = file.m_arrCmps.GetAt(1)->m_arrTops.GetSize();
    CJOBXSnt* pin = nullptr;
    for (CJOBXdataNet& net : DataOf(step).m_arrNets.Records())
        for (CJOBXSnt& subnet : net.m_arrSnts.Records())
            if (subnet.m_sKind == "TOP" && subnet.m_sSide == "T" && subnet.m_nComponentNumber == 1)
                pin = &subnet;
    ASSERT_NE(pin, nullptr);
    const __int64 features = pin->m_arrNetObjs.GetSize();
    DeleteComponents(step, file, Places({1}));
    const References now(step);
    EXPECT_EQ(before.components.size() - now.components.size(), static_cast<std::size_t>(pins));
    ExpectSame(before.components, now.components);
    ExpectSame(before.nets, now.nets);
    ExpectSame(before.features, now.features);
    EXPECT_EQ(pin->m_sKind, "TRC");
    EXPECT_EQ(pin->m_sSide, "");
    EXPECT_EQ(pin->m_nComponentNumber, -1);
    EXPECT_EQ(pin->m_nToeprintNumber, -1);
    EXPECT_EQ(pin->m_arrNetObjs.GetSize(), features);
    EXPECT_EQ(file.m_arrCmps.GetAt(1)->m_nNumber, 1);
}

TEST(RecordDeletion, OfComponentsOfOneSideLeavesTheOther)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    DeleteComponents(step, *ComponentsOf(step, "comp_+_bot"), Places({0, 1, 2}));
    const References now(step);
    EXPECT_EQ(before.components.size() - now.components.size(), 6U);
    ExpectSame(before.components, now.components);
}

TEST(RecordDeletion, OfNetsDisconnectsTheirPinsAndTakesThemOutOfTheNetlist)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    const void* const ground = DataOf(step).m_arrNets.GetAt(1);
    const __int64 nets = DataOf(step).m_arrNets.GetSize();
    ASSERT_EQ(DataOf(step).m_arrNets.GetAt(1)->m_sName, "GND");
    DeleteNets(step, Places({1}));
    References now(step);
    int disconnected = 0;
    for (const auto& [top, net] : before.nets)
    {
        if (net != ground)
            continue;
        ++disconnected;
        const auto& record = *static_cast<const CJOBXcmpTop*>(top);
        EXPECT_EQ(record.m_nNet, -1);
        EXPECT_EQ(record.m_nSubnet, -1);
        now.nets.erase(top);
        now.subnets.erase(top);
    }
    EXPECT_GT(disconnected, 5);
    ExpectSame(before.nets, now.nets);
    ExpectSame(before.subnets, now.subnets);
    EXPECT_EQ(DataOf(step).m_arrNets.GetSize(), nets - 1);
    EXPECT_EQ(DataOf(step).m_arrNets.GetAt(1)->m_nNumber, 1);
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), nets - 1);
    for (const CJOBXnet& net : step.GetNetlist()->m_arrNets.Records())
        EXPECT_NE(net.m_sName, "GND");
}

TEST(RecordDeletion, OfOneOfTwoNetsOfANameLeavesItInTheNetlist)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    DataOf(step).m_arrNets.GetAt(2)->m_sName = "GND";
    const __int64 nets = step.GetNetlist()->m_arrNets.GetSize();
    DeleteNets(step, Places({2}));
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), nets);
}

TEST(RecordDeletion, KeepsTheReferencesOfALargeBoard)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const auto job = ReadJob(jobs + "/beagleboneblack");
    CJOBXstepObj& step = *job->m_pSteps->m_arrSteps.GetAt(0);
    const References before(step);
    CArrayN odd;
    for (int i = 1; i < 2000; i += 2)
        odd.Add(i);
    for (CJOBXlayer& layer : step.m_arrLayers.Records())
        DeleteFeatures(step, layer, odd);
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        DeleteComponents(step, file, odd);
    const References now(step);
    EXPECT_LT(now.features.size(), before.features.size());
    EXPECT_LT(now.components.size(), before.components.size());
    ExpectSame(before.features, now.features);
    ExpectSame(before.components, now.components);
}
} // namespace change_test
