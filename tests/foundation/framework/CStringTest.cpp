#include "foundation/framework/CString.h"

#include "foundation/framework/RaisedPointer.h"
#include "support/CommaLocale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <limits>
#include <locale.h>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace string_test
{
namespace
{
constexpr const char* kLong = "a text of more than six characters";

// A text object of these bytes, a NUL among them included.
CString Text(std::string_view bytes)
{
    return CString(bytes);
}

std::string Bytes(const CString& text)
{
    return std::string(text.View());
}

// True when the characters of `text` lie in the object itself.
bool LiesInside(const CString& text)
{
    const auto* const object = reinterpret_cast<const char*>(&text);
    const char* const characters = text.GetString();
    return !std::less<>{}(characters, object) && std::less<>{}(characters, object + sizeof(text));
}

void FormatWith(CString& text, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    text.FormatV(format, args);
    va_end(args);
}

void AppendFormatWith(CString& text, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    text.AppendFormatV(format, args);
    va_end(args);
}
} // namespace

static_assert(sizeof(CString) == 8, "millions of records hold several texts each");
static_assert(std::is_nothrow_move_constructible_v<CString> && std::is_nothrow_copy_constructible_v<CString>);
static_assert(std::is_same_v<CStringA, CString>);

TEST(String, Constructors_TakeEveryKindOfText)
{
    const unsigned char raw[] = {'x', 0xE4, 0};
    EXPECT_EQ(Bytes(CString()), "");
    EXPECT_EQ(Bytes(CString(static_cast<LPCSTR>(nullptr))), "");
    EXPECT_EQ(Bytes(CString("abc")), "abc");
    EXPECT_EQ(Bytes(CString("abcdef", 3)), "abc");
    EXPECT_EQ(Bytes(CString("abc", 0)), "");
    EXPECT_EQ(Bytes(CString("abc", -1)), "");
    EXPECT_EQ(Bytes(CString(static_cast<LPCSTR>(nullptr), 0)), "");
    EXPECT_EQ(Bytes(CString('x')), "x");
    EXPECT_EQ(Bytes(CString('x', 10)), "xxxxxxxxxx");
    EXPECT_EQ(Bytes(CString('x', 0)), "");
    EXPECT_EQ(Bytes(CString('x', -5)), "");
    EXPECT_EQ(Bytes(CString(raw)), "x\xE4");
    EXPECT_EQ(Bytes(Text({"a\0b", 3})), std::string("a\0b", 3));
}

TEST(String, Constructor_NullWithALengthRaisesInvalidArgument)
{
    EXPECT_TRUE(Raises<CInvalidArgException>([] { const CString text(static_cast<LPCSTR>(nullptr), 3); }));
    CString text = "kept";
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.SetString(nullptr, 3); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.Append(nullptr, 3); }));
    EXPECT_EQ(text, "kept");
}

