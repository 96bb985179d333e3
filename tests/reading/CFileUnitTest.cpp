#include "reading/CFileUnit.h"

#include "reading/RecordedMessages.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class Measured : public CJOBXmeasured
{
};

class FileUnit : public testing::Test
{
protected:
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    CFileMessages messages{reading, "f"};
    Measured measured;
};

TEST_F(FileUnit, IsTheOneOfTheJobUntilALineSaysAnother)
{
    for (const JOBXunit unit : {JOBXunit::Inch, JOBXunit::Millimetre})
    {
        CFileUnit file(messages, measured, unit);
        EXPECT_EQ(measured.GetUnit(), unit);
        for (const char* const line : {"UNIT=MM", "UNITS", "USER=MM", "P 1 2", ""})
            EXPECT_FALSE(file.Take(line, 1)) << line;
        EXPECT_EQ(measured.GetUnit(), unit);
    }
}

TEST_F(FileUnit, IsSpelledInManyWays)
{
    const std::pair<const char*, JOBXunit> spellings[] = {
        {"UNITS=MM", JOBXunit::Millimetre}, {"U MM", JOBXunit::Millimetre},  {"units = mm", JOBXunit::Millimetre},
        {"UNITS=INCH", JOBXunit::Inch},     {"U\tMM", JOBXunit::Millimetre}, {"U INCH", JOBXunit::Inch},
    };
    for (const auto& [line, unit] : spellings)
    {
        CFileUnit file(messages, measured, unit == JOBXunit::Inch ? JOBXunit::Millimetre : JOBXunit::Inch);
        EXPECT_TRUE(file.Take(line, 1)) << line;
        EXPECT_EQ(measured.GetUnit(), unit) << line;
        EXPECT_EQ(measured.dGetFactorToMM(), unit == JOBXunit::Inch ? 25.4 : 1.0);
    }
    messages.Deliver();
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(FileUnit, IsQuestionedWhenUnknownOrContradictory)
{
    CFileUnit file(messages, measured, JOBXunit::Millimetre);
    EXPECT_TRUE(file.Take("UNITS=CM", 2));
    EXPECT_TRUE(file.Take("UNITS=INCH", 3));
    EXPECT_TRUE(file.Take("U INCH", 4));
    EXPECT_TRUE(file.Take("U MM", 5));
    EXPECT_EQ(measured.GetUnit(), JOBXunit::Millimetre);
    messages.Deliver();
    EXPECT_THAT(sink.lines, ElementsAre("f:2: warning UNI001 The unit \"CM\" is not known.",
                                        "f:5: warning UNI002 The unit \"MM\" contradicts a units line before."));
}
} // namespace
