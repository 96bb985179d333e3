#include "foundation/framework/CArray.h"

#include "foundation/framework/CMemFile.h"
#include "foundation/framework/RaisedPointer.h"
#include "support/MemoryChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace array_test
{
namespace
{
constexpr INT_PTR kMost = std::numeric_limits<INT_PTR>::max();
constexpr INT_PTR kLeast = std::numeric_limits<INT_PTR>::min();

// Shows how many elements the buffer has room for.
template <class TYPE, class ARG_TYPE = const TYPE&>
class OpenArray : public CArray<TYPE, ARG_TYPE>
{
public:
    using CArray<TYPE, ARG_TYPE>::Capacity;
};

using Numbers = OpenArray<int, int>;

void Fill(Numbers& array, std::initializer_list<int> values)
{
    array.RemoveAll();
    for (const int value : values)
        array.Add(value);
}

template <class Array>
std::vector<int> Values(const Array& array)
{
    std::vector<int> values;
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        values.push_back(array[i]);
    return values;
}

// Counts how many of it live; making the one numbered `s_nRaiseAt` raises.
class Counted
{
public:
    Counted() : Counted(0) {}
    Counted(int value) : m_nValue(value) { Live(); } // NOLINT(google-explicit-constructor): elements come from numbers
    Counted(const Counted& other) : m_nValue(other.m_nValue) { Live(); }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --s_nLive; }
    operator int() const { return m_nValue; } // NOLINT(google-explicit-constructor)

    static int s_nLive;
    static int s_nRaiseAt;

private:
    static void Live()
    {
        if (s_nRaiseAt >= 0 && s_nRaiseAt-- == 0)
            throw std::runtime_error("no more elements");
        ++s_nLive;
    }

    int m_nValue;
};

int Counted::s_nLive = 0;
int Counted::s_nRaiseAt = -1;

using CountedArray = OpenArray<Counted>;
} // namespace

TEST(Array, New_IsEmptyWithoutABuffer)
{
    const Numbers array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.Capacity(), 0);
}

TEST(Array, Add_AppendsAndAnswersTheIndex)
{
    Numbers array;
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(array.Add(i * i), i);
    EXPECT_EQ(array.GetSize(), 100);
    EXPECT_EQ(array.GetUpperBound(), 99);
    EXPECT_FALSE(array.IsEmpty());
    for (int i = 0; i < 100; ++i)
    {
        EXPECT_EQ(array[i], i * i);
        EXPECT_EQ(array.GetAt(i), i * i);
        EXPECT_EQ(array.ElementAt(i), i * i);
        EXPECT_EQ(array.GetData()[i], i * i);
    }
}

TEST(Array, Add_OfAnOwnElementWhileTheBufferMoves)
{
    OpenArray<std::string> array;
    array.Add("a text of more than fifteen characters");
    for (int i = 0; i < 50; ++i)
        array.Add(array[0]);
    for (INT_PTR i = 0; i < array.GetSize(); ++i)
        EXPECT_EQ(array[i], "a text of more than fifteen characters");
}

TEST(Array, Growth_IsAnEighthOfTheSizeAtLeastFourAtMost1024)
{
    Numbers array;
    INT_PTR expected = 0;
    for (int i = 0; i < 40000; ++i)
    {
        if (i == expected) // full
            expected = i == 0 ? 1 : expected + std::clamp<INT_PTR>(i / 8, 4, 1024);
        array.Add(i);
        ASSERT_EQ(array.Capacity(), expected) << i;
    }
}

TEST(Array, Growth_StepOfSetSizeIsKeptUntilANewOne)
{
    Numbers array;
    array.SetSize(0, 100);
    array.Add(1);
    EXPECT_EQ(array.Capacity(), 100);
    array.SetSize(100, -1);
    array.Add(1);
    EXPECT_EQ(array.Capacity(), 200);
    array.SetSize(200, 0);
    array.Add(1);
    EXPECT_EQ(array.Capacity(), 225);
}

