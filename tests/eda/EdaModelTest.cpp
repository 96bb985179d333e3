#include "eda/CJOBXeda.h"
#include "eda/EdaText.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
CJOBXlayObjOX& AddElement(CJOBXlayObjOXArray& elements, const char* kind, CPointD point, CPointD center = {})
{
    CJOBXlayObjOX& element = AddTo(elements);
    element.SetKind(kind);
    element.SetPoint(point);
    element.SetCenterPoint(center);
    return element;
}

// A package with something in every member.
void Fill(CJOBXdataPkg& package)
{
    package.m_nNumber = 4;
    package.m_nFlag = 5;
    package.m_dPitch = 0.5;
    package.m_ptUpperRight.SetData(3, 4);
    package.m_ptLowerLeft.SetData(1, 2);
    package.m_sName = "QFP";
    AddTo(package.m_arrProperties).m_sName = "P";
    AddTo(package.m_arrAttributes).m_sName = "A";
    AddOutline(package.m_arrOutlines, "RC 0 0 1 1", 7);
    auto circle = std::make_unique<CJOBXdataPkgObjCircle>();
    circle->SetRadius(2);
    package.m_arrOutlines.Own(std::move(circle));
    CJOBXdataPkgPin& pin = AddTo(package.m_arrPins);
    pin.m_sName = "1";
    pin.m_nFlag = 6;
    pin.m_dHoleSize = 0.25;
    pin.m_ptCenter.SetData(5, 6);
    pin.m_sType = "S";
    pin.m_sElectricalType = "E";
    pin.m_sMountType = "M";
    AddOutline(pin.m_arrOutlines, "CR 0 0 1", 8);
}

std::string ConvertedBy(double factor, std::initializer_list<const char*> lines)
{
    CJOBXdataPkgObjArray outlines;
    for (const char* const line : lines)
        AddOutline(outlines, line);
    outlines.UnitConvert(factor);
    return Printed(outlines);
}
} // namespace

TEST(EdaModel, DefaultsAreSet)
{
    const CJOBXeda eda;
    ASSERT_NE(eda.m_pData, nullptr);
    EXPECT_STREQ(eda.m_pData->m_sUnits, "INCH");
    EXPECT_STREQ(eda.m_pData->m_sHeader, "");
    const CJOBXdataNet net{};
    EXPECT_EQ(net.m_nNumber, -1);
    EXPECT_EQ(net.m_nFlag, 0);
    const CJOBXSnt subnet{};
    EXPECT_EQ(subnet.m_nComponentNumber, -1);
    EXPECT_EQ(subnet.m_nToeprintNumber, -1);
    EXPECT_EQ(subnet.m_dFillSize, 0.0);
    EXPECT_EQ(subnet.m_ptPosition, CPointD());
    const CJOBXdataNetObj object{};
    EXPECT_EQ(object.m_nFeatureIndex, -1);
    EXPECT_EQ(object.m_nLayerIndex, -1);
    EXPECT_EQ(object.m_nLineNumber, 0);
    const CJOBXdataPkg package{};
    EXPECT_EQ(package.m_nNumber, -1);
    EXPECT_EQ(package.m_nFlag, 0);
    const CJOBXdataPkgPin pin{};
    EXPECT_EQ(pin.m_nFlag, 0);
    EXPECT_STREQ(pin.m_sElectricalType, "U");
    EXPECT_STREQ(pin.m_sMountType, "");
    EXPECT_STREQ(pin.m_sType, "");
    EXPECT_STREQ(pin.m_sName, "");
    EXPECT_EQ(CJOBXdataPkgObj().m_nLineNumber, 0);
}

TEST(EdaModel, OutlineSubclassesSetTheirKeyword)
{
    EXPECT_STREQ(CJOBXdataPkgObj().m_sKeyword, "");
    EXPECT_STREQ(CJOBXdataPkgObjCircle().m_sKeyword, "CR");
    EXPECT_STREQ(CJOBXdataPkgObjSquare().m_sKeyword, "SQ");
    EXPECT_STREQ(CJOBXdataPkgObjRectangle().m_sKeyword, "RC");
    EXPECT_STREQ(CJOBXdataPkgObjContour().m_sKeyword, "CT");
}

TEST(EdaModel, OutlineAccessorsSetWhatTheyName)
{
    CJOBXdataPkgObjCircle circle;
    circle.SetCenterPoint(1, 2);
    EXPECT_EQ(circle.GetCenterPt(), CPointD(1, 2));
    circle.SetCenterPt(CPointD(3, 4));
    circle.SetRadius(5);
    EXPECT_EQ(circle.GetCenterPt(), CPointD(3, 4));
    EXPECT_EQ(circle.GetRadius(), 5.0);
    CJOBXdataPkgObjRectangle rectangle;
    rectangle.SetLowerLeftPoint(1, 2);
    EXPECT_EQ(rectangle.GetLowerLeftPt(), CPointD(1, 2));
    rectangle.SetLowerLeftPt(CPointD(3, 4));
    rectangle.SetWidth(5);
    rectangle.SetHeight(6);
    EXPECT_EQ(rectangle.GetLowerLeftPt(), CPointD(3, 4));
    EXPECT_EQ(rectangle.GetWidth(), 5.0);
    EXPECT_EQ(rectangle.GetHeight(), 6.0);
    CJOBXdataPkgObjContour contour;
    EXPECT_EQ(contour.GetODBlayObjOXArray(), &contour.m_arrElements);
}

