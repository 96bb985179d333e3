// How features files are written, byte for byte, and where writer and reader differ.
#include "JOBXCLSDLL.h"
#include "support/CommaLocale.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{
std::unique_ptr<CJOBXlayer> Read(const TempDir& dir, const std::string& text)
{
    auto layer = std::make_unique<CJOBXlayer>();
    layer->ParseODBOfMFC(dir.Write("in", text).c_str());
    return layer;
}

std::string Features(const TempDir& dir, const CJOBXlayer& layer)
{
    layer.WriteODBData(dir.Path("out").c_str(), 1, 1);
    return dir.Read("out/features");
}

// What one record line becomes.
std::string Rewritten(const std::string& text)
{
    const TempDir dir;
    const std::string all = Features(dir, *Read(dir, text));
    const std::string head = "#Layer features\n#\n";
    const std::size_t at = all.find(head) + head.size();
    return all.substr(at, all.size() - at - 1);
}
} // namespace

TEST(FeaturesWriter, EmptyLayerHasHeaderAndLastEmptyLineOnly)
{
    const TempDir dir;
    const CJOBXlayer layer;
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Layer features\n#\n\n");
}

TEST(FeaturesWriter, WritesTablesWithTheirStoredNumbers)
{
    const TempDir dir;
    const auto layer = Read(dir, "U MM\n$3 r10\n$7 rect1x2 M\n@5 .a b\n&9 text  of words\n");
    EXPECT_EQ(Features(dir, *layer), "#\nUNITS=MM\n#\n#Feature symbol names\n#\n$3 r10\n$7 rect1x2 M\n#\n"
                                     "#Feature attribute names\n#\n@5 .a b\n#\n#Feature attribute text strings\n#\n"
                                     "&9 text  of words\n#\n#Layer features\n#\n\n");
}

TEST(FeaturesWriter, UnitsTextIsWrittenAsItWasKept)
{
    const TempDir dir;
    EXPECT_EQ(Features(dir, *Read(dir, "UNITS=MM\n")).substr(0, 18), "#\nUNITS=UNITS=MM\n#");
}

TEST(FeaturesWriter, WritesEveryKindOfRecord)
{
    EXPECT_EQ(Rewritten("L 1 2 3 4 5 N 6"), "L 1.000000 2.000000 3.000000 4.000000 5 N 6\n");
    EXPECT_EQ(Rewritten("P 1 2 5 P 3 6"), "P 1.000000 2.000000 5 P 3 6\n");
    EXPECT_EQ(Rewritten("P 1 2 -1 5 0.5 N 4 0"), "P 1.000000 2.000000 -1 5 0.500000 N 4 0\n");
    EXPECT_EQ(Rewritten("A 1 2 3 4 5 6 7 N 8 Y"), "A 1.000000 2.000000 3.000000 4.000000 5.000000 6.000000 7 N 8 Y\n");
    EXPECT_EQ(Rewritten("S N 4\nOB 1 2 I\nOS 3 4\nOC 5 6 7 8 Y\nOE\nOB 1 2 H\nOE\nSE"),
              "S N 4\nOB 1.000000 2.000000 I\nOS 3.000000 4.000000\nOC 5.000000 6.000000 7.000000 8.000000 Y\nOE\n"
              "OB 1.000000 2.000000 H\nOE\nSE\n");
    EXPECT_EQ(Rewritten("S P 0\nSE"), "S P 0\nSE\n");
}

TEST(FeaturesWriter, PadAngleFollowsCodesEightAndNine)
{
    EXPECT_EQ(Rewritten("@0 .a\n&2 t\nP 1 2 5 P 3 9 30 ;0=2"), "P 1.000000 2.000000 5 P 3 9 30.000000 ; 0=2\n");
    EXPECT_EQ(Rewritten("P 1 2 -1 5 2 P 3 8 45"), "P 1.000000 2.000000 -1 5 2.000000 P 3 8 45.000000\n");
    EXPECT_EQ(Rewritten("P 1 2 5 P 3 7 30"), "P 1.000000 2.000000 5 P 3 7\n");
}

