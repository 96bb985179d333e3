#include "CompleteRead.h"

#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "job/CJOBXsteps.h"

#include <gtest/gtest.h>

namespace complete_eda_test
{
namespace
{
struct Result : CompleteRead
{
    explicit Result(const std::string& text) : CompleteRead("steps/pcb/eda/data", text) {}

    const CJOBXdata& Data() const { return *job->m_pSteps->m_arrSteps.GetAt(0)->GetEda()->m_pData; }
    const CJOBXdataNet& Net(int i) const { return *Data().m_arrNets.GetAt(i); }
    const CJOBXdataPkg& Package(int i) const { return *Data().m_arrPkgs.GetAt(i); }
};

Result Read(const std::string& text)
{
    return Result(text);
}

const Strings& Codes(const Result& result)
{
    return result.codes;
}

std::string Attributes(const CJOBXtailed& record)
{
    return TextOf(record.pGetTailAttributes());
}
} // namespace

TEST(CompleteEda, NetNamesDoNotContainTheTail)
{
    const Result result =
        Read("#@0 .critical_net\n#&0 a text\nLYR top\nNET POWER\\N1500 ;0;ID=1246\nNET GND ;;ID=7\nNET X\n");
    EXPECT_EQ(Codes(result), Strings{});
    ASSERT_EQ(result.Data().m_arrNets.GetSize(), 3);
    EXPECT_EQ(TextOf(result.Net(0).m_sName), "POWER\\N1500");
    EXPECT_EQ(result.Net(0).GetID(), 1246);
    EXPECT_EQ(Attributes(result.Net(0)), ".critical_net/1/ ");
    EXPECT_EQ(result.Net(1).GetID(), 7);
    EXPECT_EQ(result.Net(2).GetID(), CJOBXtailed::kNoID);
    EXPECT_EQ(result.Net(2).m_nNumber, 2) << "the position";
}

TEST(CompleteEda, PackagesPinsAndOutlinesWithTailsAreRead)
{
    const Result result = Read("@0 .pin\n&3 x\nPKG R0603 0.063 -1 -2 3 4;0=3;ID=5\nRC -1 -2 4 6;;ID=6\n"
                               "PRP NAME 'it's' 1 2.5\nPIN 1 S -0.5 0 0.1 E S;;ID=8\nCT\nOB 0 0 I\nOS 1 0\n"
                               "OC 0 0 0.5 0 Y\nOE\nCE\nPIN 2 T 0.5 0 0 E S\nCR 0 0 1\nPKG EMPTY 0 0 0 0 0;\n");
    EXPECT_EQ(Codes(result), Strings{});
    ASSERT_EQ(result.Data().m_arrPkgs.GetSize(), 2);
    const CJOBXdataPkg& package = result.Package(0);
    EXPECT_EQ(TextOf(package.m_sName), "R0603");
    EXPECT_EQ(package.m_dPitch, 0.063);
    EXPECT_EQ(package.m_ptLowerLeft, CPointD(-1, -2));
    EXPECT_EQ(package.m_ptUpperRight, CPointD(3, 4));
    EXPECT_EQ(package.GetID(), 5);
    EXPECT_EQ(Attributes(package), ".pin/4/x ");
    ASSERT_EQ(package.m_arrOutlines.GetSize(), 1);
    EXPECT_EQ(package.m_arrOutlines.GetAt(0)->m_arrParameters.GetSize(), 4);
    EXPECT_EQ(package.m_arrOutlines.GetAt(0)->GetID(), 6);
    ASSERT_EQ(package.m_arrProperties.GetSize(), 1);
    EXPECT_EQ(TextOf(package.m_arrProperties.GetAt(0)->m_sValue), "it's");
    EXPECT_EQ(package.m_arrProperties.GetAt(0)->m_arrFurtherValues.GetSize(), 2);
    ASSERT_EQ(package.m_arrPins.GetSize(), 2);
    EXPECT_EQ(package.m_arrPins.GetAt(0)->GetID(), 8);
    EXPECT_EQ(TextOf(package.m_arrPins.GetAt(0)->m_sMountType), "S");
    EXPECT_EQ(package.m_arrPins.GetAt(0)->m_arrOutlines.GetSize(), 6);
    EXPECT_EQ(package.m_arrPins.GetAt(1)->m_arrOutlines.GetSize(), 1);
    EXPECT_EQ(TextOf(result.Package(1).m_sName), "EMPTY");
}

TEST(CompleteEda, PropertiesBehindAPinBelongToThePin)
{
    const Result result = Read("@0 .pin\nPKG P 0 0 0 0 0\nPRP A 'a'\nPIN 1 S 0 0 0 E S;0\nPRP B 'b' 2\nCR 0 0 1\n"
                               "PRP C 'c'\nPIN 2 S 0 0 0 E S\nPKG Q 0 0 0 0 0\nPRP D 'd'\n");
    EXPECT_EQ(Codes(result), Strings{});
    const CJOBXdataPkg& package = result.Package(0);
    ASSERT_EQ(package.m_arrProperties.GetSize(), 1);
    EXPECT_EQ(TextOf(package.m_arrProperties.GetAt(0)->m_sName), "A");
    EXPECT_EQ(Attributes(*package.m_arrPins.GetAt(0)), ".pin/1/ B/4/b C/4/c ");
    EXPECT_EQ(package.m_arrPins.GetAt(0)->pGetTailAttributes()->GetAt(1)->m_nNumber, -1);
    EXPECT_EQ(Attributes(*package.m_arrPins.GetAt(1)), "");
    EXPECT_EQ(result.Package(1).m_arrProperties.GetSize(), 1);
}

TEST(CompleteEda, RecordsKnowTheirLines)
{
    const Result result = Read("LYR top\n\nNET A\nSNT VIA\nFID C 0 0\n# unusual lines now\nnet  B\nsnt  VIA\n"
                               "fid  C 0 0\n\nPKG P 0 0 0 0 0\nPIN 1 S 0 0 0 E S\nCR 0 0 1\npin  2 S 0 0 0 E S\n"
                               "cr  0 0 1\npkg  Q 0 0 0 0 0\n");
    EXPECT_EQ(Codes(result), Strings{});
    EXPECT_EQ(result.Net(0).GetSourceLine(), 3);
    EXPECT_EQ(result.Net(0).m_arrSnts.GetAt(0)->m_nLineNumber, 4);
    EXPECT_EQ(result.Net(0).m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0)->m_nLineNumber, 5);
    EXPECT_EQ(result.Net(1).GetSourceLine(), 7);
    EXPECT_EQ(result.Net(1).m_arrSnts.GetAt(0)->m_nLineNumber, 8);
    EXPECT_EQ(result.Net(1).m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0)->m_nLineNumber, 9);
    EXPECT_EQ(result.Package(0).GetSourceLine(), 11);
    ASSERT_EQ(result.Package(0).m_arrPins.GetSize(), 2);
    EXPECT_EQ(result.Package(0).m_arrPins.GetAt(0)->GetSourceLine(), 12);
    EXPECT_EQ(result.Package(0).m_arrPins.GetAt(0)->m_arrOutlines.GetAt(0)->m_nLineNumber, 13);
    EXPECT_EQ(result.Package(0).m_arrPins.GetAt(1)->GetSourceLine(), 14);
    EXPECT_EQ(result.Package(0).m_arrPins.GetAt(1)->m_arrOutlines.GetAt(0)->m_nLineNumber, 15);
    EXPECT_EQ(result.Package(1).GetSourceLine(), 16);
}