TEST(EdaModel, RecordsOfWhichABoardHasManyStaySmall)
{
    EXPECT_LE(sizeof(CJOBXdataNetObj), 40U) << "a board has millions of them";
    EXPECT_LE(sizeof(CJOBXSnt), 128U);
    EXPECT_LE(sizeof(CJOBXdataPkgObj), 48U);
    EXPECT_LE(sizeof(CJOBXdataPkgPin), 112U);
    EXPECT_LE(sizeof(CJOBXdataPkg), 184U);
    EXPECT_LE(sizeof(CJOBXdataNet), 80U);
}

TEST(EdaModel, CopiesComeFromNoLine)
{
    CJOBXdataPkg package;
    package.SetSourceLine(7);
    package.m_arrPins.Add(new CJOBXdataPkgPin);
    package.m_arrPins.GetAt(0)->SetSourceLine(8);
    const std::unique_ptr<CJOBXdataPkg> copy(package.clone());
    EXPECT_EQ(copy->GetSourceLine(), 0);
    EXPECT_EQ(copy->m_arrPins.GetAt(0)->GetSourceLine(), 0);
    EXPECT_TRUE(*copy == package) << "the line is no content";
    CJOBXdataPkg other;
    other.SetSourceLine(3);
    other = package;
    EXPECT_EQ(other.GetSourceLine(), 3);
    EXPECT_EQ(package.GetSourceLine(), 7);
}

TEST(EdaModel, RecordsWithoutACopyOperationCannotBeCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXeda>);
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXdata>);
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXdataNet>);
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXSnt>);
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXdataNetObj>);
    EXPECT_FALSE(std::is_copy_constructible_v<CJOBXdataPkgArray>);
    EXPECT_FALSE(std::is_copy_assignable_v<CJOBXdataNetArray>);
}

TEST(EdaModel, FindNetIdPassesOverTheFirstNet)
{
    const auto data = ReadEda("NET A\nNET B\nNET A\nNET C\nNET C\n");
    EXPECT_EQ(data->m_arrNets.FindNetID("B"), 1);
    EXPECT_EQ(data->m_arrNets.FindNetID("A"), 2);
    EXPECT_EQ(data->m_arrNets.FindNetID("C"), 3);
    EXPECT_EQ(data->m_arrNets.FindNetID("absent"), 0);
    EXPECT_EQ(data->m_arrNets.FindNetID("b"), 0);
    EXPECT_EQ(ReadEda("NET A\nNET B\n")->m_arrNets.FindNetID("A"), 0) << "as for a name that is absent";
    EXPECT_EQ(ReadEda("NET A\n")->m_arrNets.FindNetID("A"), 0);
    EXPECT_EQ(ReadEda("")->m_arrNets.FindNetID("A"), 0);
}

TEST(EdaModel, GetNetDataByNameFindsTheFirstMatch)
{
    const auto data = ReadEda("NET A\nNET B\nNET B\n");
    EXPECT_EQ(data->m_arrNets.GetNetData("A"), data->m_arrNets.GetAt(0));
    EXPECT_EQ(data->m_arrNets.GetNetData("B"), data->m_arrNets.GetAt(1));
    EXPECT_EQ(data->m_arrNets.GetNetData("b"), nullptr);
    EXPECT_EQ(ReadEda("")->m_arrNets.GetNetData("A"), nullptr);
}

TEST(EdaModel, NetNamesAreLookedUpWithUnderscoresForBlanks)
{
    const auto data = ReadEda("NET X\nNET A B\nNET A_B\n");
    EXPECT_EQ(data->m_arrNets.FindNetID("A B"), 2);
    EXPECT_EQ(data->m_arrNets.FindNetID("A_B"), 2);
    EXPECT_EQ(data->m_arrNets.GetNetData("A B"), data->m_arrNets.GetAt(2))
        << "the net named with a blank is never found";
    const auto blank = ReadEda("NET X\nNET A B\n");
    EXPECT_EQ(blank->m_arrNets.GetNetData("A B"), nullptr);
    EXPECT_EQ(blank->m_arrNets.FindNetID("A B"), 0);
}

TEST(EdaModel, GetNetDataByNumberFindsTheFirstMatch)
{
    const auto data = ReadEda("# NET 5\nNET A\n# NET 5\nNET B\nNET C\n");
    EXPECT_EQ(data->m_arrNets.GetNetData(5), data->m_arrNets.GetAt(0));
    EXPECT_EQ(data->m_arrNets.GetNetData(-1), data->m_arrNets.GetAt(2));
    EXPECT_EQ(data->m_arrNets.GetNetData(0), nullptr);
}

TEST(EdaModel, LayerIndexIsZeroForAnAbsentLayerToo)
{
    const auto data = ReadEda("LYR top Top bottom\n");
    EXPECT_EQ(data->GetLayerIndex("top"), 0);
    EXPECT_EQ(data->GetLayerIndex("Top"), 1);
    EXPECT_EQ(data->GetLayerIndex("bottom"), 2);
    EXPECT_EQ(data->GetLayerIndex("absent"), 0);
}