TEST(String, Constructor_WideTextBecomesUtf8)
{
    EXPECT_EQ(CString(L"A\u00E4\u20AC\U0001F600"), "A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(CString(static_cast<const wchar_t*>(nullptr)), "");
    const wchar_t alone[] = {static_cast<wchar_t>(0xD800), L'x', 0};
    EXPECT_EQ(CString(alone), "\xEF\xBF\xBDx");
    if constexpr (sizeof(wchar_t) > 2)
    {
        const wchar_t beyond[] = {static_cast<wchar_t>(0x110000), L'x', 0};
        EXPECT_EQ(CString(beyond), "\xEF\xBF\xBDx");
    }
}

TEST(String, Length_CountsBytesANulIncluded)
{
    EXPECT_EQ(Text({"a\0b", 3}).GetLength(), 3);
    EXPECT_EQ(CString("\xC3\xA4").GetLength(), 2);
    EXPECT_TRUE(CString().IsEmpty());
    EXPECT_FALSE(Text({"\0", 1}).IsEmpty());
}

TEST(String, Text_IsAlwaysTerminated)
{
    for (int length = 0; length < 40; ++length)
    {
        const CString text('x', length);
        EXPECT_EQ(std::strlen(text), static_cast<std::size_t>(length));
        EXPECT_EQ(text.GetAt(length), '\0');
    }
}

TEST(String, Text_OfUpToSevenCharactersLiesInTheObject)
{
    for (std::size_t length = 0; length <= 7; ++length)
    {
        const std::string bytes(length, 'x');
        const CString text(bytes);
        EXPECT_TRUE(LiesInside(text)) << length;
        EXPECT_STREQ(text.GetString(), bytes.c_str());
        EXPECT_EQ(Bytes(text), bytes);
    }
    EXPECT_FALSE(LiesInside(Text("xxxxxxxx")));
}

TEST(String, Text_OfSevenCharactersMayHaveNulsAnywhere)
{
    for (unsigned nuls = 0; nuls < 1U << 7U; ++nuls)
    {
        std::string bytes = "abcdefg";
        for (unsigned i = 0; i < 7; ++i)
            if ((nuls >> i & 1U) != 0)
                bytes[i] = '\0';
        const CString text(bytes);
        EXPECT_EQ(Bytes(text), bytes);
        EXPECT_EQ(Bytes(CString(text)), bytes);
        EXPECT_EQ(text.GetString()[7], '\0');
    }
}

TEST(String, Text_OfSevenCharactersCanBeChanged)
{
    for (int index = 0; index < 7; ++index)
    {
        CString text = "abcdefg";
        text.SetAt(index, '\0');
        std::string bytes = "abcdefg";
        bytes[static_cast<std::size_t>(index)] = '\0';
        EXPECT_EQ(Bytes(text), bytes);
        text.SetAt(index, "abcdefg"[index]);
        EXPECT_EQ(text, CString("abcdefg"));
        EXPECT_EQ(CString("abcdefg"), text);
    }
    CString text = "abcdefg";
    text.ReleaseBuffer();
    EXPECT_EQ(text, "abcdefg");
    text.Truncate(7);
    EXPECT_EQ(text, "abcdefg");
    text += 'h';
    EXPECT_EQ(text, "abcdefgh");
    text = "abcdefg";
    text.Truncate(3);
    EXPECT_EQ(text, CString("abc"));
}

TEST(String, Buffer_OfAnyLengthMayBeFilledWithNuls)
{
    for (int room = 0; room <= 9; ++room)
        for (const char* const before : {"", "abc", "abcdef", "abcdefg"})
        {
            CString text = before;
            std::memset(text.GetBuffer(room), 0, static_cast<std::size_t>(std::max(room, text.GetLength())) + 1);
            text.ReleaseBuffer(room);
            EXPECT_EQ(Bytes(text), std::string(static_cast<std::size_t>(room), '\0')) << before;
        }
}

TEST(String, Copy_OfALongTextSharesItUntilOneChanges)
{
    const CString text = kLong;
    CString copy = text;
    EXPECT_EQ(copy.GetString(), text.GetString());
    copy.SetAt(0, 'A');
    EXPECT_NE(copy.GetString(), text.GetString());
    EXPECT_EQ(text, kLong);
    EXPECT_EQ(copy, "A text of more than six characters");
}

TEST(String, Copy_StaysWhatItWasWhateverIsDoneToTheOther)
{
    using Change = void (*)(CString&);
    const Change changes[] = {
        [](CString& text) { text += "more"; },
        [](CString& text) { text += 'c'; },
        [](CString& text) { text.Empty(); },
        [](CString& text) { text.MakeUpper(); },
        [](CString& text) { text.MakeLower(); },
        [](CString& text) { text.MakeReverse(); },
        [](CString& text) { text.Replace('e', 'E'); },
        [](CString& text) { text.Replace("ext", "EXT"); },
        [](CString& text) { text.Remove('e'); },
        [](CString& text) { text.Insert(2, "in"); },
        [](CString& text) { text.Delete(0, 3); },
        [](CString& text) { text.Truncate(3); },
        [](CString& text) { text.Trim('A'); },
        [](CString& text) { text.SetAt(1, 'X'); },
        [](CString& text) { text.Format("%d", 1); },
        [](CString& text) { text.AppendFormat("%d", 1); },
        [](CString& text) { std::memcpy(text.GetBuffer(), "XYZ", 3); },
        [](CString& text) { text.GetBufferSetLength(3)[0] = 'X'; },
        [](CString& text) { text.ReleaseBuffer(3); },
        [](CString& text) { text = "other"; },
    };
    for (const char* const original : {"A text of more than six characters", "A text"})
        for (const Change change : changes)
        {
            CString text = original;
            const CString copy = text;
            change(text);
            EXPECT_EQ(copy, original);
            EXPECT_NE(text, original);
        }
}

TEST(String, Copy_MayBeChangedInAnotherThread)
{
    const CString text = kLong;
    std::vector<std::thread> threads;
    std::vector<CString> results(4);
    for (CString& result : results)
        threads.emplace_back(
            [copy = text, &result]() mutable
            {
                for (int i = 0; i < 2000; ++i)
                {
                    CString own = copy;
                    own += 'x';
                    CString again = own;
                    again.SetAt(0, 'b');
                    result = again;
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    for (const CString& result : results)
        EXPECT_EQ(result, "b text of more than six charactersx");
    EXPECT_EQ(text, kLong);
}

TEST(String, Move_LeavesTheSourceUsable)
{
    CString source = kLong;
    CString target(std::move(source));
    EXPECT_EQ(target, kLong);
    source = "again"; // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(source, "again");
    target = std::move(source);
    EXPECT_EQ(target, "again");
}

TEST(String, Assignment_TakesEveryKindOfTextAndItself)
{
    const unsigned char raw[] = {0xE4, 0};
    CString text;
    text = "abc";
    EXPECT_EQ(text, "abc");
    text = 'c';
    EXPECT_EQ(text, "c");
    text = std::string_view("a\0b", 3);
    EXPECT_EQ(Bytes(text), std::string("a\0b", 3));
    text = L"\u00E4";
    EXPECT_EQ(text, "\xC3\xA4");
    text = raw;
    EXPECT_EQ(text, "\xE4");
    text = static_cast<LPCSTR>(nullptr);
    EXPECT_EQ(text, "");
    text.SetString("abc");
    EXPECT_EQ(text, "abc");
    text.SetString("abcdef", 4);
    EXPECT_EQ(text, "abcd");
    text.SetString("abc", -1);
    EXPECT_EQ(text, "");
    for (const char* const original : {"abc", kLong})
    {
        text = original;
        const CString& same = text;
        text = same;
        EXPECT_EQ(text, original);
    }
}

TEST(String, Assignment_OfAPieceOfItself)
{
    for (const char* const original : {"abcdef", kLong})
    {
        CString text = original;
        text = text.GetString() + 2;
        EXPECT_EQ(text, original + 2);
        text.SetString(text.GetString() + 1, 2);
        EXPECT_EQ(text, std::string(original + 3, 2).c_str());
    }
}

TEST(String, Append_OfItselfAndOfAPieceOfItself)
{
    for (const std::string original : {"ab", "abcd", kLong})
    {
        CString text = original.c_str();
        text += text;
        EXPECT_EQ(text, (original + original).c_str());
        text = original.c_str();
        text += text.GetString() + 1;
        EXPECT_EQ(text, (original + original.substr(1)).c_str());
        text = original.c_str();
        text.Append(text.GetString() + 1, 1);
        EXPECT_EQ(text, (original + original[1]).c_str());
        text = original.c_str();
        const CString copy = text;
        text += copy;
        EXPECT_EQ(text, (original + original).c_str());
        EXPECT_EQ(copy, original.c_str());
    }
}

TEST(String, Append_TakesEveryKindOfText)
{
    CString text;
    text += "a";
    text += 'b';
    text += CString("c");
    text += std::string_view("\0d", 2);
    text.Append("e");
    text.Append("fgh", 1);
    text.Append("i", -1);
    text.Append(CString("g"));
    text.AppendChar('h');
    text += static_cast<LPCSTR>(nullptr);
    EXPECT_EQ(Bytes(text), std::string("abc\0defgh", 9));
}

TEST(String, Append_GrowsLongTextsInFewSteps)
{
    CString text;
    int moves = 0;
    const char* before = text;
    for (int i = 0; i < 1000000; ++i)
    {
        text += 'x';
        moves += text.GetString() != before ? 1 : 0;
        before = text;
    }
    EXPECT_EQ(text.GetLength(), 1000000);
    EXPECT_LT(moves, 60);
}

TEST(String, Plus_JoinsEveryPairOfKinds)
{
    const CString text = "mid";
    EXPECT_EQ(text + text, "midmid");
    EXPECT_EQ(text + "x", "midx");
    EXPECT_EQ("x" + text, "xmid");
    EXPECT_EQ(text + 'x', "midx");
    EXPECT_EQ('x' + text, "xmid");
    EXPECT_EQ(text + static_cast<LPCSTR>(nullptr), "mid");
    EXPECT_EQ((Text({"a\0", 2}) + Text({"\0b", 2})).GetLength(), 4);
}

TEST(String, Index_OutsideTheTextRaisesInvalidArgument)
{
    CString text = "abc";
    EXPECT_EQ(text[2], 'c');
    EXPECT_EQ(text[3], '\0');
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.GetAt(4); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.GetAt(-1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.SetAt(3, 'x'); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.SetAt(-1, 'x'); }));
    EXPECT_EQ(text, "abc");
}

TEST(String, Buffer_IsWrittenAndReleasedAtItsFirstNul)
{
    for (const int room : {3, 6, 7, 100})
    {
        CString text = "old";
        char* const buffer = text.GetBuffer(room);
        EXPECT_STREQ(buffer, "old");
        EXPECT_GE(text.GetAllocLength(), room);
        std::strcpy(buffer, "xy");
        text.ReleaseBuffer();
        EXPECT_EQ(text, "xy");
        EXPECT_EQ(text.GetLength(), 2);
        EXPECT_EQ(text, CString("xy")); // whatever was left behind the text
    }
}

TEST(String, Buffer_ReleasedWithALengthKeepsItsNuls)
{
    CString text;
    std::memcpy(text.GetBuffer(10), "a\0b\0c", 5);
    text.ReleaseBuffer(5);
    EXPECT_EQ(Bytes(text), std::string("a\0b\0c", 5));
    std::memcpy(text.GetBufferSetLength(3), "xyz", 3);
    EXPECT_EQ(text, "xyz");
    text.ReleaseBufferSetLength(1);
    EXPECT_EQ(text, "x");
}

TEST(String, Buffer_WithoutANulIsCutAtItsEnd)
{
    CString text;
    char* const buffer = text.GetBuffer(20);
    std::memset(buffer, 'x', static_cast<std::size_t>(text.GetAllocLength()));
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), text.GetAllocLength());
    EXPECT_EQ(std::strlen(text), static_cast<std::size_t>(text.GetLength()));
}

