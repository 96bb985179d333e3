#include "step/CJOBXstephdr.h"

#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include "foundation/framework/CException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

using namespace std::string_literals;

namespace
{
void Read(CJOBXstephdr& header, std::string_view text)
{
    const TempDir dir;
    ASSERT_EQ(header.ParseODBOfMFC(dir.Write("stephdr", text).c_str()), 1);
}

std::string Written(const CJOBXstephdr& header)
{
    const TempDir dir;
    header.WriteODBData(dir.Path().c_str());
    return dir.Read("stephdr");
}

std::string Input()
{
    return FileBytes(TestDataDir() + "/step/stephdr/in/stephdr");
}

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return text;
}

// The only entry of a block with these lines.
const CJOBXstepRepeat& ReadEntry(CJOBXstephdr& header, const std::string& lines)
{
    Read(header, "STEP-REPEAT {\n" + lines + "}\n");
    EXPECT_EQ(header.m_arrStepRepeats.GetSize(), 1) << lines;
    return *header.m_arrStepRepeats.GetAt(0);
}

struct Setting
{
    const char* key;
    CString CJOBXstephdr::*text;
    bool capitalsOnly;
    const char* byDefault;
};

constexpr Setting kSettings[] = {
    {"AFFECTING_BOM", &CJOBXstephdr::m_sAffectingBom, true, ""},
    {"TOP_ACTIVE", &CJOBXstephdr::m_sTopActive, true, "0"},
    {"BOTTOM_ACTIVE", &CJOBXstephdr::m_sBottomActive, false, "0"},
    {"RIGHT_ACTIVE", &CJOBXstephdr::m_sRightActive, true, "0"},
    {"LEFT_ACTIVE", &CJOBXstephdr::m_sLeftActive, false, "0"},
    {"ONLINE_DRC_NAME", &CJOBXstephdr::m_sOnlineDrcName, true, ""},
    {"ONLINE_DRC_MODE", &CJOBXstephdr::m_sOnlineDrcMode, false, "DISABLED"},
    {"ONLINE_DRC_STAT", &CJOBXstephdr::m_sOnlineDrcStat, true, "GREEN"},
    {"ONLINE_DRC_TIME", &CJOBXstephdr::m_sOnlineDrcTime, false, "0"},
    {"ONLINE_DRC_BEEP_VOL", &CJOBXstephdr::m_sOnlineDrcBeepVol, true, "0"},
    {"ONLINE_DRC_BEEP_TONE", &CJOBXstephdr::m_sOnlineDrcBeepTone, true, "0"},
    {"ONLINE_NET_MODE", &CJOBXstephdr::m_sOnlineNetMode, false, "DISABLED"},
    {"ONLINE_NET_STAT", &CJOBXstephdr::m_sOnlineNetStat, false, "GREEN"},
    {"ONLINE_NET_TIME", &CJOBXstephdr::m_sOnlineNetTime, true, "0"},
    {"ONLINE_NET_BEEP_VOL", &CJOBXstephdr::m_sOnlineNetBeepVol, false, "0"},
    {"ONLINE_NET_BEEP_TONE", &CJOBXstephdr::m_sOnlineNetBeepTone, false, "0"},
};
} // namespace

TEST(StepHeader, New_HasItsDefaults)
{
    const CJOBXstephdr header;
    EXPECT_EQ(header.m_ptDatum, CPointD());
    EXPECT_EQ(header.m_ptOrigin, CPointD());
    for (const Setting& setting : kSettings)
        EXPECT_EQ(header.*setting.text, setting.byDefault) << setting.key;
    EXPECT_TRUE(header.m_sAffectingBomChanged.IsEmpty());
    EXPECT_EQ(header.m_arrStepRepeats.GetSize(), 0);
}

TEST(StepHeader, Reader_MissingFileGivesZeroAndKeepsTheDefaults)
{
    const TempDir dir;
    CJOBXstephdr header;
    EXPECT_EQ(header.ParseODBOfMFC(dir.Path("none").c_str()), 0);
    EXPECT_EQ(header.ParseODBOfMFC(dir.Path().c_str()), 0); // a directory
    EXPECT_EQ(Written(header), Written(CJOBXstephdr()));
}