TEST(EdaModel, AttributeIndexIsMinusOneForAnAbsentText)
{
    CJOBXdata data;
    data.m_arrAttributeNames.Add(".n");
    data.m_arrAttributeNames.Add(".n2");
    data.m_arrAttributeTexts.Add("t");
    EXPECT_EQ(data.FindAttributeNameIndex(".n2"), 1);
    EXPECT_EQ(data.FindAttributeNameIndex("t"), -1);
    EXPECT_EQ(data.FindAttributeContentIndex("t"), 0);
    EXPECT_EQ(data.FindAttributeContentIndex("T"), -1);
}

TEST(EdaModel, HolesAreTheNetObjectsOfExactlyTheHoleKind)
{
    const auto data = ReadEda("NET A\nSNT TOP T 0 0\nFID H 0 1\nFID h 0 2\nFID HH 0 3\nFID C 0 4\nFID H 1 5\nFGR H\n");
    EXPECT_EQ(data->m_arrNets.GetAt(0)->m_arrSnts.GetAt(0)->m_arrNetObjs.nGetNumberOfHoles(), 2);
    EXPECT_EQ(CJOBXdataNetObjArray().nGetNumberOfHoles(), 0);
}

TEST(EdaModel, PinLocationOfAnAbsentPinIsFarAway)
{
    const auto data = ReadEda("PKG P 1 0 0 1 1\nPIN a S 1 2 0 E S\nPIN b S 3 4 0 E S\nPIN b S 5 6 0 E S\n");
    const CJOBXdataPkgPinArray& pins = data->m_arrPkgs.GetAt(0)->m_arrPins;
    EXPECT_EQ(pins.GetPkgPinLocation("b"), CPointD(3, 4));
    EXPECT_EQ(pins.GetPkgPinLocation("B"), CPointD(-1111.0, -1111.0));
    EXPECT_EQ(CJOBXdataPkgPinArray().GetPkgPinLocation("a"), CPointD(-1111.0, -1111.0));
}

TEST(EdaModel, SubnetIsFoundByKindSideComponentAndToeprint)
{
    const auto data = ReadEda("NET A\nSNT TRC\nSNT TOP T 1 2\nSNT TOP T 1 2\nSNT TOP B 1 2\n");
    const CJOBXSntArray& subnets = data->m_arrNets.GetAt(0)->m_arrSnts;
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TOP", "T", 1, 2), subnets.GetAt(1));
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TOP", "B", 1, 2), subnets.GetAt(3));
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TRC", "", -1, -1), subnets.GetAt(0));
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TOP", "T", 2, 2), nullptr);
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TOP", "T", 1, 1), nullptr);
    EXPECT_EQ(subnets.pGetODBSntWithProperty("top", "T", 1, 2), nullptr);
    EXPECT_EQ(subnets.pGetODBSntWithProperty("TOP", "t", 1, 2), nullptr);
}

TEST(EdaModel, SameSubnetIsLookedForBelowTheIndexOnly)
{
    const auto data = ReadEda("NET A\nSNT TOP T 1 2\nSNT TOP T 1 3\nSNT TOP T 1 2\n");
    const CJOBXSntArray& subnets = data->m_arrNets.GetAt(0)->m_arrSnts;
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(2, subnets.GetAt(2)), 1);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(1, subnets.GetAt(1)), 0);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(2, subnets.GetAt(1)), 1);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(0, subnets.GetAt(0)), 0);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(-5, subnets.GetAt(0)), 0);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(1000, subnets.GetAt(1)), 1);
    EXPECT_EQ(subnets.bCheckSameTopBeforeIndex(3, nullptr), 0);
}

TEST(EdaModel, SameNetObjectLeavesOutTheSecondText)
{
    CJOBXdataNetObj object;
    object.m_nFeatureIndex = 1;
    object.m_nLayerIndex = 2;
    object.m_nLineNumber = 3;
    object.m_sKind = "FGR";
    object.m_sText = "text";
    const std::unique_ptr<CJOBXdataNetObj> same(object.pGetSameODBdataNetObj());
    EXPECT_EQ(same->m_nFeatureIndex, 1);
    EXPECT_EQ(same->m_nLayerIndex, 2);
    EXPECT_EQ(same->m_nLineNumber, 3);
    EXPECT_STREQ(same->m_sKind, "FGR");
    EXPECT_STREQ(same->m_sText, "");
}

