#include "CompleteRead.h"

#include "job/CJOBXsteps.h"
#include "netlist/CJOBXnetlist.h"

#include <gtest/gtest.h>

namespace complete_netlist_test
{
namespace
{
struct Result : CompleteRead
{
    explicit Result(const std::string& text) : CompleteRead("steps/pcb/netlists/cadnet/netlist", text) {}

    const CJOBXnetlist& File() const { return *job->m_pSteps->m_arrSteps.GetAt(0)->GetNetlist(); }
};

Result Read(const std::string& text)
{
    return Result(text);
}
} // namespace

TEST(CompleteNetlist, ReadsHeaderUnitsTailsAndFlags)
{
    const Result result = Read("H optimize y staggered n\nUNITS=INCH\n$0 GND ;;ID=4\n$1 VCC\n#\n"
                               "0 0.5 1 2 T e c;;ID=9\n1 0 3 4 B 0.1 0.2 m s staggered 5 6 0.7 v f\n");
    EXPECT_EQ(result.codes, Strings{});
    const CJOBXnetlist& netlist = result.File();
    EXPECT_EQ(TextOf(netlist.GetOptimize()), "y");
    EXPECT_EQ(TextOf(netlist.GetStaggered()), "n");
    EXPECT_EQ(netlist.GetUnit(), JOBXunit::Inch);
    ASSERT_EQ(netlist.m_arrNets.GetSize(), 2);
    EXPECT_EQ(TextOf(netlist.m_arrNets.GetAt(0)->m_sName), "GND");
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->GetID(), 4);
    ASSERT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetSize(), 1);
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->GetID(), 9);
    EXPECT_EQ(TextOf(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->m_sExposure), "c");
    ASSERT_EQ(netlist.m_arrNets.GetAt(1)->m_arrPts.GetSize(), 1);
    const CJOBXnetPt& point = *netlist.m_arrNets.GetAt(1)->m_arrPts.GetAt(0);
    EXPECT_EQ(point.m_ptPosition, CPointD(3, 4));
    EXPECT_EQ(point.m_dWidth, 0.1);
    EXPECT_EQ(point.m_dHeight, 0.2);
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(5, 6));
    EXPECT_EQ(point.m_dStaggeredRadius, 0.7);
    ASSERT_EQ(point.GetFlags().GetSize(), 2);
    EXPECT_EQ(TextOf(point.GetFlags()[0]), "v");
}

TEST(CompleteNetlist, RecordsKnowTheirLines)
{
    const Result result = Read("H optimize n staggered n\n$0 GND\n$1  VCC\n0 0.5 1 2 T e e\n\n1 0.5 1  2 T e e\n");
    EXPECT_EQ(result.codes, Strings{});
    ASSERT_EQ(result.File().m_arrNets.GetSize(), 2);
    EXPECT_EQ(result.File().m_arrNets.GetAt(0)->GetSourceLine(), 2);
    EXPECT_EQ(result.File().m_arrNets.GetAt(1)->GetSourceLine(), 3);
    EXPECT_EQ(result.File().m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->GetSourceLine(), 4);
    EXPECT_EQ(result.File().m_arrNets.GetAt(1)->m_arrPts.GetAt(0)->GetSourceLine(), 6);
}

TEST(CompleteNetlist, PointsOfNoNetAreKept)
{
    const Result result = Read("$0 GND\n7 0.5 1 2 T e e\n0 0.5 1 2 T e e\n");
    EXPECT_EQ(result.codes, Strings{"2: error NET004"});
    EXPECT_EQ(result.File().m_arrPts.GetSize(), 1);
    EXPECT_EQ(result.File().m_arrNets.GetAt(0)->m_arrPts.GetSize(), 1);
}

TEST(CompleteNetlist, PointsHaveTheFlagsOfTheirOwnLine)
{
    const Result result = Read("$0 GND\n0 0.5 1 2 T e e v f\n0 0.5 1 2 T e e  v f\n0 0.5 1 2 T e e v\n"
                               "0 0.5 1 2 T e e\n0 0.5 1 2 T e e\n0 0.5 1 2 T e e v staggered 5 6 0.7\n"
                               "0 0.5 1 2 T e e v staggered 5 6 0.7\n0 0.5 1 2 T e e v\n0 0.5 1 2 T e e v\n");
    EXPECT_EQ(result.codes, Strings{});
    std::string flags;
    double staggered = 0.0;
    for (const CJOBXnetPt& point : result.File().m_arrNets.GetAt(0)->m_arrPts.Records())
    {
        for (INT_PTR i = 0; i < point.GetFlags().GetSize(); ++i)
            flags += TextOf(point.GetFlags()[i]);
        flags += ' ';
        staggered += point.m_dStaggeredRadius;
    }
    EXPECT_EQ(flags, "vf vf v   v v v v ");
    EXPECT_DOUBLE_EQ(staggered, 1.4);
    CJOBXnetPtArray& points = result.File().m_arrNets.GetAt(0)->m_arrPts;
    points.GetAt(8)->AddFlag(CString("m"));
    EXPECT_EQ(points.GetAt(7)->GetFlags().GetSize(), 1) << "those of another point stay as they are";
}

TEST(CompleteNetlist, WhatIsWrongIsReportedWithItsLine)
{
    const struct
    {
        const char* text;
        Strings codes;
    } kCases[] = {
        {"$0 A\n0 0.5 1\n", {"2: error NET001"}},
        {"$0\n", {"1: error NET001"}},
        {"H optimize n staggered n x\n", {"1: warning NET002"}},
        {"$0 A\n0 0.5 left 2 T e e\n", {"2: error NET003"}},
        {"$x A\n", {"1: error NET003"}},
        {"XYZ\n", {"1: note NET005"}},
        {"$0 A\n$0 B\n", {"2: warning NET006"}},
        {"$0 a\n$1 A\n", {"2: warning NET007"}},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Read(test.text).codes, test.codes) << test.text;
}
} // namespace complete_netlist_test
