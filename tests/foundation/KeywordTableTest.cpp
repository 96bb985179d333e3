// Which keyword of a table a line goes to.
#include "foundation/KeywordTable.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
struct State
{
    std::string taken;
};

template <char Mark>
void Take(State& state, std::string_view line)
{
    state.taken += Mark;
    state.taken += line;
}

constexpr Keyword<State> kSome[] = {
    {"PIN", Take<'1'>}, {"PI", Take<'2'>}, {"NET", Take<'3'>, Letters::AsWritten}, {"# N", Take<'4'>}, {"P", Take<'5'>},
};

constexpr Keyword<State> kAll[] = {
    {"A", Take<'1'>},
    {"", Take<'2'>},
    {"B", Take<'3'>},
};

template <const auto& table>
std::string Taken(std::string_view line)
{
    State state;
    const bool taken = Dispatch<table>(state, line);
    EXPECT_EQ(taken, !state.taken.empty());
    return state.taken;
}
} // namespace

TEST(KeywordTable, FirstKeywordThatTheLineBeginsWithTakesIt)
{
    EXPECT_EQ(Taken<kSome>("PIN 1"), "1PIN 1");
    EXPECT_EQ(Taken<kSome>("pinch"), "1pinch");
    EXPECT_EQ(Taken<kSome>("Pi"), "2Pi");
    EXPECT_EQ(Taken<kSome>("p"), "5p");
    EXPECT_EQ(Taken<kSome>("# net"), "4# net");
}

TEST(KeywordTable, KeywordAsWrittenTakesOnlyItsOwnLetters)
{
    EXPECT_EQ(Taken<kSome>("NET"), "3NET");
    EXPECT_EQ(Taken<kSome>("net"), "");
}

TEST(KeywordTable, LineOfNoKeywordIsNotTaken)
{
    for (const char* const line : {"", "#", "# ", "X", "\x80", "\xFF", "@", "["})
        EXPECT_EQ(Taken<kSome>(line), "") << line;
}

TEST(KeywordTable, EmptyKeywordTakesWhatNoEarlierOneTook)
{
    EXPECT_EQ(Taken<kAll>("a"), "1a");
    EXPECT_EQ(Taken<kAll>("B"), "2B");
    EXPECT_EQ(Taken<kAll>("\xFF"), "2\xFF");
    EXPECT_EQ(Taken<kAll>(""), "2");
}
