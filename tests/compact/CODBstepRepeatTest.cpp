#include "compact/CODBstepRepeat.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace
{
constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

CODBstepRepeat Entry(double x, double y, int nx = 1, int ny = 1, double angle = 0.0)
{
    CODBstepRepeat entry;
    entry.m_ptPosition.SetData(x, y);
    entry.m_ptCount.SetData(nx, ny);
    entry.m_dAngle = angle;
    return entry;
}

CODBstepRepeat* Add(CODBstepRepeatArray& table, const CODBstepRepeat& entry)
{
    table.Add(entry.clone());
    return table.GetLastElement();
}

std::unique_ptr<CODBstepRepeatArray> Flatten(const CODBstepRepeatArray& table, const CODBstepRepeat& parent)
{
    return std::unique_ptr<CODBstepRepeatArray>(table.Add_Parent(&parent));
}

// The only entry of the table that holds just `child`, placed once by `parent`.
CODBstepRepeat FlattenOne(const CODBstepRepeat& child, const CODBstepRepeat& parent)
{
    CODBstepRepeatArray table;
    Add(table, child);
    const auto result = Flatten(table, parent);
    EXPECT_EQ(result->GetSize(), 1);
    return *result->GetAt(0);
}

std::vector<CPointD> Positions(const CODBstepRepeatArray& table)
{
    std::vector<CPointD> positions;
    for (INT_PTR i = 0; i < table.GetSize(); ++i)
        positions.push_back(table.GetAt(i)->m_ptPosition);
    return positions;
}

bool IsRefusedForItsSize(int nx, int ny, int children = 1)
{
    CODBstepRepeatArray table;
    for (int i = 0; i < children; ++i)
        Add(table, Entry(0, 0));
    try
    {
        delete table.Add_Parent(std::make_unique<CODBstepRepeat>(Entry(0, 0, nx, ny)).get());
    }
    catch (CMemoryException* exception)
    {
        exception->Delete();
        return true;
    }
    return false;
}
} // namespace

TEST(StepRepeat, StartsUnmirroredAtTheDatumWithoutPlaces)
{
    const CODBstepRepeat entry{};
    EXPECT_EQ(entry.m_sMirror, "NO");
    EXPECT_EQ(entry.m_sFlip, "");
    EXPECT_EQ(entry.m_ptPosition, CPointD(0, 0));
    EXPECT_EQ(entry.m_ptPitch, CPointD(0, 0));
    EXPECT_EQ(entry.m_ptCount, CPointN(0, 0));
    EXPECT_EQ(entry.m_dAngle, 0.0);
}

TEST(StepRepeat, Flatten_OrdersByColumnThenRowThenChild)
{
    CODBstepRepeatArray table;
    Add(table, Entry(1, 2))->m_sName = "a";
    Add(table, Entry(3, 4))->m_sName = "b";
    CODBstepRepeat parent = Entry(1000, 2000, 2, 3);
    parent.m_ptPitch.SetData(10, 100);

    const auto result = Flatten(table, parent);

    ASSERT_NE(result, nullptr);
    const std::vector<CPointD> expected = {{1001, 2002}, {1003, 2004}, {1001, 2102}, {1003, 2104},
                                           {1001, 2202}, {1003, 2204}, {1011, 2002}, {1013, 2004},
                                           {1011, 2102}, {1013, 2104}, {1011, 2202}, {1013, 2204}};
    EXPECT_EQ(Positions(*result), expected);
    for (INT_PTR i = 0; i < result->GetSize(); ++i)
        EXPECT_EQ(result->GetAt(i)->m_sName, i % 2 == 0 ? "a" : "b") << i;
}