TEST(EdaModel, SameSubnetHasEveryMemberAndItsOwnNetObjects)
{
    CJOBXSnt subnet;
    subnet.m_nFlag = 1;
    subnet.m_nLineNumber = 2;
    subnet.m_dFillSize = 3.5;
    subnet.m_sCutoutType = "C";
    subnet.m_sFillType = "S";
    subnet.m_nToeprintNumber = 4;
    subnet.m_nComponentNumber = 5;
    subnet.m_sSide = "T";
    subnet.m_sKind = "TOP";
    subnet.m_ptPosition.SetData(6, 7);
    subnet.m_sText = "more";
    AddTo(subnet.m_arrNetObjs).m_sKind = "C";
    subnet.m_arrNetObjs.Add(nullptr);
    AddTo(subnet.m_arrNetObjs).m_sText = "left out";
    const std::unique_ptr<CJOBXSnt> same(subnet.pGetSameODBSnt());
    EXPECT_EQ(same->m_nFlag, 1);
    EXPECT_EQ(same->m_nLineNumber, 2);
    EXPECT_EQ(same->m_dFillSize, 3.5);
    EXPECT_STREQ(same->m_sCutoutType, "C");
    EXPECT_STREQ(same->m_sFillType, "S");
    EXPECT_EQ(same->m_nToeprintNumber, 4);
    EXPECT_EQ(same->m_nComponentNumber, 5);
    EXPECT_STREQ(same->m_sSide, "T");
    EXPECT_STREQ(same->m_sKind, "TOP");
    EXPECT_EQ(same->m_ptPosition, CPointD(6, 7));
    EXPECT_STREQ(same->m_sText, "more");
    ASSERT_EQ(same->m_arrNetObjs.GetSize(), 2);
    EXPECT_NE(same->m_arrNetObjs.GetAt(0), subnet.m_arrNetObjs.GetAt(0));
    EXPECT_STREQ(same->m_arrNetObjs.GetAt(0)->m_sKind, "C");
    EXPECT_STREQ(same->m_arrNetObjs.GetAt(1)->m_sText, "");
}

TEST(EdaModel, OutlinesAreEqualWhenLineKeywordAndParametersAre)
{
    CJOBXdataPkgObjArray outlines;
    const CJOBXdataPkgObj& one = AddOutline(outlines, "CR 1 2 3", 5);
    EXPECT_TRUE(one == AddOutline(outlines, "CR 1 2 3", 5));
    EXPECT_TRUE(one == one);
    EXPECT_FALSE(one == AddOutline(outlines, "CR 1 2 3", 6)) << "the same outline on another line is another outline";
    EXPECT_FALSE(one == AddOutline(outlines, "SQ 1 2 3", 5));
    EXPECT_FALSE(one == AddOutline(outlines, "cr 1 2 3", 5));
    EXPECT_FALSE(one == AddOutline(outlines, "CR 1 2", 5));
    EXPECT_FALSE(one == AddOutline(outlines, "CR 1 2 3 4", 5));
    EXPECT_FALSE(one == AddOutline(outlines, "CR 1 2 3.0", 5));
    EXPECT_TRUE(one != AddOutline(outlines, "CR 3 2 1", 5));
}

TEST(EdaModel, PackageInequalityIsAnOperationOfItsOwn)
{
    bool (CJOBXdataPkg::*const differs)(const CJOBXdataPkg&) const = &CJOBXdataPkg::operator!=;
    CJOBXdataPkg one;
    CJOBXdataPkg two;
    EXPECT_FALSE((one.*differs)(two));
    two.m_sName = "other";
    EXPECT_TRUE((one.*differs)(two));
    EXPECT_TRUE(one != two);
}

TEST(EdaModel, OutlineParametersAreAnOrdinaryListOfTexts)
{
    static_assert(std::is_same_v<decltype(CJOBXdataPkgObj::m_arrParameters), CStringArray>);
    const auto data = ReadEda("# PKG 0\nPKG P 0 0 0 0 0\nRC 1  2 3 4\n");
    CStringArray& parameters = data->m_arrPkgs.GetAt(0)->m_arrOutlines.GetAt(0)->m_arrParameters;
    ASSERT_EQ(parameters.GetUpperBound(), 3);
    parameters.SetAt(0, "a");
    parameters.InsertAt(1, "b");
    parameters.RemoveAt(2);
    parameters.ElementAt(2) = "c";
    CStringArray more;
    more.Add("d");
    parameters.Append(more);
    EXPECT_EQ(Printed(*data->m_arrPkgs.GetAt(0)->m_arrOutlines.GetAt(0)), "RC a b c 4 d\n");
    parameters.SetSize(1);
    EXPECT_EQ(parameters.GetSize(), 1);
    parameters.Copy(more);
    EXPECT_EQ(parameters, more);
}

TEST(EdaModel, OutlineListsCompareAtThePositionsOfTheSecond)
{
    CJOBXdataPkgObjArray shorter;
    CJOBXdataPkgObjArray longer;
    AddOutline(shorter, "CR 1");
    AddOutline(longer, "CR 1");
    AddOutline(longer, "CR 2");
    EXPECT_TRUE(longer == shorter);
    EXPECT_FALSE(shorter == longer);
    EXPECT_TRUE(longer == CJOBXdataPkgObjArray());
    EXPECT_FALSE(CJOBXdataPkgObjArray() == shorter);
}

TEST(EdaModel, PinListsCompareAtThePositionsOfTheSecond)
{
    CJOBXdataPkgPinArray shorter;
    CJOBXdataPkgPinArray longer;
    AddTo(shorter).m_sName = "1";
    AddTo(longer).m_sName = "1";
    AddTo(longer).m_sName = "2";
    EXPECT_TRUE(longer == shorter);
    EXPECT_FALSE(shorter == longer);
    EXPECT_TRUE(longer == CJOBXdataPkgPinArray());
}

