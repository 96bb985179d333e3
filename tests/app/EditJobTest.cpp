// The language of small changes, on the sample in memory.
#include "edit/EditJob.h"
#include "edit/ChangeText.h"
#include "output/ExitError.h"
#include "reading/JobReader.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <functional>

namespace edit_job_test
{
// The sample, changed.
class Edited
{
public:
    Edited() : m_read(ReadJobSilently(SamplesDir() + "/blinker")) {}
    Edited(std::initializer_list<const char*> changes) : Edited()
    {
        for (const char* const change : changes)
            MakeChange(Job(), ParseChange(change));
    }

    CJOBX& Job() { return *m_read.job; }
    CJOBXstepObj& Step(int index = 0) { return *Job().m_pSteps->m_arrSteps.GetAt(index); }
    const CJOBXcmp* Component(const char* name)
    {
        for (const CJOBXcomponents& file : Step().m_arrComponents.Records())
            for (const CJOBXcmp& component : file.m_arrCmps.Records())
                if (component.m_sName == name)
                    return &component;
        return nullptr;
    }
    const CJOBXmatrixLayer* Row(const char* name) { return Job().m_pMatrix->m_arrLayers.GetMatrixLayer(name); }

private:
    ReadJob m_read;
};

CString PropertyOf(const CJOBXcmp& component, const char* name)
{
    for (const CLProperty& property : component.m_arrProperties.Records())
        if (property.m_sName == name)
            return property.m_sValue;
    return "none";
}

CString AttributeOf(const CJOBXPropertyArray& list, const char* name)
{
    for (const CJOBXProperty& attribute : list.Records())
        if (attribute.m_sName == name)
            return attribute.m_sValue;
    return "none";
}

// What is said about a change that cannot be made; "" if it was made.
std::string ReasonFor(const std::string& change)
{
    Edited edited;
    try
    {
        MakeChange(edited.Job(), ParseChange(change));
    }
    catch (const ExitError& error)
    {
        EXPECT_EQ(error.Code(), ExitCode::WrongUsage);
        const std::string text = error.what();
        const std::string start = "the change \"" + change + "\" is not possible: ";
        EXPECT_TRUE(text.starts_with(start)) << text;
        return text.substr(start.size());
    }
    return "";
}

TEST(EditJob, SetsTheMembersOfAComponent)
{
    Edited edited({"comp R5.part=RES-12K-0603", "comp R5.prop.VALUE=12k 1%", "comp R5.prop.NEW.NAME=x",
                   "comp R5.rotation=90", "comp R5.attr..comp_height=0.5", "comp R5.x=1.25", "comp pcb/R5.y=-2",
                   "comp R5.mirror=yes", "comp R5.package=CAP0603", "comp R5.name=R500"});
    EXPECT_EQ(edited.Component("R5"), nullptr);
    const CJOBXcmp* const component = edited.Component("R500");
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(component->m_sPartName, "RES-12K-0603");
    EXPECT_EQ(PropertyOf(*component, "VALUE"), "12k 1%");
    EXPECT_EQ(PropertyOf(*component, "NEW.NAME"), "x");
    EXPECT_EQ(component->m_dRotation, 90.0);
    EXPECT_EQ(AttributeOf(component->m_arrAttributes, ".comp_height"), "0.5");
    EXPECT_EQ(component->m_arrAttributes.GetSize(), 2);
    EXPECT_EQ(component->m_ptLocation.GetX(), 1.25);
    EXPECT_EQ(component->m_ptLocation.GetY(), -2.0);
    EXPECT_EQ(component->m_nMirror, 1);
    EXPECT_EQ(component->m_nPkgRef, 3);
    EXPECT_EQ(PropertyOf(*edited.Component("R4"), "VALUE"), "470R");
}

TEST(EditJob, TakesLengthsInTheUnitOfTheStep)
{
    Edited edited;
    edited.Step().GetHeader()->SetUnit(JOBXunit::Millimetre); // the components are in inch
    MakeChange(edited.Job(), ParseChange("comp R5.x=25.4"));
    MakeChange(edited.Job(), ParseChange("package SOIC14.pitch=2.54"));
    MakeChange(edited.Job(), ParseChange("step pcb.x_origin=25.4"));
    EXPECT_DOUBLE_EQ(edited.Component("R5")->m_ptLocation.GetX(), 1.0);
    EXPECT_DOUBLE_EQ(edited.Step().GetEda()->m_pData->m_arrPkgs.GetAt(0)->m_dPitch, 0.1);
    EXPECT_EQ(edited.Step().GetHeader()->m_ptOrigin.GetX(), 25.4);
    EXPECT_EQ(edited.Step().GetHeader()->m_ptOrigin.GetY(), 0.0);
}

TEST(EditJob, ChangesNetsPackagesLayersStepsAndTheJob)
{
    Edited edited({"net GND.name=0V", "net 0V.attr..net_type=power", "package SOIC14.name=SO14", "layer top.type=MIXED",
                   "layer drill.end=PWR", "layer rout.start=", "layer top.name=l01_top",
                   "layer l01_top.attr..copper_weight=2", "step pcb.name=board", "step board.attr.x=y",
                   "job.info.SAVE_USER=", "job.info.ODB_SOURCE=me", "job.name=other", "job.attr..note=hello"});
    CJOBXstepObj& step = edited.Step();
    EXPECT_EQ(step.m_sName, "BOARD");
    EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetAt(1)->m_sName, "0V");
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetAt(1)->m_sName, "0V");
    EXPECT_EQ(AttributeOf(*step.GetEda()->m_pData->m_arrNets.GetAt(1)->pGetTailAttributes(), ".net_type"), "power");
    EXPECT_EQ(step.GetEda()->m_pData->m_arrPkgs.GetAt(0)->m_sName, "SO14");
    ASSERT_NE(edited.Row("L01_TOP"), nullptr);
    EXPECT_EQ(edited.Row("L01_TOP")->m_sType, "MIXED");
    EXPECT_EQ(edited.Row("drill")->m_sStartName, "L01_TOP");
    EXPECT_EQ(edited.Row("drill")->m_sEndName, "PWR");
    EXPECT_EQ(edited.Row("rout")->m_sStartName, "");
    for (const int index : {0, 1}) // a layer is one of all steps
        EXPECT_EQ(
            AttributeOf(
                *edited.Step(index).m_arrLayers.GetODBlayerFromName("l01_top")->pGetAttributeList()->GetAttributes(),
                ".copper_weight"),
            "2");
    EXPECT_EQ(AttributeOf(*step.pGetAttributeList()->GetAttributes(), "x"), "y");
    EXPECT_EQ(edited.Job().m_pMisc->m_sSaveUser, "");
    EXPECT_EQ(edited.Job().m_pMisc->m_sODBSource, "me");
    EXPECT_EQ(edited.Job().m_sName, "other");
    EXPECT_EQ(AttributeOf(*edited.Job().m_pMisc->pGetAttributeList()->GetAttributes(), ".note"), "hello");
}