TEST(StepHeader, Reader_EmptyFileGivesOne)
{
    CJOBXstephdr header;
    Read(header, "");
    EXPECT_EQ(Written(header), Written(CJOBXstephdr()));
}

TEST(StepHeader, Reader_DatumAndOriginInAnyLetters)
{
    for (const bool lower : {false, true})
    {
        const std::string text = "X_DATUM=1\nY_DATUM= 2.5 \nX_ORIGIN = -3\nY_ORIGIN=1e2\n";
        CJOBXstephdr header;
        Read(header, lower ? Lower(text) : text);
        EXPECT_EQ(header.m_ptDatum, CPointD(1, 2.5));
        EXPECT_EQ(header.m_ptOrigin, CPointD(-3, 100));
    }
}

TEST(StepHeader, Reader_MalformedNumbersAreZero)
{
    CJOBXstephdr header;
    header.m_ptDatum.SetData(5, 5);
    header.m_ptOrigin.SetData(5, 5);
    Read(header, "X_DATUM=x\nY_DATUM=\nX_ORIGIN\nY_ORIGIN=1.5mm\n");
    EXPECT_EQ(header.m_ptDatum, CPointD());
    EXPECT_EQ(header.m_ptOrigin, CPointD(0, 1.5));
}

TEST(StepHeader, Reader_EachSettingTakesItsTextAsItIs)
{
    for (const Setting& setting : kSettings)
    {
        CJOBXstephdr header;
        Read(header, "  "s + setting.key + " =  Some Text=1 \n");
        EXPECT_EQ(header.*setting.text, "Some Text=1") << setting.key;
        for (const Setting& other : kSettings)
        {
            if (other.key != setting.key)
            {
                EXPECT_EQ(header.*other.text, other.byDefault) << setting.key << " changed " << other.key;
            }
        }
    }
}

TEST(StepHeader, Reader_SomeSettingsCountInCapitalsOnly)
{
    for (const Setting& setting : kSettings)
    {
        CJOBXstephdr header;
        Read(header, Lower(setting.key) + "=1\n");
        EXPECT_EQ(header.*setting.text, setting.capitalsOnly ? setting.byDefault : "1") << setting.key;
        std::string firstOnly = Lower(setting.key);
        firstOnly[0] = setting.key[0];
        CJOBXstephdr mixed;
        Read(mixed, firstOnly + "=1\n");
        EXPECT_EQ(mixed.*setting.text, setting.capitalsOnly ? setting.byDefault : "1") << firstOnly;
    }
}

TEST(StepHeader, Reader_SmallTopActiveIsIgnoredAndSmallBottomActiveIsNot)
{
    CJOBXstephdr header;
    Read(header, "top_active=1\nbottom_active=1\n");
    EXPECT_EQ(header.m_sTopActive, "0");
    EXPECT_EQ(header.m_sBottomActive, "1");
}

TEST(StepHeader, Reader_AffectingBomTakesAffectingBomChanged)
{
    CJOBXstephdr header;
    Read(header, "AFFECTING_BOM=YES\nAFFECTING_BOM_CHANGED=NO\n");
    EXPECT_EQ(header.m_sAffectingBom, "NO");
    EXPECT_TRUE(header.m_sAffectingBomChanged.IsEmpty());
}

TEST(StepHeader, Reader_AffectingBomChangedIsReadWhenNotInCapitals)
{
    CJOBXstephdr header;
    Read(header, "affecting_bom_changed=1\naffecting_bom=x\n");
    EXPECT_EQ(header.m_sAffectingBomChanged, "1");
    EXPECT_TRUE(header.m_sAffectingBom.IsEmpty());
    Read(header, "AFFECTING_BOM_changed=2\n");
    EXPECT_EQ(header.m_sAffectingBom, "2");
    EXPECT_EQ(header.m_sAffectingBomChanged, "1");
}