TEST(StepRepeat, Flatten_KeepsNameCountAndPitchOfTheChild)
{
    CODBstepRepeat child = Entry(1, 2, 3, 4, 15);
    child.m_sName = "board";
    child.m_ptPitch.SetData(5, 6);
    CODBstepRepeat parent = Entry(0, 0);
    parent.m_sName = "array";
    parent.m_ptPitch.SetData(50, 60);

    const CODBstepRepeat placed = FlattenOne(child, parent);

    EXPECT_EQ(placed.m_sName, "board");
    EXPECT_EQ(placed.m_ptCount, CPointN(3, 4));
    EXPECT_EQ(placed.m_ptPitch, CPointD(5, 6));
    EXPECT_EQ(placed.m_dAngle, 15.0);
}

TEST(StepRepeat, Flatten_TurnsClockwise)
{
    CODBstepRepeat child = Entry(1, 2, 3, 4);
    child.m_ptPitch.SetData(5, 6);
    const CODBstepRepeat placed = FlattenOne(child, Entry(10, 20, 1, 1, 90));
    EXPECT_EQ(placed.m_ptPosition, CPointD(12, 19));
    EXPECT_EQ(placed.m_ptPitch, CPointD(6, -5));
    EXPECT_EQ(placed.m_ptCount, CPointN(4, 3));
    EXPECT_EQ(placed.m_dAngle, 90.0);
}

TEST(StepRepeat, Flatten_TurnsByNegativeAngles)
{
    CODBstepRepeat child = Entry(1, 2, 3, 4, 10);
    child.m_ptPitch.SetData(5, 6);
    const CODBstepRepeat placed = FlattenOne(child, Entry(10, 20, 1, 1, -90));
    EXPECT_EQ(placed.m_ptPosition, CPointD(8, 21));
    EXPECT_EQ(placed.m_ptPitch, CPointD(-6, 5));
    EXPECT_EQ(placed.m_ptCount, CPointN(4, 3));
    EXPECT_EQ(placed.m_dAngle, -80.0);
}

TEST(StepRepeat, Flatten_TurnsByFractionalAngles)
{
    CODBstepRepeat child = Entry(2, 0, 3, 4, 0.25);
    child.m_ptPitch.SetData(0, 2);
    const CODBstepRepeat placed = FlattenOne(child, Entry(10, 20, 1, 1, 30.5));
    EXPECT_DOUBLE_EQ(placed.m_ptPosition.GetX(), 10 + 2 * 0.86162916044152577); // cosine of 30.5 degrees
    EXPECT_DOUBLE_EQ(placed.m_ptPosition.GetY(), 20 - 2 * 0.50753836296070409); // sine
    EXPECT_DOUBLE_EQ(placed.m_ptPitch.GetX(), 2 * 0.50753836296070409);
    EXPECT_DOUBLE_EQ(placed.m_ptPitch.GetY(), 2 * 0.86162916044152577);
    EXPECT_EQ(placed.m_ptCount, CPointN(3, 4));
    EXPECT_EQ(placed.m_dAngle, 30.75);
}

TEST(StepRepeat, Flatten_ExchangesTheCountsOnlyNearAQuarterTurnEitherWay)
{
    const struct
    {
        double angle;
        bool exchanged;
    } cases[] = {
        {90, true},
        {-90, true},
        {270, true},
        {-270, true},
        {89.95, true},
        {-89.95, true},
        {90.05, true},
        {89.90001, true},
        {90.09999, true},
        {269.95, true},
        {-269.95, true},
        {270.05, true},
        {89.9, false},
        {90.1, false},
        {269.9, false},
        {270.1, false},
        {-89.9, false},
        {-90.1, false},
        {-269.9, false},
        {-270.1, false},
        {0, false},
        {-0.0, false},
        {45, false},
        {135, false},
        {180, false},
        {-180, false},
        {360, false},
        {450, false},
        {-450, false},
        {std::numeric_limits<double>::infinity(), false},
        {std::numeric_limits<double>::quiet_NaN(), false},
    };
    for (const auto& [angle, exchanged] : cases)
        EXPECT_EQ(FlattenOne(Entry(1, 2, 3, 4), Entry(0, 0, 1, 1, angle)).m_ptCount,
                  exchanged ? CPointN(4, 3) : CPointN(3, 4))
            << angle;
}

