// The lines of a components file for saving it.
#include "components/ComponentsLines.h"

#include "components/CJOBXcomponentsFields.h"
#include "components/ComponentsReader.h"
#include "saving/ListedFile.h"

#include <gmock/gmock.h>

namespace components_lines_test
{
using namespace listed_file;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// Every kind of record with every field, as it is listed.
constexpr const char* kWhole = "UNITS=MM\n"
                               "@0 .smd\n"
                               "@1 .geometry\n"
                               "@2 .mount\n"
                               "@9 .height\n"
                               "&0 a text\n"
                               "# CMP 0\n"
                               "CMP 0 1.5 -2 90 N R1 a part;0,1=0,2=1,9=0.5;ID=7\n"
                               "PRP VALUE '10k 'x''\n"
                               "PRP EMPTY ''\n"
                               "TOP 0 3.25 4 45 N 0 1 1;0;ID=8\n"
                               "TOP 1 5 6 0 M 2 3 two words\n"
                               "# CMP 1\n"
                               "CMP 3 1 2 0.5 M R2 p\n";

CAttributeTypes Types()
{
    CAttributeTypes types;
    types.Add(".geometry", {JOBXattributeKind::Text, {}});
    types.Add(".mount", {JOBXattributeKind::Option, {"other", "smt"}});
    return types;
}

std::unique_ptr<CJOBXcomponents> Read(const std::string& text, std::vector<std::string>* messages = nullptr)
{
    CFileReading reading;
    reading.types = Types();
    auto file =
        reading.FromText<CJOBXcomponents>(text, [](const CReadingContext& context, CSourceFile& source,
                                                   CJOBXcomponents& to) { ReadCompletely(context, source, to); });
    if (messages != nullptr)
        *messages = reading.messages;
    return file;
}

CRecordLines List(const CJOBXcomponents& file, const CMendedReferences& references = {})
{
    CRecordLines lines;
    ListLines(file, Types(), references, lines);
    return lines;
}

std::string TextOf(const CJOBXcomponents& file)
{
    return List(file).WholeText();
}

void ExpectReadsBack(const std::string& text)
{
    const auto file = Read(text);
    const std::string listed = TextOf(*file);
    const auto again = Read(listed);
    EXPECT_EQ(TextOfFields(*again), TextOfFields(*file)) << text;
    EXPECT_EQ(TextOf(*again), listed);
}
} // namespace

TEST(ComponentsLines, AFileInTheListedFormIsListedAsItIs)
{
    std::vector<std::string> messages;
    const auto file = Read(kWhole, &messages);
    EXPECT_THAT(messages, IsEmpty());
    ExpectOwnLines(List(*file), kWhole);
}

TEST(ComponentsLines, ReadBackAsTheSameModel)
{
    ExpectReadsBack(kWhole);
    ExpectReadsBack("");
    ExpectReadsBack("CMP\nTOP\nPRP\n");
    ExpectReadsBack("CMP 1\nCMP 1 2 3\nCMP 1 2 3 4 X\nCMP 1 2 3 4 N R1\nTOP 1\nTOP 1 2 3 4 Z 5\nTOP 1 2 3 4 N 5 6\n");
    ExpectReadsBack("CMP 0 1 2 0 N R\xE4 p\xF6 q;3,4=5;ID=x;odd\nPRP A b c\nPRP B 'c' 1 2\nTOP 0 1e-3 .5 -0 N -1 -1 "
                    "1;;ID=5000000000\n");
}

TEST(ComponentsLines, HaveEveryFieldThatCompleteReadingFills)
{
    const auto file = Read(kWhole);
    EXPECT_THAT(UnlistedFields(*file, TextOf), ElementsAre("components.layerName",    // its folder
                                                           "components.relativePath", // likewise
                                                           "components.units",        // the unit decides
                                                           "component.number",        // the comment has the position
                                                           "component.side",          // set by hosts, in memory only
                                                           "property.number",         // the name decides
                                                           "property.textNumber"));   // the value decides
}

