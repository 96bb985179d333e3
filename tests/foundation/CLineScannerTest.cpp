// Lines, fields and keywords as every reader sees them.
#include "foundation/CLineScanner.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
using namespace std::string_literals;
using namespace std::string_view_literals;

std::vector<std::string> Lines(std::string_view text)
{
    std::vector<std::string> lines;
    CLineScanner scanner(text);
    while (scanner.NextLine())
        lines.push_back(std::to_string(scanner.LineNumber()) + ":" + std::string(scanner.Line()));
    return lines;
}

std::vector<std::string> LinesInPieces(const std::string& path)
{
    std::vector<std::string> lines;
    CLineScanner scanner(CLineScanner::InPieces{}, path.c_str(), "", 0);
    while (scanner.NextLine())
        lines.push_back(std::to_string(scanner.LineNumber()) + ":" + std::string(scanner.Line()));
    return lines;
}

using Texts = std::vector<std::string>;
} // namespace

TEST(LineScanner, LinesEndWithLfOrCrlfAndTheLastNeedsNone)
{
    EXPECT_EQ(Lines("a\nb\r\nc"), (Texts{"1:a", "2:b", "3:c"}));
    EXPECT_EQ(Lines("a\nb\n"), (Texts{"1:a", "2:b"}));
    EXPECT_EQ(Lines(""), Texts{});
    EXPECT_EQ(Lines("\n\r\n"), Texts{});
    EXPECT_EQ(Lines("x\ry\n"), Texts{"1:x\ry"});
}

TEST(LineScanner, EmptyLinesAreSkippedButCounted)
{
    EXPECT_EQ(Lines("\n a \n \t\v\f\r\n\nb"), (Texts{"2:a", "5:b"}));
}

TEST(LineScanner, EmptyLinesCanBeAskedFor)
{
    CLineScanner scanner("\nx\n"sv);
    EXPECT_TRUE(scanner.NextAnyLine());
    EXPECT_EQ(scanner.Line(), "");
    EXPECT_EQ(scanner.LineNumber(), 1);
    EXPECT_TRUE(scanner.NextAnyLine());
    EXPECT_EQ(scanner.Line(), "x");
    EXPECT_FALSE(scanner.NextAnyLine());
    EXPECT_FALSE(scanner.NextLine());
}

TEST(LineScanner, NulEndsTheTextOfItsLineOnly)
{
    EXPECT_EQ(Lines("a \0b\nc\0\n\0d\ne"sv), (Texts{"1:a", "2:c", "4:e"}));
}

TEST(LineScanner, OnlyAsciiWhiteSpaceIsTrimmed)
{
    EXPECT_EQ(Lines("\xA0 a\x85\n"), Texts{"1:\xA0 a\x85"});
    EXPECT_EQ(Trimmed(" \t\v\f\r\n x \n"), "x");
    EXPECT_EQ(TrimmedLeft(" x "), "x ");
    EXPECT_EQ(TrimmedRight(" x "), " x");
    EXPECT_EQ(Trimmed(" \t"), "");
}

TEST(LineScanner, ReadsOnlyRegularFiles)
{
    const TempDir dir;
    CLineScanner file(dir.Write("f", "a\nb").c_str(), "test", 1);
    EXPECT_TRUE(file.WasRead());
    EXPECT_TRUE(file.NextLine());
    EXPECT_EQ(file.Line(), "a");
    CLineScanner missing(dir.Path("none").c_str(), "test", 1);
    EXPECT_FALSE(missing.WasRead());
    EXPECT_FALSE(missing.NextLine());
    CLineScanner directory(dir.Path().c_str(), "test", 1);
    EXPECT_FALSE(directory.WasRead());
    CLineScanner device("/dev/zero", "test", 1);
    EXPECT_FALSE(device.WasRead());
    CLineScanner empty(dir.Write("e", "").c_str(), "test", 1);
    EXPECT_TRUE(empty.WasRead());
    EXPECT_FALSE(empty.NextLine());
}