TEST(StepRepeat, Flatten_DoesNotTurnTheParentsPitch)
{
    CODBstepRepeatArray table;
    Add(table, Entry(1, 0));
    CODBstepRepeat parent = Entry(0, 0, 2, 2, 90);
    parent.m_ptPitch.SetData(10, 100);
    const auto result = Flatten(table, parent);
    EXPECT_EQ(Positions(*result), (std::vector<CPointD>{{0, -1}, {0, 99}, {10, -1}, {10, 99}}));
}

TEST(StepRepeat, Flatten_AddsAnglesWithoutReducingThem)
{
    EXPECT_EQ(FlattenOne(Entry(0, 0, 1, 1, 270), Entry(0, 0, 1, 1, 270)).m_dAngle, 540.0);
    EXPECT_EQ(FlattenOne(Entry(0, 0, 1, 1, -90), Entry(0, 0, 1, 1, -270)).m_dAngle, -360.0);
    EXPECT_EQ(FlattenOne(Entry(0, 0, 1, 1, 45), Entry(0, 0)).m_dAngle, 45.0);
}

TEST(StepRepeat, Flatten_MirrorsDoNotCancel)
{
    const struct
    {
        const char *parent, *child, *result;
    } cases[] = {
        {"NO", "NO", "NO"},   {"NO", "YES", "YES"},  {"YES", "NO", "YES"},  {"YES", "YES", "YES"},
        {"YSE", "YES", "NO"}, {"YSE", "NO", "YES"},  {"YSE", "YSE", "YES"}, {"YSE", "yes", "YES"},
        {"YSE", "", "YES"},   {"yse", "YES", "YES"}, {"", "", "YES"},       {"NO", "", "YES"},
        {"", "NO", "YES"},    {"no", "no", "YES"},   {"NO", "YSE", "YES"},
    };
    for (const auto& [parentMirror, childMirror, result] : cases)
    {
        CODBstepRepeat parent = Entry(0, 0);
        CODBstepRepeat child = Entry(0, 0);
        parent.m_sMirror = parentMirror;
        child.m_sMirror = childMirror;
        EXPECT_EQ(FlattenOne(child, parent).m_sMirror, result) << parentMirror << " over " << childMirror;
    }
}

TEST(StepRepeat, Flatten_MirrorDoesNotMoveAnything)
{
    CODBstepRepeat parent = Entry(10, 20);
    parent.m_sMirror = "YES";
    EXPECT_EQ(FlattenOne(Entry(1, 2), parent).m_ptPosition, CPointD(11, 22));
}

TEST(StepRepeat, Flatten_TakesTheFlipFromTheParent)
{
    CODBstepRepeat parent = Entry(0, 0);
    CODBstepRepeat child = Entry(0, 0);
    child.m_sFlip = "YES";
    EXPECT_EQ(FlattenOne(child, parent).m_sFlip, "");
    parent.m_sFlip = "NO";
    EXPECT_EQ(FlattenOne(child, parent).m_sFlip, "NO");
}

TEST(StepRepeat, Flatten_Nested)
{
    CODBstepRepeatArray board;
    Add(board, Entry(1, 2, 3, 4, 30))->m_sMirror = "YES";
    CODBstepRepeat array = Entry(10, 20, 1, 2, 90);
    array.m_ptPitch.SetData(0, 5);
    CODBstepRepeat panel = Entry(100, 200, 2, 1, 180);
    panel.m_ptPitch.SetData(1000, 0);
    panel.m_sFlip = "top";

    const auto inArray = Flatten(board, array);
    ASSERT_EQ(inArray->GetSize(), 2); // at (12, 19) and (12, 24)
    const auto inPanel = Flatten(*inArray, panel);

    EXPECT_EQ(Positions(*inPanel), (std::vector<CPointD>{{88, 181}, {88, 176}, {1088, 181}, {1088, 176}}));
    for (INT_PTR i = 0; i < inPanel->GetSize(); ++i)
    {
        EXPECT_EQ(inPanel->GetAt(i)->m_ptCount, CPointN(4, 3));
        EXPECT_EQ(inPanel->GetAt(i)->m_dAngle, 300.0);
        EXPECT_EQ(inPanel->GetAt(i)->m_sMirror, "YES");
        EXPECT_EQ(inPanel->GetAt(i)->m_sFlip, "top");
    }
}

