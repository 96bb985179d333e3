#include "layer/CJOBXfonts.h"
#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/CurrentDir.h"
#include "support/Golden.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"
#include "support/WrittenText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

using namespace std::string_literals;

namespace
{
using Fonts = std::unique_ptr<CJOBXfonts>;

Fonts ReadFont(const std::string& bytes)
{
    const TempDir dir;
    dir.Write("standard", bytes);
    auto fonts = std::make_unique<CJOBXfonts>();
    EXPECT_EQ(fonts->ParseStandardFont(dir.Path().c_str()), 1);
    return fonts;
}

// The font with one character and in it the stroke of this line.
Fonts ReadStroke(const std::string& line)
{
    Fonts fonts = ReadFont("CHAR A\n" + line + "\nECHAR\n");
    EXPECT_EQ(fonts->m_arrCharacters.GetSize(), 1);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 1);
    return fonts;
}

const CJOBXfontsStandardObj& StrokeOf(const Fonts& fonts)
{
    return *fonts->m_arrCharacters[0]->m_arrStrokes[0];
}

void ExpectStroke(const CJOBXfontsStandardObj& stroke, const CPointD& start, const CPointD& end, const char* polarity,
                  const char* shape, double width)
{
    EXPECT_EQ(stroke.m_ptStart.x, start.x);
    EXPECT_EQ(stroke.m_ptStart.y, start.y);
    EXPECT_EQ(stroke.m_ptEnd.x, end.x);
    EXPECT_EQ(stroke.m_ptEnd.y, end.y);
    EXPECT_EQ(stroke.m_sPolarity, polarity);
    EXPECT_EQ(stroke.m_sShape, shape);
    EXPECT_EQ(stroke.m_dWidth, width);
}

void ExpectSizes(const CJOBXfonts& fonts, double x, double y, double offset)
{
    EXPECT_EQ(fonts.m_dXSize, x);
    EXPECT_EQ(fonts.m_dYSize, y);
    EXPECT_EQ(fonts.m_dOffset, offset);
}

CJOBXfontsStandardObj& AddStroke(CJOBXfonts& fonts, double value)
{
    CJOBXfontsStandard* const character = fonts.m_arrCharacters.Own(std::make_unique<CJOBXfontsStandard>());
    character->m_sName = "A";
    CJOBXfontsStandardObj* const stroke = character->m_arrStrokes.Own(std::make_unique<CJOBXfontsStandardObj>());
    stroke->m_ptStart.SetData(value, 2 * value);
    stroke->m_ptEnd.SetData(3 * value, 4 * value);
    stroke->m_dWidth = 5 * value;
    return *stroke;
}

// Writes the font with a file "standard" in the current directory.
void WriteWithStandardAtHand(const CJOBXfonts& fonts, const TempDir& dir)
{
    const TempDir current;
    current.Write("standard", "");
    const CurrentDir inside(current.Path());
    fonts.WriteStandardFont(dir.Path().c_str());
}

const char* const kWhole = "XSIZE  0.302\nYSIZE  0.25\nOFFSET 0.125\n\nCHAR A\nLINE 1 2 3 4 N S 0.5\nLINE 5 6 7 8\n"
                           "ECHAR\n\nCHAR B\nECHAR\n";
} // namespace

TEST(Fonts, NewFontHasNoSizesAndNoCharacters)
{
    const CJOBXfonts fonts;
    ExpectSizes(fonts, 0.0, 0.0, 0.0);
    EXPECT_EQ(fonts.m_arrCharacters.GetSize(), 0);
    ExpectStroke(CJOBXfontsStandardObj(), {0, 0}, {0, 0}, "P", "R", 0.0);
}

TEST(Fonts, Reader_TakesSizesCharactersAndStrokes)
{
    const Fonts fonts = ReadFont(kWhole);
    ExpectSizes(*fonts, 0.302, 0.25, 0.125);
    ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 2);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_sName, "A");
    EXPECT_EQ(fonts->m_arrCharacters[1]->m_sName, "B");
    ASSERT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 2);
    EXPECT_EQ(fonts->m_arrCharacters[1]->m_arrStrokes.GetSize(), 0);
    ExpectStroke(*fonts->m_arrCharacters[0]->m_arrStrokes[0], {1, 2}, {3, 4}, "N", "S", 0.5);
    ExpectStroke(*fonts->m_arrCharacters[0]->m_arrStrokes[1], {5, 6}, {7, 8}, "P", "R", 0.0);
}

