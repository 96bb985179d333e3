#include "netlist/CJOBXnetlist.h"

#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include "foundation/framework/CException.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_literals;

namespace netlist_test
{
namespace
{
void Read(CJOBXnetlist& netlist, std::string_view text)
{
    const TempDir dir;
    ASSERT_EQ(netlist.ParseODBOfMFC(dir.Write("netlist", text).c_str()), 1);
}

std::string Written(const CJOBXnetlist& netlist)
{
    const TempDir dir;
    netlist.m_arrNets.WriteODBData(dir.Path().c_str());
    return dir.Read("netlist");
}

std::string WrittenPoints(const CJOBXnetlist& netlist)
{
    constexpr std::string_view kTitle = "#\n#Netlist points\n#\n";
    const std::string text = Written(netlist);
    const std::size_t title = text.find(kTitle);
    EXPECT_NE(title, std::string::npos);
    return text.substr(title + kTitle.size());
}

std::string Input()
{
    return FileBytes(TestDataDir() + "/eda/netlist/in/netlist");
}

// The point of a net 3 that the line behind the net number describes.
const CJOBXnetPt& ReadPoint(CJOBXnetlist& netlist, const std::string& tokens)
{
    Read(netlist, "$3 GND\n3 " + tokens + "\n");
    const CJOBXnet* const net = netlist.m_arrNets.GetLastElement();
    EXPECT_EQ(net->m_arrPts.GetSize(), 1) << tokens;
    return *net->m_arrPts.GetAt(0);
}

std::vector<std::string> FlagsOf(const CJOBXnetPt& point)
{
    std::vector<std::string> flags;
    for (INT_PTR i = 0; i < point.GetFlags().GetSize(); ++i)
        flags.emplace_back(point.GetFlags().GetAt(i).GetString());
    return flags;
}

// How many points each net has, in the order of the nets.
std::vector<__int64> PointCounts(const CJOBXnetlist& netlist)
{
    std::vector<__int64> counts;
    for (__int64 i = 0; i < netlist.m_arrNets.GetSize(); ++i)
        counts.push_back(netlist.m_arrNets.GetAt(i)->m_arrPts.GetSize());
    return counts;
}

using Counts = std::vector<__int64>;
using Flags = std::vector<std::string>;
} // namespace

TEST(Netlist, New_IsEmptyInInch)
{
    const CJOBXnetlist netlist;
    EXPECT_EQ(netlist.m_arrNets.GetSize(), 0);
    EXPECT_EQ(netlist.m_arrPts.GetSize(), 0);
    EXPECT_EQ(netlist.m_arrNets.m_sUnits, "INCH");
    EXPECT_EQ(CJOBXnet().m_nNumber, -1);
    const CJOBXnetPt point;
    EXPECT_EQ(point.m_dRadius, 0.0);
    EXPECT_TRUE(point.m_sSide.IsEmpty());
    EXPECT_EQ(point.GetFlags().GetSize(), 0);
}

TEST(Netlist, Reader_MissingFileGivesZeroAndChangesNothing)
{
    const TempDir dir;
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n");
    EXPECT_EQ(netlist.ParseODBOfMFC(dir.Path("none").c_str()), 0);
    EXPECT_EQ(netlist.ParseODBOfMFC(dir.Path().c_str()), 0); // a directory
    EXPECT_EQ(netlist.m_arrNets.GetSize(), 1);
}

TEST(Netlist, Reader_EmptyFileGivesOne)
{
    CJOBXnetlist netlist;
    Read(netlist, "");
    EXPECT_EQ(netlist.m_arrNets.GetSize(), 0);
}

TEST(Netlist, Reader_NetLineForms)
{
    const struct
    {
        const char* line;
        int number;
        const char* name;
    } kCases[] = {{"$0 $NONE$", 0, "$NONE$"},
                  {"  $7  GND  ", 7, "GND"},
                  {"$7 two words", 7, "two words"},
                  {"$7", 7, ""},
                  {"$$8 A", 8, "A"},
                  {"$ 9 A", 0, "9 A"},
                  {"$x A", 0, "A"},
                  {"$-4 neg", -4, "neg"},
                  {"$1 \x80\xff", 1, "\x80\xff"},
                  {"$2 a\tb", 2, "a\tb"},
                  {"$99999999999 A", 2147483647, "A"}};
    for (const auto& test : kCases)
    {
        SCOPED_TRACE(test.line);
        CJOBXnetlist netlist;
        Read(netlist, test.line);
        ASSERT_EQ(netlist.m_arrNets.GetSize(), 1);
        EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_nNumber, test.number);
        EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_sName, test.name);
    }
}