TEST(Array, SetSize_TakesExactlyWhatIsAskedWhenThatIsMore)
{
    Numbers array;
    array.SetSize(10);
    EXPECT_EQ(array.Capacity(), 10);
    array.SetSize(1000);
    EXPECT_EQ(array.Capacity(), 1000);
    array.SetSize(1001);
    EXPECT_EQ(array.Capacity(), 1125);
    const int* const data = array.GetData();
    array.SetSize(5);
    EXPECT_EQ(array.Capacity(), 1125);
    EXPECT_EQ(array.GetData(), data);
    array.SetSize(0);
    EXPECT_EQ(array.Capacity(), 0);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(Array, SetSize_FillsWithZeroAndKeepsWhatFits)
{
    Numbers array;
    Fill(array, {1, 2, 3, 4, 5});
    array.SetSize(2);
    array.SetSize(4);
    EXPECT_EQ(Values(array), (std::vector{1, 2, 0, 0}));
    OpenArray<int*, int*> pointers;
    pointers.SetSize(3);
    EXPECT_EQ(pointers[2], nullptr);
}

TEST(Array, SetSize_BelowZeroRaisesInvalidArgument)
{
    Numbers array;
    Fill(array, {1, 2});
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.SetSize(-1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.SetSize(kLeast, 4); }));
    EXPECT_EQ(Values(array), (std::vector{1, 2}));
}

TEST(Array, AbsurdSizesRaiseMemoryExceptionAndChangeNothing)
{
    Numbers array;
    Fill(array, {1, 2});
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.SetSize(kMost); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.SetSize(kMost / 2); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.SetAtGrow(kMost, 1); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.SetAtGrow(kMost - 1, 1); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.InsertAt(0, 1, kMost); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.InsertAt(2, 1, kMost - 2); }));
    EXPECT_EQ(Values(array), (std::vector{1, 2}));
    OpenArray<std::string> texts;
    EXPECT_TRUE(Raises<CMemoryException>([&] { texts.SetSize(kMost); }));
    EXPECT_EQ(texts.GetSize(), 0);
}

TEST(Array, MoreThanTheMemoryRaisesMemoryExceptionAndChangesNothing)
{
#if defined(JOBX_MEMORY_CHECKER)
    GTEST_SKIP() << "the checker ends the process when memory is refused";
#endif
    constexpr INT_PTR kMore = INT_PTR{1} << 58U; // no overflow, yet more than a process can address
    CArray<int, int> array;
    array.Add(7);
    EXPECT_TRUE(Raises<CMemoryException>([&] { array.SetSize(kMore); }));
    ASSERT_EQ(array.GetSize(), 1);
    EXPECT_EQ(array[0], 7);
}

TEST(Array, Index_OutsideRaisesInvalidArgument)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    const Numbers& constant = array;
    for (const INT_PTR index : {INT_PTR{-1}, INT_PTR{3}, kMost, kLeast})
    {
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.GetAt(index) = 0; })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { array[index] = 0; })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.ElementAt(index) = 0; })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.SetAt(index, 0); })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { (void)constant.GetAt(index); })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { (void)constant[index]; })) << index;
        EXPECT_TRUE(Raises<CInvalidArgException>([&] { (void)constant.ElementAt(index); })) << index;
    }
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.SetAtGrow(-1, 0); }));
    EXPECT_EQ(Values(array), (std::vector{1, 2, 3}));
    array.SetAt(1, 9);
    EXPECT_EQ(Values(array), (std::vector{1, 9, 3}));
}

TEST(Array, SetAtGrow_FillsTheGapWithZero)
{
    Numbers array;
    array.SetAtGrow(3, 7);
    EXPECT_EQ(Values(array), (std::vector{0, 0, 0, 7}));
    array.SetAtGrow(0, array[3]);
    array.SetAtGrow(20, array[3]);
    EXPECT_EQ(array[0], 7);
    EXPECT_EQ(array[20], 7);
    EXPECT_EQ(array.GetSize(), 21);
}

TEST(Array, InsertAt_MovesLaterElementsUp)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    array.InsertAt(1, 9);
    EXPECT_EQ(Values(array), (std::vector{1, 9, 2, 3}));
    array.InsertAt(4, 8, 2);
    EXPECT_EQ(Values(array), (std::vector{1, 9, 2, 3, 8, 8}));
    array.InsertAt(0, array[1], 3);
    EXPECT_EQ(Values(array), (std::vector{9, 9, 9, 1, 9, 2, 3, 8, 8}));
    Numbers empty;
    empty.InsertAt(0, 5);
    EXPECT_EQ(Values(empty), (std::vector{5}));
}

