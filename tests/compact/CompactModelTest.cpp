// Copies and rescaling of every class of the compact model.
#include "compact/CompactMembers.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
using namespace testing;

using Rescalable = Types<CODBlayObj, CODBlayObjLine, CODBlayObjPad, CODBlayObjArc, CODBlayObjText, CODBlayObjBarcode,
                         CODBlayObjSurface, CODBlayObjArray, CODBlayObjOX, CODBlayObjOXArray, CODBlayObjSurfaceOB,
                         CODBlayObjSurfaceOBArray, CODBcmp, CODBcmpArray, CODBcmpToe, CODBcmpToeArray, CODBcomponents,
                         CODBdata, CODBdataPkg, CODBdataPkgArray, CODBdataPkgObj, CODBdataPkgObjCircle,
                         CODBdataPkgObjSquare, CODBdataPkgObjRectangle, CODBdataPkgObjContour, CODBdataPkgObjArray,
                         CODBdataPkgPin, CODBdataPkgPinArray, CODBnet, CODBnetArray, CODBnetPt, CODBnetPtArray,
                         CODBnetlist, CODBstepRepeat, CODBstepRepeatArray, CODBstephdr, CODBstephdrArray>;
using OthersCopyable = Types<CODB, CODBSnt, CODBSntArray, CODBSpecialSymbol, CODBSpecialSymbolArray, CODBdataNet,
                             CODBdataNetArray, CODBdataNetObj, CODBdataNetObjArray, CODBlayer, CODBlayerArray,
                             CODBmatrix, CODBmatrixLayer, CODBmatrixLayerArray, CODBsysAttrData, CODBsysAttrDataArray>;

std::vector<double> Times(std::vector<double> lengths, double factor)
{
    for (double& length : lengths)
        length *= factor;
    return lengths;
}

template <class T>
class CompactModelRescale : public Test
{
};
TYPED_TEST_SUITE(CompactModelRescale, Rescalable);

template <class T>
class CompactModelCopy : public Test
{
};
TYPED_TEST_SUITE(CompactModelCopy, Rescalable);

template <class T>
class CompactModelCopyOnly : public Test
{
};
TYPED_TEST_SUITE(CompactModelCopyOnly, OthersCopyable);

// Whatever happens to the source afterwards, the copy stays as it was.
template <class T>
void ExpectOwnMembers(std::unique_ptr<T> source, T& copy, const Members& before)
{
    EXPECT_EQ(MembersOf(copy), before);
    Fill(*source, 100000);
    EXPECT_NE(MembersOf(*source), before);
    EXPECT_EQ(MembersOf(copy), before);
    source.reset();
    EXPECT_EQ(MembersOf(copy), before);
}

template <class T>
void ExpectDeepCopyConstruction()
{
    auto source = std::make_unique<T>();
    Fill(*source);
    const Members before = MembersOf(*source);
    T copy(*source);
    ExpectOwnMembers(std::move(source), copy, before);
}

template <class T>
void ExpectDeepAssignment()
{
    auto source = std::make_unique<T>();
    Fill(*source);
    const Members before = MembersOf(*source);
    T copy;
    Fill(copy, 50000);
    T& answer = copy = *source;
    EXPECT_EQ(&answer, &copy);
    ExpectOwnMembers(std::move(source), copy, before);
}

template <class T>
void ExpectDeepClone()
{
    auto source = std::make_unique<T>();
    Fill(*source);
    const Members before = MembersOf(*source);
    const std::unique_ptr<T> copy(source->clone());
    EXPECT_EQ(typeid(*copy), typeid(T));
    ExpectOwnMembers(std::move(source), *copy, before);
}

template <class T>
void ExpectSelfAssignmentKeepsAll()
{
    T object;
    Fill(object);
    const Members before = MembersOf(object);
    const T& same = object;
    object = same;
    EXPECT_EQ(MembersOf(object), before);
}
} // namespace

TYPED_TEST(CompactModelRescale, MultipliesEveryLengthAndNothingElse)
{
    TypeParam object;
    Fill(object);
    const Members before = MembersOf(object);
    object.vRescale(0.5);
    const Members after = MembersOf(object);
    EXPECT_EQ(after.lengths, Times(before.lengths, 0.5));
    EXPECT_EQ(after.others, before.others);
}

TYPED_TEST(CompactModelCopy, CopyConstructionIsDeep)
{
    ExpectDeepCopyConstruction<TypeParam>();
}

TYPED_TEST(CompactModelCopy, AssignmentReplacesAllAndIsDeep)
{
    ExpectDeepAssignment<TypeParam>();
}

TYPED_TEST(CompactModelCopy, CloneIsDeepAndKeepsTheClass)
{
    ExpectDeepClone<TypeParam>();
}

TYPED_TEST(CompactModelCopy, SelfAssignmentKeepsAll)
{
    ExpectSelfAssignmentKeepsAll<TypeParam>();
}

TYPED_TEST(CompactModelCopyOnly, CopyConstructionIsDeep)
{
    ExpectDeepCopyConstruction<TypeParam>();
}