TEST(String, Buffer_WrongLengthsRaiseInvalidArgument)
{
    CString text = "abc";
    EXPECT_STREQ(text.GetBuffer(-1), "abc");
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.GetBufferSetLength(-1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.ReleaseBuffer(text.GetAllocLength() + 1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.ReleaseBufferSetLength(-1); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.Truncate(4); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.Truncate(-1); }));
    EXPECT_EQ(text, "abc");
}

TEST(String, Buffer_ReleasedAfterACopyWasMade)
{
    CString text = kLong;
    const CString copy = text;
    text.ReleaseBuffer(6);
    EXPECT_EQ(text, "a text");
    EXPECT_EQ(copy, kLong);
}

TEST(String, Preallocate_KeepsTheTextAndFreeExtraGivesBack)
{
    CString text = kLong;
    text.Preallocate(1000);
    EXPECT_EQ(text, kLong);
    const char* const before = text;
    for (int i = 0; i < 900; ++i)
        text += 'x';
    EXPECT_EQ(text.GetString(), before);
    text.Truncate(10);
    text.FreeExtra();
    EXPECT_EQ(text.GetAllocLength(), 10);
    EXPECT_EQ(text, "a text of ");
}

TEST(String, Truncate_KeepsTheRoomOfTheTextUntilFreeExtra)
{
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    for (int length = 26; length >= 8; --length)
    {
        CString text(letters.c_str());
        text.Truncate(length);
        EXPECT_EQ(text, letters.substr(0, static_cast<std::size_t>(length)).c_str()) << length;
        EXPECT_GE(text.GetAllocLength(), std::max(length, 22)) << length;
        const char* const before = text;
        text += CString('x', 22 - std::min(length, 22));
        EXPECT_EQ(text.GetString(), before) << length;
        text.Truncate(8);
        text.FreeExtra();
        EXPECT_EQ(text.GetAllocLength(), 8) << length;
        EXPECT_EQ(text, "abcdefgh") << length;
    }
}