TEST(EdaModel, EveryMemberOfAPinTakesPartInItsEquality)
{
    const auto changed = [](void (*change)(CJOBXdataPkgPin&))
    {
        CJOBXdataPkg package;
        Fill(package);
        const CJOBXdataPkgPin original(*package.m_arrPins.GetAt(0));
        CJOBXdataPkgPin copy(original);
        EXPECT_TRUE(copy == original);
        change(copy);
        return copy != original && original != copy;
    };
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_nFlag = 9; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_dHoleSize += 1e-12; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_ptCenter.y += 1e-12; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_sType = "s"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_sElectricalType = "e"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_sMountType = "m"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_sName = "2"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkgPin& pin) { pin.m_arrOutlines.GetAt(0)->m_sKeyword = "SQ"; }));
    EXPECT_FALSE(changed([](CJOBXdataPkgPin& pin) { AddOutline(pin.m_arrOutlines, "CR 1"); }))
        << "more outlines than the second operand has do not count";
}

TEST(EdaModel, EveryMemberOfAPackageTakesPartInItsEquality)
{
    const auto changed = [](void (*change)(CJOBXdataPkg&))
    {
        CJOBXdataPkg original;
        Fill(original);
        CJOBXdataPkg copy(original);
        EXPECT_TRUE(copy == original);
        change(copy);
        return copy != original && original != copy;
    };
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_nNumber = 9; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_nFlag = 9; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_dPitch += 1e-12; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_ptUpperRight.x += 1e-12; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_ptLowerLeft.x += 1e-12; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_sName = "qfp"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_arrProperties.GetAt(0)->m_sValue = "v"; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { AddTo(package.m_arrProperties); }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { AddTo(package.m_arrAttributes); }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_arrOutlines.GetAt(0)->m_nLineNumber = 9; }));
    EXPECT_TRUE(changed([](CJOBXdataPkg& package) { package.m_arrPins.GetAt(0)->m_sName = "2"; }));
}

TEST(EdaModel, PackageCopiesAreDeepAndKeepTheOutlinesClasses)
{
    CJOBXdataPkg original;
    Fill(original);
    const std::unique_ptr<CJOBXdataPkg> clone(original.clone());
    CJOBXdataPkg assigned;
    AddOutline(assigned.m_arrOutlines, "CR 9");
    assigned = original;
    assigned = static_cast<const CJOBXdataPkg&>(assigned);
    const CJOBXdataPkg* const copies[] = {clone.get(), &assigned};
    for (const CJOBXdataPkg* const copy : copies)
    {
        EXPECT_TRUE(*copy == original);
        EXPECT_TRUE(original == *copy);
        ASSERT_EQ(copy->m_arrOutlines.GetSize(), 2);
        EXPECT_NE(copy->m_arrOutlines.GetAt(0), original.m_arrOutlines.GetAt(0));
        EXPECT_NE(copy->m_arrPins.GetAt(0), original.m_arrPins.GetAt(0));
        EXPECT_NE(copy->m_arrProperties.GetAt(0), original.m_arrProperties.GetAt(0));
        const auto* const circle = dynamic_cast<const CJOBXdataPkgObjCircle*>(copy->m_arrOutlines.GetAt(1));
        ASSERT_NE(circle, nullptr);
        EXPECT_EQ(circle->GetRadius(), 2.0);
        EXPECT_EQ(Printed(*copy), Printed(original));
    }
}

TEST(EdaModel, CopiedListsLeaveNullEntriesOut)
{
    CJOBXdataPkg package;
    Fill(package);
    package.m_arrPins.InsertAt(0, static_cast<CJOBXdataPkgPin*>(nullptr));
    package.m_arrPins.GetAt(1)->m_arrOutlines.InsertAt(0, static_cast<CJOBXdataPkgObj*>(nullptr));
    const std::unique_ptr<CJOBXdataPkgPinArray> pins(package.m_arrPins.clone());
    ASSERT_EQ(pins->GetSize(), 1);
    EXPECT_EQ(pins->GetAt(0)->m_arrOutlines.GetSize(), 1);
    const std::unique_ptr<CJOBXdataPkgObjArray> outlines(package.m_arrOutlines.clone());
    EXPECT_EQ(outlines->GetSize(), 2);
}