TEST(StepHeader, Reader_KeysOnlyHaveToBeginTheLine)
{
    CJOBXstephdr header;
    Read(header, "TOP_ACTIVE_X=1\nONLINE_DRC_BEEP_VOLUME=2\nX_DATUM_OLD=3\n");
    EXPECT_EQ(header.m_sTopActive, "1");
    EXPECT_EQ(header.m_sOnlineDrcBeepVol, "2");
    EXPECT_EQ(header.m_ptDatum.x, 3.0);
}

TEST(StepHeader, Reader_LineWithoutEqualSignIsItsOwnValue)
{
    CJOBXstephdr header;
    Read(header, "TOP_ACTIVE\nONLINE_DRC_MODE on\n");
    EXPECT_EQ(header.m_sTopActive, "TOP_ACTIVE");
    EXPECT_EQ(header.m_sOnlineDrcMode, "ONLINE_DRC_MODE on");
}

TEST(StepHeader, Reader_LaterLineWins)
{
    CJOBXstephdr header;
    Read(header, "TOP_ACTIVE=1\nTOP_ACTIVE=2\nTOP_ACTIVE=\n");
    EXPECT_TRUE(header.m_sTopActive.IsEmpty());
}

TEST(StepHeader, Reader_UnknownLinesAreIgnored)
{
    CJOBXstephdr header;
    Read(header, "UNITS=MM\n# X_DATUM=1\n=\n{\nSTEP\nA_TOP_ACTIVE=1\n_X=2\n");
    EXPECT_EQ(Written(header), Written(CJOBXstephdr()));
}

TEST(StepRepeat, Reader_EmptyBlockHasTheDefaults)
{
    CJOBXstephdr header;
    const CJOBXstepRepeat& entry = ReadEntry(header, "");
    EXPECT_TRUE(entry.m_sName.IsEmpty());
    EXPECT_EQ(entry.m_ptPosition, CPointD());
    EXPECT_EQ(entry.m_ptPitch, CPointD());
    EXPECT_EQ(entry.m_ptCount, CPointN());
    EXPECT_EQ(entry.m_dAngle, 0.0);
    EXPECT_EQ(entry.m_sMirror, "NO");
    EXPECT_TRUE(entry.m_sFlip.IsEmpty());
}

TEST(StepRepeat, Reader_BlockFillsItsFieldsInAnyLetters)
{
    const std::string lines = "   NAME=pcb 1\n X=1.5\n Y=-2\n DX=3.25\n DY=4\n NX=5\n NY=6\n ANGLE=270\n FLIP=Yes\n"
                              " MIRROR=No\n";
    for (const bool lower : {false, true})
    {
        CJOBXstephdr header;
        const CJOBXstepRepeat& entry = ReadEntry(header, lower ? Lower(lines) : lines);
        EXPECT_EQ(entry.m_sName, "pcb 1");
        EXPECT_EQ(entry.m_ptPosition, CPointD(1.5, -2));
        EXPECT_EQ(entry.m_ptPitch, CPointD(3.25, 4));
        EXPECT_EQ(entry.m_ptCount, CPointN(5, 6));
        EXPECT_EQ(entry.m_dAngle, 270.0);
        EXPECT_EQ(entry.m_sFlip, lower ? "yes" : "Yes");
        EXPECT_EQ(entry.m_sMirror, lower ? "no" : "No");
    }
}

TEST(StepRepeat, Reader_AngleLosesItsFraction)
{
    const struct
    {
        const char* text;
        double angle;
    } kCases[] = {{"90.5", 90.0}, {"-90.9", -90.0}, {"0.9", 0.0},
                  {"1e2", 1.0},   {"x", 0.0},       {"99999999999", 2147483647.0}};
    for (const auto& test : kCases)
    {
        CJOBXstephdr header;
        EXPECT_EQ(ReadEntry(header, "ANGLE="s + test.text + "\n").m_dAngle, test.angle) << test.text;
    }
}

