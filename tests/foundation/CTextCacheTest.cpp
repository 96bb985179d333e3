#include "foundation/CTextCache.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(TextCache, GivesTheTextThatWasAskedFor)
{
    CTextCache cache;
    for (int round = 0; round < 3; ++round)
        for (int i = 0; i < 5000; ++i)
        {
            // Far more texts than are known at once, many of them with the same beginning and end.
            const std::string text = "PART" + std::to_string(i) + "_NAME";
            EXPECT_EQ(cache.Of(text).View(), text);
        }
    for (std::size_t length = 0; length < 20; ++length)
    {
        const std::string text(length, '\0');
        EXPECT_EQ(cache.Of(text).View(), text);
    }
}

TEST(TextCache, EqualLongTextsShareTheirCharacters)
{
    CTextCache cache;
    const CString first = cache.Of("PART_NAME");
    const CString second = cache.Of(std::string("PART_NAME"));
    EXPECT_EQ(static_cast<const void*>(first.GetString()), static_cast<const void*>(second.GetString()));
}

TEST(TextCache, ChangingATextLeavesTheOthers)
{
    CTextCache cache;
    CString first = cache.Of("PART_NAME");
    first += "!";
    EXPECT_STREQ(first, "PART_NAME!");
    EXPECT_STREQ(cache.Of("PART_NAME"), "PART_NAME");
}

TEST(TextCache, RemembersMoreTheMoreDifferentTextsThereAre)
{
    constexpr int kTexts = 20'000;
    CTextCache cache;
    std::vector<CString> known(kTexts);
    int shared = 0;
    for (int round = 0; round < 5; ++round)
    {
        shared = 0;
        for (int i = 0; i < kTexts; ++i)
        {
            const CString text = cache.Of("0." + std::to_string(100'000 + i));
            CString& before = known[static_cast<std::size_t>(i)];
            shared += text.GetString() == before.GetString() ? 1 : 0;
            before = text;
        }
    }
    EXPECT_GT(shared, kTexts / 2);
}
