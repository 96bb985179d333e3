// Reading numbers: the same results as the C library's functions in the C locale, for every text.
#include "foundation/base/NumberText.h"

#include "support/CommaLocale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace number_text_test
{
namespace
{
bool SameNumber(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b));
}

// The text in memory of exactly its size, so that reading past its end is seen by the sanitizers.
double ParseExact(const std::string& text)
{
    const std::unique_ptr<char[]> exact(new char[text.size()]);
    std::memcpy(exact.get(), text.data(), text.size());
    return ParseReal({exact.get(), text.size()});
}

void ExpectAsAtof(const std::string& text)
{
    const double expected = std::atof(text.c_str());
    const double actual = ParseExact(text);
    EXPECT_TRUE(SameNumber(actual, expected)) << '"' << text << "\": " << actual << " instead of " << expected;
}

unsigned Seed()
{
    const char* const chosen = std::getenv("JOBX_TEST_SEED");
    return chosen != nullptr ? static_cast<unsigned>(std::atoi(chosen)) : 20260101U;
}
} // namespace

TEST(NumberText, RealsReadAsTheCLibraryReadsThem)
{
    for (const char* text : {"",
                             "-",
                             "+",
                             "+5",
                             "--1",
                             "+-1",
                             "1",
                             "-0",
                             "0.1",
                             ".5",
                             "5.",
                             ".",
                             "-.5e1",
                             "1e5",
                             "1E+5",
                             "1e-5",
                             "1e",
                             "1e+",
                             "1.e5",
                             "1.5.5",
                             "1 2",
                             " 12",
                             "\t\v12",
                             "12abc",
                             "1,5",
                             "0x10",
                             "0X1.8p3",
                             "0x",
                             "0x.",
                             "0x.8",
                             "0x1p",
                             "0xg",
                             "inf",
                             "-inf",
                             "INFINITY",
                             "infinit",
                             "nan",
                             "-nan",
                             "nan(",
                             "nan(12)x",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "-1e-400",
                             "4.9e-324",
                             "2.4e-324",
                             "2.5e-324",
                             "0x1p2000",
                             "0.001e400",
                             "-0.00001e320",
                             "0.001e-400",
                             "0x0.001p2000",
                             "0x1p-2000",
                             "1.7976931348623159e308",
                             "2.2250738585072011e-308",
                             "9007199254740993",
                             "123456789012345678",
                             "1234567890123456789012",
                             "0.1234567890123456789012345",
                             "1e22",
                             "1e23",
                             "00000000000000000000000000000000001",
                             "0e999999999999999999",
                             "1e99999999999999999999",
                             "0x0p99999999999",
                             "1.000000000000000000000000000000000001",
                             "0.00000000000000000000000000000000000000000000000000000001e56",
                             "0x1fffffffffffff8p0",
                             "0x1.fffffffffffff8p1023",
                             "0x0.0000000000001p-1022"})
        ExpectAsAtof(text);
}