TYPED_TEST(CompactModelCopyOnly, AssignmentReplacesAllAndIsDeep)
{
    ExpectDeepAssignment<TypeParam>();
}

TYPED_TEST(CompactModelCopyOnly, CloneIsDeepAndKeepsTheClass)
{
    ExpectDeepClone<TypeParam>();
}

TYPED_TEST(CompactModelCopyOnly, SelfAssignmentKeepsAll)
{
    ExpectSelfAssignmentKeepsAll<TypeParam>();
}

TEST(CompactModel, PointsToTheLengthsOfTheTable)
{
    // What the walk above takes for a length, for some classes once more by hand.
    CODBdataPkgPin pin;
    pin.m_dHoleSize = 3.0;
    pin.m_ptCenter.SetData(1.0, 2.0);
    pin.vRescale(10.0);
    EXPECT_EQ(pin.m_dHoleSize, 3.0);
    EXPECT_EQ(pin.m_ptCenter, CPointD(10.0, 20.0));

    CODBnetPt point;
    point.m_dStaggeredRadius = 3.0;
    point.m_dRadius = 4.0;
    point.m_ptStaggeredPosition.SetData(5.0, 6.0);
    point.vRescale(10.0);
    EXPECT_EQ(point.m_dStaggeredRadius, 3.0);
    EXPECT_EQ(point.m_dRadius, 40.0);
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(50.0, 60.0));

    CODBlayObjPad pad;
    pad.m_dResizeFactor = 3.0;
    pad.m_dAngle = 30.0;
    pad.m_ptCenter.SetData(1.0, 2.0);
    pad.vRescale(10.0);
    EXPECT_EQ(pad.m_dResizeFactor, 3.0);
    EXPECT_EQ(pad.m_dAngle, 30.0);
    EXPECT_EQ(pad.m_ptCenter, CPointD(10.0, 20.0));

    CODBlayObjText text;
    text.m_dWidthFactor = 3.0;
    text.m_ptSize.SetData(1.0, 2.0);
    text.vRescale(10.0);
    EXPECT_EQ(text.m_dWidthFactor, 30.0);
    EXPECT_EQ(text.m_ptSize, CPointD(10.0, 20.0));
}

TEST(CompactModel, OnlyTheseLengthsAreLeftByAUnitChange)
{
    // The walk above believes the lists of fields; these are the lengths that stay on purpose.
    std::vector<std::string> left;
    const auto look = [&]<class... Records>(std::tuple<Records...>*)
    {
        const auto lookAt = [&]<class Record>(Record*)
        {
            jobx::ForEachField<Record>(
                [&](auto field)
                {
                    if (field.kField.isLeftByUnitChange)
                        left.push_back(std::string(jobx::Fields<Record>::kName.key) + "." +
                                       std::string(field.kField.key));
                });
        };
        (lookAt(static_cast<Records*>(nullptr)), ...);
    };
    look(static_cast<std::tuple<CJOBXlayObjOX, CJOBXlayObjLine, CJOBXlayObjPad, CJOBXlayObjArc, CJOBXlayObjText,
                                CJOBXlayObjBarcode, CJOBXlayObjSurface, CJOBXlayObj, CJOBXlayer, CJOBXtoolData,
                                CJOBXtool, CJOBXfonts, CJOBXfontsStandardObj, CJOBXcmp, CJOBXcmpTop, CJOBXSnt,
                                CJOBXdataPkg, CJOBXdataPkgPin, CJOBXdataPkgObjCircle, CJOBXdataPkgObjSquare,
                                CJOBXdataPkgObjRectangle, CJOBXnetPt, CJOBXstepRepeat, CJOBXstephdr>*>(nullptr));
    EXPECT_EQ(left, (std::vector<std::string>{"stroke.width", "subnet.fillSize", "subnet.point", "pin.finishedHoleSize",
                                              "testPoint.staggeredRadius"}));
}

TEST(CompactModel, LayerRescalesByItsOwnFactor)
{
    CODBlayer layer;
    Fill(layer);
    layer.m_dRescaleFactor = 4.0;
    const Members before = MembersOf(layer);
    layer.vRescale();
    const Members after = MembersOf(layer);
    EXPECT_FALSE(before.lengths.empty());
    EXPECT_EQ(after.lengths, Times(before.lengths, 4.0));
    EXPECT_EQ(after.others, before.others);
}

TEST(CompactModel, RescalesByTheClassWhateverTheTypeTextSays)
{
    CODBlayObjArray features;
    auto* const line = new CODBlayObjLine;
    features.Add(line);
    line->m_sType = "S";
    line->m_ptEnd.SetData(1.0, 2.0);
    auto* const plain = new CODBlayObj;
    features.Add(plain);
    plain->m_sType = "L";
    features.vRescale(2.0);
    EXPECT_EQ(line->m_ptEnd, CPointD(2.0, 4.0));
}