TEST(EditJob, SetsAnAttributeOfALayerInOneStepOnly)
{
    Edited edited({"layer panel/top.attr..copper_weight=3"});
    const auto weight = [&](int step)
    {
        const CJOBXlayer* const layer = edited.Step(step).m_arrLayers.GetODBlayerFromName("top");
        return AttributeOf(*layer->pGetAttributeList()->GetAttributes(), ".copper_weight");
    };
    EXPECT_EQ(weight(0), "1");
    EXPECT_EQ(weight(1), "3");
}

TEST(EditJob, DeletesWhatIsNamed)
{
    Edited plain;
    Edited edited({"delete comp R5", "delete layer notes", "delete net LED1", "delete step panel",
                   "delete comp R4.prop.VALUE", "delete comp R4.attr..comp_height", "delete features top .pad_usage=1",
                   "delete job.attr..comment"});
    EXPECT_EQ(edited.Component("R5"), nullptr);
    EXPECT_EQ(edited.Row("notes"), nullptr);
    EXPECT_EQ(edited.Step().GetEda()->m_pData->m_arrNets.GetSize(), 19);
    EXPECT_EQ(edited.Job().m_pSteps->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(PropertyOf(*edited.Component("R4"), "VALUE"), "none");
    EXPECT_EQ(edited.Component("R4")->m_arrAttributes.GetSize(), 1);
    const auto features = [](Edited& job)
    { return job.Step().m_arrLayers.GetODBlayerFromName("top")->GetFeatures()->GetSize(); };
    int vias = 0;
    for (const CJOBXlayObj& feature : plain.Step().m_arrLayers.GetODBlayerFromName("top")->GetFeatures()->Records())
        for (int i = 0; i < feature.nGetPropertyCount(); ++i)
            vias +=
                feature.pGetProperty(i)->m_sName == ".pad_usage" && feature.pGetProperty(i)->m_nTextNumber == 1 ? 1 : 0;
    EXPECT_GT(vias, 2);
    EXPECT_EQ(features(edited), features(plain) - vias);
}

TEST(EditJob, DeletesFeaturesThatMeetAllConditionsByNumberOrWord)
{
    const auto left = [](const char* change)
    {
        Edited edited({change});
        return edited.Step().m_arrLayers.GetODBlayerFromName("top")->GetFeatures()->GetSize();
    };
    EXPECT_EQ(left("delete features top .pad_usage=via"), left("delete features pcb/top .pad_usage=1"));
    EXPECT_LT(left("delete features top .pad_usage"), left("delete features top .pad_usage=via"));
    EXPECT_EQ(ReasonFor("delete features top .pad_usage=1 .smd"), "no feature is like that");
    EXPECT_EQ(ReasonFor("delete features top"), "it does not say which features, as in .pad_usage=1");
}

TEST(EditJob, TakesNamesWithDotsAndSlashes)
{
    Edited edited;
    edited.Step().GetEda()->m_pData->m_arrNets.GetAt(2)->m_sName = "/CLK.name.x";
    edited.Step().GetEda()->m_pData->m_arrNets.GetAt(3)->m_sName = "/CLK";
    edited.Step().GetEda()->m_pData->m_arrNets.GetAt(4)->m_sName = "pcb/A";
    MakeChange(edited.Job(), ParseChange("net /CLK.name.x.name=A.B"));
    MakeChange(edited.Job(), ParseChange("net /CLK.attr.a.name=v"));
    MakeChange(edited.Job(), ParseChange("net pcb/A.name=C"));
    const CJOBXdataNetArray& nets = edited.Step().GetEda()->m_pData->m_arrNets;
    EXPECT_EQ(nets.GetAt(2)->m_sName, "A.B");
    EXPECT_EQ(nets.GetAt(3)->m_sName, "/CLK");
    EXPECT_EQ(AttributeOf(*nets.GetAt(3)->pGetTailAttributes(), "a.name"), "v");
    EXPECT_EQ(nets.GetAt(4)->m_sName, "C");
}

TEST(EditJob, AsksForTheStepWhereANameIsNotUnique)
{
    Edited edited;
    edited.Step(1)
        .m_arrComponents.Own(std::make_unique<CJOBXcomponents>())
        ->m_arrCmps.Own(std::make_unique<CJOBXcmp>())
        ->m_sName = "R5";
    try
    {
        MakeChange(edited.Job(), ParseChange("comp R5.part=x"));
        ADD_FAILURE();
    }
    catch (const ExitError& error)
    {
        EXPECT_STREQ(error.what(), "the change \"comp R5.part=x\" is not possible: \"R5\" is in the steps \"PCB\", "
                                   "\"PANEL\"; put the step in front, as in PCB/R5");
    }
    MakeChange(edited.Job(), ParseChange("comp Panel/R5.part=x"));
    EXPECT_EQ(edited.Component("R5")->m_sPartName, "RES-470R-0603");
}

TEST(EditJob, OffersTheNearestForWhatItDoesNotKnow)
{
    const std::pair<const char*, const char*> cases[] = {
        {"comb R5.part=x", "there is no kind \"comb\"; did you mean \"comp\"?"},
        {"comp SW2.part=x", "there is no component \"SW2\"; did you mean \"SW1\"?"},
        {"comp R5.prat=x", "a component has no \"prat\"; did you mean \"part\"?"},
        {"comp R5.rotation=9O", "rotation needs a number, not \"9O\""},
        {"comp R5.name=R4", "the step has another \"R4\""},
        {"comp R5.part=a b", "part needs a text without blanks and \";\""},
        {"comp R5.mirror=x", "mirror needs \"yes\" or \"no\", not \"x\""},
        {"comp R5.package=SOIC41", "the step has no package \"SOIC41\"; did you mean \"SOIC14\"?"},
        {"comp R5=x", "it does not say which member"},
        {"net GDN.name=x", "there is no net \"GDN\"; did you mean \"GND\"?"},
        {"net GND.name=VCC", "the step has another net \"VCC\""},
        {"layer tpo.type=SIGNAL", "there is no layer \"tpo\"; did you mean \"TOP\"?"},
        {"layer top.type=SIGNALS", "\"SIGNALS\" is not a word for it; did you mean \"SIGNAL\"?"},
        {"layer drill.start=tpo", "there is no layer \"tpo\"; did you mean \"TOP\"?"},
        {"layer pcb/top.type=MIXED", "only attributes of a layer belong to a step; leave the step out"},
        {"step pbc.name=x", "there is no step \"pbc\"; did you mean \"PCB\"?"},
        {"job.info.SAVE_USR=", "the information has no \"SAVE_USR\"; did you mean \"SAVE_USER\"?"},
        {"job.nam=x", "a job has no \"nam\"; did you mean \"name\"?"},
        {"delete comp SW2", "there is no component \"SW2\"; did you mean \"SW1\"?"},
        {"delete comp R5.part", "a component cannot be without \"part\""},
        {"delete comp R5.prop.VALU", "there is no \"VALU\"; did you mean \"VALUE\"?"},
        {"delete layer ntoes", "there is no layer \"ntoes\"; did you mean \"NOTES\"?"},
        {"delete features tpo .smd", "there is no layer with features \"tpo\"; did you mean \"top\"?"},
        {"delete package SOIC14", "packages cannot be deleted, because components refer to them"},
        {"delete", "it does not say what to delete"},
        {"comp R5.part", "it is neither KIND NAME.MEMBER=VALUE nor a deletion"},
        {"comp =x", "it does not say what to change"},
        {"features top.x=1", "a layer with features has no \"x\""},
    };
    for (const auto& [change, reason] : cases)
        EXPECT_EQ(ReasonFor(change), reason) << change;
}

TEST(EditJob, ReadsAScriptLineByLine)
{
    const std::vector<ChangeText> changes =
        ParseScript("# a comment\n\n  comp R5.part = A=B \r\ndelete features pcb/top .a=1 .b\n");
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].kind, "comp");
    EXPECT_EQ(changes[0].target, "R5.part");
    EXPECT_EQ(changes[0].value, "A=B");
    EXPECT_FALSE(changes[0].isDeletion);
    EXPECT_TRUE(changes[1].isDeletion);
    EXPECT_EQ(changes[1].target, "pcb/top");
    ASSERT_EQ(changes[1].conditions.size(), 2U);
    EXPECT_EQ(changes[1].conditions[0].value, "1");
    EXPECT_FALSE(changes[1].conditions[1].value);
    try
    {
        ParseScript("comp R5.part=x\n\ncomp R5\n");
        ADD_FAILURE();
    }
    catch (const ExitError& error)
    {
        EXPECT_STREQ(error.what(), "line 3 of the script: the change \"comp R5\" is not possible: it is neither KIND "
                                   "NAME.MEMBER=VALUE nor a deletion");
    }
}
} // namespace edit_job_test
