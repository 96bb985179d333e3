#include "eda/EdaText.h"
#include "support/CommaLocale.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace
{
std::string Golden(const std::string& name)
{
    std::ifstream file(TestDataDir() + "/eda/" + name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

CJOBXlayObjOX& AddElement(CJOBXdataPkgObjContour& contour, const char* kind, CPointD point = {})
{
    CJOBXlayObjOX& element = AddTo(contour.m_arrElements);
    element.SetKind(kind);
    element.SetPoint(point);
    return element;
}

template <class Shape>
Shape& AddShape(CJOBXdataPkgObjArray& outlines)
{
    auto shape = std::make_unique<Shape>();
    Shape& added = *shape;
    outlines.Own(std::move(shape));
    return added;
}

void AddAttribute(CJOBXdataPkg& package, int number, int textNumber, const char* value)
{
    CJOBXProperty& property = AddTo(package.m_arrProperties);
    property.m_sName = "unused";
    property.m_nNumber = number;
    property.m_nTextNumber = textNumber;
    property.m_sValue = value;
}

void AddNetWithEverySubnet(CJOBXdata& data)
{
    CJOBXdataNet& net = AddTo(data.m_arrNets);
    net.m_nNumber = 7; // not written
    net.m_sName = "GND";
    AddTo(net.m_arrProperties).m_sName = "not written";
    CJOBXSnt& pin = AddTo(net.m_arrSnts);
    pin.m_sKind = "TOP";
    pin.m_sSide = "T";
    pin.m_nComponentNumber = 12;
    pin.m_nToeprintNumber = 3;
    CJOBXdataNetObj& object = AddTo(pin.m_arrNetObjs);
    object.m_sKind = "C";
    object.m_nLayerIndex = 2;
    object.m_nFeatureIndex = 10;
    CJOBXSnt& plane = AddTo(net.m_arrSnts);
    plane.m_sKind = "PLN";
    plane.m_sFillType = "S";
    plane.m_sCutoutType = "C";
    plane.m_dFillSize = 0.01;
    CJOBXdataNetObj& group = AddTo(plane.m_arrNetObjs);
    group.m_sKind = "FGR";
    group.m_sText = "not written";
    AddTo(net.m_arrSnts).m_sKind = "VIA";
    AddTo(data.m_arrNets).m_sName = "$NONE$";
}

void AddPackageWithEveryOutline(CJOBXdata& data)
{
    CJOBXdataPkg& package = AddTo(data.m_arrPkgs);
    package.m_nNumber = 9; // not written
    package.m_sName = "R0603";
    package.m_dPitch = 0.05;
    package.m_ptLowerLeft.SetData(-0.03, -0.015);
    package.m_ptUpperRight.SetData(0.03, 0.015);
    auto& circle = AddShape<CJOBXdataPkgObjCircle>(package.m_arrOutlines);
    circle.SetCenterPoint(1, 2);
    circle.SetRadius(0.5);
    auto& square = AddShape<CJOBXdataPkgObjSquare>(package.m_arrOutlines);
    square.m_ptCenter.SetData(3, 4);
    square.m_dHalfSide = 0.25;
    auto& rectangle = AddShape<CJOBXdataPkgObjRectangle>(package.m_arrOutlines);
    rectangle.SetLowerLeftPoint(-1, -2);
    rectangle.SetWidth(5);
    rectangle.SetHeight(6);
    auto& contour = AddShape<CJOBXdataPkgObjContour>(package.m_arrOutlines);
    AddElement(contour, "OB", {0, 0}).SetPolygonType("I");
    AddElement(contour, "OS", {1, 0});
    CJOBXlayObjOX& curve = AddElement(contour, "OC", {0, 1});
    curve.SetCenterPoint({0.5, 0.5});
    curve.SetClockwise("N");
    AddElement(contour, "OE", {8, 8});
    AddShape<CJOBXdataPkgObjContour>(package.m_arrOutlines);
    AddOutline(package.m_arrOutlines, "CR 0 .5 1e-3");
    CLProperty& attribute = AddTo(package.m_arrAttributes);
    attribute.m_sName = "PACKAGE_NAME";
    attribute.m_sValue = "R 0603";
    CJOBXdataPkgPin& pin = AddTo(package.m_arrPins);
    pin.m_sName = "1";
    pin.m_sType = "S";
    pin.m_ptCenter.SetData(-0.02, 0);
    pin.m_dHoleSize = 0.8;
    pin.m_sMountType = "S";
    AddOutline(pin.m_arrOutlines, "RC 0 0 1 1");
    CJOBXdataPkg& withAttributes = AddTo(data.m_arrPkgs);
    withAttributes.m_sName = "DIP8";
    AddAttribute(withAttributes, 0, 2, "");
    AddAttribute(withAttributes, -1, 3, "not written");
    AddAttribute(withAttributes, 4, -1, "text");
}

void FillWithEverything(CJOBXdata& data)
{
    data.m_sHeader = "Board A";
    data.m_sUnits = "MM";
    data.m_arrLayerNames.Add("top");
    data.m_arrLayerNames.Add("bottom");
    data.m_arrAttributeNames.Add(".comp_mount_type");
    data.m_arrAttributeNames.Add(".other");
    data.m_arrAttributeTexts.Add("some text");
    AddNetWithEverySubnet(data);
    AddPackageWithEveryOutline(data);
}
} // namespace

TEST(EdaWriter, WritesEveryKindOfRecord)
{
    CJOBXdata data;
    FillWithEverything(data);
    EXPECT_EQ(WrittenFile(data), Golden("everything/golden/data"));
}

TEST(EdaWriter, WritesAnEmptyModel)
{
    EXPECT_EQ(WrittenFile(CJOBXdata()), "#\nUNITS=INCH\n#\nHDR \nLYR\n");
}

TEST(EdaWriter, DecimalPointDoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(locale);
    CJOBXdata data;
    FillWithEverything(data);
    EXPECT_EQ(WrittenFile(data), Golden("everything/golden/data"));
}

TEST(EdaWriter, FileThatCannotBeOpenedIsSkipped)
{
    const TempDir dir;
    CJOBXdata data;
    data.WriteODBData(dir.Path("absent").c_str());
    EXPECT_FALSE(dir.Exists("absent"));
    dir.MakeDir("taken/data");
    data.WriteODBData(dir.Path("taken").c_str());
    EXPECT_TRUE(dir.Exists("taken/data"));
}

TEST(EdaWriter, FileIsReplaced)
{
    const TempDir dir;
    dir.Write("data", std::string(10000, 'x'));
    CJOBXdata().WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("data"), "#\nUNITS=INCH\n#\nHDR \nLYR\n");
}

TEST(EdaWriter, NullFileWritesNothing)
{
    CJOBXdata data;
    FillWithEverything(data);
    const CJOBXdataNet& net = *data.m_arrNets.GetAt(0);
    const CJOBXdataPkg& package = *data.m_arrPkgs.GetAt(0);
    data.m_arrNets.WriteODBData(nullptr);
    net.WriteODBData(nullptr);
    net.m_arrSnts.WriteODBData(nullptr);
    net.m_arrSnts.GetAt(0)->WriteODBData(nullptr);
    net.m_arrSnts.GetAt(0)->m_arrNetObjs.WriteODBData(nullptr);
    net.m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0)->WriteODBData(nullptr);
    data.m_arrPkgs.WriteODBData(nullptr);
    package.WriteODBData(nullptr);
    package.m_arrOutlines.WriteODBData(nullptr);
    package.m_arrOutlines.GetAt(0)->WriteODBData(nullptr);
    package.m_arrPins.WriteODBData(nullptr);
    package.m_arrPins.GetAt(0)->WriteODBData(nullptr);
    EXPECT_EQ(WrittenFile(data), Golden("everything/golden/data"));
}

