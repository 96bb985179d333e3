#include "foundation/corekit/CArrayN.h"
#include "foundation/corekit/CPoint3D.h"
#include "foundation/corekit/CPointD.h"
#include "foundation/corekit/CPointF.h"
#include "foundation/corekit/CPointN.h"
#include "foundation/corekit/CRectD.h"
#include "foundation/corekit/CRectF.h"
#include "foundation/framework/CArchive.h"
#include "foundation/framework/CMemFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>

namespace
{
// Stores `value` and loads it into a new one.
template <class T>
T ThroughArchive(T value, ULONGLONG expectedBytes)
{
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    value.Serialize(storing);
    storing.Close();
    EXPECT_EQ(file.GetLength(), expectedBytes);
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load);
    T loaded;
    loaded.Serialize(loading);
    return loaded;
}

const CRectD kRect(-1.1, 2.3, 0.7, 9.9);
} // namespace

static_assert(std::has_virtual_destructor_v<CPointF> && std::has_virtual_destructor_v<CPointN>);
static_assert(std::has_virtual_destructor_v<CRectF> && std::has_virtual_destructor_v<CArrayN>);
static_assert(std::is_base_of_v<CArray<int, int>, CArrayN>);

TEST(PointF, Equality_IsExactAndHoldsForTheSameObject)
{
    EXPECT_TRUE(CPointF(1, 2) == CPointF(1, 2));
    EXPECT_FALSE(CPointF(1, 2) == CPointF(std::nextafter(1.0F, 2.0F), 2));
    EXPECT_FALSE(CPointF(1, 2) == CPointF(1, 3));
    const CPointF nan(std::numeric_limits<float>::quiet_NaN(), 0);
    EXPECT_TRUE(nan == nan); // NOLINT(misc-redundant-expression): the very same object is meant
}

TEST(PointF, Archive_CarriesXAndY)
{
    EXPECT_TRUE(ThroughArchive(CPointF(1.5F, -2.25F), 8) == CPointF(1.5F, -2.25F));
}

TEST(PointN, Accessors_GiveWhatWasSet)
{
    CPointN count(2, 3);
    EXPECT_EQ(count.GetX(), 2);
    EXPECT_EQ(count.GetY(), 3);
    count.SetData(-5, 7);
    int x = 0;
    int y = 0;
    count.GetX(x);
    count.GetY(y);
    EXPECT_EQ(x, -5);
    EXPECT_EQ(y, 7);
    count.SetX(1);
    count.SetY(2);
    EXPECT_TRUE(count == CPointN(1, 2));
    count.Init();
    EXPECT_TRUE(count == CPointN());
}

TEST(ArrayPointN, Copies_AreDeepInBothLevels)
{
    CArrayPointN list;
    list.Add(CPointN(1, 2));
    CArrayPointN_Array lists;
    lists.Add(list);
    const CArrayPointN_Array copy(lists);
    const std::unique_ptr<CArrayPointN_Array> clone(lists.clone());
    const std::unique_ptr<CArrayPointN> listClone(list.clone());
    EXPECT_TRUE(copy == lists);
    EXPECT_TRUE(*listClone == list);
    lists[0][0].x = 5;
    EXPECT_TRUE(copy != lists);
    EXPECT_TRUE(*clone == copy);
}

TEST(Point3D, Accessors_GiveWhatWasSet)
{
    CPoint3D point;
    point.SetData(1, 2, 3);
    point.SetZ(4);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    point.GetData(x, y, z);
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(y, 2.0);
    EXPECT_EQ(z, 4.0);
    EXPECT_EQ(point.GetZ(), 4.0);
}

TEST(Point3D, Equality_ComparesEveryField)
{
    EXPECT_TRUE(CPoint3D(1, 2, 3) == CPoint3D(1, 2, 3));
    EXPECT_FALSE(CPoint3D(1, 2, 3) == CPoint3D(0, 2, 3));
    EXPECT_FALSE(CPoint3D(1, 2, 3) == CPoint3D(1, 0, 3));
    EXPECT_FALSE(CPoint3D(1, 2, 3) == CPoint3D(1, 2, 0));
    const std::unique_ptr<CPoint3D> clone(CPoint3D(1, 2, 3).clone());
    EXPECT_TRUE(*clone == CPoint3D(1, 2, 3));
}

TEST(ArrayPoint3D, Copies_AreDeep)
{
    CArrayPoint3D points;
    points.Add(CPoint3D(1, 2, 3));
    const CArrayPoint3D copy(points);
    const std::unique_ptr<CArrayPoint3D> clone(points.clone());
    points[0].SetZ(0);
    EXPECT_TRUE(copy == *clone);
    EXPECT_FALSE(copy == points);
}

TEST(RectD, Measures_AreUpperMinusLowerBound)
{
    const CRectD rect(1, 4, 10, 12);
    EXPECT_EQ(rect.GetWidth(), 3.0);
    EXPECT_EQ(rect.GetHeight(), 2.0);
    EXPECT_EQ(rect.GetArea(), 6.0);
}

TEST(RectD, Init_MakesAllBoundsZero)
{
    CRectD rect(kRect);
    rect.Init();
    EXPECT_TRUE(rect == CRectD());
    EXPECT_EQ(rect.GetArea(), 0.0);
}

TEST(RectD, Equality_ComparesEveryBoundExactly)
{
    const std::unique_ptr<CRectD> clone(kRect.clone());
    EXPECT_TRUE(*clone == kRect);
    for (double CRectD::*bound : {&CRectD::m_dLeft, &CRectD::m_dRight, &CRectD::m_dBottom, &CRectD::m_dTop})
    {
        CRectD other(kRect);
        other.*bound = std::nextafter(other.*bound, 100.0);
        EXPECT_TRUE(other != kRect);
        EXPECT_FALSE(other == kRect);
    }
}

