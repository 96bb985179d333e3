#include "saving/CRecordLines.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace
{
TEST(CRecordLines, SeparatesFieldsByBlanks)
{
    CRecordLines lines;
    lines.Begin(0, 7);
    lines.Word('P').Real(0.5).Integer(-3).Glue(";").GlueInteger(0).Glue("=").GlueInteger(12);
    lines.KeyValue(1, "TYPE", "SIGNAL");
    lines.KeyReal(1, "X", 2.0);
    EXPECT_EQ(lines.WholeText(), "P 0.5 -3;0=12\nTYPE=SIGNAL\nX=2\n");
    EXPECT_EQ(lines.Lines()[0].sourceLine, 7);
    EXPECT_EQ(lines.KeyOf(lines.Lines()[0]), "P");
    EXPECT_EQ(lines.KeyOf(lines.Lines()[1]), "TYPE");
    EXPECT_TRUE(lines.Lines()[1].isKeyValue);
}

TEST(CRecordLines, KeyIsWhatWasPrintedSoFar)
{
    CRecordLines lines;
    lines.Begin(0, CRecordLines::kUnknownLine);
    lines.Word("PRP").Word("VALUE").EndKey().Word("'12k'");
    EXPECT_EQ(lines.KeyOf(lines.Lines()[0]), "PRP VALUE");
    EXPECT_EQ(lines.TextOf(lines.Lines()[0]), "PRP VALUE '12k'");
}

TEST(CRecordLines, NumbersReadBackEqualWithFewestDigitsAndNoExponent)
{
    for (const double number : {0.1, 1.0 / 3.0, 1e22, 1e-7, -2.5, 123456.789, std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::denorm_min()})
    {
        std::string text;
        AppendReal(text, number);
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), number) << text;
        EXPECT_EQ(text.find_first_of("eE"), std::string::npos) << text;
    }
    std::string text;
    AppendReal(text, 0.1);
    AppendReal(text, -0.0);
    EXPECT_EQ(text, "0.10");
}
} // namespace