TEST(Netlist, Reader_RoundPointKeepsAllThreeStaggeredNumbersAndWritesThem)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0.01 1.5 2.5 T e x staggered 1.6 2.6 0.005");
    EXPECT_EQ(point.m_dRadius, 0.01);
    EXPECT_EQ(point.m_ptPosition, CPointD(1.5, 2.5));
    EXPECT_EQ(point.m_sSide, "T");
    EXPECT_EQ(point.m_sEndPoint, "e");
    EXPECT_EQ(point.m_sExposure, "x");
    EXPECT_EQ(point.m_sStaggeredMark, "staggered");
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(1.6, 2.6));
    EXPECT_EQ(point.m_dStaggeredRadius, 0.005);
    EXPECT_EQ(point.m_dWidth, 0.0);
    EXPECT_EQ(point.m_dHeight, 0.0);
    EXPECT_EQ(FlagsOf(point), Flags());
    EXPECT_EQ(WrittenPoints(netlist), "3 0.010000 1.500000 2.500000 T e x 1.600000 2.600000 0.005000\n");
}

TEST(Netlist, Reader_OtherMarkThanStaggeredIsKeptAndWrittenNowhere)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0.01 1.5 2.5 T e e v");
    EXPECT_EQ(point.m_sStaggeredMark, "v");
    EXPECT_EQ(WrittenPoints(netlist), "3 0.010000 1.500000 2.500000 T e e\n");
}

TEST(Netlist, Reader_RadiusZeroGivesWidthAndHeight)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0 1 1 T 0.02 0.03 e x staggered 4 5 6 f g");
    EXPECT_EQ(point.m_dRadius, 0.0);
    EXPECT_EQ(point.m_dWidth, 0.02);
    EXPECT_EQ(point.m_dHeight, 0.03);
    EXPECT_EQ(point.m_sEndPoint, "e");
    EXPECT_EQ(point.m_sExposure, "x");
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(4, 5));
    EXPECT_EQ(point.m_dStaggeredRadius, 6.0);
    EXPECT_EQ(FlagsOf(point), (Flags{"f", "g"}));
    EXPECT_EQ(WrittenPoints(netlist),
              "3 0.000000 1.000000 1.000000 T 0.020000 0.030000 e x 4.000000 5.000000 6.000000 f g\n");
}

TEST(Netlist, Reader_RadiusThatIsNoNumberCountsAsZero)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "r 1 1 T 0.02 0.03 e x");
    EXPECT_EQ(point.m_dWidth, 0.02);
    EXPECT_EQ(point.m_sEndPoint, "e");
}

TEST(Netlist, Reader_TokensInThePlaceOfStaggeredNumbersAreLost)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0.01 1 1 T e e v by_x by_y test f");
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(0, 0));
    EXPECT_EQ(point.m_dStaggeredRadius, 0.0);
    EXPECT_EQ(FlagsOf(point), Flags{"f"});
}

TEST(Netlist, Reader_MarkIsComparedExactlyWhenWriting)
{
    for (const char* const mark : {"Staggered", "STAGGERED", "staggered1", "s"})
    {
        CJOBXnetlist netlist;
        EXPECT_EQ(ReadPoint(netlist, "1 1 1 T e e "s + mark + " 4 5 6 Flag").m_sStaggeredMark, mark);
        EXPECT_EQ(WrittenPoints(netlist), "3 1.000000 1.000000 1.000000 T e e Flag\n") << mark;
    }
}