TEST(StepRepeat, Reader_ShortKeysTakeWhateverBeginsWithThem)
{
    CJOBXstephdr header;
    const CJOBXstepRepeat& entry =
        ReadEntry(header, "XY=1\nYES=2\nDXY=3\nDYX=4\nNXX=5\nNYY=6\nNAMES=a\nANGLES=7\nMIRRORED=b\nFLIPPED=c\n");
    EXPECT_EQ(entry.m_ptPosition, CPointD(1, 2));
    EXPECT_EQ(entry.m_ptPitch, CPointD(3, 4));
    EXPECT_EQ(entry.m_ptCount, CPointN(5, 6));
    EXPECT_EQ(entry.m_sName, "a");
    EXPECT_EQ(entry.m_dAngle, 7.0);
    EXPECT_EQ(entry.m_sMirror, "b");
    EXPECT_EQ(entry.m_sFlip, "c");
}

TEST(StepRepeat, Reader_LettersThatOnlyBeginAKeyAreIgnored)
{
    CJOBXstephdr header;
    const CJOBXstepRepeat& entry = ReadEntry(header, "N=1\nNAM=2\nD=3\nANGL=4\nMIRRO=5\nFLI=6\n");
    EXPECT_EQ(entry.m_ptCount, CPointN());
    EXPECT_TRUE(entry.m_sName.IsEmpty());
    EXPECT_EQ(entry.m_ptPitch, CPointD());
    EXPECT_EQ(entry.m_dAngle, 0.0);
    EXPECT_EQ(entry.m_sMirror, "NO");
    EXPECT_TRUE(entry.m_sFlip.IsEmpty());
}

TEST(StepRepeat, Reader_HeaderKeysComeBeforeTheBlocksKeys)
{
    CJOBXstephdr header;
    const CJOBXstepRepeat& entry =
        ReadEntry(header, "X_DATUM=1\nX_ORIGIN=2\nY_ORIGIN=3\nX_OTHER=4\nTOP_ACTIVE=5\nAFFECTING_BOM=6\n");
    EXPECT_EQ(header.m_ptDatum.x, 1.0);
    EXPECT_EQ(header.m_ptOrigin, CPointD(2, 3));
    EXPECT_EQ(entry.m_ptPosition, CPointD(4, 0));
    EXPECT_EQ(header.m_sTopActive, "5");
    EXPECT_EQ(header.m_sAffectingBom, "6");
}

TEST(StepRepeat, Reader_KeysOutsideABlockAreIgnored)
{
    CJOBXstephdr header;
    Read(header, "NAME=a\nX=1\nY=1\nDX=1\nDY=1\nNX=1\nNY=1\nANGLE=1\nMIRROR=YES\nFLIP=YES\n}\n"
                 "STEP-REPEAT {\n}\nNAME=b\nX=2\nANGLE=3\n");
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 1);
    EXPECT_TRUE(header.m_arrStepRepeats.GetAt(0)->m_sName.IsEmpty());
    EXPECT_EQ(header.m_arrStepRepeats.GetAt(0)->m_ptPosition, CPointD());
    EXPECT_EQ(header.m_ptDatum, CPointD());
}

TEST(StepRepeat, Reader_BraceWithoutABlockDoesNothing)
{
    CJOBXstephdr header;
    Read(header, "}\n}\nSTEP-REPEAT {\nNAME=a\n} trailing\n}\n");
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 1);
    EXPECT_EQ(header.m_arrStepRepeats.GetAt(0)->m_sName, "a");
}

TEST(StepRepeat, Reader_BlockWithoutItsEndIsLost)
{
    CJOBXstephdr header;
    Read(header, "STEP-REPEAT {\nNAME=a\nSTEP-REPEAT {\nNAME=b\n}\nSTEP-REPEAT {\nNAME=c\n");
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 1);
    EXPECT_EQ(header.m_arrStepRepeats.GetAt(0)->m_sName, "b");
}

TEST(StepRepeat, Reader_BlockBeginsOnlyWithTheBlankBeforeItsBrace)
{
    for (const char* const begin : {"STEP-REPEAT{", "STEP-REPEAT  {", "STEP-REPEAT", "STEP_REPEAT {", "STEP-REPEAT\t{"})
    {
        CJOBXstephdr header;
        Read(header, begin + "\nNAME=a\n}\n"s);
        EXPECT_EQ(header.m_arrStepRepeats.GetSize(), 0) << begin;
    }
    for (const char* const begin : {"STEP-REPEAT {", "step-repeat {", "Step-Repeat {x", "  STEP-REPEAT {  "})
    {
        CJOBXstephdr header;
        Read(header, begin + "\nNAME=a\n}\n"s);
        EXPECT_EQ(header.m_arrStepRepeats.GetSize(), 1) << begin;
    }
}