TEST(CompleteEda, UnitsOfTheFileWinOverThoseOfTheJob)
{
    EXPECT_EQ(Read("HDR x\n").Data().GetUnit(), JOBXunit::Millimetre) << "misc/info";
    const Result result = Read("HDR x\nUNITS=INCH\n");
    EXPECT_EQ(result.Data().GetUnit(), JOBXunit::Inch);
    EXPECT_EQ(TextOf(result.Data().m_sUnits), "INCH");
    EXPECT_EQ(result.Data().dGetFactorToMM(), 25.4);
}

TEST(CompleteEda, FeatureGroupsBelongToNoNet)
{
    const Result result = Read("LYR top\nNET A\nSNT TOP T 0 0;;ID=4\nFID C 0 0;;ID=9\nSNT PLN S E 0.5\nFGR TEXT;;ID=3\n"
                               "PRP STRING 'R1'\nFID C 0 0\n");
    EXPECT_EQ(Codes(result), Strings{"3: error EDA012"});
    ASSERT_EQ(result.Net(0).m_arrSnts.GetSize(), 2);
    const CJOBXSnt& subnet = *result.Net(0).m_arrSnts.GetAt(0);
    EXPECT_EQ(subnet.GetID(), 4);
    EXPECT_EQ(subnet.m_nToeprintNumber, 0);
    ASSERT_EQ(subnet.m_arrNetObjs.GetSize(), 1);
    EXPECT_EQ(TextOf(subnet.m_arrNetObjs.GetAt(0)->m_sText), ";ID=9");
    EXPECT_EQ(result.Net(0).m_arrSnts.GetAt(1)->m_dFillSize, 0.5);
    EXPECT_EQ(result.Net(0).m_arrSnts.GetAt(1)->m_arrNetObjs.GetSize(), 0);
    ASSERT_EQ(result.Data().GetFeatureGroups()->GetSize(), 1);
    const CJOBXdataFgr& group = *result.Data().GetFeatureGroups()->GetAt(0);
    EXPECT_EQ(TextOf(group.m_sKind), "TEXT");
    EXPECT_EQ(group.GetID(), 3);
    EXPECT_EQ(group.m_arrNetObjs.GetSize(), 1);
    ASSERT_EQ(group.m_arrProperties.GetSize(), 1);
    EXPECT_EQ(TextOf(group.m_arrProperties.GetAt(0)->m_sValue), "R1");
}

