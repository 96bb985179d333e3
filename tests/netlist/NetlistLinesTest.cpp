// The lines of a netlist for saving it.
#include "netlist/NetlistLines.h"

#include "netlist/CJOBXnetlistFields.h"
#include "netlist/NetlistReader.h"
#include "saving/ListedFile.h"

#include <gmock/gmock.h>

namespace netlist_lines_test
{
using namespace listed_file;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// Every kind of record with every field, as it is listed.
constexpr const char* kWhole = "H optimize y staggered n\n"
                               "UNITS=MM\n"
                               "$0 $NONE$\n"
                               "$1 GND;0,1=2;ID=4\n"
                               "$7 a name\n"
                               "1 0.5 1.5 2 T e c;3;ID=9\n"
                               "0 0 3 4 B 0.1 0.2 m s staggered 5 6 0.7 v f\n"
                               "7 0.25 1 2 D e e\n"
                               "1 0.5 1 2 T e e v f\n";

std::unique_ptr<CJOBXnetlist> Read(const std::string& text, std::vector<std::string>* messages = nullptr)
{
    CFileReading reading;
    auto netlist = reading.FromText<CJOBXnetlist>(text, [](const CReadingContext& context, CSourceFile& file,
                                                           CJOBXnetlist& to) { ReadCompletely(context, file, to); });
    if (messages != nullptr)
        *messages = reading.messages;
    return netlist;
}

CRecordLines List(const CJOBXnetlist& netlist, const CMendedReferences& references = {})
{
    CRecordLines lines;
    ListLines(netlist, references, lines);
    return lines;
}

std::string TextOf(const CJOBXnetlist& netlist)
{
    return List(netlist).WholeText();
}

void ExpectReadsBack(const std::string& text)
{
    const auto netlist = Read(text);
    const std::string listed = TextOf(*netlist);
    const auto again = Read(listed);
    EXPECT_EQ(TextOfFields(*again), TextOfFields(*netlist)) << text;
    EXPECT_EQ(TextOf(*again), listed);
}

CJOBXnetPt* NewPoint(double x)
{
    auto* const point = new CJOBXnetPt;
    point->m_dRadius = 1.0;
    point->m_ptPosition.x = x;
    point->m_sSide = "T";
    point->m_sEndPoint = "e";
    point->m_sExposure = "e";
    return point;
}

// Behind the header, without what all points have in common.
Lines NetsAndPoints(const CJOBXnetlist& netlist)
{
    Lines lines = LinesOf(List(netlist));
    lines.erase(lines.begin());
    for (std::string& line : lines)
        if (const std::size_t rest = line.find(" 0 T e e"); rest != std::string::npos)
            line.resize(rest);
    return lines;
}
} // namespace

TEST(NetlistLines, AFileInTheListedFormIsListedAsItIs)
{
    std::vector<std::string> messages;
    const auto netlist = Read(kWhole, &messages);
    EXPECT_EQ(messages.size(), 3U) << "a netlist has no names for the attributes";
    ExpectOwnLines(List(*netlist), kWhole);
}

TEST(NetlistLines, ReadBackAsTheSameModel)
{
    ExpectReadsBack(kWhole);
    ExpectReadsBack("");
    ExpectReadsBack("H\nH optimize\n");
    ExpectReadsBack("H staggered y optimize n\n$\n$x\n$-1 A\n-1 0.5 1 2 T e e\n5 0.5 1 2 T e e\n");
    ExpectReadsBack(
        "H optimize y\n$0 A\n0\n0 0.5 1\n0 0.5 1 2 T\n0 0.5 1 2 T e\n0 0 1 2 T\n0 0 1 2 T 3\n0 0 1 2 T 3 4 e\n");
    ExpectReadsBack("$0 A\n0 1 1 2 T e e staggered\n0 1 1 2 T e e v staggered 1 2 3 w staggered 4 5 6 x\n");
    ExpectReadsBack(
        "$3 \xE4 b;5=x;ID=x;odd\n$3 B\n3 1e-3 .5 -0 D e e;;ID=5000000000\n9 1 2 3 T e e\n8 1 2 3 T e e v\n");
    ExpectReadsBack("1 1 2 3 T e e\n$1 LATE\n1 1 2 3 T e e\n");
}