TEST(Array, InsertAt_BadRangesRaiseInvalidArgument)
{
    Numbers array;
    Fill(array, {1, 2});
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(-1, 0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(3, 0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(kMost, 0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(0, 0, 0); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(0, 0, -1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(-1, &array); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(3, &array); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { array.InsertAt(0, static_cast<const Numbers*>(nullptr)); }));
    EXPECT_EQ(Values(array), (std::vector{1, 2}));
}

TEST(Array, InsertAt_TakesAnotherArrayOrItself)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    Numbers other;
    array.InsertAt(1, &other);
    EXPECT_EQ(Values(array), (std::vector{1, 2, 3}));
    Fill(other, {8, 9});
    array.InsertAt(1, &other);
    EXPECT_EQ(Values(array), (std::vector{1, 8, 9, 2, 3}));
    for (INT_PTR index = 0; index <= 3; ++index)
    {
        CountedArray own;
        for (const int value : {1, 2, 3})
            own.Add(value);
        own.InsertAt(index, &own);
        std::vector<int> expected{1, 2, 3};
        expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(index), {1, 2, 3});
        EXPECT_EQ(Values(own), expected) << index;
    }
    EXPECT_EQ(Counted::s_nLive, 0);
}

TEST(Array, RemoveAt_MovesLaterElementsDown)
{
    Numbers array;
    Fill(array, {1, 2, 3, 4, 5});
    array.RemoveAt(1);
    EXPECT_EQ(Values(array), (std::vector{1, 3, 4, 5}));
    array.RemoveAt(1, 2);
    EXPECT_EQ(Values(array), (std::vector{1, 5}));
    array.RemoveAt(2, 0);
    array.RemoveAt(0, 2);
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(Array, RemoveAt_BadRangesRaiseInvalidArgument)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    const std::pair<INT_PTR, INT_PTR> ranges[] = {{-1, 1}, {3, 1},     {0, 4},     {2, 2},      {0, -1},
                                                  {4, 0},  {1, kMost}, {kMost, 1}, {kLeast, 1}, {kMost, kMost}};
    for (const auto& [index, count] : ranges)
        EXPECT_TRUE(Raises<CInvalidArgException>([&, i = index, n = count] { array.RemoveAt(i, n); }))
            << index << ' ' << count;
    EXPECT_EQ(Values(array), (std::vector{1, 2, 3}));
}

TEST(Array, Append_AnswersTheOldSizeAndTakesItself)
{
    Numbers array;
    EXPECT_EQ(array.Append(array), 0);
    Fill(array, {1, 2});
    EXPECT_EQ(array.Append(array), 2);
    EXPECT_EQ(array.Append(array), 4);
    EXPECT_EQ(Values(array), (std::vector{1, 2, 1, 2, 1, 2, 1, 2}));
    Numbers other;
    EXPECT_EQ(array.Append(other), 8);
    EXPECT_EQ(other.Append(array), 0);
    EXPECT_EQ(Values(other), Values(array));
}

TEST(Array, Copy_ReplacesAndLeavesItselfAlone)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    array.Copy(array);
    EXPECT_EQ(Values(array), (std::vector{1, 2, 3}));
    Numbers other;
    Fill(other, {9});
    other.Copy(array);
    EXPECT_EQ(Values(other), (std::vector{1, 2, 3}));
    array.Copy(Numbers());
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(Array, Copy_AndAppendOfPointersAreShallow)
{
    int one = 1;
    CArray<int*, int*> array;
    array.Add(&one);
    CArray<int*, int*> other;
    other.Copy(array);
    other.Append(array);
    EXPECT_EQ(other[0], &one);
    EXPECT_EQ(other[1], &one);
}

TEST(Array, FreeExtra_GivesBackWhatHoldsNoElement)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    array.SetSize(100);
    array.SetSize(3);
    array.FreeExtra();
    EXPECT_EQ(array.Capacity(), 3);
    EXPECT_EQ(Values(array), (std::vector{1, 2, 3}));
    array.RemoveAt(0, 3);
    array.FreeExtra();
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(Array, RemoveAll_ReleasesTheBuffer)
{
    Numbers array;
    Fill(array, {1, 2, 3});
    array.RemoveAll();
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.Capacity(), 0);
    array.RemoveAll();
    EXPECT_EQ(array.Add(4), 0);
}