TEST(FeaturesWriter, TextAngleIsWrittenForCodesZeroAndEightOnly)
{
    EXPECT_EQ(Rewritten("T 1 2 standard P 0 0.1 0.2 3 'A B' 2"),
              "T 1.000000 2.000000 standard P 0 0.000000 0.100000 0.200000 3.000000 A B 2\n");
    EXPECT_EQ(Rewritten("T 1 2 standard P 8 30 0.1 0.2 3 'A' 2"),
              "T 1.000000 2.000000 standard P 8 30.000000 0.100000 0.200000 3.000000 A 2\n");
    EXPECT_EQ(Rewritten("T 1 2 standard N 9 30 0.1 0.2 3 'A' 2"),
              "T 1.000000 2.000000 standard N 9 0.100000 0.200000 3.000000 A 2\n");
    EXPECT_EQ(Rewritten("T 1 2 standard N 1 0.1 0.2 3 'A' 2"),
              "T 1.000000 2.000000 standard N 1 0.100000 0.200000 3.000000 A 2\n");
}

TEST(FeaturesWriter, BarcodeRunsOrientationAndFlagTogether)
{
    EXPECT_EQ(Rewritten("B 1 2 UPC39 standard P 3 E 0.1 0.2 Y N y n T 'AB 1'"),
              "B 1.000000 2.000000 UPC39 standard P 3E 0.100000 0.200000 Y N y n T 'AB 1'\n");
}

TEST(FeaturesWriter, OnlyAttributesWithBothNumbersAreWritten)
{
    EXPECT_EQ(Rewritten("L 0 0 0 0 0 P 0 ;3=1,4,5=2"), "L 0.000000 0.000000 0.000000 0.000000 0 P 0 ; 3=1, 5=2\n");
    EXPECT_EQ(Rewritten("L 0 0 0 0 0 P 0 ;4,5"), "L 0.000000 0.000000 0.000000 0.000000 0 P 0\n");
    EXPECT_EQ(Rewritten("S P 0 ;1=2\nSE"), "S P 0 ; 1=2\nSE\n");
}

TEST(FeaturesWriter, EachFeatureHasItsOwnAttributesWhateverTheOneBeforeHad)
{
    const std::string line = "L 0.000000 0.000000 0.000000 0.000000 0 P 0";
    EXPECT_EQ(Rewritten("L 0 0 0 0 0 P 0 ;1=2\nL 0 0 0 0 0 P 0 ;1=2\nL 0 0 0 0 0 P 0 ;1=3,4=5\nL 0 0 0 0 0 P 0\n"
                        "L 0 0 0 0 0 P 0 ;1=2\nL 0 0 0 0 0 P 0 ;7\nL 0 0 0 0 0 P 0 ;1=2"),
              line + " ; 1=2\n" + line + " ; 1=2\n" + line + " ; 1=3, 4=5\n" + line + "\n" + line + " ; 1=2\n" + line +
                  "\n" + line + " ; 1=2\n");
}

TEST(FeaturesWriter, UnknownTypeWritesItsAttributesOnly)
{
    const TempDir dir;
    const auto layer = Read(dir, "L 0 0 0 0 0 P 0 ;1=2\n");
    layer->GetFeatures()->GetAt(0)->SetType("X");
    EXPECT_NE(Features(dir, *layer).find("#Layer features\n#\n ; 1=2\n\n"), std::string::npos);
}

TEST(FeaturesWriter, WritesRecordAndAttributesIntoAnOpenFile)
{
    const TempDir dir;
    const auto layer = Read(dir, "P 1 2 5 P 3 6 ;1=2\n");
    std::FILE* const file = std::fopen(dir.Path("f").c_str(), "wb");
    layer->GetFeatures()->GetAt(0)->WriteODBData(file);
    layer->GetFeatures()->GetAt(0)->WriteODBFeatureAttributeData(file);
    std::fclose(file);
    EXPECT_EQ(dir.Read("f"), "P 1.000000 2.000000 5 P 3 6 ; 1=2\n ; 1=2\n");
    layer->GetFeatures()->GetAt(0)->WriteODBData(nullptr);
}

TEST(FeaturesWriter, DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    EXPECT_EQ(Rewritten("P 1.5 2 5 P 3 6"), "P 1.500000 2.000000 5 P 3 6\n");
}

