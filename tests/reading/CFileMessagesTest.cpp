#include "reading/CFileMessages.h"

#include "reading/RecordedMessages.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
constexpr CJOBXmessageKind kOdd{"TST001", JOBXseverity::Warning, "Odd.", "odd", "Make it even."};
constexpr CJOBXmessageKind kBad{"TST002", JOBXseverity::Error, "Bad.", "bad", "Make it good."};

TEST(FileMessages, ArriveByLineWithFileSeverityAndCode)
{
    RecordedMessages sink;
    const CJOBXreading reading = sink.Reading();
    CFileMessages messages(reading, "steps/pcb/profile");
    messages.Say(kBad, 7, "There are ", 3, " of ", Quoted{"a\nb"}, ".");
    messages.Say(kOdd, 2, "This is odd.");
    messages.Say(kOdd, 0, "All is odd.");
    EXPECT_TRUE(sink.lines.empty()) << "before they are handed over";
    messages.Deliver();
    EXPECT_THAT(sink.lines, ElementsAre("steps/pcb/profile: warning TST001 All is odd.",
                                        "steps/pcb/profile:2: warning TST001 This is odd.",
                                        "steps/pcb/profile:7: error TST002 There are 3 of \"a?b\"."));
}

TEST(FileMessages, OfOneCodeStopAtTheLimitAndSayHowManyMoreThereAre)
{
    RecordedMessages sink;
    const CJOBXreading reading = sink.Reading(2);
    CFileMessages messages(reading, "f");
    for (int line = 1; line <= 5; ++line)
        messages.Say(kOdd, line, "Odd.");
    messages.Say(kBad, 3, "Bad.");
    messages.Deliver();
    EXPECT_THAT(sink.lines,
                ElementsAre("f:1: warning TST001 Odd.", "f:2: warning TST001 Odd.", "f:3: error TST002 Bad.",
                            "f:5: warning TST001 3 more like this in the file, the last one here."));
}

TEST(FileMessages, CountAsManyFaultsWithALimitAsWithoutOne)
{
    struct Counting : CJOBXmessageSink
    {
        void OnMessage(const CJOBXmessage& message) override { counts.push_back(message.count); }
        std::vector<int> counts;
    };
    Counting sink;
    CJOBXreading reading;
    reading.pSink = &sink;
    reading.nMessagesPerCode = 2;
    CFileMessages messages(reading, "f");
    for (int line = 1; line <= 5; ++line)
        messages.Say(kOdd, line, "Odd.");
    messages.Deliver();
    EXPECT_THAT(sink.counts, ElementsAre(1, 1, 3));
}

TEST(FileMessages, AreAllSaidWithoutALimit)
{
    RecordedMessages sink;
    const CJOBXreading reading = sink.Reading(0);
    CFileMessages messages(reading, "f");
    for (int line = 1; line <= 50; ++line)
        messages.Say(kOdd, line, "Odd.");
    messages.Deliver();
    EXPECT_EQ(sink.lines.size(), 50U);
}

TEST(FileMessages, SayOnceOfEachUnknownThingHowOftenItCame)
{
    RecordedMessages sink;
    const CJOBXreading reading = sink.Reading();
    CFileMessages messages(reading, "f");
    messages.SayUnknown(kOdd, 4, "record", "XYZ");
    messages.SayUnknown(kOdd, 6, "key", "COLOUR");
    messages.SayUnknown(kOdd, 9, "record", "XYZ");
    messages.Deliver();
    EXPECT_THAT(sink.lines, ElementsAre("f:4: warning TST001 The record \"XYZ\" is not known; there are 2 of them.",
                                        "f:6: warning TST001 The key \"COLOUR\" is not known."));
}

TEST(FileMessages, TellAThousandUnknownNamesApartAndCountTheRestTogether)
{
    RecordedMessages sink;
    const CJOBXreading reading = sink.Reading(0);
    CFileMessages messages(reading, "f");
    for (int i = 0; i < 1200; ++i)
        messages.SayUnknown(kOdd, i + 1, "record", "R" + std::to_string(i));
    messages.Deliver();
    ASSERT_EQ(sink.lines.size(), 1001U);
    EXPECT_EQ(sink.lines.back(), "f:1001: warning TST001 The record \"...\" is not known; there are 200 of them.");
}

TEST(FileMessages, AreNotKeptWhenNobodyListens)
{
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    reading.pSink = nullptr;
    CFileMessages messages(reading, "f");
    messages.Say(kOdd, 1, "Odd.");
    messages.SayUnknown(kOdd, 1, "key", "A");
    reading.pSink = &sink;
    messages.Deliver();
    EXPECT_TRUE(sink.lines.empty());
}

TEST(FileMessages, CutLongPiecesOfAFile)
{
    std::string text;
    reading_text::Append(text, Quoted{std::string(100, 'x')});
    EXPECT_EQ(text, '"' + std::string(60, 'x') + "...\"");
}
} // namespace
