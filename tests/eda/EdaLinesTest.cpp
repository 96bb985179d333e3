// The lines of the EDA files for saving them.
#include "eda/EdaLines.h"

#include "eda/CJOBXdataFields.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaReader.h"
#include "saving/ListedFile.h"

#include <gmock/gmock.h>

namespace eda_lines_test
{
using namespace listed_file;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// Every kind of record with every field, as it is listed.
constexpr const char* kWhole = "HDR made by hand\n"
                               "UNITS=MM\n"
                               "LYR top bot drill\n"
                               "@0 .critical_net\n"
                               "@3 .geometry\n"
                               "@4 .height\n"
                               "&0 a text\n"
                               "&7 another\n"
                               "# NET 0\n"
                               "NET $NONE$\n"
                               "# NET 1\n"
                               "NET GND;0,3=7,4=1.5;ID=7\n"
                               "PRP NETPROP 'a 'quoted' value' 1.5 2\n"
                               "PRP EMPTY ''\n"
                               "SNT TOP T 3 0;0;ID=8\n"
                               "FID C 0 4;;ID=11\n"
                               "FID H 2 5\n"
                               "SNT TOP B 12 1\n"
                               "SNT PLN S E 0.25\n"
                               "SNT VIA;0\n"
                               "FID L 1 6\n"
                               "SNT TRC;;ID=9\n"
                               "# PKG 0\n"
                               "PKG R0603 0.063 -1 -2 3.5 4;3=0;ID=20\n"
                               "CR 0 0 1;;ID=21\n"
                               "SQ 0.5 0 1\n"
                               "RC -1 -2 4 6;0\n"
                               "CT\n"
                               "OB 0 0 I\n"
                               "OS 1 0;;ID=22\n"
                               "OC 0 0 0.5 0 Y\n"
                               "OE\n"
                               "CE\n"
                               "PRP PACKAGE_NAME 'R 0603'\n"
                               "PIN 1 S -0.5 0.25 0.1 E S;0;ID=30\n"
                               "CR -0.5 0 0.2\n"
                               "PRP PINPROP 'x' 3\n"
                               "PIN 2 T 0.5 0 0 M P\n"
                               "# PKG 1\n"
                               "PKG EMPTY 0 0 0 0 0\n"
                               "FGR TEXT;0;ID=40\n"
                               "PRP STRING 'R1'\n"
                               "FID C 0 7\n";

std::unique_ptr<CJOBXdata> Read(const std::string& text, std::vector<std::string>* messages = nullptr)
{
    CFileReading reading;
    reading.types.Add(".geometry", {JOBXattributeKind::Text, {}});
    auto data = reading.FromText<CJOBXdata>(text, [](const CReadingContext& context, CSourceFile& file, CJOBXdata& to)
                                            { ReadCompletely(context, file, to); });
    if (messages != nullptr)
        *messages = reading.messages;
    return data;
}

CRecordLines List(const CJOBXdata& data, const CMendedReferences& references = {})
{
    CAttributeTypes types;
    types.Add(".geometry", {JOBXattributeKind::Text, {}});
    CRecordLines lines;
    ListLines(data, types, references, lines);
    return lines;
}

std::string TextOf(const CJOBXdata& data)
{
    return List(data).WholeText();
}

CJOBXSnt& Subnet(const CJOBXdata& data, int net, int subnet)
{
    return *data.m_arrNets.GetAt(net)->m_arrSnts.GetAt(subnet);
}

void ExpectReadsBack(const std::string& text)
{
    const auto data = Read(text);
    const std::string listed = TextOf(*data);
    const auto again = Read(listed);
    EXPECT_EQ(TextOfFields(*again), TextOfFields(*data)) << text;
    EXPECT_EQ(TextOf(*again), listed);
}

Lines LinesBehind(const std::string& text, const std::string& before)
{
    Lines lines = LinesOf(List(*Read(text)));
    const auto at = std::find(lines.begin(), lines.end(), before);
    lines.erase(lines.begin(), at == lines.end() ? at : std::next(at));
    return lines;
}
} // namespace