TEST(Fonts, Reader_MissingLastFieldsOfAStrokeKeepTheirDefaults)
{
    ExpectStroke(StrokeOf(ReadStroke("LINE")), {0, 0}, {0, 0}, "P", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1")), {1, 0}, {0, 0}, "P", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2")), {1, 2}, {0, 0}, "P", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3")), {1, 2}, {3, 0}, "P", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3 4")), {1, 2}, {3, 4}, "P", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3 4 N")), {1, 2}, {3, 4}, "N", "R", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3 4 N S")), {1, 2}, {3, 4}, "N", "S", 0);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3 4 N S 5")), {1, 2}, {3, 4}, "N", "S", 5);
    ExpectStroke(StrokeOf(ReadStroke("LINE 1 2 3 4 N S 5 6")), {1, 2}, {3, 4}, "N", "S", 5);
}

TEST(Fonts, Reader_FieldsAreSeparatedByRunsOfBlanks)
{
    ExpectStroke(StrokeOf(ReadStroke("line   1  2   3 4    n  s   5")), {1, 2}, {3, 4}, "n", "s", 5);
}

TEST(Fonts, Reader_MalformedNumbersReadAsFarAsTheyGo)
{
    ExpectStroke(StrokeOf(ReadStroke("LINE x 1e1y -.5 +2. P R 0x1p-1")), {0, 10}, {-0.5, 2}, "P", "R", 0.5);
    EXPECT_TRUE(std::isnan(StrokeOf(ReadStroke("LINE nan 0 0 0")).m_ptStart.x));
    EXPECT_EQ(ReadFont("XSIZE abc\n")->m_dXSize, 0.0);
}

TEST(Fonts, Reader_CharacterNameIsTheTextAfterTheFirstBlank)
{
    const std::pair<const char*, const char*> cases[] = {
        {"CHAR A", "A"},  {"CHAR   A", "A"}, {"char a", "a"},   {"CHAR A B ", "A B"},    {"CHAR \"", "\""},
        {"CHARX Y", "Y"}, {"CHAR", ""},      {"CHAR ", ""},     {"CHARA", ""},           {"CHAR \xE4", "\xE4"},
        {"CHAR\tA", ""},  {"CHAR ;", ";"},   {"  CHAR =", "="}, {"CHAR ECHAR", "ECHAR"},
    };
    for (const auto& [line, expected] : cases)
    {
        const Fonts fonts = ReadFont(line + "\n"s);
        ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 1) << line;
        EXPECT_EQ(fonts->m_arrCharacters[0]->m_sName, expected) << line;
    }
}

TEST(Fonts, Reader_StrokesOutsideACharacterAreDropped)
{
    const Fonts fonts = ReadFont("LINE 1 2 3 4\nCHAR A\nLINE 5 6 7 8\nECHAR\nLINE 9 9 9 9\nCHAR B\n");
    ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 2);
    ASSERT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 1);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes[0]->m_ptStart.x, 5.0);
    EXPECT_EQ(fonts->m_arrCharacters[1]->m_arrStrokes.GetSize(), 0);
}

TEST(Fonts, Reader_EndOfCharacterIsNoCharacter)
{
    const Fonts fonts = ReadFont("ECHAR\nechar A\nECHARS\nCHAR A\neCHAR\nLINE 1 2 3 4\n");
    ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 1);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 0);
}

TEST(Fonts, Reader_CharacterEndsTheOneBefore)
{
    const Fonts fonts = ReadFont("CHAR A\nCHAR B\nLINE 1 2 3 4\n");
    ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 2);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 0);
    EXPECT_EQ(fonts->m_arrCharacters[1]->m_arrStrokes.GetSize(), 1);
}

TEST(Fonts, Reader_LowerCaseYSizeIsIgnoredAndTheOtherLowerCaseSizesAreTaken)
{
    ExpectSizes(*ReadFont("xsize 0.2\nysize 0.3\noffset 0.4\n"), 0.2, 0.0, 0.4);
    ExpectSizes(*ReadFont("XSize 0.2\nYSize 0.3\nOffset 0.4\n"), 0.2, 0.0, 0.4);
    ExpectSizes(*ReadFont("YSIZE 0.3\n"), 0.0, 0.3, 0.0);
}

