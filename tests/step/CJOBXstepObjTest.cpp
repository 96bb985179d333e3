// One step: which of its files are read, the status texts, and the scans.
#include "JOBXCLSDLL.h"
#include "support/HostWindow.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace
{
CString StepPath(const TempDir& dir)
{
    return dir.Path("pcb").c_str();
}

std::string LayerNames(const CJOBXstepObj& step)
{
    std::string names;
    for (__int64 i = 0; i < step.m_arrLayers.GetSize(); ++i)
        names += std::string(i == 0 ? "" : " ") + step.m_arrLayers.GetAt(i)->m_sName.GetString();
    return names;
}

void WriteComponents(const TempDir& dir)
{
    dir.Write("pcb/profile", "");
    dir.Write("pcb/layers/comp_+_top/components",
              "@0 .a\n&3 text\n# CMP 0\nCMP 5 1 2 0 N U1 X\n# CMP 1\nCMP 6 1 2 0 N U2 X\n"
              "# CMP 2\nCMP 5 1 2 0 N U3 X\n");
    dir.Write("pcb/layers/comp_+_bot/components", "# CMP 0\nCMP 7 1 2 0 N U4 X\n");
}
} // namespace

TEST(Step, WithoutProfileIsNotRead)
{
    const TempDir dir;
    dir.Write("pcb/layers/top/features", "L\n");
    dir.Write("pcb/stephdr", "X_DATUM=1\n");
    std::vector<std::string> calls;
    HostWindow status("text", calls);
    CJOBXstepObj step;
    step.m_pStatus = &status;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 0);
    EXPECT_EQ(step.m_arrLayers.GetSize(), 0);
    EXPECT_EQ(step.GetProfile()->m_sName, "");
    EXPECT_EQ(step.GetHeader()->m_ptDatum.GetX(), 0);
    EXPECT_TRUE(calls.empty());
}

TEST(Step, HasItsPartsAtOnce)
{
    const CJOBXstepObj step;
    EXPECT_NE(step.GetProfile(), nullptr);
    EXPECT_EQ(step.GetHeader()->m_arrStepRepeats.GetSize(), 0);
    EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetSize(), 0);
    EXPECT_EQ(step.GetNetlist()->m_arrNets.m_sUnits, "INCH");
    EXPECT_EQ(step.m_pStatus, nullptr);
}

TEST(Step, PartsArePublicMembersInTheirOrder)
{
    CJOBXstepObj step;
    EXPECT_EQ(step.m_pProfile, step.GetProfile());
    EXPECT_EQ(step.m_pHeader, step.GetHeader());
    EXPECT_EQ(step.m_pEda, step.GetEda());
    EXPECT_EQ(step.m_pNetlist, step.GetNetlist());
    const void* const members[] = {&step.m_pStatus,   &step.m_sName,         &step.m_pProfile, &step.m_pHeader,
                                   &step.m_arrLayers, &step.m_arrComponents, &step.m_pEda,     &step.m_pNetlist};
    EXPECT_TRUE(std::is_sorted(std::begin(members), std::end(members), std::less<>()));
}

TEST(Step, PartThatTheHostPutsInPlaceIsTheStepsOwn)
{
    const TempDir dir;
    dir.MakeDir("out");
    CJOBXstepObj step;
    step.m_sName = "pcb";
    delete step.m_pHeader;
    step.m_pHeader = new CJOBXstephdr;
    step.m_pHeader->m_ptDatum.SetData(7, 8);
    EXPECT_EQ(step.GetHeader(), step.m_pHeader);
    step.WriteODBData(dir.Path("out").c_str(), 0);
    EXPECT_NE(dir.Read("out/pcb/stephdr").find("X_DATUM=7\n"), std::string::npos) << dir.Read("out/pcb/stephdr");
}

TEST(Step, ComponentsAreNamedAsTheLibrarySpellsThemWhateverIsOnDisk)
{
    const TempDir dir;
    dir.Write("pcb/PROFILE", "");
    dir.Write("pcb/LAYERS/Top/Components", "# CMP 0\n");
    CJOBXstepObj step;
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    ASSERT_EQ(step.m_arrComponents.GetSize(), 1);
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_sRelativePath, "Top/components");
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_sLayerName, "Top");
}