TEST(EdaWriter, EveryRecordAndListPrintsItsPart)
{
    CJOBXdata data;
    FillWithEverything(data);
    const std::string whole = Golden("everything/golden/data");
    const CJOBXdataNet& net = *data.m_arrNets.GetAt(0);
    const CJOBXdataPkg& package = *data.m_arrPkgs.GetAt(0);
    EXPECT_EQ(Printed(data.m_arrNets) + Printed(data.m_arrPkgs), whole.substr(whole.find("# NET 0")));
    EXPECT_EQ(Printed(net), "NET GND \n" + Printed(net.m_arrSnts));
    EXPECT_EQ(Printed(net.m_arrSnts), "SNT TOP T 12 3\nFID C 2 10\nSNT PLN S C 0.010000\nFID FGR -1 -1\nSNT VIA\n");
    EXPECT_EQ(Printed(*net.m_arrSnts.GetAt(0)), "SNT TOP T 12 3\nFID C 2 10\n");
    EXPECT_EQ(Printed(net.m_arrSnts.GetAt(0)->m_arrNetObjs), "FID C 2 10\n");
    EXPECT_EQ(Printed(*net.m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0)), "FID C 2 10\n");
    EXPECT_EQ(Printed(package), "PKG R0603 0.050000 -0.030000 -0.015000 0.030000 0.015000\n" +
                                    Printed(package.m_arrOutlines) + "PRP PACKAGE_NAME 'R 0603'\n" +
                                    Printed(package.m_arrPins));
    EXPECT_EQ(Printed(*package.m_arrOutlines.GetAt(0)), "CR 1.000000 2.000000 0.500000\n");
    EXPECT_EQ(Printed(package.m_arrPins), Printed(*package.m_arrPins.GetAt(0)));
    EXPECT_EQ(Printed(*package.m_arrPins.GetAt(0)), "PIN 1 S -0.020000 0.000000 0.800000 U S\nRC 0 0 1 1\n");
}