TEST(StepRepeat, Flatten_OfNothingIsNull)
{
    CODBstepRepeatArray table;
    EXPECT_EQ(Flatten(table, Entry(0, 0, 2, 3)), nullptr);
    EXPECT_EQ(Flatten(table, Entry(0, 0, kMost, kMost)), nullptr);
    table.Add(nullptr);
    EXPECT_EQ(Flatten(table, Entry(0, 0, 2, 3)), nullptr);
    Add(table, Entry(1, 2));
    EXPECT_EQ(table.Add_Parent(nullptr), nullptr);
    for (const int count : {0, -1, kLeast})
    {
        EXPECT_EQ(Flatten(table, Entry(0, 0, count, 1)), nullptr) << count;
        EXPECT_EQ(Flatten(table, Entry(0, 0, 1, count)), nullptr) << count;
        EXPECT_EQ(Flatten(table, Entry(0, 0, count, count)), nullptr) << count;
        EXPECT_EQ(Flatten(table, Entry(0, 0, count, kMost)), nullptr) << count;
    }
}

TEST(StepRepeat, Flatten_LeavesNullEntriesOut)
{
    CODBstepRepeatArray table;
    table.Add(nullptr);
    Add(table, Entry(1, 2));
    table.Add(nullptr);
    const auto result = Flatten(table, Entry(0, 0, 2, 2));
    ASSERT_EQ(result->GetSize(), 4);
    EXPECT_FALSE(result->Exists(nullptr));
}

TEST(StepRepeat, Flatten_ChangesNeitherTheTableNorTheParent)
{
    CODBstepRepeatArray table;
    CODBstepRepeat* const own = Add(table, Entry(1, 2, 3, 4, 90));
    own->m_sMirror = "YES";
    own->m_sFlip = "YES";
    // The parent may stand in the very table.
    const auto result = Flatten(table, *own);
    ASSERT_EQ(result->GetSize(), 12);
    ASSERT_EQ(table.GetSize(), 1);
    EXPECT_EQ(table.GetAt(0), own);
    EXPECT_EQ(own->m_ptPosition, CPointD(1, 2));
    EXPECT_EQ(own->m_ptCount, CPointN(3, 4));
    EXPECT_EQ(own->m_dAngle, 90.0);
    EXPECT_EQ(own->m_sMirror, "YES");
}

TEST(StepRepeat, Flatten_RefusesHugeCountsBeforeBuildingAnything)
{
    EXPECT_TRUE(IsRefusedForItsSize(kMost, kMost));
    EXPECT_TRUE(IsRefusedForItsSize(kMost, kMost, 5));
    EXPECT_TRUE(IsRefusedForItsSize(kMost, 1));
    EXPECT_TRUE(IsRefusedForItsSize(1, kMost));
    EXPECT_TRUE(IsRefusedForItsSize(65536, 65536));     // 2 to the 32nd
    EXPECT_TRUE(IsRefusedForItsSize(1 << 15, 1 << 10)); // more than 2 GB of 64 bytes each
    EXPECT_TRUE(IsRefusedForItsSize(1 << 13, 1 << 10, 4));
    EXPECT_FALSE(IsRefusedForItsSize(300, 300));
}

TEST(StepRepeat, Flatten_TakesEntriesByTheHundredThousand)
{
    CODBstepRepeatArray table;
    for (int i = 0; i < 4; ++i)
        Add(table, Entry(i, 0));
    CODBstepRepeat parent = Entry(0, 0, 200, 250);
    parent.m_ptPitch.SetData(10, 1);
    const auto result = Flatten(table, parent);
    ASSERT_EQ(result->GetSize(), 200000);
    EXPECT_EQ(result->GetLastElement()->m_ptPosition, CPointD(1993, 249));
}