TEST(EdaLines, AFileInTheListedFormIsListedAsItIs)
{
    std::vector<std::string> messages;
    const auto data = Read(kWhole, &messages);
    EXPECT_THAT(messages, IsEmpty());
    ExpectOwnLines(List(*data), kWhole);
}

TEST(EdaLines, ReadBackAsTheSameModel)
{
    ExpectReadsBack(kWhole);
    ExpectReadsBack("");
    ExpectReadsBack("NET\nSNT\nFID\nPKG\nPIN\nPRP\nFGR\n");
    ExpectReadsBack(
        "LYR top\nNET A\nSNT TOP\nSNT TOP T 5\nSNT PLN\nSNT PLN S\nSNT ODD\nFID C\nFID C 0\nFID X 0 1;more;x\n");
    ExpectReadsBack(
        "PKG P\nPIN\nPIN 1\nPIN 1 S\nPIN 1 S 1\nPIN 1 S 0 0 0 E\nPIN 1 S 0 0 0 U\nRC 1\nCR x y z\nOS 1 2 3 4\nCE\n");
    ExpectReadsBack(
        "@0 .a\n&0 b\nNET A \xE4\xF6 b;0=0,5,6=x;ID=x;odd\nPRP A 'b'c' d 'e'\nPRP\nFGR X Y;;ID=3000000000\n");
    ExpectReadsBack("PKG P 1e-7 -0 +1 .5 1e20\nPIN 1 S 0.1 0.30000000000000004 123456789.125 E S\nCR 1.50 -.0 1e-3\n");
}

TEST(EdaLines, HaveEveryFieldThatCompleteReadingFills)
{
    const auto data = Read(kWhole);
    EXPECT_THAT(UnlistedFields(*data, TextOf), ElementsAre("net.number",  // the comment has the position
                                                           "net.flag",    // set by hosts, in memory only
                                                           "subnet.flag", // likewise
                                                           "subnet.point", "subnet.text",
                                                           "property.textNumber", // the value decides
                                                           "package.number",      // the comment has the position
                                                           "package.flag", "pin.flag",
                                                           "eda.units")); // the unit decides
}

TEST(EdaLines, BelongToTheRecordAboveThem)
{
    const CRecordLines lines = List(*Read("NET A\nSNT VIA\nFID C 0 1\nPKG P 0 0 0 0 0\nCR 0 0 1\nPIN 1 S 0 0 0 E S\n"
                                          "CR 0 0 1\nPRP A 'b'\nFGR TEXT\nFID C 0 1\n"));
    std::string depths;
    std::string kinds;
    for (const CRecordLines::Line& line : lines.Lines())
    {
        depths += std::to_string(line.depth);
        kinds += line.isAbove ? 'a' : line.isKeyValue ? '=' : line.sourceLine > 0 ? 'k' : '-';
    }
    EXPECT_EQ(depths, "0"
                      "00"
                      "12"
                      "00"
                      "1122"
                      "01")
        << lines.WholeText();
    EXPECT_EQ(kinds, "="
                     "ak"
                     "kk"
                     "ak"
                     "-k--"
                     "kk")
        << lines.WholeText();
    EXPECT_EQ(lines.KeyOf(lines.Lines()[1]), "# NET");
    EXPECT_EQ(lines.KeyOf(lines.Lines()[10]), "PRP A");
}

TEST(EdaLines, CommentsHaveThePositionOfTheirRecord)
{
    const auto data = Read("NET A\nNET B\nNET C\n");
    data->m_arrNets.DeleteAt(1, 1);
    data->m_arrNets.Add(new CJOBXdataNet);
    EXPECT_THAT(LinesOf(List(*data)),
                ElementsAre("UNITS=INCH", "# NET 0", "NET A", "# NET 1", "NET C", "# NET 2", "NET"));
    EXPECT_EQ(List(*data).Lines().back().sourceLine, 0) << "a new record";
}

