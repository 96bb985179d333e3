#include "saving/LinePatch.h"

#include <gtest/gtest.h>

namespace
{
TEST(PatchLine, ReplacesOnlyFieldsThatDiffer)
{
    EXPECT_EQ(PatchLine("P  1.500  2.000 0 P 0 0 ;1=2,0;ID=77", "P 1.5 2 0 P 0 0;1=2,0;ID=77",
                        "P 1.75 2 0 P 0 90;1=2,0;ID=77"),
              "P  1.75  2.000 0 P 0 90 ;1=2,0;ID=77");
}

TEST(PatchLine, ReplacesPartsOfTheTail)
{
    EXPECT_EQ(PatchLine("NET A ;0=1;ID=5", "NET A;0=1;ID=5", "NET A;0=1;ID=6"), "NET A ;0=1;ID=6");
    EXPECT_EQ(PatchLine("NET A ;0=1", "NET A;0=1", "NET A"), "NET A");
    EXPECT_EQ(PatchLine("NET A", "NET A", "NET A;0"), "NET A;0");
    EXPECT_EQ(PatchLine("NET A ;;ID=5", "NET A;;ID=5", "NET A;3;ID=5"), "NET A ;3;ID=5");
}

TEST(PatchLine, KeepsFieldsThatNoRecordHas)
{
    EXPECT_EQ(PatchLine("TOP 0 1.0 2.0 x", "TOP 0 1 2", "TOP 0 3 2"), "TOP 0 3 2.0 x");
    EXPECT_EQ(PatchLine("A 1.0 2.0 x", "A 1 2", "A 1 2 3"), "A 1.0 2.0 3 x");
}

TEST(PatchLine, TakesFieldsInQuotesAsOne)
{
    EXPECT_EQ(PatchLine("T 1.0 2 f P 0 'a;b c' 1", "T 1 2 f P 0 'a;b c' 1", "T 1 2 f P 0 'x y' 1"),
              "T 1.0 2 f P 0 'x y' 1");
    EXPECT_EQ(PatchLine("PRP V 'a b'", "PRP V 'a b'", "PRP V 'c'"), "PRP V 'c'");
}

TEST(PatchLine, ReplacesTheMiddleIfFieldsComeOrGo)
{
    EXPECT_EQ(PatchLine("P 1.0 2.0 0 P 0 8 45.0", "P 1 2 0 P 0 8 45", "P 1 2 0 P 0 0"), "P 1.0 2.0 0 P 0 0");
    EXPECT_EQ(PatchLine("P 1.0 2.0 0 P 0 0", "P 1 2 0 P 0 0", "P 1 2 0 P 0 8 45"), "P 1.0 2.0 0 P 0 8 45");
    EXPECT_EQ(PatchLine("P 1.0 2.0 7 P", "P 1 2 7 P", "P 1 2 -1 7 0.5 P"), "P 1.0 2.0 -1 7 0.5 P");
    EXPECT_EQ(PatchLine("P 1.0 -1 7 P", "P 1 -1 7 P", "P 1 P"), "P 1.0 P");
}

TEST(PatchLine, ReplacesALineThatLacksFields)
{
    EXPECT_EQ(PatchLine("TOP 0 1.0", "TOP 0 1 0 0", "TOP 0 2 0 0"), "TOP 0 2 0 0");
}

TEST(PatchKeyLine, ReplacesTheValue)
{
    EXPECT_EQ(PatchKeyLine("TYPE = SIGNAL ; x", "TYPE=MIXED"), "TYPE = MIXED");
    EXPECT_EQ(PatchKeyLine("type=SIGNAL", "TYPE=MIXED"), "type=MIXED");
    EXPECT_EQ(PatchKeyLine("OLD_NAME=", "OLD_NAME=a b"), "OLD_NAME=a b");
    EXPECT_EQ(PatchKeyLine("NAME=a", "NAME="), "NAME=");
    EXPECT_EQ(PatchKeyLine("UNITS=INCH", "U=MM"), "U=MM");
}
} // namespace