TEST(EdaWriter, SubnetFieldsDependOnTheKindAsItStands)
{
    CJOBXSnt subnet;
    subnet.m_sSide = "B";
    subnet.m_sKind = "TOP";
    EXPECT_EQ(Printed(subnet), "SNT TOP B -1 -1\n");
    subnet.m_sKind = "top";
    EXPECT_EQ(Printed(subnet), "SNT top\n");
    subnet.m_sKind = "PLN";
    EXPECT_EQ(Printed(subnet), "SNT PLN   0.000000\n");
    subnet.m_sKind = "";
    EXPECT_EQ(Printed(subnet), "SNT \n");
}

TEST(EdaWriter, ContourElementsArePrintedByTheirKind)
{
    CJOBXdataPkgObjContour contour;
    EXPECT_EQ(Printed(contour), "CT\nCE\n");
    AddElement(contour, "XY", {1, 2});
    AddElement(contour, "ob", {1, 2});
    EXPECT_EQ(Printed(contour), "CT\nXY\nob\nCE\n");
}

TEST(EdaWriter, AttributeTailHoldsThePropertiesWithAnAttributeNumber)
{
    struct Attribute
    {
        int number;
        int textNumber;
        const char* value;
    };
    const struct
    {
        std::vector<Attribute> attributes;
        const char* tail;
    } cases[] = {
        {{}, ""},
        {{{-1, 5, "x"}}, ""},
        {{{0, 5, "x"}}, " ; 0=5"},
        {{{0, -1, "x y"}}, " ; 0=x y"},
        {{{0, 5, "x"}, {-1, 1, "y"}, {2, -1, "z"}}, " ; 0=5, 2=z"},
        {{{0, -1, ""}}, " ; 0="},
        {{{0, -1, "x, ,"}}, " ; 0=x"},
        {{{-2, -3, ""}}, " ; -2=-3"},
    };
    for (const auto& c : cases)
    {
        CJOBXdataPkg package;
        package.m_sName = "P";
        for (const Attribute& attribute : c.attributes)
            AddAttribute(package, attribute.number, attribute.textNumber, attribute.value);
        EXPECT_EQ(Printed(package), std::string("PKG P 0.000000 0.000000 0.000000 0.000000 0.000000") + c.tail + "\n");
    }
}

TEST(EdaWriter, PlainOutlinesKeepKeywordAndParameters)
{
    CJOBXdataPkgObjArray outlines;
    AddOutline(outlines, "CR  0   .5 1e-3");
    AddOutline(outlines, "CT");
    AddOutline(outlines, "#note # PKG 5");
    AddOutline(outlines, "whatever ;x,y");
    EXPECT_EQ(Printed(outlines), "CR 0 .5 1e-3\nCT\n#note # PKG 5\nwhatever ;x,y\n");
}

TEST(EdaWriter, ShapeWhoseKeywordDoesNotFitIsLeftOut)
{
    CJOBXdataPkgObjCircle circle;
    circle.m_sKeyword = "RC";
    EXPECT_EQ(Printed(circle), "");
    circle.m_sKeyword = "XX";
    EXPECT_EQ(Printed(circle), "");
}

TEST(EdaRoundTrip, NumbersBecomePositions)
{
    const auto data = ReadEda("# NET 7\nNET A\nNET B\n# PKG 5\nPKG P 1 0 0 1 1\n");
    EXPECT_EQ(Described(WrittenFile(*data)),
              "header [HDR]\nlayers [LYR]\nnet 0 [A]\nnet 1 [B]\npackage 0 [P] 1 from 0,0 to 1,1\n");
}