TEST(NumberText, RandomTextsReadAsTheCLibraryReadsThem)
{
    const unsigned seed = Seed();
    SCOPED_TRACE("JOBX_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    const std::string letters = "0123456789.eE+-xXpPinfatyINFN() \t,abc";
    for (int i = 0; i < 200'000; ++i)
    {
        std::string text(random() % 14, ' ');
        for (char& c : text)
            c = letters[random() % letters.size()];
        ExpectAsAtof(text);
    }
    for (int i = 0; i < 100'000; ++i)
    {
        const std::uint64_t bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        char text[400];
        for (const char* format : {"%.17g", "%g", "%a", "%.30e", "%f"})
        {
            std::snprintf(text, sizeof text, format, value);
            ExpectAsAtof(text);
        }
    }
}

// Every count of digits before and behind the point, with and without text behind the number: the digits are taken
// several at a time.
TEST(NumberText, PlainNumbersOfEveryLengthAreRoundedAsTheCLibraryRoundsThem)
{
    const unsigned seed = Seed();
    SCOPED_TRACE("JOBX_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int i = 0; i < 20; ++i)
        for (std::size_t before = 0; before <= 20; ++before)
            for (std::size_t behind = 0; behind <= 25; ++behind)
                for (const char* tail :
                     {"", " ", " 123456789", ";12345678", "\n0.5 1", "/", ":", "\xB0", "e", "E-3", "x"})
                {
                    std::string text = random() % 2 == 0 ? "-" : "";
                    for (std::size_t k = 0; k < before; ++k)
                        text += static_cast<char>('0' + random() % 10);
                    text += '.';
                    for (std::size_t k = 0; k < behind; ++k)
                        text += static_cast<char>('0' + random() % 10);
                    text += tail;
                    ExpectAsAtof(text);
                    if (HasFailure())
                        return;
                }
}

TEST(NumberText, TakesNoByteBehindTheTextIntoTheNumber)
{
    const std::string digits = "1.2345678901234567";
    for (std::size_t length = 0; length <= digits.size(); ++length)
    {
        const std::string_view text = std::string_view(digits).substr(0, length);
        const auto read = ReadReal(text.data(), text.data() + text.size());
        EXPECT_EQ(read.value, std::atof(std::string(text).c_str())) << text;
        EXPECT_EQ(read.end, text.data() + text.size()) << text;
    }
}

TEST(NumberText, ZerosBehindThePointMakeANumberSmallHoweverManyThereAre)
{
    for (const int zeros : {300, 400, 1000, 5000})
        for (const char* const exponent : {"", "e300", "e1000", "e5200", "e-10"})
            ExpectAsAtof("0." + std::string(static_cast<std::size_t>(zeros), '0') + "1" + exponent);
}

TEST(NumberText, ZerosBeforeThePointMakeANumberLargeHoweverManyThereAre)
{
    for (const int zeros : {300, 400, 1000, 5000})
        for (const char* const exponent : {"", ".5", "e-300", "e-400", "e-5200", "e10"})
            ExpectAsAtof("1" + std::string(static_cast<std::size_t>(zeros), '0') + exponent);
}

TEST(NumberText, RealsDoNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    EXPECT_EQ(ParseReal("1.5"), 1.5);
    EXPECT_EQ(ParseReal("1,5"), 1.0);
    EXPECT_EQ(ParseReal("1.5e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(ParseReal("0x1.8"), 1.5);
}

TEST(NumberText, IntegersStopAtTheirBounds)
{
    struct Case
    {
        const char* text;
        int value;
    };
    const Case cases[] = {{"", 0},
                          {"-", 0},
                          {"+7", 7},
                          {"-7x", -7},
                          {" \t12", 12},
                          {"1.9", 1},
                          {"x1", 0},
                          {"0x10", 0},
                          {"007", 7},
                          {"2147483647", 2147483647},
                          {"2147483648", 2147483647},
                          {"-2147483648", -2147483647 - 1},
                          {"-2147483649", -2147483647 - 1},
                          {"99999999999999999999999999", 2147483647},
                          {"-99999999999999999999999999", -2147483647 - 1},
                          {"4294967297", 2147483647},
                          {"- 1", 0},
                          {"--1", 0}};
    for (const Case& c : cases)
        EXPECT_EQ(ParseInteger(c.text), c.value) << c.text;
}

TEST(NumberText, SaysWhereTheNumberEnds)
{
    const std::string text = "12.5e1xyz";
    EXPECT_EQ(ReadReal(text.data(), text.data() + text.size()).end - text.data(), 6);
    EXPECT_EQ(ReadInteger(text.data(), text.data() + text.size()).end - text.data(), 2);
    const std::string none = "  x";
    EXPECT_EQ(ReadReal(none.data(), none.data() + none.size()).end, none.data());
    EXPECT_EQ(ReadInteger(none.data(), none.data() + none.size()).end, none.data());
}
} // namespace number_text_test
