#include "change/SampleRead.h"

#include "support/TempDir.h"

#include <filesystem>
#include <set>

namespace change_test
{
// All names and texts of a job that AnonymiseJob is to replace.
std::set<std::string> NamesIn(CJOBX& job)
{
    std::set<std::string> names;
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        for (const CJOBXdataNet& net : DataOf(step).m_arrNets.Records())
            names.insert(Plain(net.m_sName));
        for (const CJOBXnet& net : step.GetNetlist()->m_arrNets.Records())
            names.insert(Plain(net.m_sName));
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            for (const CJOBXcmp& component : file.m_arrCmps.Records())
            {
                names.insert(Plain(component.m_sName));
                names.insert(Plain(component.m_sPartName));
                names.insert(Plain(component.m_arrProperties.GetAt(0)->m_sValue)); // PART_NAME
            }
    }
    return names;
}

TEST(JobAnonymity, ReplacesEveryNameByTheSameNewOneEverywhere)
{
    const auto job = ReadSample();
    std::set<std::string> old = NamesIn(*job);
    AnonymiseJob(*job);
    for (const std::string& name : NamesIn(*job))
        EXPECT_EQ(old.count(name), name == "$NONE$" ? 1U : 0U) << name;
    CJOBXstepObj& step = StepOf(*job, "PCB");
    EXPECT_EQ(DataOf(step).m_arrNets.GetAt(0)->m_sName, "$NONE$");
    EXPECT_EQ(DataOf(step).m_arrNets.GetAt(1)->m_sName, "NET1");
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(DataOf(step).m_arrNets.GetAt(i)->m_sName, step.GetNetlist()->m_arrNets.GetAt(i)->m_sName);
    std::set<CString> parts;
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
        {
            EXPECT_EQ(component.m_arrProperties.GetAt(0)->m_sValue, component.m_sPartName);
            parts.insert(component.m_sPartName);
        }
    EXPECT_EQ(parts.count("PART1"), 1U);
    EXPECT_LT(parts.size(), 21U); // components of one part still share it
}

TEST(JobAnonymity, LeavesReferencesGeometryAndOtherTextsAlone)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const References before(step);
    const CLPropertyArray properties = ComponentsOf(step, "comp_+_top")->m_arrCmps.GetAt(0)->m_arrProperties;
    AnonymiseJob(*job);
    const References now(step);
    ExpectSame(before.features, now.features);
    ExpectSame(before.nets, now.nets);
    EXPECT_EQ(ComponentsOf(step, "comp_+_top")->m_arrCmps.GetAt(0)->m_arrProperties.GetAt(1)->m_sValue,
              properties.GetAt(1)->m_sValue);
    EXPECT_EQ(DataOf(step).m_arrPkgs.GetAt(0)->m_sName, "SOIC14");
}

TEST(JobAnonymity, ReplacesTextsOfLayersThatAreNames)
{
    const auto job = ReadSample();
    AnonymiseJob(*job);
    CJOBXstepObj& step = StepOf(*job, "PCB");
    const CString designator = ComponentsOf(step, "comp_+_top")->m_arrCmps.GetAt(0)->m_sName; // was U1
    std::set<CString> texts;
    for (const CJOBXlayObj& feature : step.ScanLayerObjDataInLayer("sst")->GetFeatures()->Records())
        if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
            texts.insert(text->GetText());
    EXPECT_EQ(texts.count(designator), 1U);
    EXPECT_EQ(texts.count("U1"), 0U);
    EXPECT_EQ(texts.count("+"), 1U);
}