TEST(ArrayRectD, Copies_AreDeep)
{
    CArrayRectD rects;
    rects.Add(kRect);
    const CArrayRectD copy(rects);
    const std::unique_ptr<CArrayRectD> clone(rects.clone());
    rects[0].Init();
    EXPECT_TRUE(copy == *clone);
    EXPECT_TRUE(copy != rects);
}

TEST(RectF, Construction_FromTheSameRectDGivesEqualRectangles)
{
    const CRectF first(kRect);
    const CRectF second(kRect);
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
}

TEST(RectF, Construction_NarrowsEachBound)
{
    CRectF rect;
    rect = kRect;
    EXPECT_TRUE(rect == CRectF(-1.1F, 2.3F, 0.7F, 9.9F));
    EXPECT_TRUE(rect == CRectF(kRect));
}

TEST(RectF, Equality_ComparesEveryBoundExactly)
{
    for (float CRectF::*bound : {&CRectF::m_fLeft, &CRectF::m_fRight, &CRectF::m_fBottom, &CRectF::m_fTop})
    {
        CRectF other(kRect);
        other.*bound = std::nextafter(other.*bound, 100.0F);
        EXPECT_TRUE(other != CRectF(kRect));
    }
}

TEST(RectF, Archive_CarriesTheFourBounds)
{
    EXPECT_TRUE(ThroughArchive(CRectF(kRect), 16) == CRectF(kRect));
}

TEST(RectF, Archive_ThatEndsEarlyRaisesTheArchiveException)
{
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    CPointF(1, 2).Serialize(storing);
    storing.Close();
    file.SeekToBegin();
    CArchive loading(&file, CArchive::load);
    CRectF rect;
    try
    {
        rect.Serialize(loading);
        FAIL() << "half a rectangle was loaded";
    }
    catch (CArchiveException* exception)
    {
        exception->Delete();
    }
}

TEST(ArrayRectF, Copies_AreDeep)
{
    CArrayRectF rects;
    rects.Add(CRectF(kRect));
    const CArrayRectF copy(rects);
    const std::unique_ptr<CArrayRectF> clone(rects.clone());
    rects[0].m_fTop = 0;
    EXPECT_TRUE(copy == *clone);
    EXPECT_TRUE(copy != rects);
}

TEST(ArrayN, Assignment_IsDeep)
{
    CArrayN numbers;
    for (int i = 0; i < 10; ++i)
        numbers.Add(i);
    CArrayN copy;
    copy = numbers;
    numbers[3] = -1;
    EXPECT_EQ(copy[3], 3);
    EXPECT_EQ(copy.GetSize(), 10);
    const std::unique_ptr<CArrayN> clone(copy.clone());
    EXPECT_TRUE(*clone == copy);
    EXPECT_FALSE(*clone == numbers);
}

TEST(PointN, Equality_TakesBothCoordinates)
{
    EXPECT_TRUE(CPointN(1, 2) == CPointN(1, 2));
    EXPECT_FALSE(CPointN(1, 2) == CPointN(3, 2));
    EXPECT_FALSE(CPointN(1, 2) == CPointN(1, 3));
}

TEST(Values, EqualThemselvesEvenWithANumberThatIsNone)
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    // NOLINTBEGIN(misc-redundant-expression): the very same object is meant
    const CPoint3D point(kNone, 0, 0);
    EXPECT_TRUE(point == point);
    EXPECT_FALSE(point == CPoint3D(point));
    const CRectD rect(kNone, 0, 0, 0);
    EXPECT_TRUE(rect == rect);
    EXPECT_FALSE(rect == CRectD(rect));
    const CRectF narrow(rect);
    EXPECT_TRUE(narrow == narrow);
    EXPECT_FALSE(narrow == CRectF(narrow));
    CArrayRectD list;
    list.Add(CRectD(1, 2, 3, 4));
    EXPECT_TRUE(list == list);
    // NOLINTEND(misc-redundant-expression)
}

template <class Array>
class ValueArrays : public testing::Test
{
};
using ValueArrayTypes = testing::Types<CArrayPointD, CArrayArrayPointD, CArrayPointN, CArrayPointN_Array, CArrayRectD,
                                       CArrayRectF, CArrayPoint3D>;
TYPED_TEST_SUITE(ValueArrays, ValueArrayTypes);

TYPED_TEST(ValueArrays, InequalityIsAnOperationOfTheirOwn)
{
    bool (TypeParam::*const differs)(const TypeParam&) const = &TypeParam::operator!=;
    TypeParam one;
    TypeParam two;
    EXPECT_FALSE((one.*differs)(two));
    one.SetSize(1);
    EXPECT_TRUE((one.*differs)(two));
    EXPECT_TRUE(one != two);
    two.SetSize(1);
    EXPECT_FALSE(one != two);
}

TEST(ArrayPointN, MoveExchangesTheElementsWithoutCopyingThem)
{
    CArrayPointN source;
    source.Add(CPointN(1, 2));
    const CPointN* const element = source.GetData();
    CArrayPointN target;
    target.Add(CPointN(3, 4));
    target = std::move(source);
    ASSERT_EQ(target.GetSize(), 1);
    EXPECT_EQ(target.GetData(), element);
    EXPECT_TRUE(target[0] == CPointN(1, 2));
    CArrayPointN made(std::move(target));
    EXPECT_EQ(made.GetData(), element);
}
