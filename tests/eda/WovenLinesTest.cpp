// What changes in the text of an EDA, components or netlist file when its model changes.
#include "components/CJOBXcomponents.h"
#include "components/ComponentsLines.h"
#include "components/ComponentsReader.h"
#include "eda/CJOBXdata.h"
#include "eda/EdaLines.h"
#include "eda/EdaReader.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistLines.h"
#include "netlist/NetlistReader.h"
#include "saving/LineWeaver.h"
#include "saving/ListedFile.h"

#include <gmock/gmock.h>

#include <sstream>

namespace woven_lines_test
{
using listed_file::CFileReading;
using listed_file::Lines;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
template <class Object>
std::unique_ptr<Object> Read(const std::string& text)
{
    CFileReading reading;
    return reading.FromText<Object>(text, [](const CReadingContext& context, CSourceFile& file, Object& to)
                                    { ReadCompletely(context, file, to); });
}

template <class Object>
CRecordLines List(const Object& object)
{
    const CAttributeTypes types;
    const CMendedReferences references;
    CRecordLines lines;
    if constexpr (requires { ListLines(object, types, references, lines); })
        ListLines(object, types, references, lines);
    else
        ListLines(object, references, lines);
    return lines;
}

Lines LinesOf(const std::string& text)
{
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The lines that differ, "-" before those that go and "+" before those that come, from the first to the last difference.
Lines Difference(const std::string& before, const std::string& now)
{
    Lines old = LinesOf(before);
    Lines fresh = LinesOf(now);
    while (!old.empty() && !fresh.empty() && old.back() == fresh.back())
    {
        old.pop_back();
        fresh.pop_back();
    }
    const auto [oldAt, freshAt] = std::mismatch(old.begin(), old.end(), fresh.begin(), fresh.end());
    Lines difference;
    for (auto at = oldAt; at != old.end(); ++at)
        difference.push_back('-' + *at);
    for (auto at = freshAt; at != fresh.end(); ++at)
        difference.push_back('+' + *at);
    return difference;
}

// How the text changes by a change of its model. The new text says what the model does.
template <class Object, class Change>
Lines Changed(const std::string& text, Change change)
{
    const auto before = Read<Object>(text);
    const auto now = Read<Object>(text);
    change(*now);
    const std::string woven = WeaveLines(text, List(*before), List(*now));
    EXPECT_EQ(List(*Read<Object>(woven)).WholeText(), List(*now).WholeText());
    return Difference(text, woven);
}

// As exporters write it, and odd in places.
const std::string kEda = "# 06 Mar 2026\n"
                         "#\n"
                         "HDR  made  by hand\n"
                         "U MM\n"
                         "LYR top  bot \n"
                         "#\n"
                         "#Net attribute names\n"
                         "#@0 .critical_net\n"
                         "#@1 .geometry\n"
                         "#\n"
                         "# NET 0\n"
                         "NET A  ;0\n"
                         "SNT TOP T 0 1\n"
                         "FID C 0 4;;ID=11\n"
                         "STRANGE line\n"
                         "FID C 1 05\n"
                         "SNT VIA\n"
                         "#\n"
                         "# NET 1\n"
                         "NET B\n"
                         "SNT VIA\n"
                         "FID H 1 6\n"
                         "PRP NAME 'a value' \n"
                         "#\n"
                         "# NET 2\n"
                         "NET C\n"
                         "#\n"
                         "#PKG 0\n"
                         "PKG  P 1.0 0 0 1 1;\n"
                         "PRP PACKAGE 'P'\n"
                         "CT\n"
                         "OB 0.0 0.0 I\n"
                         "OS 1.0 0\n"
                         "OS 1.0 1\n"
                         "OE\n"
                         "CE\n"
                         "PIN 1 S -0.50 0 0 E S\n"
                         "CR -0.50 0 0.10\n"
                         "PIN 2 S 0.50 0 0 E S\n"
                         "CR 0.50 0 0.10\n";

Lines ChangedEda(void (*change)(CJOBXdata& data))
{
    return Changed<CJOBXdata>(kEda, change);
}
CJOBXdataNet& Net(const CJOBXdata& data, int index)
{
    return *data.m_arrNets.GetAt(index);
}
CJOBXdataPkg& Package(const CJOBXdata& data)
{
    return *data.m_arrPkgs.GetAt(0);
}
CJOBXProperty* NewAttribute(const char* name)
{
    auto* const attribute = new CJOBXProperty;
    attribute->m_sName = name;
    return attribute;
}
} // namespace

TEST(WovenEdaLines, StayIfNothingChanges)
{
    EXPECT_THAT(ChangedEda([](CJOBXdata& /*data*/) {}), IsEmpty());
}

TEST(WovenEdaLines, ChangeWhereAValueChanges)
{
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { data.SetUnit(JOBXunit::Inch); }), ElementsAre("-U MM", "+UNITS=INCH"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { data.m_arrLayerNames[1] = "bottom"; }),
                ElementsAre("-LYR top  bot ", "+LYR top  bottom "));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Net(data, 0).m_sName = "GND"; }),
                ElementsAre("-NET A  ;0", "+NET GND  ;0"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Net(data, 1).SetID(7); }), ElementsAre("-NET B", "+NET B;;ID=7"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Net(data, 1).m_arrProperties.GetAt(0)->m_sValue = "other"; }),
                ElementsAre("-PRP NAME 'a value' ", "+PRP NAME 'other' "));
    EXPECT_THAT(
        ChangedEda([](CJOBXdata& data) { Net(data, 0).m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(1)->m_nLayerIndex = 0; }),
        ElementsAre("-FID C 1 05", "+FID C 0 05"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_dPitch = 2.5; }),
                ElementsAre("-PKG  P 1.0 0 0 1 1;", "+PKG  P 2.5 0 0 1 1;"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_arrPins.GetAt(1)->m_ptCenter.x = 0.25; }),
                ElementsAre("-PIN 2 S 0.50 0 0 E S", "+PIN 2 S 0.25 0 0 E S"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_arrOutlines.GetAt(3)->m_arrParameters[1] = "2"; }),
                ElementsAre("-OS 1.0 1", "+OS 1.0 2"));
}