TEST(LineScanner, AFileReadInPiecesGivesTheSameLines)
{
    const TempDir dir;
    constexpr std::size_t kPiece = CFilePieces::kPiece;
    const auto line = [](std::size_t length, char c) { return std::string(length, c) + "\n"; };
    const std::string texts[] = {"",
                                 "\n",
                                 "a",
                                 "a\nb\r\n\n c ",
                                 line(kPiece - 1, 'x') + line(5, 'y'),
                                 line(kPiece, 'x') + line(5, 'y'),
                                 line(kPiece + 1, 'x') + line(5, 'y'),
                                 line(10, 'a') + line(5 * kPiece, 'x') + line(5, 'y') + line(3 * kPiece, 'z') + "end",
                                 line(kPiece - 2, 'x').substr(0, kPiece - 2) + "\r\n" + line(5, 'y'),
                                 "a\0b\n"s + line(kPiece, 'x') + "c\nd\0"s + "e\nf",
                                 std::string(2 * kPiece, '\n') + "last",
                                 std::string(3 * kPiece + 7, 'x')};
    for (const std::string& text : texts)
        EXPECT_EQ(LinesInPieces(dir.Write("file", text)), Lines(text)) << text.size();
    std::string many;
    for (int i = 0; many.size() < 5 * kPiece; ++i)
        many += line(static_cast<std::size_t>(i * 7919 % 300), static_cast<char>('a' + i % 26));
    EXPECT_EQ(LinesInPieces(dir.Write("file", many)), Lines(many));
    EXPECT_EQ(LinesInPieces(dir.Path("missing")), Texts{});
    EXPECT_EQ(LinesInPieces(dir.MakeDir("directory")), Texts{});
}

TEST(LineScanner, KeywordsMatchInAnyAsciiCase)
{
    EXPECT_TRUE(BeginsWith("units=mm", "UNITS"));
    EXPECT_TRUE(BeginsWith("UNITS", "UNITS"));
    EXPECT_TRUE(BeginsWith("x", ""));
    EXPECT_FALSE(BeginsWith("UNIT", "UNITS"));
    EXPECT_FALSE(BeginsWith(" units", "UNITS"));
    EXPECT_FALSE(BeginsWith("\xE4", "\xC4"));
}

TEST(LineScanner, KeyValueIsWhatFollowsTheFirstEqualsSign)
{
    EXPECT_EQ(KeyValue("A = b=c "), "b=c");
    EXPECT_EQ(KeyValue("A="), "");
    EXPECT_EQ(KeyValue("A b"), "A b");
}

TEST(FieldScanner, TakesFieldsAtBlanksOnly)
{
    CFieldScanner fields("a\tb  c   d");
    std::string_view field;
    EXPECT_TRUE(fields.Text(field));
    EXPECT_EQ(field, "a\tb");
    EXPECT_EQ(fields.Rest(), "c   d");
    EXPECT_TRUE(fields.HasBlank());
    CString text;
    EXPECT_TRUE(fields.Text(text));
    EXPECT_EQ(text, "c");
    EXPECT_FALSE(fields.HasBlank());
    EXPECT_TRUE(fields.Text(text)); // the last field takes all that is left
    EXPECT_EQ(text, "d");
    EXPECT_TRUE(fields.IsAtEnd());
    EXPECT_FALSE(fields.Text(text));
    EXPECT_EQ(text, "d");
}

TEST(FieldScanner, RestIsTrimmedAfterEachField)
{
    CFieldScanner fields("a \t b");
    EXPECT_TRUE(fields.Skip());
    EXPECT_EQ(fields.Rest(), "b");
}

TEST(FieldScanner, NumbersTakeTheirWholeField)
{
    CFieldScanner fields("1.5x 12.7 nothing 8");
    double real = -1.0;
    EXPECT_TRUE(fields.Real(real));
    EXPECT_EQ(real, 1.5);
    int integer = -1;
    EXPECT_TRUE(fields.Integer(integer));
    EXPECT_EQ(integer, 12);
    EXPECT_TRUE(fields.Real(real));
    EXPECT_EQ(real, 0.0);
    EXPECT_TRUE(fields.Integer(integer));
    EXPECT_EQ(integer, 8);
    EXPECT_FALSE(fields.Integer(integer));
    EXPECT_FALSE(fields.Real(real));
    EXPECT_EQ(integer, 8);
}
