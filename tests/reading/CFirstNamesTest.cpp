#include "reading/CFirstNames.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace first_names_test
{
namespace
{
// Of the class, for a name in lower case.
std::uint32_t HashOf(const std::string& name)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char letter : name)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}
} // namespace

TEST(CFirstNames, GiveTheLineOfTheFirstOfEachNameInAnyCase)
{
    CFirstNames names;
    std::map<std::size_t, int> first; // by number
    std::mt19937 random(1);
    for (int line = 1; line <= 20'000; ++line)
    {
        const std::size_t number = random() % 9000;
        const auto [known, isNew] = first.try_emplace(number, line);
        const char* const word = random() % 2 == 0 ? "Net" : "nET";
        EXPECT_EQ(names.LineBefore(word + std::to_string(number), line), isNew ? 0 : known->second) << number;
    }
}

TEST(CFirstNames, ForgetAllWhenCleared)
{
    CFirstNames names;
    EXPECT_EQ(names.LineBefore("", 3), 0);
    EXPECT_EQ(names.LineBefore("", 4), 3) << "an empty name is a name";
    EXPECT_EQ(names.LineBefore("a", 4), 0);
    names.Clear();
    EXPECT_EQ(names.LineBefore("a", 5), 0);
    EXPECT_EQ(names.LineBefore("A", 6), 5);
}

TEST(CFirstNames, FindNamesThatAllWantTheSameSlot)
{
    constexpr std::uint32_t kSlots = 1024;
    std::vector<std::string> same;
    for (int i = 0; same.size() < 100; ++i)
        if (const std::string name = "n" + std::to_string(i); HashOf(name) % kSlots == 7)
            same.push_back(name);
    CFirstNames names;
    for (std::size_t i = 0; i < same.size(); ++i)
        EXPECT_EQ(names.LineBefore(same[i], static_cast<int>(i + 1)), 0) << same[i];
    for (std::size_t i = 0; i < same.size(); ++i)
        EXPECT_EQ(names.LineBefore(same[i], 1000), static_cast<int>(i + 1)) << same[i];
}
} // namespace first_names_test