TEST(String, Buffer_OfANewTextMayBeShortenedAndLengthenedAgain)
{
    CString text = kLong;
    const int length = text.GetLength();
    char* const buffer = text.GetBuffer();
    EXPECT_EQ(text.GetAllocLength(), length);
    text.ReleaseBuffer(3);
    EXPECT_EQ(text.GetAllocLength(), length);
    text.ReleaseBuffer(length);
    EXPECT_EQ(text.GetString(), buffer);
    EXPECT_EQ(text.GetLength(), length);
}

TEST(String, FreeExtra_WithoutExtraLeavesTheTextWhereItIs)
{
    CString brief = "abc";
    brief.FreeExtra();
    EXPECT_EQ(brief, "abc");
    CString text = kLong;
    text.FreeExtra();
    const char* const at = text;
    text.FreeExtra();
    EXPECT_EQ(text.GetString(), at);
    EXPECT_EQ(text, kLong);
}

TEST(String, Parts_CutWhatIsTooLongAndTakeNegativeAsZero)
{
    const CString text = "abcdef";
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    EXPECT_EQ(text.Left(2), "ab");
    EXPECT_EQ(text.Left(0), "");
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Left(kMost), "abcdef");
    EXPECT_EQ(text.Right(2), "ef");
    EXPECT_EQ(text.Right(0), "");
    EXPECT_EQ(text.Right(kLeast), "");
    EXPECT_EQ(text.Right(kMost), "abcdef");
    EXPECT_EQ(text.Mid(2), "cdef");
    EXPECT_EQ(text.Mid(6), "");
    EXPECT_EQ(text.Mid(kMost), "");
    EXPECT_EQ(text.Mid(-3), "abcdef");
    EXPECT_EQ(text.Mid(2, 2), "cd");
    EXPECT_EQ(text.Mid(4, 10), "ef");
    EXPECT_EQ(text.Mid(-3, 2), "ab");
    EXPECT_EQ(text.Mid(2, -1), "");
    EXPECT_EQ(text.Mid(kMost, kMost), "");
    EXPECT_EQ(CString().Left(1) + CString().Right(1) + CString().Mid(1, 1), "");
    EXPECT_EQ(Text({"a\0bc", 4}).Mid(1, 2).GetLength(), 2);
}