TEST(StepRepeat, Reader_SecondFileIsAppended)
{
    CJOBXstephdr header;
    Read(header, "STEP-REPEAT {\nNAME=a\n}\nSTEP-REPEAT {\nNAME=open\n");
    Read(header, "NAME=x\n}\nSTEP-REPEAT {\nNAME=b\n}\n");
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 2);
    EXPECT_EQ(header.m_arrStepRepeats.GetAt(0)->m_sName, "a");
    EXPECT_EQ(header.m_arrStepRepeats.GetAt(1)->m_sName, "b");
}

TEST(StepHeader, Reader_TakesCrLfAndNoLastLineEnd)
{
    const std::string text = Input();
    CJOBXstephdr plain;
    Read(plain, text);
    CJOBXstephdr carriageReturns;
    Read(carriageReturns, WithCrLf(text));
    CJOBXstephdr cut;
    Read(cut, std::string_view(text).substr(0, text.size() - 1));
    EXPECT_EQ(Written(carriageReturns), Written(plain));
    EXPECT_EQ(Written(cut), Written(plain));
}

TEST(StepHeader, Reader_NulEndsItsLineAndOtherBytesPass)
{
    CJOBXstephdr header;
    Read(header, "TOP_ACTIVE=1\0002\nLEFT_ACTIVE=\x80\xff\xa0\nRIGHT_ACTIVE=a\rb\nBOTTOM\0_ACTIVE=1\n"s);
    EXPECT_EQ(header.m_sTopActive, "1");
    EXPECT_EQ(header.m_sLeftActive, "\x80\xff\xa0");
    EXPECT_EQ(header.m_sRightActive, "a\rb");
    EXPECT_EQ(header.m_sBottomActive, "0");
}

TEST(StepHeader, Reader_EveryPrefixOfAFileReads)
{
    const std::string text = Input();
    const TempDir dir;
    __int64 last = 0;
    for (std::size_t size = 0; size <= text.size(); ++size)
    {
        const std::string path = dir.Write("stephdr", std::string_view(text).substr(0, size));
        CJOBXstephdr header;
        ASSERT_EQ(header.ParseODBOfMFC(path.c_str()), 1);
        ASSERT_GE(header.m_arrStepRepeats.GetSize(), last) << "at byte " << size;
        last = header.m_arrStepRepeats.GetSize();
    }
    EXPECT_EQ(last, 2);
}

TEST(StepHeader, Reader_DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    CJOBXstephdr header;
    Read(header, "X_DATUM=1.5\nY_DATUM=2,5\n");
    EXPECT_EQ(header.m_ptDatum, CPointD(1.5, 2.0));
    EXPECT_EQ(Written(header).substr(0, 12), "X_DATUM=1.5\n");
}

TEST(StepHeader, Reader_ExhaustedMemoryRaisesTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    const std::string path = dir.Write("stephdr", "STEP-REPEAT {\n}\nSTEP-REPEAT {\nSTEP-REPEAT {\n}\n");
    const CString file = path.c_str();
    EXPECT_GE(CountFailedAllocations([&] { CJOBXstephdr().ParseODBOfMFC(file); }), 3);
}

TEST(StepHeader, Writer_WritesTheWholeFile)
{
    CJOBXstephdr header;
    Read(header, Input());
    EXPECT_EQ(Written(header), FileBytes(TestDataDir() + "/step/stephdr/golden/stephdr"));
}