TEST(EdaModel, NullEntriesAreHarmless)
{
    CJOBXdata data;
    data.m_arrNets.Add(nullptr);
    data.m_arrPkgs.Add(nullptr);
    CJOBXdataNet& net = AddTo(data.m_arrNets);
    net.m_sName = "A";
    net.m_arrSnts.Add(nullptr);
    AddTo(net.m_arrSnts).m_arrNetObjs.Add(nullptr);
    CJOBXdataPkg& package = AddTo(data.m_arrPkgs);
    package.m_arrPins.Add(nullptr);
    package.m_arrOutlines.Add(nullptr);
    package.m_arrProperties.Add(nullptr);
    package.m_arrAttributes.Add(nullptr);
    AddTo(package.m_arrPins).m_arrOutlines.Add(nullptr);
    EXPECT_EQ(data.m_arrNets.GetNetData("A"), &net);
    EXPECT_EQ(data.m_arrNets.GetNetData(3), nullptr);
    EXPECT_EQ(net.m_arrSnts.pGetODBSntWithProperty("x", "", 0, 0), nullptr);
    EXPECT_EQ(net.m_arrSnts.bCheckSameTopBeforeIndex(2, net.m_arrSnts.GetAt(1)), 1);
    EXPECT_EQ(net.m_arrSnts.GetAt(1)->m_arrNetObjs.nGetNumberOfHoles(), 0);
    EXPECT_EQ(package.m_arrPins.GetPkgPinLocation("x"), CPointD(-1111.0, -1111.0));
    data.UnitConvert(2.0);
    EXPECT_EQ(Printed(data.m_arrNets), "# NET 1\nNET A \nSNT \n") << "the position counts them";
    EXPECT_EQ(Printed(data.m_arrPkgs).substr(0, 11), "# PKG 1\nPKG") << "the position counts them";
    CJOBXdataPkgObjContour contour;
    contour.m_arrElements.Add(nullptr);
    AddElement(contour.m_arrElements, "OS", {1, 2}, {});
    contour.UnitConvert(2);
    EXPECT_EQ(contour.m_arrElements.GetAt(1)->GetPoint(), CPointD(2, 4));
}

TEST(EdaModel, CopiedSquareHasEveryMember)
{
    CJOBXdataPkgObjSquare square;
    square.m_nLineNumber = 7;
    square.m_ptCenter.SetData(1, 2);
    square.m_dHalfSide = 3;
    const std::unique_ptr<CJOBXdataPkgObjSquare> copy(square.clone());
    EXPECT_TRUE(*copy == square);
    EXPECT_EQ(copy->m_sKeyword, "SQ");
    EXPECT_EQ(copy->m_ptCenter, CPointD(1, 2));
    EXPECT_EQ(copy->m_dHalfSide, 3.0);
}

TEST(EdaModel, UnitChangeMultipliesTheLengthsOfPackagesAndPinsButNotTheHoles)
{
    const auto data = ReadEda("NET A\nSNT PLN S C 0.5\nPKG P 1 2 3 4 5\nPIN 1 S 6 7 8 E S\n");
    data->UnitConvert(25.4);
    const CJOBXdataPkg& package = *data->m_arrPkgs.GetAt(0);
    EXPECT_EQ(package.m_dPitch, 25.4);
    EXPECT_EQ(package.m_ptLowerLeft, CPointD(2 * 25.4, 3 * 25.4));
    EXPECT_EQ(package.m_ptUpperRight, CPointD(4 * 25.4, 5 * 25.4));
    EXPECT_EQ(package.m_arrPins.GetAt(0)->m_ptCenter, CPointD(6 * 25.4, 7 * 25.4));
    EXPECT_EQ(package.m_arrPins.GetAt(0)->m_dHoleSize, 8.0) << "the finished hole size stays";
    EXPECT_EQ(data->m_arrNets.GetAt(0)->m_arrSnts.GetAt(0)->m_dFillSize, 0.5) << "the plane fill size stays";
    EXPECT_STREQ(data->m_sUnits, "INCH") << "texts are not rewritten";
}

TEST(EdaModel, UnitChangeTurnsPlainShapesIntoGeometry)
{
    EXPECT_EQ(ConvertedBy(2, {"CR 1 2 3"}), "CR 2.000000 4.000000 6.000000\n");
    EXPECT_EQ(ConvertedBy(2, {"SQ 1 2 3"}), "SQ 2.000000 4.000000 6.000000\n");
    EXPECT_EQ(ConvertedBy(2, {"RC 1 2 3 -4e1"}), "RC 2.000000 4.000000 6.000000 -80.000000\n");
}

TEST(EdaModel, UnitChangeLeavesWhatIsNoShapePlainAndUnscaled)
{
    for (const char* const line : {"CR 1 2", "CR 1 2 3 4", "CR 1 2 x", "CR 1 2 3mm", "CR", "cr 1 2 3", "CR 1 2 inf",
                                   "CR 1 nan 2", "CR 1 2 1e999", "RC 1 2 3", "RC 1 2 3 4 5", "SQ 1 2 3 4", "XX 1 2 3",
                                   "OS 1 2", "OB 1 2 I", "OC 1 2 3 4 Y", "OE", "CE"})
        EXPECT_EQ(ConvertedBy(2, {line}), std::string(line) + "\n");
    CJOBXdataPkgObjArray outlines;
    CJOBXdataPkgObj& circle = AddTo(outlines);
    circle.m_sKeyword = "CR";
    for (const char* const parameter : {"1", "", "3"})
        circle.m_arrParameters.Add(parameter);
    outlines.UnitConvert(2);
    EXPECT_EQ(Printed(outlines), "CR 1  3\n");
}

TEST(EdaModel, UnitChangeTurnsARunIntoOneContour)
{
    EXPECT_EQ(ConvertedBy(2, {"CR 1 1 1", "CT", "OB 1 2 I", "OS 3 4", "OC 5 6 7 8 Y", "OE", "CE", "SQ 1 1 1"}),
              "CR 2.000000 2.000000 2.000000\nCT\nOB 2.000000 4.000000 I\nOS 6.000000 8.000000\n"
              "OC 10.000000 12.000000 14.000000 16.000000 Y\nOE\nCE\nSQ 2.000000 2.000000 2.000000\n");
    EXPECT_EQ(ConvertedBy(2, {"CT", "CE", "CT", "OB 1 1 H", "OE", "CE"}),
              "CT\nCE\nCT\nOB 2.000000 2.000000 H\nOE\nCE\n");
}