TEST(String, Spans_EndAtTheFirstCharacterOutsideOrInside)
{
    const CString text = "aabbc";
    EXPECT_EQ(text.SpanIncluding("ab"), "aabb");
    EXPECT_EQ(text.SpanIncluding("x"), "");
    EXPECT_EQ(text.SpanIncluding("abc"), "aabbc");
    EXPECT_EQ(text.SpanIncluding(""), "");
    EXPECT_EQ(text.SpanExcluding("bc"), "aa");
    EXPECT_EQ(text.SpanExcluding("x"), "aabbc");
    EXPECT_EQ(text.SpanExcluding(nullptr), "aabbc");
}

TEST(String, Find_AnswersThePositionOrMinusOne)
{
    const CString text = "abcabc";
    EXPECT_EQ(text.Find('c'), 2);
    EXPECT_EQ(text.Find('c', 3), 5);
    EXPECT_EQ(text.Find('x'), -1);
    EXPECT_EQ(text.Find('a', 6), -1);
    EXPECT_EQ(text.Find('a', 7), -1);
    EXPECT_EQ(text.Find('a', -1), -1);
    EXPECT_EQ(text.Find("bc"), 1);
    EXPECT_EQ(text.Find("bc", 2), 4);
    EXPECT_EQ(text.Find("bcx"), -1);
    EXPECT_EQ(text.Find(""), 0);
    EXPECT_EQ(text.Find("", 6), 6);
    EXPECT_EQ(text.Find("", 7), -1);
    EXPECT_EQ(text.Find("a", std::numeric_limits<int>::max()), -1);
    EXPECT_EQ(text.Find("a", -1), -1);
    EXPECT_EQ(text.Find(static_cast<LPCSTR>(nullptr)), -1);
    EXPECT_EQ(text.Find(CString("ca")), 2);
    EXPECT_EQ(text.Find(text), 0);
    EXPECT_EQ(Text({"x\0a\0b", 5}).Find(Text({"\0b", 2})), 3);
    EXPECT_EQ(text.FindOneOf("xcb"), 1);
    EXPECT_EQ(text.FindOneOf("x"), -1);
    EXPECT_EQ(text.FindOneOf(""), -1);
    EXPECT_EQ(text.ReverseFind('a'), 3);
    EXPECT_EQ(text.ReverseFind('x'), -1);
    EXPECT_EQ(CString("\xE4\xF6").Find('\xF6'), 1);
}

TEST(String, Trim_TakesAsciiWhiteSpaceOff)
{
    EXPECT_EQ(CString(" \t\r\n\v\f a b \t\r\n\v\f ").Trim(), "a b");
    EXPECT_EQ(CString("  a  ").TrimLeft(), "a  ");
    EXPECT_EQ(CString("  a  ").TrimRight(), "  a");
    EXPECT_EQ(CString("   ").TrimRight(), "");
    EXPECT_EQ(CString("   ").Trim(), "");
    EXPECT_EQ(CString("").Trim(), "");
    EXPECT_EQ(CString("\x85 a \xA0").Trim(), "\x85 a \xA0");
    EXPECT_EQ(Bytes(Text({" \0 ", 3}).Trim()), std::string("\0", 1));
}

TEST(String, Trim_TakesGivenCharactersOff)
{
    EXPECT_EQ(CString("xxaxx").Trim('x'), "a");
    EXPECT_EQ(CString("xxaxx").TrimLeft('x'), "axx");
    EXPECT_EQ(CString("xxaxx").TrimRight('x'), "xxa");
    EXPECT_EQ(CString("xyaxy").Trim("yx"), "a");
    EXPECT_EQ(CString("xyaxy").TrimLeft("yx"), "axy");
    EXPECT_EQ(CString("xyaxy").TrimRight("yx"), "xya");
    EXPECT_EQ(CString(" a ").Trim(""), " a ");
    EXPECT_EQ(CString(" a ").Trim(static_cast<LPCSTR>(nullptr)), " a ");
    CString text = "abc";
    EXPECT_EQ(text.Trim(text), "");
}

