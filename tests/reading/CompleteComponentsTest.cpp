#include "CompleteRead.h"

#include "components/CJOBXcomponents.h"
#include "job/CJOBXsteps.h"

#include <gtest/gtest.h>

namespace complete_components_test
{
namespace
{
struct SmallJobWithEda : SmallJob
{
    SmallJobWithEda()
    {
        Write("steps/pcb/eda/data",
              "LYR top\nNET A\nSNT VIA\nNET B\nPKG P 0 0 0 0 0\nPIN 1 S 0 0 0 E S\nPIN 2 S 0 0 0 E S\n");
    }
};

struct Result : CompleteRead
{
    explicit Result(const std::string& text)
        : CompleteRead(SmallJobWithEda(), "steps/pcb/layers/comp_+_top/components", text)
    {
    }

    const CJOBXcomponents& File() const { return *job->m_pSteps->m_arrSteps.GetAt(0)->m_arrComponents.GetAt(0); }
    const CJOBXcmp& Component(int i) const { return *File().m_arrCmps.GetAt(i); }
};

Result Read(const std::string& text)
{
    return Result(text);
}
} // namespace

TEST(CompleteComponents, NeedNoCommentAboveThem)
{
    const Result result =
        Read("UNITS=INCH\n@0 .smd\n@1 .h\n&4 tall\nCMP 0 1 2 90 M R1 a part;0,1=4;ID=7\nPRP VALUE '10k 'x''\n"
             "TOP 0 3 4 45 N 0 0 1;0;ID=8\nTOP 1 5 6 0 N 1 -1 2\nCMP 0 1 2 0 N r2 p\n");
    EXPECT_EQ(result.codes, Strings{});
    EXPECT_EQ(result.File().GetUnit(), JOBXunit::Inch);
    ASSERT_EQ(result.File().m_arrCmps.GetSize(), 2);
    const CJOBXcmp& first = result.Component(0);
    EXPECT_EQ(first.m_nNumber, 0);
    EXPECT_EQ(first.m_ptLocation, CPointD(1, 2));
    EXPECT_EQ(first.m_dRotation, 90);
    EXPECT_EQ(first.m_nMirror, 1);
    EXPECT_EQ(TextOf(first.m_sName), "R1");
    EXPECT_EQ(TextOf(first.m_sPartName), "a part");
    EXPECT_EQ(first.GetID(), 7);
    ASSERT_EQ(first.m_arrAttributes.GetSize(), 2) << "those of toeprints are not here";
    EXPECT_EQ(first.m_arrAttributes.GetAt(0)->GetKind(), JOBXattributeKind::Flag);
    EXPECT_EQ(TextOf(first.m_arrAttributes.GetAt(1)->m_sValue), "tall");
    ASSERT_EQ(first.m_arrProperties.GetSize(), 1);
    EXPECT_EQ(TextOf(first.m_arrProperties.GetAt(0)->m_sValue), "10k 'x'");
    ASSERT_EQ(first.m_arrTops.GetSize(), 2);
    const CJOBXcmpTop& top = *first.m_arrTops.GetAt(0);
    EXPECT_EQ(top.m_ptLocation, CPointD(3, 4));
    EXPECT_EQ(top.m_dRotation, 45);
    EXPECT_EQ(top.m_nNet, 0);
    EXPECT_EQ(TextOf(top.m_sName), "1");
    EXPECT_EQ(top.GetID(), 8);
    ASSERT_NE(top.pGetTailAttributes(), nullptr);
    EXPECT_EQ(top.pGetTailAttributes()->GetSize(), 1);
    EXPECT_EQ(result.Component(1).m_nNumber, 1);
}

TEST(CompleteComponents, RecordsKnowTheirLines)
{
    const Result result = Read("\nCMP 0 1 2 0 N A p\nTOP 0 3 4 0 N 0 0 1\n\ntop  1 3 4 0 N 0 0 2\n"
                               "cmp  0 1 2 0 N B p\n");
    EXPECT_EQ(result.codes, Strings{});
    EXPECT_EQ(result.Component(0).GetSourceLine(), 2);
    EXPECT_EQ(result.Component(0).GetLine(), 2);
    ASSERT_EQ(result.Component(0).m_arrTops.GetSize(), 2);
    EXPECT_EQ(result.Component(0).m_arrTops.GetAt(0)->GetSourceLine(), 3);
    EXPECT_EQ(result.Component(0).m_arrTops.GetAt(1)->GetSourceLine(), 5);
    EXPECT_EQ(result.Component(1).GetSourceLine(), 6);
}

TEST(CompleteComponents, WhatIsWrongIsReportedWithItsLine)
{
    const struct
    {
        const char* text;
        Strings codes;
    } kCases[] = {
        {"CMP 0 1 2\n", {"1: error CMP001"}},
        {"CMP 0 1 2 0 N A p\nPRP A 'b' 1\n", {"2: warning CMP002"}},
        {"CMP 0 left 2 0 N A p\n", {"1: error CMP003"}},
        {"TOP 0 1 2 0 N 0 0 1\nPRP A 'b'\n", {"1: error CMP004", "2: error CMP004"}},
        {"DSC x\nDSC y\n", {"1: note CMP005"}},
        {"CMP 0 1 2 0 X A p\n", {"1: warning CMP006"}},
        {"# CMP 0\nCMP 0 1 2 0 N A p\n#CMP 3\n", {"3: warning CMP007"}},
        {"CMP 0 1 2 0 N A p\nCMP 0 1 2 0 N a p\n", {"2: warning CMP008"}},
        {"CMP 1 1 2 0 N A p\n", {"1: error CMP009"}},
        {"CMP 0 1 2 0 N A p\nTOP 2 1 2 0 N 0 0 1\n", {"1: error CMP010"}},
        {"CMP 0 1 2 0 N A p\nTOP 0 1 2 0 N 2 0 1\nTOP 1 1 2 0 N 0 1 1\n", {"1: error CMP011", "1: error CMP011"}},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Read(test.text).codes, test.codes) << test.text;
}
} // namespace complete_components_test