TEST(WovenEdaLines, CommentsFollowThePositions)
{
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { data.m_arrNets.DeleteAt(1, 1); }),
                ElementsAre("-# NET 1", "-NET B", "-SNT VIA", "-FID H 1 6", "-PRP NAME 'a value' ", "-#", "-# NET 2",
                            "+#", "+# NET 1"));
    EXPECT_THAT(ChangedEda(
                    [](CJOBXdata& data)
                    {
                        auto* const net = new CJOBXdataNet;
                        net->m_sName = "NEW";
                        data.m_arrNets.InsertAt(1, net);
                    }),
                ElementsAre("-#", "-# NET 1", "-NET B", "-SNT VIA", "-FID H 1 6", "-PRP NAME 'a value' ", "-#",
                            "-# NET 2", "+# NET 1", "+NET NEW", "+#", "+# NET 2", "+NET B", "+SNT VIA", "+FID H 1 6",
                            "+PRP NAME 'a value' ", "+#", "+# NET 3"));
}

TEST(WovenEdaLines, OfDeletedRecordsGo)
{
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Net(data, 0).m_arrSnts.GetAt(0)->m_arrNetObjs.DeleteAt(0, 1); }),
                ElementsAre("-FID C 0 4;;ID=11"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_arrPins.DeleteAt(0, 1); }),
                ElementsAre("-PIN 1 S -0.50 0 0 E S", "-CR -0.50 0 0.10"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_arrOutlines.DeleteAt(2, 1); }),
                ElementsAre("-OS 1.0 0"));
    EXPECT_THAT(ChangedEda([](CJOBXdata& data) { Package(data).m_arrProperties.DeleteAt(0, 1); }),
                ElementsAre("-PRP PACKAGE 'P'"));
}

TEST(WovenEdaLines, OfNewRecordsFollowTheOneBefore)
{
    EXPECT_THAT(
        ChangedEda([](CJOBXdata& data) { Net(data, 0).pMakeTailAttributes()->Add(NewAttribute(".test_point")); }),
        ElementsAre("-#", "-# NET 0", "-NET A  ;0", "+#@2 .test_point", "+#", "+# NET 0", "+NET A  ;0,2"));
    EXPECT_THAT(ChangedEda(
                    [](CJOBXdata& data)
                    {
                        auto* const feature = new CJOBXdataNetObj;
                        feature->m_sKind = "C";
                        feature->m_nLayerIndex = 1;
                        feature->m_nFeatureIndex = 9;
                        Net(data, 0).m_arrSnts.GetAt(0)->m_arrNetObjs.InsertAt(1, feature);
                    }),
                ElementsAre("+FID C 1 9"));
    EXPECT_THAT(ChangedEda(
                    [](CJOBXdata& data)
                    {
                        auto* const pin = new CJOBXdataPkgPin(*Package(data).m_arrPins.GetAt(0));
                        pin->m_sName = "3";
                        Package(data).m_arrPins.Add(pin);
                    }),
                ElementsAre("+PIN 3 S -0.5 0 0 E S", "+CR -0.50 0 0.10"));
}