TEST(Netlist, Reader_TokensAfterTheNineteenthAreDropped)
{
    CJOBXnetlist round;
    EXPECT_EQ(FlagsOf(ReadPoint(round, "1 1 1 T e e m 0 0 0 t10 t11 t12 t13 t14 t15 t16 t17 t18 t19 t20")),
              (Flags{"t10", "t11", "t12", "t13", "t14", "t15", "t16", "t17", "t18"}));
    CJOBXnetlist other;
    EXPECT_EQ(FlagsOf(ReadPoint(other, "0 1 1 T 2 3 e e m 0 0 0 t12 t13 t14 t15 t16 t17 t18 t19")),
              (Flags{"t12", "t13", "t14", "t15", "t16", "t17", "t18"}));
}

TEST(Netlist, Reader_ShortPointLinesMakePoints)
{
    CJOBXnetlist netlist;
    Read(netlist, "$3 GND\n3\n3 0.5\n3 0.5 1\n3 0.5 1 2\n3 0.5 1 2 T\n");
    ASSERT_EQ(PointCounts(netlist), Counts{5});
    const CJOBXnetPtArray& points = netlist.m_arrNets.GetAt(0)->m_arrPts;
    EXPECT_EQ(points.GetAt(0)->m_dRadius, 0.0);
    EXPECT_EQ(points.GetAt(1)->m_dRadius, 0.5);
    EXPECT_EQ(points.GetAt(2)->m_ptPosition, CPointD(1, 0));
    EXPECT_EQ(points.GetAt(3)->m_ptPosition, CPointD(1, 2));
    EXPECT_TRUE(points.GetAt(3)->m_sSide.IsEmpty());
    EXPECT_EQ(points.GetAt(4)->m_sSide, "T");
}

TEST(Netlist, Reader_RunsOfBlanksSeparateOnce)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "  1   2  3    T  e   c  ");
    EXPECT_EQ(point.m_ptPosition, CPointD(2, 3));
    EXPECT_EQ(point.m_sExposure, "c");
}

TEST(Netlist, Reader_PointOfALaterNetIsDropped)
{
    CJOBXnetlist netlist;
    Read(netlist, "7 1 1 1 T e e\n$7 A\n7 2 2 2 T e e\n8 1 1 1 T e e\n");
    ASSERT_EQ(PointCounts(netlist), Counts{1});
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->m_dRadius, 2.0);
    EXPECT_EQ(netlist.m_arrPts.GetSize(), 0);
}

TEST(Netlist, Reader_CommentsAndLinesThatBeginWithHAreIgnored)
{
    CJOBXnetlist netlist;
    Read(netlist, "H optimize n staggered n\n$0 A\nHELLO 1 1 1\nh 1 1 1\n# 0 1 1 1 T\n#\n\n   \n$1 H\n0 1 1 1 T e e\n");
    EXPECT_EQ(PointCounts(netlist), (Counts{1, 0}));
    EXPECT_EQ(netlist.m_arrNets.GetAt(1)->m_sName, "H");
}

TEST(Netlist, Reader_UnitsLineIsAPointLineOfNetZero)
{
    CJOBXnetlist netlist;
    Read(netlist, "UNITS=MM\n$0 A\n");
    EXPECT_EQ(PointCounts(netlist), Counts{0});
    EXPECT_EQ(netlist.m_arrNets.m_sUnits, "INCH"); // no line sets it
    Read(netlist, "UNITS=MM\n");                   // now there is a net 0
    EXPECT_EQ(PointCounts(netlist), Counts{1});
}

TEST(Netlist, Reader_PointGoesToTheCurrentNetElseToTheFirstOfItsNumber)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 first\n$1 second\n1 1 1 1 T e e\n$2 other\n1 2 2 2 T e e\n1 3 3 3 T e e\n2 4 4 4 T e e\n");
    EXPECT_EQ(PointCounts(netlist), (Counts{2, 1, 1}));
    EXPECT_EQ(netlist.m_arrNets.GetAt(1)->m_arrPts.GetAt(0)->m_dRadius, 1.0);
}

TEST(Netlist, Reader_UnknownNumberKeepsTheCurrentNet)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 first\n$1 second\n9 1 1 1 T e e\n1 2 2 2 T e e\n");
    EXPECT_EQ(PointCounts(netlist), (Counts{0, 1}));
}