TEST(NetlistLines, HaveEveryFieldThatCompleteReadingFills)
{
    const auto netlist = Read(kWhole);
    EXPECT_THAT(UnlistedFields(*netlist, TextOf), ElementsAre("netlist.units",       // the unit decides
                                                              "property.textNumber", // there is no table of texts
                                                              "netlist.name"));      // its folder
}

TEST(NetlistLines, PointsAreInTheOrderOfTheirLines)
{
    const auto netlist =
        Read("$0 A\n$1 B\n1 1 1 0 T e e\n0 1 2 0 T e e\n9 1 3 0 T e e\n1 1 4 0 T e e\n0 1 5 0 T e e\n");
    EXPECT_THAT(NetsAndPoints(*netlist), ElementsAre("$0 A", "$1 B", "1 1 1", "0 1 2", "-1 1 3", "1 1 4", "0 1 5"));
    CJOBXnetPtArray& points = netlist->m_arrNets.GetAt(0)->m_arrPts;
    points.InsertAt(0, NewPoint(10));
    points.InsertAt(2, NewPoint(11));
    points.Add(NewPoint(12));
    EXPECT_THAT(NetsAndPoints(*netlist), ElementsAre("$0 A", "$1 B", "1 1 1", "0 1 10", "0 1 2", "0 1 11", "-1 1 3",
                                                     "1 1 4", "0 1 5", "0 1 12"));
}

TEST(NetlistLines, PointsAreNeverAgainstTheOrderInTheirNet)
{
    const auto netlist = Read("$0 A\n$1 B\n0 1 1 0 T e e\n1 1 2 0 T e e\n0 1 3 0 T e e\n");
    CJOBXnetPtArray& points = netlist->m_arrNets.GetAt(0)->m_arrPts;
    CJOBXnetPt* const first = points.GetAt(0);
    points.SetAt(0, points.GetAt(1));
    points.SetAt(1, first);
    EXPECT_THAT(NetsAndPoints(*netlist), ElementsAre("$0 A", "$1 B", "1 1 2", "0 1 3", "0 1 1"));
}

TEST(NetlistLines, NewNetsGetFreeNumbers)
{
    const auto netlist = Read("$0 A\n$4 B\n0 1 1 0 T e e\n-1 1 2 0 T e e\n");
    for (const char* const name : {"C", "D"})
    {
        auto* const net = new CJOBXnet;
        net->m_sName = name;
        net->m_arrPts.Add(NewPoint(7));
        netlist->m_arrNets.Add(net);
    }
    auto* const same = new CJOBXnet;
    same->m_nNumber = 4;
    same->m_arrPts.Add(NewPoint(8));
    netlist->m_arrNets.Add(same);
    EXPECT_THAT(NetsAndPoints(*netlist),
                ElementsAre("$0 A", "$4 B", "$5 C", "$6 D", "$7", "0 1 1", "-1 1 2", "5 1 7", "6 1 7", "7 1 8"));
    EXPECT_THAT(NetsAndPoints(*Read(TextOf(*netlist))), testing::ContainerEq(NetsAndPoints(*netlist)));
}

TEST(NetlistLines, PointsOfNoNetHaveANumberThatNoNetHas)
{
    const auto netlist = Read("$-1 A\n$-2 B\n-1 1 1 0 T e e\n9 1 2 0 T e e\n");
    EXPECT_THAT(NetsAndPoints(*netlist), ElementsAre("$-1 A", "$-2 B", "-1 1 1", "-3 1 2"));
}

TEST(NetlistLines, PrintMendedReferences)
{
    const auto netlist = Read("$0 A\n0 1 1 0 T e e\n0 1 2 0 T e e\n");
    CMendedReferences references;
    references.Set(netlist.get(), netlist->m_arrNets.GetAt(0)->m_arrPts.GetAt(1), {{5, 0, 0}, false});
    EXPECT_THAT(LinesOf(List(*netlist, references)),
                ElementsAre("UNITS=INCH", "$0 A", "0 1 1 0 T e e", "5 1 2 0 T e e"));
}

TEST(NetlistLines, BelongToNoOther)
{
    const CRecordLines lines = List(*Read(kWhole));
    for (const CRecordLines::Line& line : lines.Lines())
        EXPECT_EQ(line.depth, 0) << lines.TextOf(line);
}
} // namespace netlist_lines_test