TEST(EdaRoundTrip, PackageWithAttributesIsLostAndItsPinsGoToThePackageBefore)
{
    CJOBXdata data;
    for (const char* const name : {"P", "Q"})
    {
        CJOBXdataPkg& package = AddTo(data.m_arrPkgs);
        package.m_sName = name;
        AddTo(package.m_arrPins).m_sName = name;
    }
    AddAttribute(*data.m_arrPkgs.GetAt(1), 0, -1, "x");
    const auto again = ReadEda(WrittenFile(data));
    ASSERT_EQ(again->m_arrPkgs.GetSize(), 1);
    EXPECT_STREQ(again->m_arrPkgs.GetAt(0)->m_sName, "P");
    EXPECT_EQ(again->m_arrPkgs.GetAt(0)->m_arrPins.GetSize(), 2);
}

TEST(EdaRoundTrip, ReadPropertiesAreNotWrittenBack)
{
    const auto data = ReadEda("NET A\nPKG P 1 0 0 1 1\nPRP a b\nPIN 1 S 0 0 0 E S\nPRP c d\n");
    ASSERT_EQ(data->m_arrNets.GetAt(0)->m_arrProperties.GetSize(), 1);
    ASSERT_EQ(data->m_arrPkgs.GetAt(0)->m_arrProperties.GetSize(), 1);
    EXPECT_EQ(WrittenFile(*data).find("PRP"), std::string::npos);
}

TEST(EdaRoundTrip, FeatureGroupsComeBackAsFeatures)
{
    const auto data = ReadEda("NET A\nSNT TRC\nFGR 1 2\n");
    const auto again = ReadEda(WrittenFile(*data));
    const CJOBXdataNetObj& object = *again->m_arrNets.GetAt(0)->m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0);
    EXPECT_STREQ(object.m_sKind, "FGR");
    EXPECT_STREQ(object.m_sText, "");
    EXPECT_EQ(object.m_nLayerIndex, -1);
    EXPECT_EQ(object.m_nFeatureIndex, -1);
}

TEST(EdaRoundTrip, UnitsAndTablesAreNotReadBack)
{
    CJOBXdata data;
    data.m_sUnits = "MM";
    data.m_arrAttributeNames.Add(".n");
    data.m_arrAttributeTexts.Add("t");
    const auto again = ReadEda(WrittenFile(data));
    EXPECT_STREQ(again->m_sUnits, "INCH");
    EXPECT_EQ(again->m_arrAttributeNames.GetSize(), 0);
    EXPECT_EQ(again->m_arrAttributeTexts.GetSize(), 0);
}

TEST(EdaRoundTrip, EmptyHeaderAndLayersComeBackAsTheirKeywords)
{
    EXPECT_EQ(Described(WrittenFile(CJOBXdata())), "header [HDR]\nlayers [LYR]\n");
}

TEST(EdaRoundTrip, ShapesComeBackPlain)
{
    CJOBXdata data;
    CJOBXdataPkg& package = AddTo(data.m_arrPkgs);
    package.m_sName = "P";
    AddShape<CJOBXdataPkgObjCircle>(package.m_arrOutlines).SetRadius(0.5);
    AddElement(AddShape<CJOBXdataPkgObjContour>(package.m_arrOutlines), "OS", {1, 2});
    const auto again = ReadEda(WrittenFile(data));
    EXPECT_EQ(Printed(again->m_arrPkgs.GetAt(0)->m_arrOutlines), Printed(package.m_arrOutlines));
    EXPECT_EQ(again->m_arrPkgs.GetAt(0)->m_arrOutlines.GetSize(), 4);
}

TEST(EdaRoundTrip, WhatWasReadIsWrittenTheSameEveryTime)
{
    const auto data = ReadEda("HDR h\nLYR a b\n# NET 0\nNET A\nSNT TOP T 1 2\nFID C 0 1\nSNT PLN S C 0.5\nFGR x\n"
                              "# PKG 0\nPKG P 1.23456789 0 0 1 1\nCT\nOB 0 0 I\nOE\nCE\nPIN 1 S 0.1 0.2 0 E S ID=3\n"
                              "CR 0 0 .25\n");
    const std::string first = WrittenFile(*data);
    EXPECT_EQ(WrittenFile(*ReadEda(first)), first);
}