TEST(Netlist, Reader_SecondFileIsAppendedAndItsPointsGoToTheFirstNetsOfTheirNumbers)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n$2 B\n1 1 1 1 T e e\n");
    netlist.m_arrNets.Add(nullptr);
    Read(netlist, "2 5 5 5 T e e\n$2 C\n$1 D\n2 6 6 6 T e e\n1 7 7 7 T e e\n");
    netlist.m_arrNets.RemoveNullElement();
    EXPECT_EQ(PointCounts(netlist), (Counts{2, 2, 0, 0}));
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(1)->m_dRadius, 7.0);
    EXPECT_EQ(netlist.m_arrNets.GetAt(1)->m_arrPts.GetAt(0)->m_dRadius, 5.0);
}

TEST(Netlist, Reader_DollarBeforeTheNumberOfAPointMakesItANetLine)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n$1 0.5 1 1 T e e\n");
    EXPECT_EQ(PointCounts(netlist), (Counts{0, 0}));
    EXPECT_EQ(netlist.m_arrNets.GetAt(1)->m_sName, "0.5 1 1 T e e");
}

TEST(Netlist, Reader_TakesCrLfAndNoLastLineEnd)
{
    const std::string text = Input();
    CJOBXnetlist plain;
    Read(plain, text);
    CJOBXnetlist carriageReturns;
    Read(carriageReturns, WithCrLf(text));
    CJOBXnetlist cut;
    Read(cut, std::string_view(text).substr(0, text.size() - 1));
    EXPECT_EQ(Written(carriageReturns), Written(plain));
    EXPECT_EQ(Written(cut), Written(plain));
}

TEST(Netlist, Reader_NulEndsItsLineAndOtherBytesPass)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\0B\n$2 \xc4\xff\n1 1 1 1 \xfe\0 e e\n"s);
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_sName, "A");
    EXPECT_EQ(netlist.m_arrNets.GetAt(1)->m_sName, "\xc4\xff");
    ASSERT_EQ(PointCounts(netlist), (Counts{1, 0}));
    EXPECT_EQ(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->m_sSide, "\xfe");
    EXPECT_TRUE(netlist.m_arrNets.GetAt(0)->m_arrPts.GetAt(0)->m_sEndPoint.IsEmpty());
}

TEST(Netlist, Reader_EveryPrefixOfAFileReads)
{
    const std::string text = Input();
    const TempDir dir;
    __int64 last = 0;
    for (std::size_t size = 0; size <= text.size(); ++size)
    {
        const std::string path = dir.Write("netlist", std::string_view(text).substr(0, size));
        CJOBXnetlist netlist;
        ASSERT_EQ(netlist.ParseODBOfMFC(path.c_str()), 1);
        ASSERT_GE(netlist.m_arrNets.GetSize(), last) << "at byte " << size;
        last = netlist.m_arrNets.GetSize();
    }
    EXPECT_EQ(last, 3);
}

TEST(Netlist, Reader_DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    CJOBXnetlist netlist;
    EXPECT_EQ(ReadPoint(netlist, "0.5 1.5 2,5 T e e").m_ptPosition, CPointD(1.5, 2.0));
    EXPECT_EQ(WrittenPoints(netlist), "3 0.500000 1.500000 2.000000 T e e\n");
}

TEST(Netlist, Reader_ExhaustedMemoryRaisesTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    const std::string path = dir.Write("netlist", Input());
    const CString file = path.c_str();
    EXPECT_GT(CountFailedAllocations([&] { CJOBXnetlist().ParseODBOfMFC(file); }), kRecordsHaveOwnBlocks ? 10 : 2);
}

TEST(Netlist, Writer_WritesTheWholeFile)
{
    CJOBXnetlist netlist;
    Read(netlist, Input());
    EXPECT_EQ(Written(netlist), FileBytes(TestDataDir() + "/eda/netlist/golden/netlist"));
}

TEST(Netlist, Writer_EmptyNetlistHasItsHeaders)
{
    CJOBXnetlist netlist;
    netlist.m_arrNets.m_sUnits = "MM";
    EXPECT_EQ(Written(netlist), "#\nUNITS=MM\n#\n#\n#Netlist points\n#\n");
}