TEST(Fonts, Reader_SizesMayStandInsideACharacterAndTheLastOneWins)
{
    const Fonts fonts = ReadFont("CHAR A\nXSIZE 1\nXSIZES 2\nLINE 1 2 3 4\n");
    EXPECT_EQ(fonts->m_dXSize, 2.0);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 1);
}

TEST(Fonts, Reader_SizeWithoutABlankIsZero)
{
    const Fonts fonts = ReadFont("XSIZE 1\nXSIZE\nOFFSET=3\nYSIZE\t2\n");
    ExpectSizes(*fonts, 0.0, 0.0, 0.0);
}

TEST(Fonts, Reader_OtherLinesAreIgnored)
{
    const Fonts fonts = ReadFont("#\nUNITS=MM\nX LINE 1\n MYCHAR A\nSIZE 3\n");
    ExpectSizes(*fonts, 0.0, 0.0, 0.0);
    EXPECT_EQ(fonts->m_arrCharacters.GetSize(), 0);
}

TEST(Fonts, Reader_AppendsCharactersAndReplacesSizes)
{
    const TempDir dir;
    dir.Write("a/standard", "XSIZE 1\nYSIZE 2\nCHAR A\n");
    dir.Write("b/standard", "XSIZE 3\nLINE 1 2 3 4\nCHAR B\n");
    CJOBXfonts fonts;
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path("a").c_str()), 1);
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path("b").c_str()), 1);
    ExpectSizes(fonts, 3.0, 2.0, 0.0);
    ASSERT_EQ(fonts.m_arrCharacters.GetSize(), 2);
    EXPECT_EQ(fonts.m_arrCharacters[0]->m_sName, "A");
    EXPECT_EQ(fonts.m_arrCharacters[0]->m_arrStrokes.GetSize(), 0);
    EXPECT_EQ(fonts.m_arrCharacters[1]->m_sName, "B");
}

TEST(Fonts, Reader_MissingFolderGivesZero)
{
    const TempDir dir;
    CJOBXfonts fonts;
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path("none").c_str()), 0);
}

TEST(Fonts, Reader_FileThatCannotBeOpenedGivesOneAndNothing)
{
    const TempDir dir;
    CJOBXfonts fonts;
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path().c_str()), 1);
    dir.MakeDir("standard");
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path().c_str()), 1);
    ExpectSizes(fonts, 0.0, 0.0, 0.0);
    EXPECT_EQ(fonts.m_arrCharacters.GetSize(), 0);
}

TEST(Fonts, Reader_FileIsFoundInAnyLetterCase)
{
    const TempDir dir;
    dir.Write("STANDARD", "XSIZE 1\n");
    CJOBXfonts fonts;
    EXPECT_EQ(fonts.ParseStandardFont(dir.Path().c_str()), 1);
    EXPECT_EQ(fonts.m_dXSize, 1.0);
}

TEST(Fonts, Reader_LineEndsMayBeCrLfAndTheLastOneMayMiss)
{
    const Fonts fonts = ReadFont("XSIZE 1\r\n\r\nCHAR A\r\nLINE 1 2 3 4 N S 5\r\nLINE 6 7 8 9 N");
    EXPECT_EQ(fonts->m_dXSize, 1.0);
    ASSERT_EQ(fonts->m_arrCharacters.GetSize(), 1);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_sName, "A");
    ASSERT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), 2);
    ExpectStroke(*fonts->m_arrCharacters[0]->m_arrStrokes[0], {1, 2}, {3, 4}, "N", "S", 5);
    ExpectStroke(*fonts->m_arrCharacters[0]->m_arrStrokes[1], {6, 7}, {8, 9}, "N", "R", 0);
}

TEST(Fonts, Reader_NulEndsTheTextOfItsLine)
{
    const Fonts fonts = ReadFont("CHAR A\0B\nLINE 1 2 3\0 4\n\0XSIZE 1\n"s);
    EXPECT_EQ(fonts->m_arrCharacters[0]->m_sName, "A");
    ExpectStroke(StrokeOf(fonts), {1, 2}, {3, 0}, "P", "R", 0);
    EXPECT_EQ(fonts->m_dXSize, 0.0);
}

