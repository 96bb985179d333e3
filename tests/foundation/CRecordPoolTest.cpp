// The pool behind the records of a job: what a chunk keeps, when destructors run, and that runs are given back whole.
#include "foundation/CRecordPool.h"

#include "foundation/base/CJOBXrecord.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CStringArray.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace
{
int destroyed = 0;

class Record : public CJOBXrecord
{
public:
    Record() = default;
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    virtual ~Record() { ++destroyed; }
    double m_value = 0.0;
};

// Four fit into a page, with some room left.
class LongRecord : public CJOBXrecord
{
public:
    std::array<char, 1000> m_bytes{};
};

// Larger than a page, with the record far behind its begin.
struct LargeBase
{
    virtual ~LargeBase() = default;
    std::array<char, 3 * kRecordPage> m_bytes{};
};
class LargeRecord : public LargeBase, public Record
{
};

// Says when it goes.
class Kept : public CRecordKeep
{
public:
    explicit Kept(bool& isGone) : m_isGone(isGone) {}
    ~Kept() override { m_isGone = true; }

private:
    bool& m_isGone;
};

// Deletes records of its own when it goes.
class KeptWithRecords : public Kept
{
public:
    KeptWithRecords(bool& isGone, std::vector<Record*> records) : Kept(isGone), m_records(std::move(records)) {}
    ~KeptWithRecords() override
    {
        for (Record* const record : m_records)
            delete record;
    }

private:
    std::vector<Record*> m_records;
};

// Deletes a record when the thread that has one of these ends.
struct DeleterAtThreadEnd
{
    ~DeleterAtThreadEnd() { delete m_record; }
    Record* m_record = nullptr;
};
thread_local DeleterAtThreadEnd deleterAtThreadEnd;

std::vector<Record*> MakePlain(int count, CRecordKeep* keep = nullptr)
{
    std::vector<Record*> records;
    for (int i = 0; i < count; ++i)
        records.push_back(record_pool::Make<Record>(record_pool::PlainRoom(), keep));
    return records;
}

// A list of the numbers from 1 on that lies beside the records of a thread that has ended. They keep `keep`, and so does
// the list alone.
void FillAlone(CArrayN& numbers, int count, Kept* keep)
{
    std::thread(
        [&]
        {
            const std::unique_ptr<Record> record(new Record);
            record_pool::Extend(numbers, count);
            CRecordChunk::Of(kRecordsHaveOwnBlocks ? static_cast<void*>(numbers.GetData()) : record.get()).Keep(*keep);
            for (int i = 0; i < count; ++i)
                numbers[i] = i + 1;
            keep->Release();
        })
        .join();
}

void Delete(const std::vector<Record*>& records)
{
    record_pool::Delete(records.data(), static_cast<std::ptrdiff_t>(records.size()));
}
} // namespace