TEST(Netlist, Writer_NullEntriesAndOwnPointsAreLeftOut)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n");
    const std::string expected = Written(netlist);
    netlist.m_arrNets.GetAt(0)->m_arrPts.Add(nullptr);
    netlist.m_arrNets.Add(nullptr);
    netlist.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    EXPECT_EQ(Written(netlist), expected);
}

TEST(Netlist, Writer_StaggeredNumbersMoveToTheMarksPlaceWhenReadBack)
{
    CJOBXnetlist netlist;
    ReadPoint(netlist, "0.01 1.5 2.5 T e e staggered 1.6 2.6 0.005");
    CJOBXnetlist again;
    Read(again, Written(netlist));
    const CJOBXnetPt& point = *again.m_arrNets.GetAt(0)->m_arrPts.GetAt(0);
    EXPECT_EQ(point.m_sStaggeredMark, "1.600000"); // the mark itself is not written
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(2.6, 0.005));
}

TEST(Netlist, Writer_PlainPointsReadBackAndWriteTheSame)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n$2 B\n1 0.5 1 2 T e e\n2 0 3 4 B 5 6 m c\n");
    const std::string first = Written(netlist);
    CJOBXnetlist again;
    Read(again, first);
    EXPECT_EQ(Written(again), first);
}

TEST(Netlist, Writer_MakesItsDirectoriesAfresh)
{
    const TempDir dir;
    dir.Write("netlists/old", "x");
    dir.Write("netlists/cadnet/old", "x");
    dir.Write("netlists/refnet/netlist", "x");
    dir.Write("stephdr", "kept");
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n");
    netlist.WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("netlists/cadnet/netlist"), Written(netlist));
    EXPECT_FALSE(dir.Exists("netlists/old"));
    EXPECT_FALSE(dir.Exists("netlists/cadnet/old"));
    EXPECT_FALSE(dir.Exists("netlists/refnet"));
    EXPECT_EQ(dir.Read("stephdr"), "kept");
}

TEST(Netlist, Writer_LinkInTheWayIsReplacedNotFollowed)
{
    const TempDir dir;
    dir.Write("outside/cadnet/netlist", "kept");
    dir.MakeDir("step");
    std::filesystem::create_directory_symlink(dir.Path("outside"), dir.Path("step/netlists"));
    CJOBXnetlist netlist;
    netlist.WriteODBData(dir.Path("step").c_str());
    EXPECT_EQ(dir.Read("outside/cadnet/netlist"), "kept");
    EXPECT_FALSE(std::filesystem::is_symlink(dir.Path("step/netlists")));
    EXPECT_EQ(dir.Read("step/netlists/cadnet/netlist"), Written(netlist));
}

TEST(Netlist, Writer_PlaceThatCannotBeOpenedIsSkipped)
{
    const TempDir dir;
    CJOBXnetlist netlist;
    netlist.WriteODBData(dir.Path("none").c_str());
    EXPECT_FALSE(dir.Exists("none"));
    dir.Write("step/netlists", "a file in the way");
    netlist.WriteODBData(dir.Path("step").c_str());
    EXPECT_EQ(dir.Read("step/netlists"), "a file in the way");
}

TEST(Netlist, UnitConvert_ScalesAllLengthsButTheStaggeredRadius)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0.5 1 2 T e e staggered 4 5 6");
    CJOBXnetPt& own = *netlist.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    own.m_dWidth = 2.0;
    own.m_dHeight = 3.0;
    netlist.m_arrPts.Add(nullptr);
    netlist.m_arrNets.Add(nullptr);
    netlist.UnitConvert(10.0);
    EXPECT_EQ(point.m_dRadius, 5.0);
    EXPECT_EQ(point.m_ptPosition, CPointD(10, 20));
    EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(40, 50));
    EXPECT_EQ(point.m_dStaggeredRadius, 6.0);
    EXPECT_EQ(own.m_dWidth, 20.0);
    EXPECT_EQ(own.m_dHeight, 30.0);
    EXPECT_EQ(netlist.m_arrNets.m_sUnits, "INCH");
}

