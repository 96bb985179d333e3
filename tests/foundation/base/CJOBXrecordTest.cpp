#include "foundation/base/CJOBXrecord.h"

#include "support/MemoryChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace
{
class Record : public CJOBXrecord
{
public:
    explicit Record(int number) : m_nNumber(number) {}
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    virtual ~Record() = default;
    virtual bool IsWhole(int number) const { return m_nNumber == number; }

    int m_nNumber;
};

// Objects of another size, all of whose bytes are used.
template <std::size_t Size>
class RecordOf : public Record
{
public:
    explicit RecordOf(int number) : Record(number) { m_bytes.fill(static_cast<unsigned char>(number)); }
    bool IsWhole(int number) const override
    {
        return Record::IsWhole(number) &&
               std::all_of(m_bytes.begin(), m_bytes.end(),
                           [number](unsigned char byte) { return byte == static_cast<unsigned char>(number); });
    }

private:
    std::array<unsigned char, Size> m_bytes{};
};

class AlignedRecord : public Record
{
public:
    explicit AlignedRecord(int number) : Record(number) {}
    bool IsWhole(int number) const override
    {
        return Record::IsWhole(number) && reinterpret_cast<std::uintptr_t>(&m_value) % alignof(long double) == 0;
    }

private:
    long double m_value = 0.0L;
};

std::unique_ptr<Record> MakeRecord(int number)
{
    switch (number % 5)
    {
    case 0:
        return std::make_unique<Record>(number);
    case 1:
        return std::make_unique<RecordOf<20>>(number);
    case 2:
        return std::make_unique<AlignedRecord>(number);
    case 3:
        return std::make_unique<RecordOf<1000>>(number);
    default:
        return std::make_unique<RecordOf<2000>>(number); // too large to share a block
    }
}

using Records = std::vector<std::unique_ptr<Record>>;

Records MakeRecords(int count)
{
    Records records;
    for (int i = 0; i < count; ++i)
        records.push_back(MakeRecord(i));
    return records;
}

int CountWhole(const Records& records)
{
    int whole = 0;
    for (std::size_t i = 0; i < records.size(); ++i)
        whole += records[i]->IsWhole(static_cast<int>(i)) ? 1 : 0;
    return whole;
}
} // namespace

TEST(Record, ObjectsOfEverySizeKeepTheirBytesAndAlignment)
{
    const Records records = MakeRecords(3000);
    EXPECT_EQ(CountWhole(records), 3000);
}

TEST(Record, ObjectsAreDeletedInAnyOrder)
{
    Records records = MakeRecords(3000);
    Records shuffled;
    for (std::size_t i = 0; i < records.size(); i += 2)
        shuffled.push_back(std::move(records[i]));
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
    shuffled.clear();
    int whole = 0;
    for (std::size_t i = 1; i < records.size(); i += 2)
        whole += records[i]->IsWhole(static_cast<int>(i)) ? 1 : 0;
    EXPECT_EQ(whole, 1500);
}

TEST(Record, ObjectsAreMadeAndDeletedOnDifferentThreadsAtOnce)
{
    constexpr int kThreads = 4;
    std::array<Records, kThreads> made;
    std::array<int, kThreads> whole{};
    for (int round = 0; round < 3; ++round)
    {
        std::vector<std::thread> threads;
        for (std::size_t t = 0; t < kThreads; ++t)
            threads.emplace_back([&made, t] { made[t] = MakeRecords(2000); });
        for (std::thread& thread : threads)
            thread.join();
        threads.clear();
        for (std::size_t t = 0; t < kThreads; ++t)
            whole[t] = CountWhole(made[t]);
        // Every thread deletes a part of what each of them made.
        for (std::size_t t = 0; t < kThreads; ++t)
            threads.emplace_back(
                [&made, t]
                {
                    for (Records& records : made)
                        for (std::size_t i = t; i < records.size(); i += kThreads)
                            records[i].reset();
                });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(whole, (std::array<int, kThreads>{2000, 2000, 2000, 2000}));
    }
}

#if defined(__GLIBC__) && !defined(JOBX_MEMORY_CHECKER)
namespace
{
std::size_t AllocatedBytes()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}
} // namespace

TEST(Record, MemoryComesBackWhenEveryObjectIsDeleted)
{
    MakeRecords(5000);
    const std::size_t before = AllocatedBytes();
    for (int round = 0; round < 10; ++round)
        MakeRecords(5000);
    EXPECT_EQ(AllocatedBytes(), before);
}

TEST(Record, FewObjectsTakeLittle)
{
    MakeRecords(1); // whatever a thread makes once only
    const std::size_t before = AllocatedBytes();
    const auto one = std::make_unique<Record>(1);
    const auto other = std::make_unique<Record>(2);
    EXPECT_LE(AllocatedBytes() - before, 8U * 1024);
}

TEST(Record, ManyObjectsTakeHardlyMoreThanTheirSizes)
{
    constexpr std::size_t kCount = 200'000;
    std::vector<std::unique_ptr<Record>> records(kCount);
    const std::size_t before = AllocatedBytes();
    for (std::size_t i = 0; i < kCount; ++i)
        records[i] = std::make_unique<RecordOf<20>>(static_cast<int>(i));
    const auto taken = static_cast<double>(AllocatedBytes() - before);
    EXPECT_LT(taken, 1.03 * kCount * sizeof(RecordOf<20>) + 512.0 * 1024);
}
#endif

TEST(Record, DeletingNullDoesNothing)
{
    EXPECT_NO_FATAL_FAILURE(CJOBXrecord::operator delete(nullptr));
}