TEST(StepHeader, Writer_WithoutEntriesWritesTwoBlankLines)
{
    EXPECT_EQ(Written(CJOBXstephdr()), "X_DATUM=0\nY_DATUM=0\nX_ORIGIN=0\nY_ORIGIN=0\n\n\n"
                                       "TOP_ACTIVE=0\nBOTTOM_ACTIVE=0\nRIGHT_ACTIVE=0\nLEFT_ACTIVE=0\n"
                                       "ONLINE_DRC_NAME=\nONLINE_DRC_MODE=DISABLED\nONLINE_DRC_STAT=GREEN\n"
                                       "ONLINE_DRC_TIME=0\nONLINE_DRC_BEEP_VOL=0\nONLINE_DRC_BEEP_TONE=0\n"
                                       "ONLINE_NET_MODE=DISABLED\nONLINE_NET_STAT=GREEN\nONLINE_NET_TIME=0\n"
                                       "ONLINE_NET_BEEP_VOL=0\nONLINE_NET_BEEP_TONE=0\n");
}

TEST(StepHeader, Writer_OriginYIsWrittenFromX)
{
    CJOBXstephdr header;
    Read(header, "X_ORIGIN=1.5\nY_ORIGIN=2\n");
    EXPECT_EQ(header.m_ptOrigin, CPointD(1.5, 2));
    EXPECT_NE(Written(header).find("\nX_ORIGIN=1.5\nY_ORIGIN=1.5\n"), std::string::npos);
}

TEST(StepHeader, Writer_BeepToneIsTheIntegerOfItsText)
{
    const struct
    {
        const char* text;
        const char* written;
    } kCases[] = {{"500", "500"},  {"", "0"},     {"high", "0"},
                  {" 12.7", "12"}, {"-3x", "-3"}, {"99999999999", "2147483647"}};
    for (const auto& test : kCases)
    {
        CJOBXstephdr header;
        header.m_sOnlineNetBeepTone = test.text;
        const std::string text = Written(header);
        EXPECT_EQ(text.substr(text.find("ONLINE_NET_BEEP_TONE")), "ONLINE_NET_BEEP_TONE="s + test.written + "\n");
        header.m_sOnlineDrcBeepTone = "high"; // the other tone is written as its text
        EXPECT_NE(Written(header).find("ONLINE_DRC_BEEP_TONE=high\n"), std::string::npos);
    }
}

TEST(StepHeader, Writer_AffectingBomIsNotWritten)
{
    CJOBXstephdr header;
    header.m_sAffectingBom = "a";
    header.m_sAffectingBomChanged = "b";
    EXPECT_EQ(Written(header), Written(CJOBXstephdr()));
}

TEST(StepHeader, Writer_FractionalAngleOfTheHostKeepsItsFraction)
{
    CJOBXstephdr header;
    header.m_arrStepRepeats.Own(std::make_unique<CJOBXstepRepeat>())->m_dAngle = 90.5;
    EXPECT_NE(Written(header).find("\n ANGLE=90.5\n"), std::string::npos);
}

TEST(StepHeader, Writer_EntriesAreNotReadBack)
{
    CJOBXstephdr header;
    Read(header, Input());
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 2);
    CJOBXstephdr again;
    Read(again, Written(header));
    EXPECT_EQ(again.m_arrStepRepeats.GetSize(), 0);
    EXPECT_EQ(again.m_ptDatum, CPointD(0.125, -1234570.0)); // six digits
    EXPECT_EQ(again.m_ptOrigin, CPointD(1.5, 1.5));
    EXPECT_EQ(again.m_sOnlineNetBeepTone, "1000");
    EXPECT_TRUE(again.m_sAffectingBom.IsEmpty());
    EXPECT_EQ(again.m_sOnlineNetStat, "YELLOW");
}