TEST(ComponentsLines, BelongToTheirComponent)
{
    const CRecordLines lines = List(*Read("@0 .a\nCMP 0 0 0 0 N R1 p\nTOP 0 0 0 0 N 0 0 1\nPRP A 'b'\n"));
    std::string depths;
    std::string kinds;
    for (const CRecordLines::Line& line : lines.Lines())
    {
        depths += std::to_string(line.depth);
        kinds += line.isAbove ? 'a' : line.isKeyValue ? '=' : line.sourceLine > 0 ? 'k' : '-';
    }
    EXPECT_EQ(depths, "000011") << lines.WholeText();
    EXPECT_EQ(kinds, "=-ak-k") << lines.WholeText();
    EXPECT_EQ(lines.KeyOf(lines.Lines()[2]), "# CMP");
    EXPECT_EQ(lines.KeyOf(lines.Lines()[4]), "PRP A");
}

TEST(ComponentsLines, CommentsHaveThePositionOfTheirComponent)
{
    const auto file = Read("CMP 0 0 0 0 N A p\nCMP 0 0 0 0 N B p\nCMP 0 0 0 0 N C p\n");
    file->m_arrCmps.DeleteAt(1, 1);
    EXPECT_THAT(LinesOf(List(*file)),
                ElementsAre("UNITS=INCH", "# CMP 0", "CMP 0 0 0 0 N A p", "# CMP 1", "CMP 0 0 0 0 N C p"));
    EXPECT_EQ(List(*file).Lines().back().sourceLine, 3);
}

TEST(ComponentsLines, PrintMendedReferences)
{
    const auto file = Read("CMP 1 0 0 0 N A p\nTOP 0 0 0 0 N 1 2 x\nTOP 1 0 0 0 N 3 4 y\nCMP 2 0 0 0 N B p\n");
    CMendedReferences references;
    references.Set(file.get(), file->m_arrCmps.GetAt(0), {{5, 0, 0}, false});
    references.Set(file.get(), file->m_arrCmps.GetAt(0)->m_arrTops.GetAt(0), {{6, 7, 8}, false});
    references.Set(file.get(), file->m_arrCmps.GetAt(0)->m_arrTops.GetAt(1), {{6, 7, 8}, true});
    references.Set(file.get(), file->m_arrCmps.GetAt(1), {{5, 0, 0}, true});
    EXPECT_THAT(LinesOf(List(*file, references)),
                ElementsAre("UNITS=INCH", "# CMP 0", "CMP 5 0 0 0 N A p", "TOP 6 0 0 0 N 7 8 x",
                            "TOP 1 0 0 0 N -1 -1 y", "# CMP 1", "CMP -1 0 0 0 N B p"));
}

TEST(ComponentsLines, OfNewComponentsAreInProperSyntax)
{
    CJOBXcomponents file;
    auto* const component = new CJOBXcmp;
    file.m_arrCmps.Add(component);
    component->m_nPkgRef = 3;
    component->m_sName = "R5";
    component->m_sPartName = "RES-12K";
    component->m_ptLocation.SetData(0.1, -0.0);
    auto* const attribute = new CJOBXProperty;
    attribute->m_sName = ".geometry";
    attribute->m_sValue = "new text";
    component->m_arrAttributes.Add(attribute);
    component->m_arrProperties.Add(new CLProperty("VALUE", "12k"));
    auto* const top = new CJOBXcmpTop;
    component->m_arrTops.Add(top);
    top->m_nPin = 0;
    top->m_sName = "1";
    EXPECT_THAT(LinesOf(List(file)),
                ElementsAre("UNITS=INCH", "@0 .geometry", "&0 new text", "# CMP 0", "CMP 3 0.1 0 0 N R5 RES-12K;0=0",
                            "PRP VALUE '12k'", "TOP 0 0 0 0 N -1 -1 1"));
    std::vector<std::string> messages;
    EXPECT_EQ(TextOf(*Read(TextOf(file), &messages)), TextOf(file));
    EXPECT_THAT(messages, IsEmpty());
}
} // namespace components_lines_test
