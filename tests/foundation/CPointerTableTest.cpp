#include "foundation/CPointerTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <thread>
#include <vector>

namespace
{
// Adds a pointer to each number and returns the numbers that the table gave.
std::vector<std::uint32_t> AddAll(CPointerTable<int>& table, std::vector<int>& values)
{
    std::vector<std::uint32_t> numbers;
    for (int& value : values)
        numbers.push_back(table.Add(&value));
    return numbers;
}

bool FindsAll(const CPointerTable<int>& table, const std::vector<std::uint32_t>& numbers, std::vector<int>& values)
{
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (table.Find(numbers[i]) != &values[i])
            return false;
    return true;
}
} // namespace

TEST(PointerTable, FindsEachPointerByItsOwnNumber)
{
    CPointerTable<int> table;
    std::vector<int> values(5000);
    const std::vector<std::uint32_t> numbers = AddAll(table, values);
    EXPECT_EQ(std::set(numbers.begin(), numbers.end()).size(), values.size());
    EXPECT_TRUE(FindsAll(table, numbers, values));
    for (const std::uint32_t number : numbers)
        table.Remove(number);
}

TEST(PointerTable, GivesNumbersAgainThatAreFree)
{
    CPointerTable<int> table;
    std::vector<int> values(1000);
    std::vector<std::uint32_t> numbers = AddAll(table, values);
    const std::uint32_t largest = *std::max_element(numbers.begin(), numbers.end());
    for (int round = 0; round < 3; ++round)
    {
        for (std::size_t i = 0; i < numbers.size(); i += 3)
            table.Remove(numbers[i]);
        for (std::size_t i = 0; i < numbers.size(); i += 3)
        {
            numbers[i] = table.Add(&values[i]);
            EXPECT_LE(numbers[i], largest);
        }
        EXPECT_TRUE(FindsAll(table, numbers, values));
    }
    for (const std::uint32_t number : numbers)
        table.Remove(number);
}

TEST(PointerTable, BeginsAgainWhenTheLastPointerIsGone)
{
    CPointerTable<int> table;
    for (int round = 0; round < 2; ++round)
    {
        std::vector<int> values(100);
        const std::vector<std::uint32_t> numbers = AddAll(table, values);
        EXPECT_EQ(numbers.front(), 0U);
        EXPECT_EQ(numbers.back(), 99U);
        EXPECT_TRUE(FindsAll(table, numbers, values));
        for (const std::uint32_t number : numbers)
            table.Remove(number);
    }
}

TEST(PointerTable, ThreadsUseItAtOnce)
{
    CPointerTable<int> table;
    std::vector<int> areRight(4, 0);
    std::vector<std::thread> threads;
    for (int& isRight : areRight)
        threads.emplace_back(
            [&table, &isRight]
            {
                isRight = 1;
                for (int round = 0; round < 20; ++round)
                {
                    std::vector<int> values(200);
                    const std::vector<std::uint32_t> numbers = AddAll(table, values);
                    isRight = isRight != 0 && FindsAll(table, numbers, values) ? 1 : 0;
                    for (const std::uint32_t number : numbers)
                        table.Remove(number);
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(areRight, std::vector<int>(4, 1));
}