TEST(WovenEdaLines, GeometryKeepsNumbersThatDoNotChange)
{
    EXPECT_THAT(ChangedEda(
                    [](CJOBXdata& data)
                    {
                        CJOBXdataPkgObjArray& outlines = Package(data).m_arrPins.GetAt(0)->m_arrOutlines;
                        outlines.vMakeGeometry();
                        dynamic_cast<CJOBXdataPkgObjCircle&>(*outlines.GetAt(0)).m_dRadius = 0.2;
                    }),
                ElementsAre("-CR -0.50 0 0.10", "+CR -0.50 0 0.2"));
}

TEST(WovenComponentsLines, ChangeOnlyWithTheirComponent)
{
    const std::string text = "UNITS=MM\n@0 .smd\n\n# CMP 0\nCMP 0 1.50 2 0.0 N R1 part ;0\nPRP VALUE '10k'\n"
                             "TOP 0 1.0 2.0 0.0 N 3 4 1\n#\n# CMP 1\nCMP 0 1 2 0 M R2 part \nTOP 0 1 2 0 M 1 1 1\n#\n";
    const auto changed = [&](auto change) { return Changed<CJOBXcomponents>(text, change); };
    EXPECT_THAT(changed([](CJOBXcomponents&) {}), IsEmpty());
    EXPECT_THAT(changed([](CJOBXcomponents& file) { file.m_arrCmps.GetAt(0)->m_dRotation = 90; }),
                ElementsAre("-CMP 0 1.50 2 0.0 N R1 part ;0", "+CMP 0 1.50 2 90 N R1 part ;0"));
    EXPECT_THAT(
        changed([](CJOBXcomponents& file) { file.m_arrCmps.GetAt(0)->m_arrProperties.GetAt(0)->m_sValue = "12k"; }),
        ElementsAre("-PRP VALUE '10k'", "+PRP VALUE '12k'"));
    EXPECT_THAT(changed([](CJOBXcomponents& file) { file.m_arrCmps.DeleteAt(0, 1); }),
                ElementsAre("-# CMP 0", "-CMP 0 1.50 2 0.0 N R1 part ;0", "-PRP VALUE '10k'",
                            "-TOP 0 1.0 2.0 0.0 N 3 4 1", "-#", "-# CMP 1", "+#", "+# CMP 0"));
    EXPECT_THAT(
        changed([](CJOBXcomponents& file) { file.m_arrCmps.GetAt(1)->m_arrAttributes.Add(NewAttribute(".smd")); }),
        ElementsAre("-CMP 0 1 2 0 M R2 part ", "+CMP 0 1 2 0 M R2 part;0 "));
}

TEST(WovenNetlistLines, ChangeOnlyWithTheirPoint)
{
    const std::string text = "H optimize n staggered n\n$0 $NONE$\n$1 A\n$2 B\n#\n#Netlist points\n#\n"
                             "1 0.5 1.50 2 T e e staggered 0 0 0\n2 0 3.0 4 T 0.1 0.20 e e staggered 0 0 0 v\n"
                             "1 0.5 5 6 T e e staggered 0 0 0\n9 0.5 7.0 8 T e e staggered 0 0 0\n";
    const auto changed = [&](auto change) { return Changed<CJOBXnetlist>(text, change); };
    EXPECT_THAT(changed([](CJOBXnetlist&) {}), IsEmpty());
    EXPECT_THAT(changed([](CJOBXnetlist& netlist) { netlist.SetOptimize("y"); }),
                ElementsAre("-H optimize n staggered n", "+H optimize y staggered n"));
    EXPECT_THAT(
        changed([](CJOBXnetlist& netlist) { netlist.m_arrNets.GetAt(2)->m_arrPts.GetAt(0)->m_dHeight = 0.3; }),
        ElementsAre("-2 0 3.0 4 T 0.1 0.20 e e staggered 0 0 0 v", "+2 0 3.0 4 T 0.1 0.3 e e staggered 0 0 0 v"));
    EXPECT_THAT(changed([](CJOBXnetlist& netlist) { netlist.m_arrPts.GetAt(0)->m_ptPosition.y = 9; }),
                ElementsAre("-9 0.5 7.0 8 T e e staggered 0 0 0", "+9 0.5 7.0 9 T e e staggered 0 0 0"));
    EXPECT_THAT(changed([](CJOBXnetlist& netlist) { netlist.m_arrNets.GetAt(1)->m_arrPts.DeleteAt(0, 1); }),
                ElementsAre("-1 0.5 1.50 2 T e e staggered 0 0 0"));
    EXPECT_THAT(changed([](CJOBXnetlist& netlist) { netlist.m_arrNets.DeleteAt(2, 1); }),
                ElementsAre("-$2 B", "-#", "-#Netlist points", "-#", "-1 0.5 1.50 2 T e e staggered 0 0 0",
                            "-2 0 3.0 4 T 0.1 0.20 e e staggered 0 0 0 v", "+#", "+#Netlist points", "+#",
                            "+1 0.5 1.50 2 T e e staggered 0 0 0"));
}
} // namespace woven_lines_test