TEST(EdaModel, UnitChangeLeavesABrokenRunPlainAndUnscaled)
{
    const std::initializer_list<const char*> broken[] = {
        {"CT"},
        {"CT", "OB 1 2 I", "OS 3 4", "OE"},
        {"CT", "OB 1 2", "OE", "CE"},
        {"CT", "OB 1 2 I x", "OE", "CE"},
        {"CT", "OB 1 2 I", "OS 3", "OE", "CE"},
        {"CT", "OB 1 2 I", "OS 3 4 5", "OE", "CE"},
        {"CT", "OB 1 2 I", "OS 3 y", "OE", "CE"},
        {"CT", "OB 1 2 I", "OC 3 4 5 6", "OE", "CE"},
        {"CT", "OB 1 2 I", "OE 1", "CE"},
        {"CT", "OB 1 2 I", "XX", "OE", "CE"},
        {"CT", "OB 1 2 I", "OE", "CE 1"},
        {"CT 1", "OB 1 2 I", "OE", "CE"},
        {"ct", "OB 1 2 I", "OE", "CE"},
        {"OB 1 2 I", "OE", "CE"},
    };
    for (const auto& lines : broken)
    {
        std::string text;
        for (const char* const line : lines)
            text += std::string(line) + "\n";
        EXPECT_EQ(ConvertedBy(2, lines), text);
    }
}

TEST(EdaModel, UnitChangeFindsARunBehindABrokenOne)
{
    EXPECT_EQ(ConvertedBy(2, {"CT", "OB 1 2 I", "CT", "OB 1 2 I", "CE", "CE"}),
              "CT\nOB 1 2 I\nCT\nOB 2.000000 4.000000 I\nCE\nCE\n");
    EXPECT_EQ(ConvertedBy(2, {"CT", "CR 1 1 1", "CE"}), "CT\nCR 2.000000 2.000000 2.000000\nCE\n");
}

TEST(EdaModel, GeometryKeepsLineNumberParametersAndPlace)
{
    CJOBXdataPkgObjArray outlines;
    AddOutline(outlines, "XX 1", 3);
    AddOutline(outlines, "CT", 4);
    AddOutline(outlines, "OB 1 2 I", 5);
    AddOutline(outlines, "OC 1 2 3 4 N", 6);
    AddOutline(outlines, "CE", 7);
    AddOutline(outlines, "CR 1 2 3", 8);
    outlines.vMakeGeometry();
    EXPECT_EQ(Describe(outlines), "@3 [XX] [1]\n@4 [CT]\n@8 [CR] [1] [2] [3]\n");
    const auto* const contour = dynamic_cast<const CJOBXdataPkgObjContour*>(outlines.GetAt(1));
    ASSERT_NE(contour, nullptr);
    ASSERT_EQ(contour->GetODBlayObjOXArray()->GetSize(), 2);
    const CJOBXlayObjOX& begin = *contour->m_arrElements.GetAt(0);
    EXPECT_STREQ(begin.GetKind(), "OB");
    EXPECT_EQ(begin.GetPoint(), CPointD(1, 2));
    EXPECT_STREQ(begin.GetPolygonType(), "I");
    EXPECT_EQ(begin.GetLineNumber(), 5);
    const CJOBXlayObjOX& curve = *contour->m_arrElements.GetAt(1);
    EXPECT_STREQ(curve.GetKind(), "OC");
    EXPECT_EQ(curve.GetCenterPoint(), CPointD(3, 4));
    EXPECT_STREQ(curve.GetClockwise(), "N");
    const auto* const circle = dynamic_cast<const CJOBXdataPkgObjCircle*>(outlines.GetAt(2));
    ASSERT_NE(circle, nullptr);
    EXPECT_EQ(circle->GetCenterPt(), CPointD(1, 2));
}

TEST(EdaModel, SecondUnitChangeScalesTheGeometryOfTheFirst)
{
    CJOBXdataPkgObjArray outlines;
    AddOutline(outlines, "CR 1 2 3");
    AddOutline(outlines, "CT");
    AddOutline(outlines, "OB 1 2 I");
    AddOutline(outlines, "CE");
    outlines.UnitConvert(2);
    outlines.UnitConvert(3);
    EXPECT_EQ(Printed(outlines), "CR 6.000000 12.000000 18.000000\nCT\nOB 6.000000 12.000000 I\nCE\n");
}

TEST(EdaModel, UnitChangeOfAnOutlineGoesByItsKeyword)
{
    CJOBXdataPkgObjCircle circle;
    circle.SetCenterPoint(1, 2);
    circle.SetRadius(3);
    CJOBXdataPkgObj& record = circle;
    record.UnitConvert(2);
    EXPECT_EQ(circle.GetRadius(), 6.0);
    circle.m_sKeyword = "RC";
    record.UnitConvert(2);
    EXPECT_EQ(circle.GetRadius(), 6.0) << "a keyword that does not fit the class converts nothing";
    circle.m_sKeyword = "XX";
    record.UnitConvert(2);
    EXPECT_EQ(circle.GetCenterPt(), CPointD(2, 4));
    CJOBXdataPkgObjArray outlines;
    CJOBXdataPkgObj& plain = AddOutline(outlines, "CR 1 2 3");
    plain.UnitConvert(2);
    EXPECT_EQ(Printed(plain), "CR 1 2 3\n") << "one plain record alone has no geometry";
}