TEST(String, Case_ConcernsAsciiLettersOnly)
{
    std::string all;
    std::string upper;
    std::string lower;
    for (int c = 0; c < 256; ++c)
    {
        all += static_cast<char>(c);
        upper += static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    EXPECT_EQ(Bytes(CString(std::string_view(all)).MakeUpper()), upper);
    EXPECT_EQ(Bytes(CString(std::string_view(all)).MakeLower()), lower);
    EXPECT_EQ(CString("abc\xE4").MakeUpper().MakeReverse(), "\xE4"
                                                            "CBA");
    EXPECT_EQ(CString().MakeUpper().MakeLower().MakeReverse(), "");
}

TEST(String, Compare_GoesByUnsignedBytes)
{
    EXPECT_EQ(CString("abc").Compare("abc"), 0);
    EXPECT_LT(CString("abc").Compare("abd"), 0);
    EXPECT_GT(CString("abc").Compare("ab"), 0);
    EXPECT_LT(CString("").Compare("a"), 0);
    EXPECT_GT(CString("\xE4").Compare("z"), 0);
    EXPECT_EQ(CString("").Compare(static_cast<LPCSTR>(nullptr)), 0);
    EXPECT_LT(CString("ABC").Compare("abc"), 0);
    EXPECT_EQ(CString("abc").Collate("abc"), 0);
    EXPECT_LT(CString("B").Collate("a"), 0);
}

TEST(String, Compare_OfTextObjectsSeesWhatStandsBehindANul)
{
    const CString text = Text({"a\0b", 3});
    EXPECT_EQ(text.Compare(text), 0);
    EXPECT_EQ(text.CompareNoCase(Text({"A\0B", 3})), 0);
    EXPECT_LT(text.Compare(Text({"a\0c", 3})), 0);
    EXPECT_GT(text.Compare("a"), 0);
    EXPECT_EQ(text.Collate(text), 0);
    EXPECT_EQ(text.CollateNoCase(text), 0);
    EXPECT_FALSE(text == Text({"a\0c", 3}));
    EXPECT_FALSE(text == "a");
}

TEST(String, CompareNoCase_FoldsAsciiOnly)
{
    EXPECT_EQ(CString("AbC").CompareNoCase("aBc"), 0);
    EXPECT_LT(CString("ABC").CompareNoCase("abd"), 0);
    EXPECT_GT(CString("abcd").CompareNoCase("ABC"), 0);
    EXPECT_NE(CString("\xE4").CompareNoCase("\xC4"), 0);
    EXPECT_GT(CString("\xE4").CompareNoCase("Z"), 0);
    EXPECT_LT(CString("[").CompareNoCase("A"), 0); // letters count as lower case
    EXPECT_EQ(CString("").CompareNoCase(static_cast<LPCSTR>(nullptr)), 0);
    EXPECT_EQ(CString("AB").CollateNoCase("ab"), 0);
}

TEST(String, Operators_CompareWithTextsAndCharacters)
{
    const CString a = "a";
    const CString b = "b";
    EXPECT_TRUE(a == "a" && "a" == a && a == CString("a") && a == 'a' && 'a' == a);
    EXPECT_TRUE(a != "b" && "b" != a && a != b && a != 'b');
    EXPECT_TRUE(a < b && a < "b" && "a" < b && a <= a && b > a && b >= "a");
    EXPECT_FALSE(CString("aa") == 'a');
    EXPECT_FALSE(CString() == 'a');
    const CString shortText = "abcdef";
    CString longForm = "abcdefgh";
    longForm.Truncate(6); // same text, lies in a block
    EXPECT_TRUE(shortText == longForm && longForm == shortText);
    EXPECT_FALSE(LiesInside(longForm));
}

TEST(String, Replace_CountsAndReplacesWithoutOverlap)
{
    CString text = "aXbXc";
    EXPECT_EQ(text.Replace('X', '-'), 2);
    EXPECT_EQ(text, "a-b-c");
    EXPECT_EQ(text.Replace('-', '-'), 0);
    EXPECT_EQ(text.Replace('q', '-'), 0);
    EXPECT_EQ(text.Replace("-", "<->"), 2);
    EXPECT_EQ(text, "a<->b<->c");
    EXPECT_EQ(text.Replace("<->", nullptr), 2);
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(text.Replace(nullptr, "x"), 0);
    EXPECT_EQ(text.Replace("abcd", "x"), 0);
    text = "aaaa";
    EXPECT_EQ(text.Replace("aa", "a"), 2);
    EXPECT_EQ(text, "aa");
    EXPECT_EQ(text.Replace(text, "z"), 1);
    EXPECT_EQ(text, "z");
    text = "z-z";
    EXPECT_EQ(text.Replace("z", text), 2);
    EXPECT_EQ(text, "z-z-z-z");
    CString withNul = Text({"a\0b\0", 4});
    EXPECT_EQ(withNul.Replace('\0', '0'), 2);
    EXPECT_EQ(withNul, "a0b0");
}

TEST(String, Remove_TakesEveryOccurrenceOut)
{
    CString text = "\"a\"b\"";
    EXPECT_EQ(text.Remove('"'), 3);
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(text.Remove('x'), 0);
    EXPECT_EQ(CString().Remove('x'), 0);
}

TEST(String, Delete_AnswersTheNewLengthAndForgivesRanges)
{
    CString text = "abcdef";
    EXPECT_EQ(text.Delete(1), 5);
    EXPECT_EQ(text, "acdef");
    EXPECT_EQ(text.Delete(3, 100), 3);
    EXPECT_EQ(text, "acd");
    EXPECT_EQ(text.Delete(3, 1), 3);
    EXPECT_EQ(text.Delete(std::numeric_limits<int>::max(), std::numeric_limits<int>::max()), 3);
    EXPECT_EQ(text.Delete(0, -1), 3);
    EXPECT_EQ(text.Delete(-5, 2), 1);
    EXPECT_EQ(text, "d");
}

TEST(String, Insert_AnswersTheNewLengthAndForgivesPositions)
{
    CString text = "ad";
    EXPECT_EQ(text.Insert(1, "bc"), 4);
    EXPECT_EQ(text, "abcd");
    EXPECT_EQ(text.Insert(100, 'e'), 5);
    EXPECT_EQ(text.Insert(-1, '>'), 6);
    EXPECT_EQ(text, ">abcde");
    EXPECT_EQ(text.Insert(2, ""), 6);
    EXPECT_EQ(text.Insert(2, static_cast<LPCSTR>(nullptr)), 6);
    EXPECT_EQ(text.Insert(0, '\0'), 7);
    EXPECT_EQ(text.Insert(0, Text({"\0", 1})), 8);
    EXPECT_EQ(Bytes(text), std::string("\0\0>abcde", 8));
}

TEST(String, Insert_OfItselfAndOfItsOwnBuffer)
{
    for (const std::string original : {"abc", kLong})
    {
        CString text = original.c_str();
        text.Insert(1, text);
        EXPECT_EQ(Bytes(text), original[0] + original + original.substr(1));
        text = original.c_str();
        text.Insert(1, text.GetString() + 1);
        EXPECT_EQ(Bytes(text), original[0] + original.substr(1) + original.substr(1));
    }
}

TEST(String, Tokenize_SkipsRunsAndEndsWithMinusOne)
{
    const CString text = "  one,two ,, three ";
    std::vector<std::string> tokens;
    int at = 0;
    for (CString token = text.Tokenize(" ,", at); at != -1; token = text.Tokenize(" ,", at))
        tokens.push_back(Bytes(token));
    EXPECT_EQ(tokens, (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(text.Tokenize(" ,", at), "");
    EXPECT_EQ(at, -1);
    at = std::numeric_limits<int>::max();
    EXPECT_EQ(text.Tokenize(" ", at), "");
    EXPECT_EQ(at, -1);
}

TEST(String, Tokenize_WithoutSeparatorsGivesTheRest)
{
    const CString text = "a b";
    for (const char* const none : {"", static_cast<const char*>(nullptr)})
    {
        int at = 1;
        EXPECT_EQ(text.Tokenize(none, at), " b");
        EXPECT_EQ(text.Tokenize(none, at), "");
        EXPECT_EQ(at, -1);
    }
}

TEST(String, Format_PrintsEveryKindOfArgument)
{
    CString text;
    const CString part = "part";
    char array[8] = "array";
    text.Format("%s|%s|%s|%c|%d|%u|%lld|%g|%.3f|%5s|%-5s|%%", part, "literal", array, 'c', -5, 5U, 1LL << 40, 0.5, 1.0F,
                "r", "l");
    EXPECT_EQ(text, "part|literal|array|c|-5|5|1099511627776|0.5|1.000|    r|l    |%");
    text.Format("plain");
    EXPECT_EQ(text, "plain");
    text.Format("%s", "");
    EXPECT_EQ(text, "");
    text.Format("a%cb", '\0');
    EXPECT_EQ(Bytes(text), std::string("a\0b", 3));
}

TEST(String, Format_TakesTheTextItselfAsArgumentAndAsFormat)
{
    for (const std::string original : {"ab", kLong})
    {
        CString text = original.c_str();
        text.Format("%s-%s", text, text);
        EXPECT_EQ(Bytes(text), original + "-" + original);
        text = original.c_str();
        text.AppendFormat("-%s", text);
        EXPECT_EQ(Bytes(text), original + "-" + original);
        text = "%d";
        text.Format(text, 7);
        EXPECT_EQ(text, "7");
    }
}

TEST(String, Format_PrintsTextsAroundTheBriefBuffersSize)
{
    for (const int length : {0, 6, 7, 254, 255, 256, 257, 100000})
    {
        const std::string expected(static_cast<std::size_t>(length), 'x');
        CString text;
        text.Format("%s", expected.c_str());
        EXPECT_EQ(Bytes(text), expected);
        text.AppendFormat("%s", expected.c_str());
        EXPECT_EQ(Bytes(text), expected + expected);
    }
}

TEST(String, Format_ThatCannotBePrintedRaisesAndChangesNothing)
{
    CString text = "kept";
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.Format(nullptr); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.AppendFormat(nullptr); }));
    const wchar_t wide[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'}; // no character
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.Format("%ls", wide); }));
    EXPECT_TRUE(Raises<CInvalidArgException>([&] { text.AppendFormat("%d %ls", 1, wide); }));
    EXPECT_EQ(text, "kept");
}