TEST(Netlist, UnitConvert_ByALengthOfAPointUsesTheValueGiven)
{
    CJOBXnetPt point;
    for (double CJOBXnetPt::*const member : {&CJOBXnetPt::m_dHeight, &CJOBXnetPt::m_dWidth, &CJOBXnetPt::m_dRadius})
    {
        point.m_dHeight = point.m_dWidth = point.m_dRadius = 2.0;
        point.m_ptPosition.SetData(3, 4);
        point.m_ptStaggeredPosition.SetData(5, 6);
        point.UnitConvert(point.*member);
        EXPECT_EQ(point.m_dHeight, 4.0);
        EXPECT_EQ(point.m_dWidth, 4.0);
        EXPECT_EQ(point.m_ptPosition, CPointD(6, 8));
        EXPECT_EQ(point.m_ptStaggeredPosition, CPointD(10, 12));
        EXPECT_EQ(point.m_dRadius, 4.0);
    }
    CJOBXnetlist netlist;
    CJOBXnetPt& own = *netlist.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    CJOBXnetPt& other = *netlist.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    const CJOBXnetPt& read = ReadPoint(netlist, "0.5 1 2 T e e");
    own.m_dHeight = 2.0;
    other.m_dHeight = 3.0;
    netlist.UnitConvert(own.m_dHeight);
    EXPECT_EQ(other.m_dHeight, 6.0);
    EXPECT_EQ(read.m_ptPosition, CPointD(2, 4));
    netlist.m_arrPts.UnitConvert(own.m_dHeight);
    EXPECT_EQ(other.m_dHeight, 24.0);
    CJOBXnet& secondNet = *netlist.m_arrNets.Own(std::make_unique<CJOBXnet>());
    CJOBXnetPt& behind = *secondNet.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    behind.m_dHeight = 3.0;
    netlist.m_arrNets.UnitConvert(read.m_ptPosition.x);
    EXPECT_EQ(behind.m_dHeight, 6.0);
}

TEST(Netlist, UnitConvert_OfTheNetsLeavesTheOwnPoints)
{
    CJOBXnetlist netlist;
    const CJOBXnetPt& point = ReadPoint(netlist, "0.5 1 2 T e e");
    CJOBXnetPt& own = *netlist.m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    own.m_dRadius = 2.0;
    netlist.m_arrNets.UnitConvert(10.0);
    EXPECT_EQ(point.m_dRadius, 5.0);
    EXPECT_EQ(own.m_dRadius, 2.0);
}

TEST(NetPoint, FlagsAreAddedAndRemoved)
{
    CJOBXnetPt point;
    point.AddFlag("a");
    point.AddFlag("b");
    EXPECT_EQ(FlagsOf(point), (Flags{"a", "b"}));
    EXPECT_EQ(CJOBXnetPt().GetFlags().GetSize(), 0); // the empty list is nobody's own
    point.RemoveAllFlags();
    EXPECT_EQ(FlagsOf(point), Flags());
}

TEST(NetPoint, ChangedFlagsAreItsOwn)
{
    CJOBXnetPt first;
    first.AddFlag("a");
    CJOBXnetPt second;
    second.AddFlag("b");
    second.ShareFlags(first);
    EXPECT_EQ(FlagsOf(second), (Flags{"a"}));
    second.AddFlag(second.GetFlags().GetAt(0)); // a text of the list that is given up
    first.AddFlag("c");
    EXPECT_EQ(FlagsOf(first), (Flags{"a", "c"}));
    EXPECT_EQ(FlagsOf(second), (Flags{"a", "a"}));
    first.RemoveAllFlags();
    second.ShareFlags(first);
    EXPECT_EQ(FlagsOf(second), Flags());
}