TEST(Step, UnitConvert_ByALengthOfItsOwnUsesTheValueGiven)
{
    CJOBXstephdrArray headers;
    CJOBXstephdr& header = *headers.Own(std::make_unique<CJOBXstephdr>());
    CJOBXstepRepeat& first = *header.m_arrStepRepeats.Own(std::make_unique<CJOBXstepRepeat>());
    CJOBXstepRepeat& second = *header.m_arrStepRepeats.Own(std::make_unique<CJOBXstepRepeat>());
    CJOBXstephdr& behind = *headers.Own(std::make_unique<CJOBXstephdr>());
    header.m_ptDatum.SetData(2, 3);
    header.m_ptOrigin.SetData(1, 1);
    first.m_ptPosition.SetData(2, 0);
    first.m_ptPitch.SetData(5, 0);
    second.m_ptPitch.SetData(5, 0);
    behind.m_ptDatum.SetData(1, 1);
    first.UnitConvert(first.m_ptPosition.x);
    EXPECT_EQ(first.m_ptPitch, CPointD(10, 0));
    header.m_arrStepRepeats.UnitConvert(first.m_ptPosition.x);
    EXPECT_EQ(second.m_ptPitch, CPointD(20, 0));
    header.UnitConvert(header.m_ptDatum.x);
    EXPECT_EQ(header.m_ptOrigin, CPointD(2, 2));
    EXPECT_EQ(second.m_ptPitch, CPointD(40, 0));
    headers.UnitConvert(header.m_ptOrigin.x);
    EXPECT_EQ(behind.m_ptDatum, CPointD(2, 2));
    CJOBXstepObjArray steps;
    CJOBXstepObj& step = *steps.Own(std::make_unique<CJOBXstepObj>());
    CJOBXnetPt& own = *step.m_pNetlist->m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    CJOBXdataPkg& package = *step.m_pEda->m_pData->m_arrPkgs.Own(std::make_unique<CJOBXdataPkg>());
    CJOBXstepObj& next = *steps.Own(std::make_unique<CJOBXstepObj>());
    CJOBXdataPkg& last = *next.m_pEda->m_pData->m_arrPkgs.Own(std::make_unique<CJOBXdataPkg>());
    own.m_dWidth = 1.0;
    package.m_dPitch = 3.0;
    last.m_dPitch = 1.0;
    step.UnitConvert(package.m_dPitch);
    EXPECT_EQ(own.m_dWidth, 3.0);
    steps.UnitConvert(own.m_dWidth);
    EXPECT_EQ(last.m_dPitch, 3.0);
}

TEST(Step, MissingPartsAreSkippedWithTheirMessages)
{
    const TempDir dir;
    dir.Write("pcb/profile", "L 0 0 1 1 0 P 0\n");
    dir.MakeDir("pcb/netlists/cadnet");
    std::vector<std::string> calls;
    HostWindow status("text", calls);
    CJOBXstepObj step;
    step.m_pStatus = &status;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(step.GetProfile()->m_sName, "profile");
    EXPECT_EQ(step.GetProfile()->GetFeatures()->GetSize(), 1);
    const std::vector<std::string> expected = {
        "text: SetWindowText Complete profile file reading", "text: RedrawWindow 11 261",
        "text: SetWindowText Complete layers file reading", "text: RedrawWindow 11 261"};
    EXPECT_EQ(calls, expected); // no netlist file: no netlist message; no eda directory: no eda message
}

TEST(Step, EdaMessageNeedsTheDirectoryOnly)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    dir.MakeDir("pcb/eda");
    std::vector<std::string> calls;
    HostWindow status("text", calls);
    CJOBXstepObj step;
    step.m_pStatus = &status;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_EQ(calls[4], "text: SetWindowText Complete eda file reading");
}

TEST(Step, LayersAreNamedByTheirDirectoriesInListingOrder)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    for (const char* name : {"top", "Bot", "in 1", "comp_+_top", "a.b"})
        dir.Write(std::string("pcb/layers/") + name + "/features", "L\n");
    dir.MakeDir("pcb/layers/empty");
    dir.Write("pcb/layers/file", "L\n");
    CJOBXstepObj step;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(LayerNames(step), "Bot a.b comp_+_top in 1 top");
    EXPECT_EQ(step.m_arrComponents.GetSize(), 0);
    EXPECT_EQ(step.ScanLayerObjDataInLayer("BOT"), step.m_arrLayers.GetAt(0));
    EXPECT_EQ(step.ScanLayerObjDataInLayer("bottom"), nullptr);
}

TEST(Step, LayerWithComponentsOnlyGetsNoLayerObject)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    dir.Write("pcb/layers/comp_+_top/components", "# CMP 0\n");
    CJOBXstepObj step;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(step.m_arrLayers.GetSize(), 0);
    ASSERT_EQ(step.m_arrComponents.GetSize(), 1);
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_sLayerName, "comp_+_top");
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_sRelativePath, "comp_+_top/components");
}