TEST(Fonts, Reader_EveryBeginningOfAFileGivesTheRecordsBegunInIt)
{
    const std::string whole = kWhole;
    for (std::size_t size = 0; size <= whole.size(); ++size)
    {
        std::istringstream lines(whole.substr(0, size));
        int characters = 0;
        int strokes = 0;
        for (std::string line; std::getline(lines, line);)
        {
            characters += line.starts_with("CHAR") ? 1 : 0;
            strokes += line.starts_with("LINE") ? 1 : 0;
        }
        const Fonts fonts = ReadFont(whole.substr(0, size));
        ASSERT_EQ(fonts->m_arrCharacters.GetSize(), characters) << size;
        if (characters == 0)
            continue;
        ASSERT_EQ(fonts->m_arrCharacters[0]->m_arrStrokes.GetSize(), strokes) << size;
    }
}

TEST(Fonts, Reader_ExhaustedMemoryLeavesAsTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    dir.Write("standard", kWhole);
    const CString path = dir.Path().c_str();
    EXPECT_GT(CountFailedAllocations(
                  [&]
                  {
                      CJOBXfonts fonts;
                      EXPECT_EQ(fonts.ParseStandardFont(path), 1);
                      EXPECT_EQ(fonts.m_arrCharacters.GetSize(), 2);
                  }),
              3);
}

TEST(Fonts, ReadsAndWritesPointsInALocaleWithADecimalComma)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    const Fonts fonts = ReadFont("XSIZE 0.302\nCHAR A\nLINE 0.5 1.25 0 0 P R 0.012\n");
    EXPECT_EQ(fonts->m_dXSize, 0.302);
    ExpectStroke(StrokeOf(fonts), {0.5, 1.25}, {0, 0}, "P", "R", 0.012);
    const TempDir dir;
    WriteWithStandardAtHand(*fonts, dir);
    EXPECT_EQ(dir.Read("fonts/standard"), "XSIZE 0.302000YSIZE 0.000000XSIZE 0.000000\nCHAR A\n"
                                          "LINE 0.5 1.25 0 0 P R 0.012\nECHAR\n");
}

TEST(Fonts, Writer_WritesTheWholeFile)
{
    const TempDir dir;
    CJOBXfonts fonts;
    ASSERT_EQ(fonts.ParseStandardFont((TestDataDir() + "/layer/fonts/in").c_str()), 1);
    WriteWithStandardAtHand(fonts, dir);
    ExpectSameFolder(dir.Path(), TestDataDir() + "/layer/fonts/golden");
}

TEST(Fonts, Writer_SizesRunTogetherWithTheOffsetUnderTheKeywordOfTheXSize)
{
    const TempDir dir;
    CJOBXfonts fonts;
    fonts.m_dXSize = 0.302;
    fonts.m_dYSize = 1e-7;
    fonts.m_dOffset = -2;
    WriteWithStandardAtHand(fonts, dir);
    EXPECT_EQ(dir.Read("fonts/standard"), "XSIZE 0.302000YSIZE 0.000000XSIZE -2.000000");
}

TEST(Fonts, Writer_WithoutAStandardFileAtHandTheFolderStaysEmpty)
{
    const TempDir dir;
    const TempDir current;
    dir.Write("fonts/standard", "old");
    dir.Write("fonts/deep/other", "old");
    const CurrentDir inside(current.Path());
    CJOBXfonts().WriteStandardFont(dir.Path().c_str());
    EXPECT_TRUE(std::filesystem::is_directory(dir.Path("fonts")));
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path("fonts")));
}

TEST(Fonts, Writer_AStandardDirectoryOrAnotherLetterCaseAtHandDoesNotCount)
{
    const TempDir dir;
    const TempDir current;
    current.MakeDir("standard");
    const CurrentDir inside(current.Path());
    CJOBXfonts().WriteStandardFont(dir.Path().c_str());
    EXPECT_FALSE(dir.Exists("fonts/standard"));
    std::filesystem::remove(current.Path("standard"));
    current.Write("Standard", "");
    if (current.Exists("standard"))
        GTEST_SKIP() << "this file system does not tell letter case apart";
    CJOBXfonts().WriteStandardFont(dir.Path().c_str());
    EXPECT_FALSE(dir.Exists("fonts/standard"));
}