TEST(EdaModel, UnitChangeConvertsTheGeometryOfEverySubclass)
{
    CJOBXdataPkgObjArray outlines;
    auto square = std::make_unique<CJOBXdataPkgObjSquare>();
    square->m_ptCenter.SetData(1, 2);
    square->m_dHalfSide = 3;
    outlines.Own(std::move(square));
    auto rectangle = std::make_unique<CJOBXdataPkgObjRectangle>();
    rectangle->SetLowerLeftPoint(1, 2);
    rectangle->SetWidth(3);
    rectangle->SetHeight(4);
    outlines.Own(std::move(rectangle));
    auto contour = std::make_unique<CJOBXdataPkgObjContour>();
    AddElement(contour->m_arrElements, "OC", {1, 2}, {3, 4}).SetClockwise("Y");
    outlines.Own(std::move(contour));
    outlines.UnitConvert(2);
    EXPECT_EQ(Printed(outlines), "SQ 2.000000 4.000000 6.000000\nRC 2.000000 4.000000 6.000000 8.000000\n"
                                 "CT\nOC 2.000000 4.000000 6.000000 8.000000 Y\nCE\n");
}

TEST(EdaModel, FactorOfAUnitChangeMayBeAMemberOfWhatIsConverted)
{
    CJOBXdataPkg package;
    Fill(package);
    package.m_ptLowerLeft.SetData(3, 3);
    package.m_dPitch = 2;
    package.UnitConvert(package.m_dPitch);
    EXPECT_EQ(package.m_dPitch, 4.0);
    EXPECT_EQ(package.m_ptLowerLeft, CPointD(6, 6));
    EXPECT_EQ(package.m_arrPins.GetAt(0)->m_ptCenter, CPointD(10, 12));
    CJOBXdataPkgObjCircle circle;
    circle.SetCenterPoint(2, 5);
    circle.SetRadius(7);
    circle.UnitConvert(circle.m_ptCenter.x);
    EXPECT_EQ(circle.GetCenterPt(), CPointD(4, 10));
    EXPECT_EQ(circle.GetRadius(), 14.0);
}

TEST(EdaModel, CopiedContourHasItsOwnElements)
{
    CJOBXdataPkgObjContour contour;
    AddElement(contour.m_arrElements, "OS", {1, 2});
    const CJOBXdataPkgObj& record = contour;
    const std::unique_ptr<CJOBXdataPkgObj> clone(record.clone());
    contour.UnitConvert(5);
    EXPECT_EQ(Printed(*clone), "CT\nOS 1.000000 2.000000\nCE\n");
    EXPECT_EQ(Printed(contour), "CT\nOS 5.000000 10.000000\nCE\n");
}

namespace
{
// Changes the unit of these lines with one allocation after the other refused, until none is; expects all of them
// afterwards. Returns how many were refused.
long ConvertWithRefusedMemory(const std::vector<const char*>& lines, const std::string& wanted)
{
    for (long refused = 0;; ++refused)
    {
        CJOBXdataPkgObjArray outlines;
        for (const char* const line : lines)
            AddOutline(outlines, line);
        bool done = false;
        try
        {
            FailingAllocation allocation(refused);
            outlines.UnitConvert(2);
            done = true;
            EXPECT_FALSE(allocation.HasFailed()) << "a failure was swallowed";
        }
        catch (CMemoryException* exception)
        {
            exception->Delete();
            outlines.UnitConvert(2); // nothing was scaled yet
        }
        EXPECT_EQ(Printed(outlines), wanted) << refused;
        if (done || testing::Test::HasFailure())
            return refused;
    }
}
} // namespace

// Records share chunks, and memory is refused where a chunk is begun. With more and more records before the outlines
// that happens at each of them.
TEST(EdaModel, UnitChangeThatRanOutOfMemoryLosesNothing)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    std::vector<const char*> lines;
    std::string wanted;
    for (int i = 0; i < (kRecordsHaveOwnBlocks ? 1 : 30); ++i)
    {
        const std::initializer_list<const char*> some = {"CR 1 2 3", "CT", "OB 1 2 I", "OE",
                                                         "CE",       "CT", "OB x",     "SQ 1 2 3"};
        lines.insert(lines.end(), some);
        wanted += ConvertedBy(2, some);
    }
    std::vector<std::unique_ptr<CJOBXlayObjOX>> others;
    long refused = 0;
    for (int i = 0; i < (kRecordsHaveOwnBlocks ? 1 : 100); ++i)
    {
        refused += ConvertWithRefusedMemory(lines, wanted);
        others.push_back(std::make_unique<CJOBXlayObjOX>());
    }
    EXPECT_GT(refused, kRecordsHaveOwnBlocks ? 4 : 100);
}