TEST(CompleteEda, WhatIsWrongIsReportedWithItsLine)
{
    const struct
    {
        const char* text;
        Strings codes;
    } kCases[] = {
        {"PKG A 1 2\n", {"1: error EDA001"}},
        {"LYR top\nNET A\nSNT VIA\nFID C 0 0 5\n", {"4: warning EDA002"}},
        {"PKG A one 2 3 4 5\n", {"1: error EDA003"}},
        {"PKG A inf 2 3 4 5\n", {"1: error EDA003"}},
        {"SNT VIA\nFID C 0 0\nPIN 1 S 0 0 0 E S\nRC 0 0 1 1\nPRP A 'b'\n",
         {"1: error EDA004", "2: error EDA004", "3: error EDA004", "4: error EDA004", "5: error EDA004"}},
        {"XYZ 1\nxyz 2\nABC\n", {"1: note EDA005", "2: note EDA005", "3: note EDA005"}},
        {"LYR top\nNET A\nSNT VIA\nFID C 1 0\n", {"4: error EDA006"}},
        {"# NET 0\nNET A\n#NET 5\nNET B\n# PKG 1\n", {"3: warning EDA007", "5: warning EDA007"}},
        {"PKG A 1 2 3 4 5\nCT\nOB 0 0 I\nPIN 1 S 0 0 0 E S\n", {"3: error EDA008"}},
        {"PKG A 1 2 3 4 5\nCT\n", {"2: error EDA008"}},
        {"PKG A 1 2 3 4 5\nOS 0 0\nOE\nCE\n", {"2: error EDA009", "3: error EDA009", "4: error EDA009"}},
        {"NET gnd\nNET GND\n", {"2: warning EDA010"}},
        {"LYR top\nNET A\nSNT VIA\nFID C 0 1\n", {"4: error EDA011"}},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Codes(Read(test.text)), test.codes) << test.text;
}

