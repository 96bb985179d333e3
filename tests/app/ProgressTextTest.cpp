// The progress line, without a terminal.
#include "output/ProgressLine.h"
#include "output/Text.h"

#include <gtest/gtest.h>

namespace
{
constexpr std::size_t kWide = 200;
} // namespace

TEST(ProgressText, ShowsTheBarThePartAndTheTimeLeft)
{
    EXPECT_EQ(ProgressText("reading job", 0.25, 2.0, kWide), "[#####---------------]  25%, 6 s left: reading job");
    EXPECT_EQ(ProgressText("reading job", 1.0, 2.0, kWide), "[####################] 100%: reading job");
}

TEST(ProgressText, RoundsTheTimeLeftUpAndUsesMinutesAndHours)
{
    const auto timeLeft = [](double done, double seconds)
    {
        const std::string text = ProgressText("x", done, seconds, kWide);
        return text.substr(text.find("%, ") + 3, text.rfind(':') - text.find("%, ") - 3);
    };
    EXPECT_EQ(timeLeft(0.5, 0.2), "1 s left");
    EXPECT_EQ(timeLeft(0.5, 59.0), "59 s left");
    EXPECT_EQ(timeLeft(0.5, 60.0), "1 min 0 s left");
    EXPECT_EQ(timeLeft(0.5, 3599.0), "59 min 59 s left");
    EXPECT_EQ(timeLeft(0.5, 3660.0), "1 h 1 min left");
}

TEST(ProgressText, SaysNothingAboutTheTimeBeforeItCanBeGuessed)
{
    EXPECT_EQ(ProgressText("x", 0.0, 1.0, kWide), "[--------------------]   0%: x");
    EXPECT_EQ(ProgressText("x", 0.009, 1.0, kWide), "[--------------------]   0%: x");
}

TEST(ProgressText, TakesWhatIsOutsideTheWorkForItsStartOrEnd)
{
    EXPECT_EQ(ProgressText("x", -1.0, 1.0, kWide), ProgressText("x", 0.0, 1.0, kWide));
    EXPECT_EQ(ProgressText("x", 2.0, 1.0, kWide), ProgressText("x", 1.0, 1.0, kWide));
}

TEST(ProgressText, IsCutBetweenCharacters)
{
    const std::string text = ProgressText("\xC3\xA9\xC3\xA9\xC3\xA9", 0.0, 1.0, 31);
    EXPECT_EQ(CharacterCount(text), 31U);
    EXPECT_TRUE(IsUtf8(text));
    EXPECT_TRUE(text.ends_with("\xC3\xA9\xC3\xA9")) << text;
    EXPECT_EQ(ProgressText("reading", 0.0, 1.0, 3), "[--");
}