TEST(Array, Elements_AreDestroyedOnceEach)
{
    {
        CountedArray array;
        for (int i = 0; i < 100; ++i)
            array.Add(i);
        EXPECT_EQ(Counted::s_nLive, 100);
        array.SetSize(40);
        EXPECT_EQ(Counted::s_nLive, 40);
        array.SetSize(60);
        EXPECT_EQ(Counted::s_nLive, 60);
        array.RemoveAt(5, 10);
        EXPECT_EQ(Counted::s_nLive, 50);
        array.InsertAt(3, 7, 5);
        EXPECT_EQ(Counted::s_nLive, 55);
        array.SetAtGrow(60, 1);
        EXPECT_EQ(Counted::s_nLive, 61);
        array.FreeExtra();
        array.Append(array);
        EXPECT_EQ(Counted::s_nLive, 122);
        CountedArray copy;
        copy.Copy(array);
        EXPECT_EQ(Counted::s_nLive, 244);
        copy.RemoveAll();
        EXPECT_EQ(Counted::s_nLive, 122);
    }
    EXPECT_EQ(Counted::s_nLive, 0);
}

TEST(Array, Elements_ThatRaiseLeakNothing)
{
    using Change = void (*)(CountedArray&);
    const Change changes[] = {
        [](CountedArray& array) { array.Add(array[0]); },
        [](CountedArray& array) { array.SetSize(50); },
        [](CountedArray& array) { array.SetAtGrow(30, array[0]); },
        [](CountedArray& array) { array.InsertAt(1, array[0], 8); },
        [](CountedArray& array) { array.Append(array); },
        [](CountedArray& array)
        {
            array.RemoveAt(4);
            array.FreeExtra();
        },
    };
    for (const Change change : changes)
        for (int raiseAt = 0;; ++raiseAt)
        {
            bool raised = false;
            {
                CountedArray array;
                for (int i = 0; i < 5; ++i) // full, so that the next one moves the buffer
                    array.Add(i);
                ASSERT_EQ(array.Capacity(), 5);
                Counted::s_nRaiseAt = raiseAt;
                try
                {
                    change(array);
                }
                catch (const std::runtime_error&)
                {
                    raised = true;
                }
                Counted::s_nRaiseAt = -1;
            }
            ASSERT_EQ(Counted::s_nLive, 0);
            if (!raised)
                break;
        }
}

TEST(Array, Serialize_StoresNumbersAsTheyLieInMemory)
{
    CArray<WORD, WORD> array;
    array.Add(0x0102);
    array.Add(0xFFFE);
    CMemFile file;
    CArchive store(&file, CArchive::store);
    array.Serialize(store);
    store.Close();
    const std::vector<BYTE> bytes(file.GetBufferPtr(), file.GetBufferPtr() + file.GetLength());
    EXPECT_EQ(bytes, (std::vector<BYTE>{2, 0, 0x02, 0x01, 0xFE, 0xFF}));
    file.SeekToBegin();
    CArchive load(&file, CArchive::load);
    CArray<WORD, WORD> loaded;
    loaded.Add(9);
    loaded.Serialize(load);
    EXPECT_EQ(loaded.GetSize(), 2);
    EXPECT_EQ(loaded[1], 0xFFFE);
}

TEST(Array, Serialize_StoresPointersAsACountOfZero)
{
    int one = 1;
    CArray<int*, int*> array;
    array.Add(&one);
    CMemFile file;
    CArchive store(&file, CArchive::store);
    array.Serialize(store);
    store.Close();
    EXPECT_EQ(file.GetLength(), 2U);
    file.SeekToBegin();
    CArchive load(&file, CArchive::load);
    array.Serialize(load);
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(Array, Serialize_RefusesStoredPointers)
{
    const BYTE bytes[] = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    CMemFile file(bytes, sizeof(bytes));
    CArchive load(&file, CArchive::load);
    CArray<int*, int*> array;
    EXPECT_EQ(CauseOf<CArchiveException>([&] { array.Serialize(load); }), CArchiveException::badClass);
}

TEST(Array, Serialize_DoesNotBelieveACount)
{
    // 2^64 - 2 elements are announced, two are there.
    const BYTE bytes[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF,
                          0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1,    0,    2,    0};
    CMemFile file(bytes, sizeof(bytes));
    CArchive load(&file, CArchive::load);
    OpenArray<WORD, WORD> array;
    EXPECT_EQ(CauseOf<CArchiveException>([&] { array.Serialize(load); }), CArchiveException::endOfFile);
    EXPECT_EQ(Values(array), (std::vector{1, 2}));
    EXPECT_LT(array.Capacity(), 10);
}
} // namespace array_test
