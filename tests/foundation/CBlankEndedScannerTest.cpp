// Tokens from the front of a line: what a blank ends is taken, the last piece stays.
#include "foundation/CBlankEndedScanner.h"

#include <gtest/gtest.h>

TEST(BlankEndedScanner, TokenIsWhatABlankEnds)
{
    CBlankEndedScanner fields("one  two\tthree \t four");
    EXPECT_EQ(fields.Token(), "one");
    EXPECT_EQ(fields.Rest(), "two\tthree \t four");
    EXPECT_EQ(fields.Token(), "two\tthree");
    EXPECT_EQ(fields.Rest(), "four");
    EXPECT_EQ(fields.Token(), "") << "no blank ends it";
    EXPECT_EQ(fields.Rest(), "four");
    EXPECT_EQ(fields.TokenOrRest(), "four");
    EXPECT_EQ(fields.Rest(), "");
    EXPECT_EQ(fields.TokenOrRest(), "");
    EXPECT_EQ(fields.Token(), "");
}

TEST(BlankEndedScanner, TokenEndsAtABlankWithNothingBehindItToo)
{
    CBlankEndedScanner fields("one \t ");
    EXPECT_EQ(fields.Token(), "one");
    EXPECT_EQ(fields.Rest(), "");
    CBlankEndedScanner number("7 ");
    EXPECT_EQ(number.Integer(), 7);
    EXPECT_EQ(number.Rest(), "");
}

TEST(BlankEndedScanner, NumberIsReadFromItsTokenOnly)
{
    CBlankEndedScanner fields("12 -3x 1.5e2 abc 7.25;1 0x10 9");
    EXPECT_EQ(fields.Integer(), 12);
    EXPECT_EQ(fields.Integer(), -3) << "what follows in the token is passed over";
    EXPECT_EQ(fields.Real(), 150.0);
    EXPECT_EQ(fields.Real(), 0.0);
    EXPECT_EQ(fields.Real(), 7.25);
    EXPECT_EQ(fields.Real(), 16.0);
    EXPECT_EQ(fields.Real(), 0.0) << "no blank ends it";
    EXPECT_EQ(fields.Integer(), 0);
    EXPECT_EQ(fields.Rest(), "9");
}

TEST(BlankEndedScanner, NumberThatFillsTheTextIsLeft)
{
    CBlankEndedScanner empty("");
    EXPECT_EQ(empty.Integer(), 0);
    EXPECT_EQ(empty.Real(), 0.0);
    EXPECT_EQ(empty.Rest(), "");
    CBlankEndedScanner one("5");
    EXPECT_EQ(one.Integer(), 0);
    EXPECT_EQ(one.Rest(), "5");
}