TEST(LayerWriter, ProfileIsWrittenWithoutRecreatingItsFolder)
{
    const TempDir dir;
    dir.Write("out/kept", "x");
    const CJOBXlayer layer;
    layer.WriteODBData(dir.Path("out").c_str(), 0, 0);
    EXPECT_TRUE(dir.Exists("out/profile"));
    EXPECT_TRUE(dir.Exists("out/kept"));
    layer.WriteODBData(dir.Path("out").c_str(), 1, 1);
    EXPECT_FALSE(dir.Exists("out/kept"));
    EXPECT_FALSE(dir.Exists("out/profile"));
    EXPECT_TRUE(dir.Exists("out/features"));
    layer.WriteODBData(dir.Path("none/below").c_str(), 0, 1); // cannot be opened: left out
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(LayerWriter, AttributeListGoesBesideTheFeaturesOfItsOwnFolder)
{
    const TempDir dir;
    CJOBXlayerArray layers;
    for (const char* name : {"dielectric_1", "DIELECTRIC_2", "Dielectric_3", "top", "none"})
        layers.Own(std::make_unique<CJOBXlayer>())->m_sName = name;
    for (int i = 0; i < 4; ++i)
        layers.GetAt(i)->m_dCopperWeightOrDielectric = 0.1;
    dir.MakeDir("step");
    layers.WriteODBData(dir.Path("step").c_str());
    EXPECT_EQ(dir.Read("step/layers/dielectric_1/attrlist"), "UNITS=MM\n.layer_dielectric=0.1\n");
    EXPECT_EQ(dir.Read("step/layers/DIELECTRIC_2/attrlist"), "UNITS=MM\n.layer_dielectric=0.1\n");
    EXPECT_EQ(dir.Read("step/layers/Dielectric_3/attrlist"), "UNITS=MM\n.copper_weight=0.1\n");
    EXPECT_EQ(dir.Read("step/layers/top/attrlist"), "UNITS=MM\n.copper_weight=0.1\n");
    EXPECT_FALSE(dir.Exists("step/layers/none/attrlist"));
    layers.GetAt(3)->WriteODBData(dir.MakeDir("other/top").c_str(), 0, 0);
    EXPECT_FALSE(dir.Exists("other/top/attrlist")); // a profile has none
    dir.MakeDir("parent/top");
    layers.GetAt(3)->WriteODBData(dir.Path("parent").c_str(), 0, 1);
    EXPECT_TRUE(dir.Exists("parent/features"));
    EXPECT_TRUE(dir.Exists("parent/top/attrlist"));
}

TEST(LayerWriter, ToolsAndComponentsStandBesideTheFeatures)
{
    const TempDir dir;
    CJOBXlayer layer;
    CJOBXtoolDataArray tools;
    tools.Own(std::make_unique<CJOBXtoolData>());
    layer.GetTool()->SetToolDataArray(&tools);
    layer.GetComponents()->Own(std::make_unique<CJOBXcomponents>());
    layer.WriteODBData(dir.Path("out").c_str(), 1, 1);
    EXPECT_TRUE(dir.Exists("out/tools"));
    EXPECT_TRUE(dir.Exists("out/components"));
    EXPECT_TRUE(dir.Exists("out/features"));
}

TEST(LayerWriter, NullAndNamesThatLeadOutAreLeftUnwritten)
{
    const TempDir dir;
    dir.Write("victim/file", "x");
    dir.MakeDir("a/step");
    CJOBXlayerArray layers;
    layers.Add(nullptr);
    for (const char* name : {"..", ".", "", "../../../victim", "x/y", "/tmp", "ok"})
        layers.Own(std::make_unique<CJOBXlayer>())->m_sName = name;
    layers.WriteODBData(dir.Path("a/step").c_str());
    EXPECT_TRUE(dir.Exists("victim/file"));
    EXPECT_TRUE(dir.Exists("a/step/layers/ok/features"));
    EXPECT_FALSE(dir.Exists("a/step/layers/features"));
    EXPECT_FALSE(dir.Exists("a/step/features"));
    EXPECT_FALSE(dir.Exists("a/step/layers/x"));
}

TEST(FeaturesWriter, NullEntriesAreLeftOut)
{
    const TempDir dir;
    CJOBXlayer layer;
    layer.GetFeatures()->Add(nullptr);
    auto pad = std::make_unique<CJOBXlayObjPad>();
    pad->SetType("P");
    pad->GetPropertyArray()->Add(nullptr);
    auto attribute = std::make_unique<CJOBXProperty>();
    attribute->m_nNumber = 1;
    attribute->m_nTextNumber = 2;
    pad->GetPropertyArray()->Own(std::move(attribute));
    layer.GetFeatures()->Own(std::move(pad));
    auto surface = std::make_unique<CJOBXlayObjSurface>();
    surface->SetType("S");
    surface->GetContours()->Add(nullptr);
    surface->GetContours()->Own(std::make_unique<CJOBXlayObjSurfaceOB>()); // of no elements: has no end either
    auto contour = std::make_unique<CJOBXlayObjSurfaceOB>();
    contour->GetODBlayObjOXArray()->Add(nullptr);
    auto element = std::make_unique<CJOBXlayObjOX>();
    element->SetKind("OS");
    contour->GetODBlayObjOXArray()->Own(std::move(element));
    surface->GetContours()->Own(std::move(contour));
    layer.GetFeatures()->Own(std::move(surface));
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Layer features\n#\n"
                                    "P 0.000000 0.000000 -1 P 0 0 ; 1=2\n"
                                    "S P 0\nOS 0.000000 0.000000\nOS\nSE\n\n");
}