TEST(Step, CompressedLayerFeaturesAreNotRead)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    dir.Write("pcb/layers/top/features.Z", "\x1F\x9D\x90");
    CJOBXstepObj step;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(step.m_arrLayers.GetSize(), 0);
}

TEST(Step, FeaturesThatAreADirectoryGiveAnEmptyLayer)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    dir.MakeDir("pcb/layers/top/features");
    CJOBXstepObj step;
    EXPECT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    ASSERT_EQ(LayerNames(step), "top");
    EXPECT_EQ(step.m_arrLayers.GetAt(0)->GetFeatures()->GetSize(), 0);
}

TEST(Step, UnitChangeLeavesHeaderAndStepRepeatsAlone)
{
    const TempDir dir;
    dir.Write("pcb/profile", "P 1 2 0 P 0 0\n");
    dir.Write("pcb/stephdr", "X_DATUM=1\nSTEP-REPEAT {\nNAME=x\nX=3\nDX=4\n}\n");
    dir.Write("pcb/layers/top/features", "P 1 2 0 P 0 0\n");
    dir.Write("pcb/layers/top/components", "# CMP 0\nCMP 0 1 2 0 N U1 X\n");
    dir.Write("pcb/eda/data", "# PKG 0\nPKG X 0.5 0 0 1 1\n");
    dir.Write("pcb/netlists/cadnet/netlist", "$0 A\n0 0.01 1 2 T e e\n");
    CJOBXstepObj step;
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    step.UnitConvert(25.4);
    EXPECT_EQ(step.GetHeader()->m_ptDatum.GetX(), 1);
    EXPECT_EQ(step.GetHeader()->m_arrStepRepeats.GetAt(0)->m_ptPosition.GetX(), 3);
    EXPECT_EQ(step.GetHeader()->m_arrStepRepeats.GetAt(0)->m_ptPitch.GetX(), 4);
    const CPointD scaled(25.4, 50.8);
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*step.GetProfile()->GetFeatures()->GetAt(0)).GetCenterPoint(), scaled);
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*step.m_arrLayers.GetAt(0)->GetFeatures()->GetAt(0)).GetCenterPoint(),
              scaled);
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_arrCmps.GetAt(0)->m_ptLocation, scaled);
    EXPECT_EQ(step.GetEda()->m_pData->m_arrPkgs.GetAt(0)->m_dPitch, 12.7);
    const CJOBXnetPt& point = *step.GetNetlist()->m_arrNets.GetAt(0)->m_arrPts.GetAt(0);
    EXPECT_EQ(point.m_ptPosition, scaled);
}

TEST(Step, ScanMovesTheComponentsOfAPackage)
{
    const TempDir dir;
    WriteComponents(dir);
    CJOBXstepObj step;
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(step.ScaneODBComponents(99), nullptr);
    ASSERT_EQ(step.m_arrComponents.GetSize(), 2);
    const std::unique_ptr<CJOBXcomponentsArray> scanned(step.ScaneODBComponents(5));
    ASSERT_NE(scanned, nullptr);
    ASSERT_EQ(scanned->GetSize(), 1);
    const CJOBXcomponents& file = *scanned->GetAt(0);
    EXPECT_EQ(file.m_sLayerName, "comp_+_top");
    EXPECT_EQ(file.GetAttributeName(0), ".a");
    EXPECT_EQ(file.GetAttributeText(3), "text");
    ASSERT_EQ(file.m_arrCmps.GetSize(), 2);
    EXPECT_EQ(file.m_arrCmps.GetAt(0)->m_sName, "U1");
    EXPECT_EQ(file.m_arrCmps.GetAt(1)->m_sName, "U3");
    EXPECT_EQ(step.m_arrComponents.GetAt(1)->m_arrCmps.GetSize(), 1);
    EXPECT_EQ(step.m_arrComponents.GetAt(1)->m_arrCmps.GetAt(0)->m_sName, "U2");
    EXPECT_EQ(step.ScaneODBComponents(5), nullptr);
}