#if !defined(_WIN32)
TEST(String, Format_LeavesTheThreadItsLocale)
{
    const locale_t own = duplocale(LC_GLOBAL_LOCALE);
    const locale_t before = uselocale(own);
    CString text;
    text.Format("%d", 1);
    EXPECT_EQ(uselocale(before), own);
    freelocale(own);
}
#endif

TEST(String, Format_TakesArgumentLists)
{
    CString text = "old";
    FormatWith(text, "%d-%s", 1, "x");
    EXPECT_EQ(text, "1-x");
    AppendFormatWith(text, "/%s", text.GetString());
    EXPECT_EQ(text, "1-x/1-x");
}

TEST(String, Format_PrintsAPointWhateverTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    CString text;
    text.Format("%lf %g %.2f", 1.5, 2.25, 3.125);
    EXPECT_EQ(text, "1.500000 2.25 3.12");
    char plain[16];
    std::snprintf(plain, sizeof(plain), "%g", 0.5);
    EXPECT_STREQ(plain, "0,5"); // the process has kept its own locale
}

TEST(String, Case_AndTrimDoNotFollowTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    EXPECT_EQ(CString("i\xE4\xC3\xA4").MakeUpper(), "I\xE4\xC3\xA4");
    EXPECT_EQ(CString("\xA0 x \xA0").Trim(), "\xA0 x \xA0");
}