// A second blank keeps a line from the fast way.
TEST(CompleteEda, SaysTheSameOfAnOutlineWhetherItIsPlainOrNot)
{
    std::string plain = "PKG P 0 0 0 1 1\nCT\nOB 0 0 I\n";
    std::string spaced = plain;
    for (const char* const fields : {"OS 1 2",         "OS -1.5 .5",
                                     "OS 1. 2",        "OS 1 x",
                                     "OS 1",           "OS 1 2 3",
                                     "OS - 1",         "OS . 1",
                                     "OS 1 -",         "OS 1e5 2",
                                     "OS 1 2x",        "OS 1,5 2",
                                     "OS --1 2",       "OS 1 1234567890123456789012345",
                                     "OS +1 2",        "OS 1.5.2 3",
                                     "OC 0 0 1 1 Y",   "OC 0 0 1 1",
                                     "OC 0 0 1 1 Y 7", "OC 0 0 Y 1 1",
                                     "OS 1 2;;ID=4",   "OS",
                                     "OC 1 2 3 4 Y;x"})
    {
        const std::string line = fields;
        plain += line + '\n';
        spaced += line.substr(0, 2) + ' ' + line.substr(2) + '\n';
    }
    const Result fast = Read(plain + "OE\nCE\n");
    const Result slow = Read(spaced + "OE\nCE\n");
    EXPECT_EQ(fast.codes, slow.codes);
    EXPECT_EQ(fast.codes.size(), 15U);
    const CJOBXdataPkgObjArray& outlines = fast.Package(0).m_arrOutlines;
    ASSERT_EQ(outlines.GetSize(), slow.Package(0).m_arrOutlines.GetSize());
    EXPECT_EQ(outlines.GetSize(), 27);
    for (__int64 i = 0; i < outlines.GetSize(); ++i)
        for (INT_PTR k = 0; k < outlines.GetAt(i)->m_arrParameters.GetSize(); ++k)
            EXPECT_EQ(outlines.GetAt(i)->m_arrParameters[k],
                      slow.Package(0).m_arrOutlines.GetAt(i)->m_arrParameters[k]);
}

TEST(CompleteEda, SaysWhichNumbersAreNone)
{
    const auto said = [](const std::string& feature)
    { return Read("LYR top\nNET A\nSNT VIA\nFID C 0 " + feature + "\n").codes.size(); };
    EXPECT_EQ(said("0"), 0U);
    EXPECT_EQ(said("000000000000"), 0U) << "more digits than are read at once";
    EXPECT_EQ(said("+0"), 0U);
    for (const char* const none : {"0x", "x", "-", "0.5", "0-"})
        EXPECT_EQ(said(none), 1U) << none;
    EXPECT_EQ(said("3000000000"), 1U) << "no such feature";
}

TEST(CompleteEda, FindsANetNameAgainAmongManyOthers)
{
    std::string text;
    for (int i = 0; i < 40; ++i)
        text += "NET Name" + std::to_string(i) + '\n';
    EXPECT_EQ(Read(text).codes, Strings{});
    for (const char* const name : {"NAME3", "name15", "name16", "nAME39"})
        EXPECT_EQ(Read(text + "NET " + name + '\n').codes.size(), 1U) << name;
    EXPECT_EQ(Read("NET a\nNET A\n").codes.size(), 1U);
}

TEST(CompleteEda, ClassicReadingOfTheSameFileStaysAsItWas)
{
    const SmallJob small;
    small.Write("steps/pcb/eda/data", "NET A ;;ID=1\nPKG P 0 0 0 0 0;;ID=2\nFGR TEXT\n");
    const auto job = small.Read(CJOBXreading());
    const CJOBXdata& data = *job->m_pSteps->m_arrSteps.GetAt(0)->GetEda()->m_pData;
    EXPECT_EQ(data.m_arrNets.GetSize(), 0) << "a net with a tail and no comment";
    EXPECT_EQ(data.m_arrPkgs.GetSize(), 0);
    EXPECT_EQ(data.GetFeatureGroups()->GetSize(), 0);
}
} // namespace complete_eda_test
