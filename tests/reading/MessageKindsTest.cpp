#include "reading/CJOBXmessage.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
TEST(MessageKinds, HaveCodesOfThreeLettersAndThreeDigitsInOrder)
{
    std::string before;
    int count = 0;
    for (; const CJOBXmessageKind* const kind = pGetJOBXmessageKind(count); ++count)
    {
        const std::string code = kind->code;
        ASSERT_EQ(code.size(), 6U) << code;
        EXPECT_EQ(code.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), 3U) << code;
        EXPECT_EQ(code.find_last_not_of("0123456789"), 2U) << code;
        EXPECT_LT(before, code);
        before = code;
    }
    EXPECT_GT(count, 0);
    EXPECT_EQ(pGetJOBXmessageKind(-1), nullptr);
}

TEST(MessageKinds, SayWhatTheyMeanAndWhatToDo)
{
    for (int i = 0; const CJOBXmessageKind* const kind = pGetJOBXmessageKind(i); ++i)
    {
        EXPECT_EQ(std::string(kind->meaning).back(), '.') << kind->code;
        EXPECT_EQ(std::string(kind->advice).back(), '.') << kind->code;
        EXPECT_FALSE(std::string(kind->example).empty()) << kind->code;
    }
}

TEST(MessageKinds, AreFoundByCodeInAnyLetterCase)
{
    const CJOBXmessageKind* const kind = pGetJOBXmessageKindFromCode("fil003");
    ASSERT_NE(kind, nullptr);
    EXPECT_STREQ(kind->code, "FIL003");
    EXPECT_EQ(pGetJOBXmessageKindFromCode("FIL"), nullptr);
    EXPECT_EQ(pGetJOBXmessageKindFromCode(""), nullptr);
}

TEST(Messages, PrintNamesOfFilesWithoutControlCharacters)
{
    CJOBXmessage message;
    message.kind = pGetJOBXmessageKind(0);
    message.file = "a\x1B[31mb";
    message.line = 3;
    message.text = "One\ntwo.";
    EXPECT_EQ(std::string(message.Line().GetString()), std::string("a?[31mb:3: ") +
                                                           JOBXseverityName(message.kind->severity) + ' ' +
                                                           message.kind->code + " One?two.");
}
} // namespace