TEST(FeaturesWriter, AttributeWithoutBothNumbersIsLeftOut)
{
    const TempDir dir;
    CJOBXlayer layer;
    auto pad = std::make_unique<CJOBXlayObjPad>();
    pad->SetType("P");
    const int numbers[][2] = {{-1, 3}, {4, -1}, {-1, -1}, {5, 6}, {-1, 7}};
    for (const auto& [number, textNumber] : numbers)
    {
        auto attribute = std::make_unique<CJOBXProperty>();
        attribute->m_nNumber = number;
        attribute->m_nTextNumber = textNumber;
        pad->GetPropertyArray()->Own(std::move(attribute));
    }
    layer.GetFeatures()->Own(std::move(pad));
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Layer features\n#\n"
                                    "P 0.000000 0.000000 -1 P 0 0 ; 5=6\n\n");
}

TEST(FeaturesWriter, TypeThatDoesNotFitItsRecordWritesNoFields)
{
    const TempDir dir;
    CJOBXlayer layer;
    for (const char* const type : {"S", "A", "Line", "", "X"})
    {
        auto line = std::make_unique<CJOBXlayObjLine>();
        line->SetType(type);
        layer.GetFeatures()->Own(std::move(line));
    }
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Layer features\n#\n\n\n\n\n\n\n");
}

TEST(FeaturesWriter, ContourElementOfAnotherKindIsLeftOutUnlessItIsTheLast)
{
    const TempDir dir;
    CJOBXlayer layer;
    auto surface = std::make_unique<CJOBXlayObjSurface>();
    surface->SetType("S");
    auto contour = std::make_unique<CJOBXlayObjSurfaceOB>();
    for (const char* const kind : {"OBX", "S", "OX", "XS", "end"})
    {
        auto element = std::make_unique<CJOBXlayObjOX>();
        element->SetKind(kind);
        contour->GetODBlayObjOXArray()->Own(std::move(element));
    }
    surface->GetContours()->Own(std::move(contour));
    layer.GetFeatures()->Own(std::move(surface));
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Layer features\n#\nS P 0\nend\nSE\n\n");
}

TEST(FeaturesWriter, TableEntryWithoutANumberIsLeftOut)
{
    const TempDir dir;
    CJOBXlayer layer;
    layer.m_arrSymbolNames.Add("r1");
    layer.m_arrSymbolNumbers.Add(4);
    layer.m_arrSymbolNames.Add("r2");
    layer.m_arrAttributeNames.Add(".a");
    layer.m_arrAttributeNameNumbers.Add(3);
    layer.m_arrAttributeNames.Add(".b");
    EXPECT_EQ(Features(dir, layer), "#\nUNITS=INCH\n#\n#Feature symbol names\n#\n$4 r1\n#\n"
                                    "#Feature attribute names\n#\n@3 .a\n#\n#Layer features\n#\n\n");
}

TEST(LayerWriter, FolderThatCannotBeMadeLeavesTheLayerUnwritten)
{
    const TempDir dir;
    dir.Write("file", "kept");
    const CJOBXlayer layer;
    layer.WriteODBData(dir.Path("file").c_str(), 1, 1);
    EXPECT_EQ(dir.Read("file"), "kept");
    layer.WriteODBData(dir.Path("none/below").c_str(), 1, 1);
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(LayerWriter, AttributeListNeverLeavesTheFolder)
{
    const TempDir dir;
    CJOBXlayer layer;
    layer.m_dCopperWeightOrDielectric = 0.1;
    dir.MakeDir("victim");
    dir.MakeDir("step");
    for (const char* const name : {"../victim", "..", ".", "a/b", ""})
    {
        layer.m_sName = name;
        layer.WriteODBData(dir.Path("step").c_str(), 0, 1);
    }
    EXPECT_FALSE(dir.Exists("victim/attrlist"));
    EXPECT_FALSE(dir.Exists("attrlist"));
    EXPECT_FALSE(dir.Exists("step/attrlist"));
    EXPECT_TRUE(dir.Exists("step/features"));
}
