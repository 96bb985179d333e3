#include "foundation/corekit/CStringEx.h"
#include "support/CommaLocale.h"

#include <gtest/gtest.h>

TEST(StringEx, ToDouble_ReadsTheNumberThatTheTextBeginsWith)
{
    const struct
    {
        const char* text;
        double expected;
    } kCases[] = {{"1.5", 1.5}, {"  -2.25e2 mm", -225}, {"+7", 7}, {"", 0}, {"abc", 0}, {".5.5", 0.5}, {"1,5", 1}};
    for (const auto& testCase : kCases)
        EXPECT_EQ(CStringEx(testCase.text).ToDouble(), testCase.expected) << testCase.text;
}

TEST(StringEx, ToInteger_ReadsTheNumberThatTheTextBeginsWith)
{
    const struct
    {
        const char* text;
        int expected;
    } kCases[] = {{"12", 12},
                  {" -7x", -7},
                  {"1.9", 1},
                  {"", 0},
                  {"x1", 0},
                  {"99999999999", 2147483647},
                  {"-99999999999", -2147483647 - 1}};
    for (const auto& testCase : kCases)
        EXPECT_EQ(CStringEx(testCase.text).ToInteger(), testCase.expected) << testCase.text;
}

TEST(StringEx, Conversions_GoThroughToDoubleAndToInteger)
{
    const CStringEx text("2.75");
    const int integer = text;
    const float single = text;
    const double real = text;
    EXPECT_EQ(integer, 2);
    EXPECT_EQ(single, 2.75F);
    EXPECT_EQ(real, 2.75);
}

TEST(StringEx, IsMadeOfATextAndComparedWithItsCase)
{
    const CStringEx text(CString("a1"));
    EXPECT_EQ(text.GetText(), "a1");
    EXPECT_TRUE(text == CStringEx("a1"));
    EXPECT_FALSE(text == CStringEx("A1"));
}

TEST(StringEx, ToDouble_DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(locale);
    EXPECT_EQ(CStringEx("2.5").ToDouble(), 2.5);
    EXPECT_EQ(CStringEx("2,5").ToDouble(), 2.0);
}

TEST(StringExArray, StringInArray_IsExactAndCaseSensitive)
{
    CStringExArray texts;
    EXPECT_FALSE(texts.bStringInArray(""));
    texts.Add("pcb");
    texts.Add("Panel");
    CStringExArray copy;
    copy = texts;
    texts[0] = CStringEx("other");
    EXPECT_TRUE(copy.bStringInArray("pcb"));
    EXPECT_TRUE(copy.bStringInArray("Panel"));
    EXPECT_FALSE(copy.bStringInArray("panel"));
    EXPECT_FALSE(copy.bStringInArray("pc"));
    EXPECT_FALSE(texts.bStringInArray("pcb"));
}