TEST(RecordPool, WhatAChunkKeepsGoesWithItsLastRecord)
{
    bool isGone = false;
    auto* const keep = new Kept(isGone);
    std::vector<Record*> records = MakePlain(30'000, keep);
    keep->Release();
    Record* const last = records.back();
    records.back() = nullptr;
    Delete(records);
    EXPECT_FALSE(isGone);
    delete last;
    EXPECT_TRUE(isGone);
}

TEST(RecordPool, AChunkKeepsForEveryFileThatHasRecordsInIt)
{
    bool isFirstGone = false;
    bool isSecondGone = false;
    auto* const first = new Kept(isFirstGone);
    auto* const second = new Kept(isSecondGone);
    std::vector<Record*> records;
    for (int i = 0; i < 10; ++i)
        records.push_back(MakePlain(1, i % 2 == 0 ? first : second).front());
    first->Release();
    second->Release();
    EXPECT_FALSE(isFirstGone);
    EXPECT_FALSE(isSecondGone);
    Delete(records);
    EXPECT_TRUE(isFirstGone);
    EXPECT_TRUE(isSecondGone);
}

TEST(RecordPool, DestructorsRunOnlyInChunksThatOwnSomething)
{
    destroyed = 0;
    Delete(MakePlain(1000));
    EXPECT_EQ(destroyed, kRecordsHaveOwnBlocks ? 1000 : 0);
    destroyed = 0;
    const std::vector<Record*> records = MakePlain(10);
    CRecordChunk::Of(records[3]).RecordOwnsSomething();
    Delete(records);
    EXPECT_EQ(destroyed, 10);
}

TEST(RecordPool, RecordsMadeByNewAreDestroyedBesideThoseOfAFile)
{
    destroyed = 0;
    std::vector<Record*> records = MakePlain(3);
    records.insert(records.begin() + 1, new Record);
    records.insert(records.begin(), nullptr);
    records.push_back(new Record);
    Delete(records);
    EXPECT_EQ(destroyed, kRecordsHaveOwnBlocks ? 5 : 2);
}

TEST(RecordPool, ARecordFarInsideALargeObjectIsDeletedWithIt)
{
    destroyed = 0;
    std::vector<Record*> records = MakePlain(3);
    records.push_back(new LargeRecord);
    records.push_back(new LargeRecord);
    Delete(records);
    EXPECT_EQ(destroyed, 5); // while there are such, every record is looked at
    destroyed = 0;
    Delete(MakePlain(3));
    EXPECT_EQ(destroyed, kRecordsHaveOwnBlocks ? 3 : 0);
}

TEST(RecordPool, RecordsAreGivenBackOnAnotherThreadAfterTheirMakersEnd)
{
    bool isGone = false;
    std::vector<Record*> records;
    std::thread(
        [&]
        {
            auto* const keep = new Kept(isGone);
            records = MakePlain(5000, keep);
            keep->Release();
        })
        .join();
    EXPECT_FALSE(isGone);
    for (std::size_t i = 0; i < records.size(); i += 3)
    {
        delete records[i];
        records[i] = nullptr;
    }
    Delete(records);
    EXPECT_TRUE(isGone);
}

// Three chunks are made on threads of their own, so that they are full: one of features, which keeps a list with records
// in the second, and a third.
TEST(RecordPool, AChunkThatGoesWhileAThreadTurnsToAnotherMayDeleteRecordsOfAThird)
{
    bool isListGone = false;
    bool isSecondGone = false;
    bool isThirdGone = false;
    std::vector<Record*> features;
    std::vector<Record*> second;
    std::vector<Record*> third;
    const auto made = [](bool& isGone, int count)
    {
        auto* const keep = new Kept(isGone);
        std::vector<Record*> records = MakePlain(count, keep);
        keep->Release();
        return records;
    };
    std::thread([&] { second = made(isSecondGone, 8); }).join();
    std::thread([&] { third = made(isThirdGone, 8); }).join();
    std::thread(
        [&]
        {
            auto* const list = new KeptWithRecords(isListGone, {second.begin(), second.begin() + 7});
            features = MakePlain(2, list);
            list->Release();
        })
        .join();
    delete features[0];                                      // counted by this thread
    std::thread([&features] { delete features[1]; }).join(); // the other is gone before this thread turns to the third
    for (std::size_t i = 0; i < 7; ++i)
        delete third[i];
    EXPECT_TRUE(isListGone);
    EXPECT_FALSE(isSecondGone);
    EXPECT_FALSE(isThirdGone);
    delete second[7];
    EXPECT_TRUE(isSecondGone);
    EXPECT_FALSE(isThirdGone);
    delete third[7];
    EXPECT_TRUE(isThirdGone);
}

TEST(RecordPool, ARecordThatIsDeletedAtTheVeryEndOfAThreadIsCounted)
{
    bool isGone = false;
    std::vector<Record*> records;
    std::thread(
        [&]
        {
            auto* const keep = new Kept(isGone);
            records = MakePlain(2, keep);
            keep->Release();
        })
        .join();
    std::thread(
        [&records]
        {
            deleterAtThreadEnd.m_record = records[0]; // before the thread's first record: it ends after the pool
            delete new Record;
        })
        .join();
    EXPECT_FALSE(isGone);
    delete records[1];
    EXPECT_TRUE(isGone);
}

TEST(RecordPool, WhatAThreadFillsAndCountsIsClosedWhenItEnds)
{
    bool isGone = false;
    bool areOthersGone = false;
    std::vector<Record*> records;
    std::vector<Record*> others;
    std::thread(
        [&]
        {
            auto* const keep = new Kept(isGone);
            records = MakePlain(4, keep);
            keep->Release();
        })
        .join();
    std::thread(
        [&]
        {
            delete records[0]; // counted, and nothing further is deleted
            auto* const keep = new Kept(areOthersGone);
            others = MakePlain(1, keep);
            keep->Release();
        })
        .join();
    for (std::size_t i = 1; i < records.size(); ++i)
        delete records[i];
    EXPECT_TRUE(isGone);
    Delete(others);
    EXPECT_TRUE(areOthersGone);
}

TEST(RecordPool, AShortListLiesAmongTheRecordsUntilItIsEmptied)
{
    bool isGone = false;
    CArrayN numbers;
    FillAlone(numbers, 5, new Kept(isGone));
    EXPECT_FALSE(isGone);
    ASSERT_EQ(numbers.GetSize(), 5);
    EXPECT_EQ(numbers[4], 5);
    numbers.RemoveAll();
    EXPECT_TRUE(isGone);
    EXPECT_EQ(numbers.Add(7), 0);
    EXPECT_EQ(numbers[0], 7);
}

TEST(RecordPool, AListThatGrowsMovesOutFromAmongTheRecords)
{
    bool isGone = false;
    CArrayN numbers;
    FillAlone(numbers, 3, new Kept(isGone));
    numbers.Add(4);
    EXPECT_TRUE(isGone);
    ASSERT_EQ(numbers.GetSize(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(numbers[i], i + 1);
}

TEST(RecordPool, AListThatIsSwappedTakesItsPlaceAlong)
{
    bool isGone = false;
    CArrayN numbers;
    FillAlone(numbers, 3, new Kept(isGone));
    CArrayN others;
    others.Add(9);
    others.Swap(numbers);
    numbers.RemoveAll();
    EXPECT_FALSE(isGone);
    EXPECT_EQ(others[2], 3);
    others.SetSize(1);
    others.FreeExtra();
    EXPECT_FALSE(isGone); // it counts as full
    others.Add(5);
    EXPECT_TRUE(isGone);
    EXPECT_EQ(others[0], 1);
    EXPECT_EQ(others[1], 5);
}

TEST(RecordPool, OnlyAShortListWithoutABlockLiesAmongTheRecords)
{
    const std::unique_ptr<Record> record(new Record);
    const auto liesInside = [&record](const CArrayN& numbers)
    {
        const auto address = reinterpret_cast<std::uintptr_t>(numbers.GetData());
        const CRecordChunk& chunk = CRecordChunk::Of(record.get());
        return address - reinterpret_cast<std::uintptr_t>(&chunk) < chunk.Size();
    };
    constexpr auto kMost = static_cast<std::ptrdiff_t>(kLargestBlock / sizeof(int));
    for (const std::ptrdiff_t count : {std::ptrdiff_t{1}, kMost, kMost + 1})
    {
        CArrayN numbers;
        record_pool::Extend(numbers, count);
        EXPECT_EQ(numbers.GetSize(), count);
        EXPECT_EQ(numbers[count - 1], 0);
        EXPECT_EQ(liesInside(numbers), count <= kMost && !kRecordsHaveOwnBlocks);
    }
    CArrayN numbers;
    record_pool::Extend(numbers, 0);
    EXPECT_EQ(numbers.GetData(), nullptr);
    numbers.Add(1);
    record_pool::Extend(numbers, 2);
    EXPECT_EQ(numbers.GetSize(), 3);
    EXPECT_EQ(numbers[0], 1);
    EXPECT_FALSE(liesInside(numbers));
}

TEST(RecordPool, AShortListFillsTheRestOfAPageWhereARecordDidNotFit)
{
    if (kRecordsHaveOwnBlocks)
        GTEST_SKIP() << "every record has a block of its own";
    std::thread(
        []
        {
            std::vector<std::unique_ptr<LongRecord>> records;
            LongRecord* before = nullptr;
            LongRecord* last = nullptr;
            while (before == nullptr || last == before + 1 || &CRecordChunk::Of(last) != &CRecordChunk::Of(before))
            {
                before = last;
                last = records.emplace_back(record_pool::New<LongRecord>()).get();
            }
            CArrayN first;
            CArrayN second;
            CArrayN tooLong;
            record_pool::Extend(first, 2);
            record_pool::Extend(second, 2);
            record_pool::Extend(tooLong, kLargestBlock / sizeof(int));
            EXPECT_EQ(static_cast<const void*>(first.GetData()), before + 1);
            EXPECT_EQ(static_cast<const void*>(second.GetData()),
                      reinterpret_cast<char*>(before + 1) + 2 * sizeof(int));
            EXPECT_EQ(static_cast<const void*>(tooLong.GetData()), last + 1);
        })
        .join();
}

TEST(RecordPool, TheFirstRecordsOfAChunkLieBehindItsHeaderWhereAPageMayBeginThere)
{
    if (kRecordsHaveOwnBlocks)
        GTEST_SKIP() << "every record has a block of its own";
    std::vector<std::unique_ptr<LongRecord>> records;
    const CRecordChunk* chunk = nullptr;
    for (int i = 0; i < 3000; ++i)
    {
        records.push_back(record_pool::New<LongRecord>());
        if (std::exchange(chunk, &CRecordChunk::Of(records.back().get())) == chunk || i == 0)
            continue;
        const auto begin = reinterpret_cast<std::uintptr_t>(chunk);
        const auto behind = reinterpret_cast<std::uintptr_t>(records.back().get()) - begin;
        if (begin % kRecordPage == kPageOffset)
            EXPECT_LT(behind, 128U);
        else
            EXPECT_LE(behind, kRecordPage + 128U);
        EXPECT_GE(behind, sizeof(CRecordChunk));
    }
}

TEST(RecordPool, ARecordOfAReaderFollowsWithoutAGap)
{
    if (kRecordsHaveOwnBlocks)
        GTEST_SKIP() << "every record has a block of its own";
    std::thread(
        []
        {
            const std::unique_ptr<Record> first = record_pool::New<Record>();
            CArrayN numbers;
            record_pool::Extend(numbers, 2);
            const std::unique_ptr<Record> second = record_pool::New<Record>();
            const auto distance =
                reinterpret_cast<const char*>(second.get()) - reinterpret_cast<const char*>(first.get());
            EXPECT_EQ(distance, static_cast<std::ptrdiff_t>(sizeof(Record) + 2 * sizeof(int)));
        })
        .join();
}