TEST(Netlist, Reader_PointsWithEqualFlagsHaveThemEach)
{
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n1 1 1 1 T e e m 0 0 0 v w\n1 1 1 1 T e e m 0 0 0 v  w\n1 1 1 1 T e e m 0 0 0 v w\n"
                  "1 1 1 1 T e e m 0 0 0\n1 1 1 1 T e e m 0 0 0 v w\n");
    const CJOBXnetPtArray& points = netlist.m_arrNets.GetAt(0)->m_arrPts;
    ASSERT_EQ(points.GetSize(), 5);
    points.GetAt(0)->AddFlag("x");
    EXPECT_EQ(FlagsOf(*points.GetAt(0)), (Flags{"v", "w", "x"}));
    for (const int i : {1, 2, 4})
        EXPECT_EQ(FlagsOf(*points.GetAt(i)), (Flags{"v", "w"})) << i;
    EXPECT_EQ(FlagsOf(*points.GetAt(3)), Flags());
}

// Nine more words are kept behind a radius, seven behind a width and a height.
TEST(Netlist, Reader_EqualFlagsAreCutAtEachLinesOwnPlace)
{
    const std::string words = "a b c d e f g h i j";
    CJOBXnetlist netlist;
    Read(netlist, "$1 A\n1 1 1 1 T e e m 0 0 0 " + words + "\n1 0 1 1 T 1 1 e e m 0 0 0 " + words +
                      "\n1 1 1 1 T e e m 0 0 0 a b c d e f g h\n1 0 1 1 T 1 1 e e m 0 0 0 a b c d e f g h\n"
                      "1 1 1 1 T e e m 0 0 0 a b c d e f g h\n");
    const CJOBXnetPtArray& points = netlist.m_arrNets.GetAt(0)->m_arrPts;
    ASSERT_EQ(points.GetSize(), 5);
    const std::size_t counts[] = {9, 7, 8, 7, 8};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(FlagsOf(*points.GetAt(i)).size(), counts[i]) << i;
}

TEST(Netlist, Reader_LargeNetlistWhosePointsJumpFromNetToNet)
{
    constexpr int kNets = kIsSlowBuild ? 10'000 : 100'000;
    constexpr int kPoints = 5 * kNets;
    std::string text;
    for (int i = 0; i < kNets; ++i)
        text += "$" + std::to_string(i) + " net" + std::to_string(i) + "\n";
    for (int i = 0; i < kPoints; ++i)
        text += std::to_string(kNets - 1 - i % kNets) + " 0.01 1 2 T e e\n";
    CJOBXnetlist netlist;
    Read(netlist, text);
    ASSERT_EQ(netlist.m_arrNets.GetSize(), kNets);
    for (__int64 i = 0; i < kNets; ++i)
        ASSERT_EQ(netlist.m_arrNets.GetAt(i)->m_arrPts.GetSize(), kPoints / kNets);
}

TEST(Netlist, Reader_RealJobsGiveARecordForEachLine)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    for (const char* const step : {"beagleboneblack/steps/stp", "flat_hierarchy/steps/pcb"})
    {
        const std::string path = jobs + "/" + step + "/netlists/cadnet/netlist";
        SCOPED_TRACE(path);
        ASSERT_TRUE(std::filesystem::is_regular_file(path));
        __int64 nets = 0;
        __int64 points = 0;
        std::set<int> numbers;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);)
        {
            if (line.rfind('$', 0) == 0)
            {
                ++nets;
                numbers.insert(std::atoi(line.c_str() + 1));
            }
            else if (!line.empty() && line[0] >= '0' && line[0] <= '9')
            {
                points += numbers.count(std::atoi(line.c_str())) != 0 ? 1 : 0;
            }
        }
        ASSERT_GT(nets, 0);
        ASSERT_GT(points, 0);
        CJOBXnetlist netlist;
        ASSERT_EQ(netlist.ParseODBOfMFC(path.c_str()), 1);
        EXPECT_EQ(netlist.m_arrNets.GetSize(), nets);
        __int64 read = 0;
        for (__int64 i = 0; i < netlist.m_arrNets.GetSize(); ++i)
        {
            const CJOBXnet& net = *netlist.m_arrNets.GetAt(i);
            EXPECT_FALSE(net.m_sName.IsEmpty()) << i;
            read += net.m_arrPts.GetSize();
            for (__int64 k = 0; k < net.m_arrPts.GetSize(); ++k)
                EXPECT_FALSE(net.m_arrPts.GetAt(k)->m_sSide.IsEmpty()) << i;
        }
        EXPECT_EQ(read, points);
    }
}
} // namespace netlist_test