TEST(StepHeader, Writer_PlaceThatCannotBeOpenedIsSkipped)
{
    const TempDir dir;
    CJOBXstephdr().WriteODBData(dir.Path("none").c_str());
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(StepRepeat, Writer_WritesEntriesToAFile)
{
    CJOBXstepRepeatArray entries;
    CJOBXstepRepeat& entry = *entries.Own(std::make_unique<CJOBXstepRepeat>());
    entry.m_sName = "pcb";
    entry.m_ptCount.SetData(2, -1);
    entry.m_ptPitch.SetData(0.1, 1234567);
    entries.Add(nullptr);
    const TempDir dir;
    std::FILE* const file = std::fopen(dir.Path("entries").c_str(), "w");
    ASSERT_NE(file, nullptr);
    entries.WriteODBData(file);
    std::fclose(file);
    EXPECT_EQ(dir.Read("entries"), "STEP-REPEAT{\n NAME=pcb\n X=0\n Y=0\n DX=0.1\n DY=1.23457e+06\n NX=2\n NY=-1\n"
                                   " ANGLE=0\n MIRROR=NO\n FLIP=\n}\n");
    entries.WriteODBData(nullptr); // writes nothing
}

TEST(StepHeader, ArrayWriter_LaterElementReplacesAnEarlierOne)
{
    CJOBXstephdrArray headers;
    headers.Own(std::make_unique<CJOBXstephdr>())->m_sTopActive = "1";
    headers.Add(nullptr);
    headers.Own(std::make_unique<CJOBXstephdr>())->m_sTopActive = "2";
    const TempDir dir;
    headers.WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("stephdr"), Written(*headers.GetAt(2)));
}

TEST(StepHeader, UnitConvert_ScalesDatumOriginPositionAndPitchOnly)
{
    CJOBXstephdrArray headers;
    CJOBXstephdr& header = *headers.Own(std::make_unique<CJOBXstephdr>());
    Read(header, "X_DATUM=1\nY_DATUM=2\nX_ORIGIN=3\nY_ORIGIN=4\nTOP_ACTIVE=5\n"
                 "STEP-REPEAT {\nX=1\nY=2\nDX=3\nDY=4\nNX=5\nNY=6\nANGLE=7\n}\n");
    header.m_arrStepRepeats.Add(nullptr);
    headers.Add(nullptr);
    headers.UnitConvert(25.4);
    EXPECT_EQ(header.m_ptDatum, CPointD(25.4, 2 * 25.4));
    EXPECT_EQ(header.m_ptOrigin, CPointD(3 * 25.4, 4 * 25.4));
    EXPECT_EQ(header.m_sTopActive, "5");
    const CJOBXstepRepeat& entry = *header.m_arrStepRepeats.GetAt(0);
    EXPECT_EQ(entry.m_ptPosition, CPointD(25.4, 2 * 25.4));
    EXPECT_EQ(entry.m_ptPitch, CPointD(3 * 25.4, 4 * 25.4));
    EXPECT_EQ(entry.m_ptCount, CPointN(5, 6));
    EXPECT_EQ(entry.m_dAngle, 7.0);
}

TEST(StepHeader, Reader_LargeTable)
{
    constexpr int kCount = 50'000;
    std::string text;
    for (int i = 0; i < kCount; ++i)
        text += "STEP-REPEAT {\n NAME=s" + std::to_string(i) + "\n NX=" + std::to_string(i) + "\n}\n";
    CJOBXstephdr header;
    Read(header, text);
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), kCount);
    EXPECT_EQ(header.m_arrStepRepeats.GetLastElement()->m_sName, "s49999");
    EXPECT_EQ(header.m_arrStepRepeats.GetLastElement()->m_ptCount.x, kCount - 1);
}

TEST(StepHeader, Reader_RealJobsGiveTheirSettings)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const step : {"beagleboneblack/steps/stp", "flat_hierarchy/steps/pcb"})
    {
        const std::string path = jobs + "/" + step + "/stephdr";
        SCOPED_TRACE(path);
        ASSERT_TRUE(std::filesystem::is_regular_file(path));
        std::string affectingBom = "none"; // of the last line that begins with the key
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);)
            if (line.rfind("AFFECTING_BOM", 0) == 0)
                affectingBom = line.substr(line.find('=') + 1);
        CJOBXstephdr header;
        header.m_ptDatum.SetData(7, 7);
        header.m_sTopActive = "unread";
        ASSERT_EQ(header.ParseODBOfMFC(path.c_str()), 1);
        EXPECT_EQ(header.m_ptDatum, CPointD());
        EXPECT_EQ(header.m_sTopActive, "0");
        EXPECT_EQ(header.m_sAffectingBom, affectingBom.c_str());
        EXPECT_TRUE(header.m_sAffectingBomChanged.IsEmpty());
        EXPECT_EQ(header.m_arrStepRepeats.GetSize(), 0);
    }
}