TEST(EdaLines, PrintMendedReferences)
{
    const auto data = Read("LYR a b\nNET A\nSNT TOP T 3 4\nFID C 0 5;;ID=6\nFID C 1 7\nSNT TOP B 5 6\n");
    CMendedReferences references;
    references.Set(data.get(), &Subnet(*data, 0, 0), {{8, 9, 0}, false});
    references.Set(data.get(), &Subnet(*data, 0, 1), {{8, 9, 0}, true});
    references.Set(data.get(), Subnet(*data, 0, 0).m_arrNetObjs.GetAt(0), {{1, 17, 0}, false});
    references.Set(data.get(), Subnet(*data, 0, 0).m_arrNetObjs.GetAt(1), {{1, 18, 0}, true});
    EXPECT_THAT(LinesOf(List(*data, references)), ElementsAre("UNITS=INCH", "LYR a b", "# NET 0", "NET A",
                                                              "SNT TOP T 8 9", "FID C 1 17;;ID=6", "SNT TOP B -1 -1"));
}

TEST(EdaLines, PrintGeometryAsItIsNow)
{
    const char* const kText = "PKG P 0 0 0 0 0\nCR 1.0 2 3.50;;ID=4\nSQ 1 2 3\nRC 1 2 3 4\nRC 1 2 3\nCT\nOB 1.0 2 I\n"
                              "OS 3 4\nOC 5 6 7 8 N\nOE\nCE\n";
    const auto data = Read(kText);
    CJOBXdataPkgObjArray& outlines = data->m_arrPkgs.GetAt(0)->m_arrOutlines;
    outlines.vMakeGeometry();
    EXPECT_THAT(LinesBehind(kText, "PKG P 0 0 0 0 0"),
                ElementsAre("CR 1.0 2 3.50;;ID=4", "SQ 1 2 3", "RC 1 2 3 4", "RC 1 2 3", "CT", "OB 1.0 2 I", "OS 3 4",
                            "OC 5 6 7 8 N", "OE", "CE"));
    EXPECT_EQ(TextOf(*data).substr(TextOf(*data).find("CR ")),
              "CR 1.0 2 3.50;;ID=4\nSQ 1 2 3\nRC 1 2 3 4\nRC 1 2 3\nCT\nOB 1 2 I\nOS 3 4\nOC 5 6 7 8 N\nOE\nCE\n")
        << "numbers that did not change keep their spelling";
    outlines.UnitConvert(2.0);
    EXPECT_EQ(TextOf(*data).substr(TextOf(*data).find("CR ")),
              "CR 2 4 7;;ID=4\nSQ 2 4 6\nRC 2 4 6 8\nRC 1 2 3\nCT\nOB 2 4 I\nOS 6 8\nOC 10 12 14 16 N\nOE\nCE\n");
    outlines.GetAt(0)->m_sKeyword = "SQ"; // not that of its geometry
    EXPECT_NE(TextOf(*data).find("\nSQ 1.0 2 3.50;;ID=4\n"), std::string::npos);
}

TEST(EdaLines, EveryFieldOfGeometryIsListed)
{
    const auto data =
        Read("PKG P 0 0 0 0 0\nCR 1 2 3\nSQ 1 2 3\nRC 1 2 3 4\nCT\nOB 1 2 I\nOS 3 4\nOC 5 6 7 8 N\nOE\nCE\n");
    data->m_arrPkgs.GetAt(0)->m_arrOutlines.vMakeGeometry();
    CJOBXdataPkg& package = *data->m_arrPkgs.GetAt(0);
    const auto list = [&](const CJOBXdataPkg& /*changed*/) { return TextOf(*data); };
    EXPECT_THAT(UnlistedFields(package, list), ElementsAre("package.number", "package.flag",
                                                           "outline.params")); // the geometry decides
}

