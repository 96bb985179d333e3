#include "foundation/corekit/CPointD.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace
{
struct SignedPoint : CPointD
{
    using CPointD::CPointD;
    bool operator==(const CPointD& other) const override { return x == -other.x && y == -other.y; }
};
} // namespace

TEST(PointD, Constructor_StartsAtTheOrigin)
{
    const CPointD point;
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
}

TEST(PointD, Init_GoesBackToTheOrigin)
{
    CPointD point(3, 4);
    point.Init();
    EXPECT_TRUE(point == CPointD());
}

TEST(PointD, Accessors_GiveWhatWasSetByValueAndByReference)
{
    CPointD point;
    point.SetData(1, 2);
    point.SetX(3);
    EXPECT_EQ(point.GetX(), 3.0);
    point.SetY(4);
    double x = 0.0;
    double y = 0.0;
    point.GetX(x);
    point.GetY(y);
    EXPECT_EQ(x, 3.0);
    EXPECT_EQ(y, 4.0);
    EXPECT_EQ(point.GetY(), 4.0);
}

TEST(PointD, UnitConvert_MultipliesBothCoordinates)
{
    CPointD point(1, 2);
    point.UnitConvert(25.4);
    EXPECT_EQ(point.x, 25.4);
    EXPECT_EQ(point.y, 50.8);
}

TEST(PointD, ReScale_ByOneChangesNothing)
{
    CPointD point(0.1, -7.3);
    point.ReScale(1);
    EXPECT_TRUE(point == CPointD(0.1, -7.3));
}

TEST(PointD, ReScale_TakesOneFactorForEachCoordinate)
{
    CPointD point(3, 5);
    point.ReScale(2, 10);
    EXPECT_TRUE(point == CPointD(6, 50));
}

TEST(PointD, ReScale_ByAnOwnCoordinateUsesItsFormerValue)
{
    CPointD point(3, 5);
    point.ReScale(point.x);
    EXPECT_TRUE(point == CPointD(9, 15));
}

TEST(PointD, Rotate_TurnsCounterClockwise)
{
    CPointD point(2, 0);
    point.Rotate(30);
    EXPECT_NEAR(point.x, std::sqrt(3.0), 1e-15);
    EXPECT_NEAR(point.y, 1.0, 1e-15);
}

TEST(PointD, Rotate_ByQuarterTurnsIsExact)
{
    const struct
    {
        double angle;
        CPointD expected;
    } kCases[] = {{0, {1, 2}},      {90, {-2, 1}},   {180, {-1, -2}}, {270, {2, -1}}, {360, {1, 2}},  {-90, {2, -1}},
                  {-180, {-1, -2}}, {-270, {-2, 1}}, {-360, {1, 2}},  {450, {-2, 1}}, {-450, {2, -1}}};
    for (const auto& testCase : kCases)
    {
        CPointD point(1, 2);
        point.Rotate(testCase.angle);
        EXPECT_TRUE(point == testCase.expected) << testCase.angle;
    }
}

TEST(PointD, Rotate_ByOwnCoordinateUsesItsFormerValue)
{
    CPointD point(90, 0);
    point.Rotate(point.x);
    EXPECT_TRUE(point == CPointD(0, 90));
}

TEST(PointD, Equality_IsExact)
{
    EXPECT_TRUE(CPointD(1, 2) == CPointD(1, 2));
    EXPECT_FALSE(CPointD(1, 2) == CPointD(std::nextafter(1.0, 2.0), 2));
    EXPECT_FALSE(CPointD(1, 2) == CPointD(1, std::nextafter(2.0, 1.0)));
    EXPECT_TRUE(CPointD(1, 2) != CPointD(2, 1));
}

TEST(PointD, Equality_HoldsForTheSameObjectEvenWithNan)
{
    const CPointD point(std::numeric_limits<double>::quiet_NaN(), 0);
    const CPointD copy(point);
    EXPECT_TRUE(point == point); // NOLINT(misc-redundant-expression): the very same object is meant
    EXPECT_FALSE(point == copy);
}

TEST(PointD, Equality_IsVirtual)
{
    const SignedPoint special(1, 2);
    const CPointD& asBase = special;
    EXPECT_TRUE(asBase.operator==(CPointD(-1, -2)));
}

TEST(ArrayPointD, Copies_AreDeepAndKeepOrder)
{
    CArrayPointD points;
    for (int i = 0; i < 100; ++i)
        points.Add(CPointD(i, -i));
    const CArrayPointD copy(points);
    const std::unique_ptr<CArrayPointD> clone(points.clone());
    CArrayPointD assigned;
    assigned.Add(CPointD(9, 9));
    assigned = points;
    points[50].x = 1000;
    ASSERT_EQ(copy.GetSize(), 100);
    EXPECT_EQ(copy[50].x, 50.0);
    EXPECT_TRUE(copy == *clone);
    EXPECT_TRUE(copy == assigned);
    EXPECT_TRUE(copy != points);
}

TEST(ArrayPointD, MoveTakesTheElementsWithoutCopyingThem)
{
    CArrayPointD source;
    source.Add(CPointD(1, 2));
    const CPointD* const element = source.GetData();
    CArrayPointD target;
    target = std::move(source);
    ASSERT_EQ(target.GetSize(), 1);
    EXPECT_EQ(target.GetData(), element);
}

TEST(ArrayPointD, Assignment_OfItselfKeepsItsElements)
{
    CArrayPointD points;
    points.Add(CPointD(1, 2));
    const CArrayPointD& same = points;
    points = same;
    ASSERT_EQ(points.GetSize(), 1);
    EXPECT_TRUE(points[0] == CPointD(1, 2));
}

TEST(ArrayPointD, Equality_NeedsTheSameSize)
{
    CArrayPointD two;
    two.Add(CPointD(1, 1));
    two.Add(CPointD(2, 2));
    CArrayPointD one;
    one.Add(CPointD(1, 1));
    EXPECT_FALSE(one == two);
    EXPECT_FALSE(two == one);
    EXPECT_FALSE(CArrayPointD() == one);
    EXPECT_TRUE(CArrayPointD() == CArrayPointD());
}

TEST(ArrayPointD, Move_TakesTheElementsOver)
{
    CArrayPointD points;
    points.Add(CPointD(1, 2));
    const CPointD* const data = points.GetData();
    const CArrayPointD moved(std::move(points));
    EXPECT_EQ(moved.GetData(), data);
    EXPECT_EQ(moved.GetSize(), 1);
}

TEST(ArrayArrayPointD, Copies_AreDeepInBothLevels)
{
    CArrayArrayPointD lists;
    for (int i = 0; i < 20; ++i)
    {
        CArrayPointD list;
        for (int k = 0; k < i; ++k)
            list.Add(CPointD(i, k));
        lists.Add(list);
    }
    const CArrayArrayPointD copy(lists);
    const std::unique_ptr<CArrayArrayPointD> clone(lists.clone());
    EXPECT_TRUE(copy == lists);
    lists[19][3].y = -1;
    EXPECT_FALSE(copy == lists);
    EXPECT_TRUE(copy == *clone);
    EXPECT_EQ(copy[19].GetSize(), 19);
}

TEST(PointerArrays, Delete_DestroysListsThroughTheirBase)
{
    CExPtrArray<CArrayPointD*, CArrayPointD*> lists;
    auto list = std::make_unique<CArrayPointD>();
    list->Add(CPointD(1, 1));
    lists.Add(list.release());
    lists.DeleteAll(); // the leak checker sees a list that was not deleted whole
    EXPECT_EQ(lists.GetSize(), 0);
}