TEST(Fonts, Writer_ReplacesTheFolderWithEverythingInIt)
{
    const TempDir dir;
    dir.Write("fonts/deep/other", "old");
    WriteWithStandardAtHand(CJOBXfonts(), dir);
    EXPECT_FALSE(dir.Exists("fonts/deep"));
    EXPECT_TRUE(dir.Exists("fonts/standard"));
}

TEST(Fonts, Writer_MissingJobFolderIsNotMade)
{
    const TempDir current;
    current.Write("standard", "");
    const CurrentDir inside(current.Path());
    CJOBXfonts().WriteStandardFont(current.Path("none").c_str());
    EXPECT_FALSE(current.Exists("none"));
}

TEST(Fonts, Writer_ListsPrintStrokesInTheShorterFormAndPassOverNull)
{
    CJOBXfonts fonts;
    CJOBXfontsStandardObj& stroke = AddStroke(fonts, 0.1234567);
    stroke.m_ptEnd.SetData(1e-5, 1234567.0);
    stroke.m_sPolarity = "N";
    stroke.m_sShape = "S";
    stroke.m_dWidth = 0.0123456789;
    fonts.m_arrCharacters[0]->m_arrStrokes.Add(nullptr);
    fonts.m_arrCharacters.Add(nullptr);
    fonts.m_arrCharacters.Own(std::make_unique<CJOBXfontsStandard>());
    const std::string line = "LINE 0.123457 0.246913 1e-05 1.23457e+06 N S 0.0123457\n";
    EXPECT_EQ(WrittenText([&](FILE* file) { fonts.m_arrCharacters[0]->m_arrStrokes.WriteODBData(file); }), line);
    EXPECT_EQ(WrittenText([&](FILE* file) { fonts.m_arrCharacters.WriteODBData(file); }),
              "\nCHAR A\n" + line + "ECHAR\n\nCHAR \nECHAR\n");
    fonts.m_arrCharacters.WriteODBData(nullptr);
    fonts.m_arrCharacters[0]->m_arrStrokes.WriteODBData(nullptr);
}

TEST(Fonts, Writer_WhatWasWrittenReadsBackWithoutYSizeAndOffset)
{
    const TempDir dir;
    const Fonts first = ReadFont(kWhole);
    WriteWithStandardAtHand(*first, dir);
    CJOBXfonts second;
    EXPECT_EQ(second.ParseStandardFont(dir.Path("fonts").c_str()), 1);
    ExpectSizes(second, 0.302, 0.0, 0.0);
    ASSERT_EQ(second.m_arrCharacters.GetSize(), 2);
    EXPECT_EQ(second.m_arrCharacters[0]->m_sName, "A");
    ASSERT_EQ(second.m_arrCharacters[0]->m_arrStrokes.GetSize(), 2);
    ExpectStroke(*second.m_arrCharacters[0]->m_arrStrokes[0], {1, 2}, {3, 4}, "N", "S", 0.5);
    const TempDir again;
    WriteWithStandardAtHand(second, again);
    const std::string a = dir.Read("fonts/standard");
    const std::string b = again.Read("fonts/standard");
    EXPECT_EQ(a.substr(a.find('\n')), b.substr(b.find('\n')));
}

TEST(Fonts, UnitConvert_MultipliesPointsAndLeavesTheWidth)
{
    CJOBXfonts fonts;
    const CJOBXfontsStandardObj& stroke = AddStroke(fonts, 1.0);
    fonts.m_arrCharacters[0]->m_arrStrokes.Add(nullptr);
    fonts.m_arrCharacters.Add(nullptr);
    fonts.m_arrCharacters[0]->m_arrStrokes.UnitConvert(2.0);
    ExpectStroke(stroke, {2, 4}, {6, 8}, "P", "R", 5);
    fonts.m_arrCharacters.UnitConvert(2.0);
    ExpectStroke(stroke, {4, 8}, {12, 16}, "P", "R", 5);
}

TEST(Fonts, UnitConvert_OfTheFontMultipliesSizesAndPoints)
{
    CJOBXfonts fonts;
    fonts.m_dXSize = 1;
    fonts.m_dYSize = 2;
    fonts.m_dOffset = 3;
    const CJOBXfontsStandardObj& stroke = AddStroke(fonts, 1.0);
    fonts.UnitConvert(25.4);
    ExpectSizes(fonts, 25.4, 50.8, 3 * 25.4);
    ExpectStroke(stroke, {25.4, 50.8}, {3 * 25.4, 4 * 25.4}, "P", "R", 5);
}