TEST(EdaLines, OfNewRecordsAreInProperSyntax)
{
    CJOBXdata data;
    data.SetUnit(JOBXunit::Millimetre);
    data.m_arrLayerNames.Add("top");
    auto* const net = new CJOBXdataNet;
    data.m_arrNets.Add(net);
    net->m_sName = "GND";
    auto* const critical = new CJOBXProperty;
    critical->m_sName = ".critical_net";
    net->pMakeTailAttributes()->Add(critical);
    auto* const text = new CJOBXProperty;
    text->m_sName = "NOTE";
    text->m_sValue = "two words";
    net->m_arrProperties.Add(text);
    auto* const package = new CJOBXdataPkg;
    data.m_arrPkgs.Add(package);
    package->m_sName = "P";
    package->m_arrAttributes.Add(new CLProperty("NAME", "value"));
    auto* const circle = new CJOBXdataPkgObjCircle;
    circle->SetRadius(0.1);
    package->m_arrOutlines.Add(circle);
    EXPECT_THAT(LinesOf(List(data)),
                ElementsAre("UNITS=MM", "LYR top", "@0 .critical_net", "# NET 0", "NET GND;0", "PRP NOTE 'two words'",
                            "# PKG 0", "PKG P 0 0 0 0 0", "CR 0 0 0.1", "PRP NAME 'value'"));
    const std::string listed = TextOf(data);
    std::vector<std::string> messages;
    EXPECT_EQ(TextOf(*Read(listed, &messages)), listed);
    EXPECT_THAT(messages, IsEmpty());
}

TEST(EdaLines, AMissingTextBeforeOtherFieldsLeavesItsPlaceEmpty)
{
    const auto data = Read("PKG P 0 0 0 0 0\nPIN 1 S 1 2 0 E S\nNET A\nSNT TOP T 1 2\n");
    data->m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->m_sType.Empty();
    Subnet(*data, 0, 0).m_sSide.Empty();
    const std::string listed = TextOf(*data);
    EXPECT_NE(listed.find("PIN 1  1 2 0 E S\n"), std::string::npos) << listed;
    EXPECT_NE(listed.find("SNT TOP  1 2\n"), std::string::npos) << listed;
    EXPECT_NE(TextOf(*Read(listed)), listed) << "so that it is seen";
    data->m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->m_ptCenter.SetData(0, 0);
    data->m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->m_sElectricalType = "U";
    data->m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->m_sMountType.Empty();
    EXPECT_NE(TextOf(*data).find("PIN 1\n"), std::string::npos) << TextOf(*data);
}

TEST(EdaLines, NullEntriesAreLeftOut)
{
    const auto data = Read(kWhole);
    const std::string listed = TextOf(*data);
    data->m_arrNets.InsertAt(0, static_cast<CJOBXdataNet*>(nullptr));
    Subnet(*data, 2, 0).m_arrNetObjs.Add(nullptr);
    data->m_arrNets.GetAt(2)->pMakeTailAttributes()->Add(nullptr);
    data->m_arrNets.GetAt(2)->m_arrProperties.Add(nullptr);
    data->m_arrPkgs.GetAt(0)->m_arrPins.Add(nullptr);
    data->m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->pMakeTailAttributes()->Add(nullptr);
    data->m_arrPkgs.GetAt(0)->m_arrOutlines.Add(nullptr);
    data->GetFeatureGroups()->Add(nullptr);
    EXPECT_EQ(TextOf(*data), listed);
}

TEST(ShortsLines, AreTheRecordsAsTheyAre)
{
    CFileReading reading;
    const auto eda = reading.FromText<CJOBXeda>("# intended\nSHORT 1 2\n\n  SHORT 3  4\n",
                                                [](const CReadingContext& context, CSourceFile& file, CJOBXeda& to)
                                                { ReadCompletely(context, file, to); });
    CRecordLines lines;
    ListLines(*eda, lines);
    EXPECT_THAT(LinesOf(lines), ElementsAre("SHORT 1 2", "SHORT 3  4"));
    EXPECT_EQ(lines.KeyOf(lines.Lines()[1]), "SHORT 3  4");
    eda->GetShorts()[0] += " 5";
    CRecordLines changed;
    ListLines(*eda, changed);
    EXPECT_THAT(LinesOf(changed), ElementsAre("SHORT 1 2 5", "SHORT 3  4"));
}
} // namespace eda_lines_test
