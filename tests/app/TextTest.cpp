#include "output/Text.h"
#include "output/Wrapping.h"

#include <gtest/gtest.h>

#include <limits>

TEST(JobxText, Utf8IsOnlyWhatIsWellFormed)
{
    const std::pair<std::string_view, bool> table[] = {
        {"", true},
        {"plain", true},
        {std::string_view("a\0b", 3), true},
        {"\xC3\xA9", true},
        {"\xE2\x82\xAC", true},
        {"\xF0\x9F\x98\x80", true},
        {"\xF4\x8F\xBF\xBF", true},
        {"\xEF\xBF\xBF", true},
        {"\x80", false},
        {"\xC3", false},
        {"\xC3(", false},
        {"\xC0\xAF", false},         // overlong
        {"\xE0\x80\xAF", false},     // overlong
        {"\xF0\x80\x80\xAF", false}, // overlong
        {"\xED\xA0\x80", false},     // a surrogate
        {"\xF4\x90\x80\x80", false}, // above the last character
        {"\xF5\x80\x80\x80", false},
        {"\xE2\x82", false},
        {"\xFF", false},
        {"ok\xE9", false},
    };
    for (const auto& [text, isUtf8] : table)
        EXPECT_EQ(IsUtf8(text), isUtf8) << Printable(text);
}

TEST(JobxText, EveryByteBecomesTheCharacterOfItsNumber)
{
    EXPECT_EQ(BytesAsCharacters("a\x7F\x80\xBF\xC0\xFF"), "a\x7F\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF");
}

TEST(JobxText, PrintableShowsControlCharactersAndStrayBytes)
{
    EXPECT_EQ(Printable("a\tb\n\x1B[0m\x7F"), "a\\x09b\\x0A\\x1B[0m\\x7F");
    EXPECT_EQ(Printable("\xC3\xA9\xC2\x85\xE9\xC2"), "\xC3\xA9\\xC2\\x85\\xE9\\xC2");
    EXPECT_EQ(Printable(std::string_view("\0", 1)), "\\x00");
    EXPECT_EQ(CharacterCount("a\xC3\xA9\xE2\x82\xAC"), 3U);
}

TEST(JobxText, PrintableEscapesWhatShowsNothingOrTurnsTheDirection)
{
    EXPECT_EQ(Printable("a\xE2\x80\xAE"
                        "b"),
              "a\\xE2\\x80\\xAE"
              "b");
    for (const std::string escaped :
         {"\xC2\xAD", "\xD8\x9C", "\xE1\xA0\x8E", "\xE2\x80\x8B", "\xE2\x80\x8F", "\xE2\x80\xA8", "\xE2\x80\xA9",
          "\xE2\x80\xAA", "\xE2\x80\xAE", "\xE2\x81\xA0", "\xE2\x81\xA6", "\xE2\x81\xA9", "\xEF\xBB\xBF",
          "\xEF\xBF\xB9", "\xF3\xA0\x80\x81", "\xF3\xA0\x81\xBF"})
        EXPECT_EQ(Printable(escaped).find_first_not_of("\\x0123456789ABCDEF"), std::string::npos) << escaped;
    for (const std::string shown :
         {"\xC2\xA0", "\xC2\xAE", "\xE2\x80\x8A", "\xE2\x80\x90", "\xE2\x80\xA7", "\xE2\x80\xAF", "\xE2\x81\xB0",
          "\xEF\xBF\xBD", "\xF0\x9F\x99\x82", "\xF3\xA0\x82\x80"})
        EXPECT_EQ(Printable(shown), shown);
}

TEST(JobxText, NumbersAreShortAndReadBackEqual)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, std::string_view> table[] = {
        {0.0, "0"},
        {-0.0, "-0.0"},
        {1.0, "1"},
        {-2.5, "-2.5"},
        {0.1, "0.1"},
        {1e21, "1e+21"},
        {1e-7, "1e-07"},
        {100000, "1e+05"},
        {123456, "123456"},
        {kInfinity, "inf"},
        {-kInfinity, "-inf"},
        {kNan, "nan"},
        {-kNan, "-nan"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"}};
    for (const auto& [number, text] : table)
        EXPECT_EQ(NumberText(number).View(), text);
}

TEST(JobxText, LongLinesAreBrokenAtBlanksAndFurtherLinesIndented)
{
    EXPECT_EQ(Wrapped("one two three", 13, 2), "one two three");
    EXPECT_EQ(Wrapped("one two three", 12, 2), "one two\n  three");
    EXPECT_EQ(Wrapped("one two three", 7, 2), "one two\n  three");
    EXPECT_EQ(Wrapped("one two three", 6, 1), "one\n two\n three");
    EXPECT_EQ(Wrapped("    onetwothree", 8, 5), "    onet\n     wot\n     hre\n     e");
    EXPECT_EQ(Wrapped("one two three", 0, 2), "one two three");
    EXPECT_EQ(Wrapped("\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9", 5, 1), "\xC3\xA9\xC3\xA9 \xC3\xA9\xC3\xA9");
    EXPECT_EQ(Wrapped("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 3, 1), "\xC3\xA9\xC3\xA9\xC3\xA9\n \xC3\xA9");
    EXPECT_EQ(Wrapped("\x1B[31mone two\x1B[0m", 7, 2), "\x1B[31mone two\x1B[0m");
    EXPECT_EQ(Wrapped("\x1B[31mone two\x1B[0m", 6, 2), "\x1B[31mone\n  two\x1B[0m");
}