TEST(Step, ScanMovesTheToeprintSubnetsOfAComponent)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    dir.Write("pcb/eda/data", "# NET 0\nNET A\nSNT TOP T 3 0\nSNT VIA\nSNT TOP B 3 0\nSNT TOP T 3 1\nSNT TRC\n"
                              "# NET 1\nNET B\nSNT TOP T 4 0\nSNT top T 3 0\n# NET 2\nNET C\nSNT TOP T 3 2\n");
    CJOBXstepObj step;
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    EXPECT_EQ(step.ScanUsedODBcmpIDDataIndataNet(9, "T"), nullptr);
    EXPECT_EQ(step.ScanUsedODBcmpIDDataIndataNet(3, "t"), nullptr);
    const std::unique_ptr<CJOBXdataNetArray> scanned(step.ScanUsedODBcmpIDDataIndataNet(3, "T"));
    ASSERT_NE(scanned, nullptr);
    ASSERT_EQ(scanned->GetSize(), 2);
    EXPECT_EQ(scanned->GetAt(0)->m_sName, "A");
    ASSERT_EQ(scanned->GetAt(0)->m_arrSnts.GetSize(), 2);
    EXPECT_EQ(scanned->GetAt(0)->m_arrSnts.GetAt(1)->m_nToeprintNumber, 1);
    EXPECT_EQ(scanned->GetAt(1)->m_sName, "C");
    EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetAt(0)->m_arrSnts.GetSize(), 3);
    EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetAt(1)->m_arrSnts.GetSize(), 2);
    EXPECT_EQ(step.ScanUsedODBcmpIDDataIndataNet(3, "T"), nullptr);
}

TEST(Step, ManyLayersComeInOrderWhateverTheThreadsDo)
{
    const TempDir dir;
    dir.Write("pcb/profile", "");
    std::string expected;
    for (int i = 100; i < 200; ++i)
    {
        const std::string name = "l" + std::to_string(i);
        std::string text;
        for (int line = 0; line < (200 - i) * 20; ++line)
            text += "L 0 0 1 1 0 P 0\n";
        dir.Write("pcb/layers/" + name + "/features", text);
        expected += (i == 100 ? "" : " ") + name;
    }
    for (int run = 0; run < 3; ++run)
    {
        CJOBXstepObj step;
        ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
        EXPECT_EQ(LayerNames(step), expected);
    }
}

TEST(Step, IsWrittenAlone)
{
    const TempDir dir;
    WriteComponents(dir);
    dir.Write("pcb/layers/top/features", "L 0 0 1 1 0 P 0\n");
    CJOBXstepObj step;
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    step.m_sName = "written";
    step.WriteODBData(dir.MakeDir("steps").c_str(), 0);
    for (const char* const name : {"profile", "stephdr", "layers/top/features", "layers/comp_+_top/components"})
        EXPECT_TRUE(dir.Exists(std::string("steps/written/") + name)) << name;
    EXPECT_FALSE(dir.Exists("steps/written/eda"));
    step.WriteODBData(dir.Path("steps").c_str(), 1);
    EXPECT_TRUE(dir.Exists("steps/written/eda/data"));
    EXPECT_TRUE(dir.Exists("steps/written/netlists/cadnet/netlist"));
    step.m_sName = "../outside";
    step.WriteODBData(dir.Path("steps").c_str(), 1);
    EXPECT_FALSE(dir.Exists("outside"));
}

TEST(Step, NullEntriesAreHarmless)
{
    const TempDir dir;
    WriteComponents(dir);
    dir.Write("pcb/eda/data", "# NET 0\nNET A\nSNT TOP T 3 0\n");
    CJOBXstepObjArray steps;
    steps.Add(nullptr);
    CJOBXstepObj& step = *steps.Own(std::make_unique<CJOBXstepObj>());
    ASSERT_EQ(step.ParseODBOfMFC(StepPath(dir)), 1);
    step.m_sName = "pcb";
    step.m_arrLayers.Add(nullptr);
    step.m_arrComponents.Add(nullptr);
    step.m_arrComponents.GetAt(0)->m_arrCmps.Add(nullptr);
    step.GetEda()->m_pData->m_arrNets.Add(nullptr);
    step.GetEda()->m_pData->m_arrNets.GetAt(0)->m_arrSnts.Add(nullptr);
    const std::unique_ptr<CJOBXcomponentsArray> components(step.ScaneODBComponents(5));
    ASSERT_NE(components, nullptr);
    EXPECT_EQ(components->GetAt(0)->m_arrCmps.GetSize(), 2);
    const std::unique_ptr<CJOBXdataNetArray> nets(step.ScanUsedODBcmpIDDataIndataNet(3, "T"));
    ASSERT_NE(nets, nullptr);
    EXPECT_EQ(nets->GetSize(), 1);
    steps.UnitConvert(2);
    steps.WriteODBData(dir.MakeDir("steps").c_str(), 1);
    EXPECT_TRUE(dir.Exists("steps/pcb/layers/comp_+_top/components"));
    EXPECT_TRUE(dir.Exists("steps/pcb/eda/data"));
}