TEST(CompactModel, SubclassesSetTheirTypeAndKeyword)
{
    EXPECT_EQ(CODBlayObj().m_sType, "");
    EXPECT_EQ(CODBlayObjLine().m_sType, "L");
    EXPECT_EQ(CODBlayObjPad().m_sType, "P");
    EXPECT_EQ(CODBlayObjArc().m_sType, "A");
    EXPECT_EQ(CODBlayObjText().m_sType, "T");
    EXPECT_EQ(CODBlayObjBarcode().m_sType, "B");
    EXPECT_EQ(CODBlayObjSurface().m_sType, "S");
    EXPECT_EQ(CODBdataPkgObj().m_sKeyword, "");
    EXPECT_EQ(CODBdataPkgObjCircle().m_sKeyword, "CR");
    EXPECT_EQ(CODBdataPkgObjSquare().m_sKeyword, "SQ");
    EXPECT_EQ(CODBdataPkgObjRectangle().m_sKeyword, "RC");
    EXPECT_EQ(CODBdataPkgObjContour().m_sKeyword, "CT");
}

TEST(CompactModel, StartsInInchWithFactorOne)
{
    EXPECT_EQ(CODBlayer().m_sUnits, "INCH");
    EXPECT_EQ(CODBlayer().m_dRescaleFactor, 1.0);
    EXPECT_EQ(CODBcomponents().m_sUnits, "INCH");
    EXPECT_EQ(CODBcomponents().m_dRescaleFactor, 1.0);
    EXPECT_EQ(CODBdata().m_sUnits, "INCH");
    EXPECT_EQ(CODBdata().m_dRescaleFactor, 1.0);
    EXPECT_EQ(CODBSpecialSymbol().m_sUnits, "INCH");
    EXPECT_EQ(CODBSpecialSymbol().m_dRescaleFactor, 1.0);
    EXPECT_EQ(CODBnetArray().m_sUnits, "INCH");
}

TEST(CompactModel, CopiesLeaveNullEntriesOut)
{
    CODBnetArray nets;
    nets.Add(nullptr);
    nets.Add(new CODBnet);
    nets.GetAt(1)->m_sName = "GND";
    nets.Add(nullptr);
    const CODBnetArray copy(nets);
    ASSERT_EQ(copy.GetSize(), 1);
    EXPECT_EQ(copy.GetAt(0)->m_sName, "GND");
    EXPECT_EQ(nets.GetSize(), 3);
}

TEST(CompactModel, RescalingPassesNullEntriesOver)
{
    CODBnetArray nets;
    nets.Add(nullptr);
    nets.Add(new CODBnet);
    nets.GetAt(1)->m_arrPts.Add(nullptr);
    nets.GetAt(1)->m_arrPts.Add(new CODBnetPt);
    nets.GetAt(1)->m_arrPts.GetAt(1)->m_ptPosition.SetData(1.0, 2.0);
    nets.vRescale(2.0);
    EXPECT_EQ(nets.GetAt(1)->m_arrPts.GetAt(1)->m_ptPosition, CPointD(2.0, 4.0));
}

TEST(CompactModel, NetIsFoundByItsExactName)
{
    CODBnetArray nets;
    EXPECT_EQ(nets.pGetODBnetWithName("GND"), nullptr);
    nets.Add(nullptr);
    for (const char* const name : {"gnd", "GND", "GND", ""})
    {
        nets.Add(new CODBnet);
        nets.GetLastElement()->m_sName = name;
    }
    EXPECT_EQ(nets.pGetODBnetWithName("GND"), nets.GetAt(2));
    EXPECT_EQ(nets.pGetODBnetWithName("gnd"), nets.GetAt(1));
    EXPECT_EQ(nets.pGetODBnetWithName(""), nets.GetAt(4));
    EXPECT_EQ(nets.pGetODBnetWithName("GN"), nullptr);
}

TEST(CompactModel, NetPointIsFoundAtItsExactPosition)
{
    CODBnetPtArray points;
    CPointD where(1.0, 2.0);
    EXPECT_EQ(points.pGetODBnetPtWithPt(where), nullptr);
    points.Add(nullptr);
    for (const double x : {1.0 + 1e-15, 1.0, 1.0})
    {
        points.Add(new CODBnetPt);
        points.GetLastElement()->m_ptPosition.SetData(x, 2.0);
    }
    EXPECT_EQ(points.pGetODBnetPtWithPt(where), points.GetAt(2));
    where.SetY(2.5);
    EXPECT_EQ(points.pGetODBnetPtWithPt(where), nullptr);
}

TEST(CompactModel, NetPointIsComparedByTheGivenPointsOwnEquality)
{
    struct Near : CPointD
    {
        using CPointD::CPointD;
        bool operator==(const CPointD& other) const override { return std::abs(GetX() - other.GetX()) < 0.1; }
    };
    CODBnetPtArray points;
    points.Add(new CODBnetPt);
    points.GetAt(0)->m_ptPosition.SetData(1.05, 7.0);
    Near where(1.0, 2.0);
    EXPECT_EQ(points.pGetODBnetPtWithPt(where), points.GetAt(0));
}