TEST(JobAnonymity, ReplacesTextAttributesThatAreNamesButNoNumbers)
{
    const auto job = ReadSample();
    CJOBXstepObj& step = StepOf(*job, "PCB");
    DataOf(step).m_arrNets.GetAt(1)->m_sName = "1"; // a net may be called like a number
    CJOBXlayObj& feature = *step.ScanLayerObjDataInLayer("top")->GetFeatures()->GetAt(0);
    CJOBXPropertyArray& list = *feature.GetPropertyArray();
    list.DeleteAll();
    for (const auto& [kind, value] : {std::pair{JOBXattributeKind::Text, "VCC"},
                                      {JOBXattributeKind::Text, "VCC plane"},
                                      {JOBXattributeKind::Integer, "1"},
                                      {JOBXattributeKind::Option, "1"}})
    {
        CJOBXProperty* const attribute = list.Own(std::make_unique<CJOBXProperty>());
        attribute->SetKind(kind);
        attribute->m_sValue = value;
    }
    CStringArray& texts = step.ScanLayerObjDataInLayer("top")->m_arrAttributeTexts;
    texts.Add("VCC");
    AnonymiseJob(*job);
    const CString vcc = DataOf(step).m_arrNets.GetAt(2)->m_sName;
    EXPECT_EQ(vcc, "NET2");
    EXPECT_EQ(list.GetAt(0)->m_sValue, vcc);
    EXPECT_EQ(texts[texts.GetSize() - 1], vcc);
    EXPECT_EQ(list.GetAt(1)->m_sValue, "VCC plane");
    EXPECT_EQ(list.GetAt(2)->m_sValue, "1");
    EXPECT_EQ(list.GetAt(3)->m_sValue, "1");
}

TEST(JobAnonymity, ReplacesPartNumbersInProperties)
{
    const auto job = ReadSample();
    CJOBXcmpArray& components = ComponentsOf(StepOf(*job, "PCB"), "comp_+_top")->m_arrCmps;
    const auto add = [&](int component, const char* name, const char* value)
    { return components.GetAt(component)->m_arrProperties.Own(std::make_unique<CLProperty>(name, value)); };
    const CLProperty* const first = add(0, "MFR_NBR_ONE", "ACME-1");
    const CLProperty* const second = add(1, "PartNumber", "ACME-1");
    const CLProperty* const other = add(1, "Tolerance", "5%");
    AnonymiseJob(*job);
    EXPECT_EQ(first->m_sValue.Left(4), "PART");
    EXPECT_EQ(first->m_sValue, second->m_sValue);
    EXPECT_EQ(other->m_sValue, "5%");
}

TEST(JobAnonymity, EmptiesUsersDatesAndPathsAndLeavesUnknownFilesOut)
{
    const TempDir dir;
    std::filesystem::copy(SamplesDir() + "/blinker", dir.Path("job"), std::filesystem::copy_options::recursive);
    dir.Write("job/misc/info",
              "JOB_NAME=blinker\nODB_SOURCE=C:\\users\\kim\\a.brd\nCREATION_DATE=20260105\n"
              "SAVE_DATE=20260105\nSAVE_APP=make_sample 1\nSAVE_USER=kim\nLAST_USER=kim\nSITE=/home/kim\n"
              "MAX_UID=7\n");
    dir.Write("job/misc/last_save", "kim\n");
    const auto job = ReadJob(dir.Path("job"));
    StepOf(*job, "PCB").GetEda()->GetShorts().Add("GND SHORT VCC");
    DataOf(StepOf(*job, "PCB")).m_sHeader = "tool /home/kim";
    AnonymiseJob(*job);
    const CJOBXmisc& info = *job->m_pMisc;
    EXPECT_EQ(info.m_sJobName, "blinker");
    EXPECT_EQ(info.m_sSaveApp, "make_sample 1");
    for (const CString& text : {info.m_sODBSource, info.m_sCreationDate, info.m_sSaveDate, info.m_sSaveUser,
                                info.sGetFurtherValue("LAST_USER"), info.sGetFurtherValue("SITE")})
        EXPECT_EQ(text, "");
    EXPECT_EQ(info.sGetFurtherValue("MAX_UID"), "7");
    EXPECT_EQ(info.GetCarriedFiles()->GetSize(), 0);
    EXPECT_EQ(StepOf(*job, "PCB").GetEda()->GetShorts()[0], "NET1 SHORT NET2");
    EXPECT_EQ(DataOf(StepOf(*job, "PCB")).m_sHeader, "");
}
} // namespace change_test