TEST(Fonts, UnitConvert_ByOneOfItsOwnSizesUsesTheValueGiven)
{
    CJOBXfonts fonts;
    fonts.m_dXSize = 2;
    fonts.m_dYSize = 3;
    const CJOBXfontsStandardObj& stroke = AddStroke(fonts, 1.0);
    fonts.UnitConvert(fonts.m_dXSize);
    ExpectSizes(fonts, 4.0, 6.0, 0.0);
    EXPECT_EQ(stroke.m_ptStart.x, 2.0);
}

TEST(Fonts, UnitConvert_ByACoordinateOfAStrokeUsesTheValueGiven)
{
    CJOBXfontsStandardArray characters;
    CJOBXfontsStandardObjArray& strokes = characters.Own(std::make_unique<CJOBXfontsStandard>())->m_arrStrokes;
    CJOBXfontsStandardObj& first = *strokes.Own(std::make_unique<CJOBXfontsStandardObj>());
    CJOBXfontsStandardObj& second = *strokes.Own(std::make_unique<CJOBXfontsStandardObj>());
    CJOBXfontsStandardObj& behind = *characters.Own(std::make_unique<CJOBXfontsStandard>())
                                         ->m_arrStrokes.Own(std::make_unique<CJOBXfontsStandardObj>());
    first.m_ptStart.SetData(2, 3);
    first.m_ptEnd.SetData(5, 7);
    second.m_ptEnd.SetData(1, 1);
    behind.m_ptEnd.SetData(1, 1);
    first.UnitConvert(first.m_ptStart.x);
    EXPECT_EQ(first.m_ptStart, CPointD(4, 6));
    EXPECT_EQ(first.m_ptEnd, CPointD(10, 14));
    strokes.UnitConvert(first.m_ptStart.x);
    EXPECT_EQ(second.m_ptEnd, CPointD(4, 4));
    first.m_ptStart.SetData(2, 3);
    characters.UnitConvert(first.m_ptStart.x);
    EXPECT_EQ(behind.m_ptEnd, CPointD(2, 2));
}

TEST(Fonts, RealJobs_EveryStrokeIsReadAsItsLineSays)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    int read = 0;
    for (const auto& job : std::filesystem::directory_iterator(jobs))
    {
        std::ifstream file(job.path() / "fonts/standard");
        if (!file)
            continue;
        CJOBXfonts fonts;
        ASSERT_EQ(fonts.ParseStandardFont((job.path() / "fonts").string().c_str()), 1);
        int characters = 0;
        int strokes = 0;
        for (std::string line; std::getline(file, line);)
        {
            std::istringstream words(line);
            words.imbue(std::locale::classic());
            std::string keyword;
            words >> keyword;
            if (keyword == "CHAR")
            {
                std::string name;
                words >> name;
                EXPECT_EQ(fonts.m_arrCharacters[characters++]->m_sName, name.c_str());
                strokes = 0;
            }
            else if (keyword == "ECHAR")
            {
                EXPECT_EQ(fonts.m_arrCharacters[characters - 1]->m_arrStrokes.GetSize(), strokes);
            }
            else if (keyword == "LINE")
            {
                CPointD start;
                CPointD end;
                std::string polarity;
                std::string shape;
                double width = 0.0;
                words >> start.x >> start.y >> end.x >> end.y >> polarity >> shape >> width;
                ExpectStroke(*fonts.m_arrCharacters[characters - 1]->m_arrStrokes[strokes++], start, end,
                             polarity.c_str(), shape.c_str(), width);
            }
            else if (double number = 0.0; words >> number)
            {
                const double size = keyword == "XSIZE"   ? fonts.m_dXSize
                                    : keyword == "YSIZE" ? fonts.m_dYSize
                                                         : fonts.m_dOffset;
                EXPECT_EQ(size, number) << keyword;
            }
        }
        EXPECT_GT(characters, 50);
        EXPECT_EQ(fonts.m_arrCharacters.GetSize(), characters);
        ++read;
    }
    if (read == 0)
        GTEST_SKIP() << "no job with a font in " << jobs;
}
