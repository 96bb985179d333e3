#include "foundation/corekit/TextTools.h"
#include "support/CommaLocale.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
std::vector<std::string> Tokens(const char* text, const char* delimiters)
{
    CStringArray tokens;
    tokens.Add("left over");
    const ULONGLONG count = XTokenString(text, delimiters, tokens, 0, 0, 0, 1, 0);
    EXPECT_EQ(count, static_cast<ULONGLONG>(tokens.GetSize()));
    std::vector<std::string> result;
    for (INT_PTR i = 0; i < tokens.GetSize(); ++i)
        result.emplace_back(tokens[i].View());
    return result;
}
} // namespace

TEST(MakeUpper, Copy_ChangesAsciiLettersOnly)
{
    const CString text("aZ\xE4\xC4{@1 _");
    EXPECT_EQ(MakeUpper(text), "AZ\xE4\xC4{@1 _");
    EXPECT_EQ(MakeLower(text), "az\xE4\xC4{@1 _");
    EXPECT_EQ(text, "aZ\xE4\xC4{@1 _");
}

TEST(MakeUpper, Copy_KeepsBytesBehindANul)
{
    const CString text("a\0b", 3);
    EXPECT_EQ(MakeUpper(text).View(), std::string_view("A\0B", 3));
}

TEST(XTokenString, Split_TakesRunsOfDelimitersAsOneAndMakesNoEmptyTokens)
{
    using List = std::vector<std::string>;
    const struct
    {
        const char* text;
        const char* delimiters;
        List expected;
    } kCases[] = {{"A B C", " ", {"A", "B", "C"}},
                  {"  A   B  ", " ", {"A", "B"}},
                  {"", " ", {}},
                  {"   ", " ", {}},
                  {"one", " ", {"one"}},
                  {"a\tb c", " ", {"a\tb", "c"}},
                  {"a,;b;c", ",;", {"a", "b", "c"}},
                  {"a b", "", {"a b"}},
                  {"a b", nullptr, {"a b"}},
                  {nullptr, " ", {}},
                  {"\xE4\xFF \x80", " ", {"\xE4\xFF", "\x80"}}};
    for (const auto& testCase : kCases)
        EXPECT_EQ(Tokens(testCase.text, testCase.delimiters), testCase.expected);
}

TEST(XTokenString, Split_OfATokenOfTheListItselfWorks)
{
    CStringArray tokens;
    tokens.Add("a rather long first token and more");
    EXPECT_EQ(XTokenString(tokens[0], " ", tokens, 0, 0, 0, 1, 0), 7U);
    EXPECT_EQ(tokens[6], "more");
}

TEST(XTokenString, Split_OfManyTokensStaysLinear)
{
    std::string text;
    constexpr int kCount = 1000000;
    for (int i = 0; i < kCount; ++i)
        text += "ab ";
    CStringArray tokens;
    EXPECT_EQ(XTokenString(text.c_str(), " ", tokens, 0, 0, 0, 1, 0), static_cast<ULONGLONG>(kCount));
    EXPECT_EQ(tokens[kCount - 1], "ab");
}