TEST(String, Hash_IsEqualForEqualTexts)
{
    std::unordered_map<CString, int> numbers;
    for (int i = 0; i < 1000; ++i)
    {
        CString key;
        key.Format("net %d", i);
        numbers[key] = i;
    }
    EXPECT_EQ(numbers.size(), 1000U);
    EXPECT_EQ(numbers.at("net 77"), 77);
    CString longForm = "abcdefgh";
    longForm.Truncate(3);
    EXPECT_EQ(longForm.Hash(), CString("abc").Hash());
    EXPECT_NE(Text({"a\0b", 3}).Hash(), CString("a").Hash());
}

TEST(String, Text_PassesAllBytesThrough)
{
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    CString text{std::string_view(all)};
    text = text + text;
    EXPECT_EQ(Bytes(text), all + all);
    EXPECT_EQ(Bytes(text.Mid(256)), all);
    EXPECT_EQ(text.Find('\xFF', 256), 511);
}

TEST(String, Text_PrintsToAStream)
{
    std::ostringstream stream;
    stream << CString("abc");
    EXPECT_EQ(stream.str(), "abc");
}

TEST(String, Text_BeyondTwoGigabytesRaisesMemoryException)
{
    static const char kOne = 'x';
    EXPECT_TRUE(Raises<CMemoryException>([] { CString(std::string_view(&kOne, std::size_t{1} << 31U)); }));
    CString text = "kept";
    EXPECT_TRUE(Raises<CMemoryException>([&] { text += std::string_view(&kOne, std::size_t{1} << 31U); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { text.GetBuffer(std::numeric_limits<int>::max()); }));
    EXPECT_EQ(text, "kept");
}
} // namespace string_test
