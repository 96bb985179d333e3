#include "components/CJOBXcomponents.h"

#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include "foundation/framework/CException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_literals;

namespace
{
void Read(CJOBXcomponents& components, std::string_view text)
{
    const TempDir dir;
    ASSERT_EQ(components.ParseODBOfMFC(dir.Write("components", text).c_str()), 1);
}

std::string Written(const CJOBXcomponents& components)
{
    const TempDir dir;
    components.WriteODBData(dir.Path().c_str());
    return dir.Read("components");
}

std::string Input()
{
    return FileBytes(TestDataDir() + "/eda/components/in/components");
}

// One component, read from a line that follows its comment.
std::unique_ptr<CJOBXcomponents> ReadOne(std::string_view lines)
{
    auto components = std::make_unique<CJOBXcomponents>();
    Read(*components, "@0 zero\n@1 one\n# CMP 4\n" + std::string(lines));
    EXPECT_EQ(components->m_arrCmps.GetSize(), 1);
    return components;
}

struct Attribute
{
    int number;
    const char* name;
    const char* value;
};

void ExpectAttributes(const CJOBXcmp& component, const std::vector<Attribute>& expected)
{
    ASSERT_EQ(component.m_arrAttributes.GetSize(), static_cast<__int64>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        const CJOBXProperty& attribute = *component.m_arrAttributes.GetAt(static_cast<__int64>(i));
        EXPECT_EQ(attribute.m_nNumber, expected[i].number) << i;
        EXPECT_EQ(attribute.m_sName, expected[i].name) << i;
        EXPECT_EQ(attribute.m_sValue, expected[i].value) << i;
        EXPECT_EQ(attribute.m_nTextNumber, -1) << i;
    }
}

CJOBXcmp& AddComponent(CJOBXcomponents& components, int number)
{
    CJOBXcmp& component = *components.m_arrCmps.Own(std::make_unique<CJOBXcmp>());
    component.m_nNumber = number;
    component.m_nPkgRef = 2;
    component.m_sName = "R1";
    component.m_sPartName = "RES";
    return component;
}

void AddAttribute(CJOBXcmp& component, int number, int textNumber)
{
    CJOBXProperty& attribute = *component.m_arrAttributes.Own(std::make_unique<CJOBXProperty>());
    attribute.m_nNumber = number;
    attribute.m_nTextNumber = textNumber;
}

CJOBXcmpTop& AddTop(CJOBXcmp& component, int pin)
{
    CJOBXcmpTop& top = *component.m_arrTops.Own(std::make_unique<CJOBXcmpTop>());
    top.m_nPin = pin;
    return top;
}

std::string ComponentLine(const CJOBXcomponents& components)
{
    const std::string text = Written(components);
    const std::size_t begin = text.find("\nCMP ");
    EXPECT_NE(begin, std::string::npos);
    return text.substr(begin + 1, text.find('\n', begin + 1) - begin - 1);
}
} // namespace

TEST(Components, New_IsEmptyInInch)
{
    const CJOBXcomponents components;
    EXPECT_EQ(components.m_arrCmps.GetSize(), 0);
    EXPECT_EQ(components.m_arrAttributeNames.GetSize(), 0);
    EXPECT_EQ(components.m_arrAttributeTexts.GetSize(), 0);
    EXPECT_EQ(components.m_sUnits, "INCH");
    EXPECT_TRUE(components.m_sLayerName.IsEmpty());
    EXPECT_TRUE(components.m_sRelativePath.IsEmpty());
}

TEST(Components, RecordsOfWhichABoardHasManyStaySmall)
{
    EXPECT_LE(sizeof(CJOBXcmp), 152U);
    EXPECT_LE(sizeof(CJOBXcmpTop), 72U);
    EXPECT_LE(sizeof(CJOBXnet), 56U);
    EXPECT_LE(sizeof(CJOBXnetPt), 144U);
}

TEST(Components, Reader_MissingFileGivesOneAndChangesNothing)
{
    const TempDir dir;
    CJOBXcomponents components;
    AddComponent(components, 1);
    EXPECT_EQ(components.ParseODBOfMFC(dir.Path("none").c_str()), 1);
    EXPECT_EQ(components.ParseODBOfMFC(dir.Path().c_str()), 1); // a directory
    EXPECT_EQ(components.m_arrCmps.GetSize(), 1);
}

TEST(Components, Reader_ComponentLineFillsTheComponent)
{
    const auto components = ReadOne("CMP 3 1.5 2.5 90 M R1 RES10K;0=2,1\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nNumber, 4);
    EXPECT_EQ(component.m_nPkgRef, 3);
    EXPECT_EQ(component.m_ptLocation, CPointD(1.5, 2.5));
    EXPECT_EQ(component.m_dRotation, 90.0);
    EXPECT_EQ(component.m_nMirror, 1);
    EXPECT_EQ(component.m_sName, "R1");
    EXPECT_EQ(component.m_sPartName, "RES10K");
    ExpectAttributes(component, {{0, "zero", "2"}, {1, "one", ""}});
}

TEST(Components, Reader_ToeprintLineFillsAToeprint)
{
    const auto components = ReadOne("TOP 1 1.0 2.0 0 N 5 7 1\ntop 2 3 4 45.5 M 6 8 A1\n");
    const CJOBXcmpTopArray& tops = components->m_arrCmps.GetAt(0)->m_arrTops;
    ASSERT_EQ(tops.GetSize(), 2);
    EXPECT_EQ(tops.GetAt(0)->m_nPin, 1);
    EXPECT_EQ(tops.GetAt(0)->m_ptLocation, CPointD(1.0, 2.0));
    EXPECT_EQ(tops.GetAt(0)->m_dRotation, 0.0);
    EXPECT_EQ(tops.GetAt(0)->m_nMirror, 0);
    EXPECT_EQ(tops.GetAt(0)->m_nNet, 5);
    EXPECT_EQ(tops.GetAt(0)->m_nSubnet, 7);
    EXPECT_EQ(tops.GetAt(0)->m_sName, "1");
    EXPECT_EQ(tops.GetAt(1)->m_dRotation, 45.5);
    EXPECT_EQ(tops.GetAt(1)->m_nMirror, 1);
    EXPECT_EQ(tops.GetAt(1)->m_sName, "A1");
}

TEST(Components, Reader_MirrorIsCapitalMOnly)
{
    for (const char* const mirror : {"N", "m", "MM", "Y", "1"})
    {
        const auto components = ReadOne("CMP 0 0 0 0 "s + mirror + " R1 P\n");
        EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_nMirror, 0) << mirror;
        EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sName, "R1") << mirror;
    }
}

TEST(Components, Reader_PartNameIsOneTokenWithoutASemicolonAndAllBeforeItWithOne)
{
    const struct
    {
        const char* tail;
        const char* partName;
    } kCases[] = {{"RES 10K", "RES"}, {"RES 10K ;0=1", "RES 10K"}, {"RES", "RES"},    {"RES ;", "RES"},
                  {";0=1", ""},       {"RES;ID=7;ID=8", "RES"},    {"???  x", "???"}, {"a\tb", "a\tb"},
                  {"a\tb c", "a\tb"}};
    for (const auto& test : kCases)
    {
        const auto components = ReadOne("CMP 0 0 0 0 N R1 "s + test.tail + "\n");
        EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sPartName, test.partName) << test.tail;
        EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sName, "R1") << test.tail;
    }
}

TEST(Components, Reader_LastPieceOfAShortComponentLineIsThePartName)
{
    const auto components = ReadOne("CMP 3 1.5 2.5 90 M R1\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nMirror, 1);
    EXPECT_TRUE(component.m_sName.IsEmpty());
    EXPECT_EQ(component.m_sPartName, "R1");
}

TEST(Components, Reader_NumberThatEndsAShortLineIsNotTaken)
{
    const auto components = ReadOne("CMP 3\nTOP 4\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nPkgRef, 0);
    EXPECT_EQ(component.m_sPartName, "3");
    ASSERT_EQ(component.m_arrTops.GetSize(), 1);
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_nPin, 0);
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_sName, "4");
}

TEST(Components, Reader_KeywordAloneStaysAsTheName)
{
    const auto components = ReadOne("CMP\nTOP\nPRP\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_sPartName, "CMP");
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_sName, "TOP");
    EXPECT_EQ(component.m_arrProperties.GetAt(0)->m_sName, "PRP");
}

TEST(Components, Reader_ToeprintAttributesGoToTheComponent)
{
    const auto components = ReadOne("CMP 3 0 0 0 N R1 P;1=a\nTOP 0 1 2 0 N 5 7 pin one;0=2,1=b\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_sName, "pin one");
    ExpectAttributes(component, {{1, "one", "a"}, {0, "zero", "2"}, {1, "one", "b"}});
}

TEST(Components, Reader_AttributeListForms)
{
    const struct
    {
        const char* list;
        std::vector<Attribute> expected;
    } kCases[] = {
        {"", {}},
        {"0", {{0, "zero", ""}}},
        {"0,", {{0, "zero", ""}}},
        {"0,,1", {{0, "zero", ""}, {1, "one", ""}}},
        {",1", {{0, "zero", ""}, {1, "one", ""}}},
        {",,1=a", {{0, "zero", ""}, {1, "one", "a"}}},
        {",", {{0, "zero", ""}}},
        {"0, ,1", {{0, "zero", ""}, {0, "zero", ""}, {1, "one", ""}}},
        {" 1 = a b ", {{1, "one", "a b"}}},
        {"1='it''s'", {{1, "one", "its"}}},
        {"1=' a '", {{1, "one", " a "}}},
        {"1=a=b", {{1, "one", "a=b"}}},
        {"1=", {{1, "one", ""}}},
        {"9=x", {{9, "", "x"}}},
        {"x=1", {{0, "zero", "1"}}},
        {"0=2;ID=5", {{0, "zero", "2;ID=5"}}},
        {";;1=a", {{1, "one", "a"}}},
        {"-1=a", {{-1, "", "a"}}},
        {"99999999999=a", {{2147483647, "", "a"}}},
    };
    for (const auto& test : kCases)
    {
        SCOPED_TRACE(test.list);
        const auto components = ReadOne("CMP 0 0 0 0 N R1 P;"s + test.list + "\n");
        EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sPartName, "P");
        ExpectAttributes(*components->m_arrCmps.GetAt(0), test.expected);
    }
}

TEST(Components, AddPropertyData_ReadsAListFromTheHost)
{
    const auto components = ReadOne("");
    CJOBXcmp component;
    components->AddPropertyData("0=2, 1", &component);
    ExpectAttributes(component, {{0, "zero", "2"}, {1, "one", ""}});
    components->AddPropertyData("0=2", nullptr); // nowhere to go
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_arrAttributes.GetSize(), 0);
}

TEST(Components, Reader_PropertyForms)
{
    const struct
    {
        const char* line;
        const char* name;
        const char* value;
    } kCases[] = {
        {"PRP PART_NAME 'ABC 123'", "PART_NAME", "ABC 123"},
        {"prp Part 'ABC' more", "Part", "ABC"},
        {"PRP two words 'x'", "two words", "x"},
        {"PRP NAME ''", "NAME", ""},
        {"PRP NAME ''x'", "NAME", "x"},
        {"PRP NAME ' x '", "NAME", " x "},
        {"PRP NAME 'open", "NAME", "open"},
        {"PRP NAME 'it's'", "NAME", "it"},
        {"PRP 'x'", "", "x"},
        {"PRP NAME value", "NAME value", ""},
        {"PRPX NAME 'x'", "NAME", "x"},
    };
    for (const auto& test : kCases)
    {
        SCOPED_TRACE(test.line);
        const auto components = ReadOne(test.line);
        const CLPropertyArray& properties = components->m_arrCmps.GetAt(0)->m_arrProperties;
        ASSERT_EQ(properties.GetSize(), 1);
        EXPECT_EQ(properties.GetAt(0)->m_sName, test.name);
        EXPECT_EQ(properties.GetAt(0)->m_sValue, test.value);
    }
}

TEST(Components, Reader_LinesBeforeTheFirstComponentCommentAreDropped)
{
    CJOBXcomponents components;
    Read(components, "CMP 3 1 2 0 N R1 P;0=1\nTOP 0 1 2 0 N 1 1 1\nPRP A 'b'\n# CMP 2\n");
    ASSERT_EQ(components.m_arrCmps.GetSize(), 1);
    const CJOBXcmp& component = *components.m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nNumber, 2);
    EXPECT_TRUE(component.m_sPartName.IsEmpty());
    EXPECT_EQ(component.m_arrTops.GetSize(), 0);
    EXPECT_EQ(component.m_arrProperties.GetSize(), 0);
    EXPECT_EQ(component.m_arrAttributes.GetSize(), 0);
}

TEST(Components, Reader_SecondComponentLineUnderOneCommentOverwritesTheFirst)
{
    const auto components = ReadOne("CMP 1 0 0 0 N R1 A\nCMP 2 0 0 0 N R2 B\n");
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_nPkgRef, 2);
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sName, "R2");
}

TEST(Components, Reader_ComponentCommentForms)
{
    const struct
    {
        const char* line;
        int count;
        int number;
    } kCases[] = {{"# CMP 7", 1, 7},  {"# cmp 7", 1, 7},   {"  # CMP   8  ", 1, 8}, {"# CMP", 1, 0},
                  {"# CMPX 9", 1, 9}, {"# CMP9", 1, 0},    {"#CMP 7", 0, 0},        {"#  CMP 7", 0, 0},
                  {"## CMP 7", 0, 0}, {"# CMP -3", 1, -3}, {"# CMP x", 1, 0},       {"# CMP 5 6", 1, 5}};
    for (const auto& test : kCases)
    {
        SCOPED_TRACE(test.line);
        CJOBXcomponents components;
        Read(components, test.line);
        ASSERT_EQ(components.m_arrCmps.GetSize(), test.count);
        if (test.count == 1)
        {
            EXPECT_EQ(components.m_arrCmps.GetAt(0)->m_nNumber, test.number);
        }
    }
}

TEST(Components, Reader_OtherCommentsAndUnknownLinesAreIgnored)
{
    const auto components = ReadOne("#\n# TOP 0 0 0 0 N 1 1 1\n#PRP A 'b'\nUNITS=MM\nXCMP 1\nID=3\nTO\n");
    EXPECT_EQ(components->m_sUnits, "INCH"); // no line sets it
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_arrTops.GetSize(), 0);
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_arrProperties.GetSize(), 0);
    EXPECT_TRUE(components->m_arrCmps.GetAt(0)->m_sPartName.IsEmpty());
}

TEST(Components, Reader_TableLines)
{
    CJOBXcomponents components;
    Read(components, "@0 first name\n@@12  second \n@3\n@ 4 x\n@y z\n&5 some text\n&&6 &more\n&\n");
    ASSERT_EQ(components.m_arrAttributeNames.GetSize(), 5);
    ASSERT_EQ(components.m_arrAttributeNameNumbers.GetSize(), 5);
    const struct
    {
        int number;
        const char* text;
    } kNames[] = {{0, "first name"}, {12, "second"}, {3, ""}, {0, "4 x"}, {0, "z"}};
    for (int i = 0; i < 5; ++i)
    {
        EXPECT_EQ(components.m_arrAttributeNameNumbers.GetAt(i), kNames[i].number) << i;
        EXPECT_EQ(components.m_arrAttributeNames.GetAt(i), kNames[i].text) << i;
    }
    ASSERT_EQ(components.m_arrAttributeTexts.GetSize(), 3);
    EXPECT_EQ(components.GetAttributeText(5), "some text");
    EXPECT_EQ(components.GetAttributeText(6), "&more");
    EXPECT_EQ(components.m_arrAttributeTextNumbers.GetAt(2), 0);
    EXPECT_TRUE(components.m_arrAttributeTexts.GetAt(2).IsEmpty());
}

TEST(Components, AttributeLookup_FirstOfANumberWinsAndNoneIsEmpty)
{
    CJOBXcomponents components;
    Read(components, "@1 a\n@1 b\n&2 x\n&2 y\n# CMP 0\nCMP 0 0 0 0 N R P;1=2,2=1\n");
    EXPECT_EQ(components.GetAttributeName(1), "a");
    EXPECT_TRUE(components.GetAttributeName(2).IsEmpty());
    EXPECT_EQ(components.GetAttributeText(2), "x");
    EXPECT_TRUE(components.GetAttributeText(1).IsEmpty());
    ExpectAttributes(*components.m_arrCmps.GetAt(0), {{1, "a", "2"}, {2, "", "1"}});
}

TEST(Components, AttributeLookup_UnevenTablesOfTheHostAreSafe)
{
    CJOBXcomponents components;
    components.m_arrAttributeNameNumbers.Add(1);
    components.m_arrAttributeNameNumbers.Add(2);
    components.m_arrAttributeNames.Add("a");
    EXPECT_EQ(components.GetAttributeName(1), "a");
    EXPECT_TRUE(components.GetAttributeName(2).IsEmpty());
    Read(components, "# CMP 0\nCMP 0 0 0 0 N R P;1=2,2=1\n");
    ExpectAttributes(*components.m_arrCmps.GetAt(0), {{1, "a", "2"}, {2, "", "1"}});
}

TEST(Components, Reader_AttributeNamedOnlyByALaterLineStaysNameless)
{
    CJOBXcomponents components;
    Read(components, "# CMP 0\nCMP 0 0 0 0 N R P;1=2\n@1 late\nTOP 0 0 0 0 N 0 0 1;1\n");
    ExpectAttributes(*components.m_arrCmps.GetAt(0), {{1, "", "2"}, {1, "late", ""}});
}

TEST(Components, Reader_SecondFileIsAppendedAndUsesTheFirstOnesNames)
{
    CJOBXcomponents components;
    Read(components, "@1 a\n# CMP 0\nCMP 0 0 0 0 N R1 P\n");
    Read(components, "TOP 0 0 0 0 N 0 0 1\n@1 b\n@2 c\n# CMP 0\nCMP 0 0 0 0 N R2 P;1=x,2=y\n");
    ASSERT_EQ(components.m_arrCmps.GetSize(), 2);
    EXPECT_EQ(components.m_arrCmps.GetAt(0)->m_arrTops.GetSize(), 0); // no component was begun in the second file yet
    EXPECT_EQ(components.m_arrAttributeNames.GetSize(), 3);
    ExpectAttributes(*components.m_arrCmps.GetAt(1), {{1, "a", "x"}, {2, "c", "y"}});
}

TEST(Components, Reader_MalformedNumbersAreZero)
{
    const auto components = ReadOne("CMP x y 1.5mm z N R1 P\n");
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_nPkgRef, 0);
    EXPECT_EQ(component.m_ptLocation, CPointD(0.0, 1.5));
    EXPECT_EQ(component.m_dRotation, 0.0);
    EXPECT_EQ(component.m_sName, "R1");
}

TEST(Components, Reader_TakesCrLfAndNoLastLineEnd)
{
    const std::string text = Input();
    CJOBXcomponents plain;
    Read(plain, text);
    CJOBXcomponents carriageReturns;
    Read(carriageReturns, WithCrLf(text));
    CJOBXcomponents cut;
    Read(cut, std::string_view(text).substr(0, text.size() - 1));
    EXPECT_EQ(Written(carriageReturns), Written(plain));
    EXPECT_EQ(Written(cut), Written(plain));
}

TEST(Components, Reader_NulEndsItsLineAndOtherBytesPass)
{
    const auto components = ReadOne("CMP 0 0 0 0 N R\xe9\x01 P\x80\xff;0=\xa0\n"
                                    "TOP 0 0 0 0 N 1 2 A\0B\nPRP N '\xfc\0'\n"s);
    const CJOBXcmp& component = *components->m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_sName, "R\xe9\x01");
    EXPECT_EQ(component.m_sPartName, "P\x80\xff");
    EXPECT_EQ(component.m_arrAttributes.GetAt(0)->m_sValue, "\xa0");
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_sName, "A");
    EXPECT_EQ(component.m_arrProperties.GetAt(0)->m_sValue, "\xfc");
}

TEST(Components, Reader_EveryPrefixOfAFileReads)
{
    const std::string text = Input();
    const TempDir dir;
    __int64 last = 0;
    for (std::size_t size = 0; size <= text.size(); ++size)
    {
        const std::string path = dir.Write("components", std::string_view(text).substr(0, size));
        CJOBXcomponents components;
        ASSERT_EQ(components.ParseODBOfMFC(path.c_str()), 1);
        ASSERT_EQ(components.m_arrAttributeNames.GetSize(), components.m_arrAttributeNameNumbers.GetSize());
        ASSERT_EQ(components.m_arrAttributeTexts.GetSize(), components.m_arrAttributeTextNumbers.GetSize());
        ASSERT_GE(components.m_arrCmps.GetSize(), last) << "at byte " << size;
        last = components.m_arrCmps.GetSize();
    }
    EXPECT_EQ(last, 2);
}

TEST(Components, Reader_DoesNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    const auto components = ReadOne("CMP 0 1.5 2,5 0.5 N R P\n");
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_ptLocation, CPointD(1.5, 2.0));
    EXPECT_EQ(ComponentLine(*components), "CMP 0 1.500000 2.000000 0.500000 N R P");
}

TEST(Components, Reader_ExhaustedMemoryRaisesTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    const std::string path = dir.Write("components", Input());
    const CString file = path.c_str();
    EXPECT_GT(CountFailedAllocations([&] { CJOBXcomponents().ParseODBOfMFC(file); }), kRecordsHaveOwnBlocks ? 10 : 2);
}

TEST(Components, Writer_WritesTheWholeFile)
{
    CJOBXcomponents components;
    Read(components, Input());
    EXPECT_EQ(Written(components), FileBytes(TestDataDir() + "/eda/components/golden/components"));
}

TEST(Components, Writer_WithoutTablesWritesHeaderAndComponents)
{
    CJOBXcomponents components;
    components.m_sUnits = "100%d";
    AddComponent(components, 5);
    EXPECT_EQ(Written(components), "#\nUNITS=100%d\n#\n#\n#\n# CMP 5\n"
                                   "CMP 2 0.000000 0.000000 0.000000 N R1 RES\n");
}

TEST(Components, Writer_TableEntriesHaveTheirStoredNumbers)
{
    CJOBXcomponents components;
    components.m_arrAttributeNames.Add("a");
    components.m_arrAttributeNames.Add("b");
    components.m_arrAttributeNameNumbers.Add(7); // the second one has none: its position stands for it
    components.m_arrAttributeTexts.Add("t");
    components.m_arrAttributeTextNumbers.Add(-2);
    EXPECT_EQ(Written(components), "#\nUNITS=INCH\n#\n#\n#Component attribute names\n#\n@7 a\n@1 b\n#\n"
                                   "#Component attribute text strings\n#\n&-2 t\n#\n#\n");
}

TEST(Components, Writer_OnlyTheLastAttributeWithBothNumbersIsWritten)
{
    CJOBXcomponents components;
    CJOBXcmp& component = AddComponent(components, 0);
    const std::string plain = "CMP 2 0.000000 0.000000 0.000000 N R1 RES";
    EXPECT_EQ(ComponentLine(components), plain);
    AddAttribute(component, 3, -1);
    AddAttribute(component, -1, 4);
    EXPECT_EQ(ComponentLine(components), plain);
    AddAttribute(component, 1, 2);
    AddAttribute(component, 5, 6);
    AddAttribute(component, 7, -1);
    EXPECT_EQ(ComponentLine(components), plain + " ; 5=6");
}

TEST(Components, Writer_ReadAttributesAreNotWrittenBack)
{
    const auto components = ReadOne("CMP 2 0 0 0 N R1 RES;0=2,1\n");
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_arrAttributes.GetSize(), 2);
    EXPECT_EQ(ComponentLine(*components), "CMP 2 0.000000 0.000000 0.000000 N R1 RES");
}

TEST(Components, Writer_ToeprintsHaveTheComponentsRotation)
{
    CJOBXcomponents components;
    CJOBXcmp& component = AddComponent(components, 0);
    component.m_dRotation = 90.0;
    CJOBXcmpTop& top = AddTop(component, 3);
    top.m_dRotation = 45.0;
    top.m_nMirror = 1;
    top.m_nNet = 4;
    top.m_nSubnet = 5;
    top.m_sName = "A1";
    EXPECT_NE(Written(components).find("\nTOP 3 0.000000 0.000000 90.000000 M 4 5 A1\n"), std::string::npos);
}

TEST(Components, Writer_OnlyAMirrorFlagOfOneIsMirrored)
{
    CJOBXcomponents components;
    CJOBXcmp& component = AddComponent(components, 0);
    component.m_nMirror = 2;
    EXPECT_NE(ComponentLine(components).find(" N R1"), std::string::npos);
    component.m_nMirror = 1;
    EXPECT_NE(ComponentLine(components).find(" M R1"), std::string::npos);
}

TEST(Components, Writer_ComponentWritesItselfToAFile)
{
    CJOBXcomponents components;
    const CJOBXcmp& component = AddComponent(components, 8);
    const TempDir dir;
    std::FILE* const file = std::fopen(dir.Path("one").c_str(), "w");
    ASSERT_NE(file, nullptr);
    component.WriteODBData(file);
    std::fclose(file);
    EXPECT_EQ(dir.Read("one"), "# CMP 8\nCMP 2 0.000000 0.000000 0.000000 N R1 RES\n");
    component.WriteODBData(nullptr); // writes nothing
}

TEST(Components, Writer_PlaceThatCannotBeOpenedIsSkipped)
{
    const TempDir dir;
    CJOBXcomponents components;
    AddComponent(components, 0);
    components.WriteODBData(dir.Path("none").c_str());
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(Components, Writer_NullEntriesAreLeftOut)
{
    CJOBXcomponents components;
    CJOBXcmp& component = AddComponent(components, 0);
    const std::string expected = Written(components);
    components.m_arrCmps.Add(nullptr);
    component.m_arrTops.Add(nullptr);
    component.m_arrProperties.Add(nullptr);
    component.m_arrAttributes.Add(nullptr);
    EXPECT_EQ(Written(components), expected);
}

TEST(Components, Writer_WhatWasWrittenReadsBackAndWritesTheSame)
{
    CJOBXcomponents components;
    Read(components, Input());
    components.m_arrCmps.GetAt(1)->m_sPartName = "part";
    const std::string first = Written(components);
    CJOBXcomponents again;
    Read(again, first);
    EXPECT_EQ(Written(again), first);
}

TEST(Components, Writer_PartNameOfSeveralWordsIsCutWhenReadBack)
{
    const auto components = ReadOne("CMP 0 0 0 0 N R1 two words ;0=1\n");
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_sPartName, "two words");
    CJOBXcomponents again;
    Read(again, Written(*components));
    EXPECT_EQ(again.m_arrCmps.GetAt(0)->m_sPartName, "two"); // no ";" is written behind it
}

TEST(Components, Writer_EmptyPartNameTakesTheComponentsNameWhenReadBack)
{
    CJOBXcomponents components;
    AddComponent(components, 0).m_sPartName.Empty();
    CJOBXcomponents again;
    Read(again, Written(components));
    EXPECT_TRUE(again.m_arrCmps.GetAt(0)->m_sName.IsEmpty());
    EXPECT_EQ(again.m_arrCmps.GetAt(0)->m_sPartName, "R1");
}

TEST(Components, ArrayWriter_LaterElementReplacesAnEarlierOne)
{
    CJOBXcomponentsArray array;
    AddComponent(*array.Own(std::make_unique<CJOBXcomponents>()), 1);
    array.Add(nullptr);
    AddComponent(*array.Own(std::make_unique<CJOBXcomponents>()), 2);
    const TempDir dir;
    array.WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("components"), Written(*array.GetAt(2)));
}

TEST(Components, PartName_PrefersAltSymbolsThenPartNameThenTheLine)
{
    const auto named = [](std::vector<std::pair<const char*, const char*>> properties)
    {
        CJOBXcmp component;
        component.m_sPartName = "LINE";
        component.m_arrProperties.Add(nullptr);
        for (const auto& [name, value] : properties)
            component.m_arrProperties.Own(std::make_unique<CLProperty>(name, value));
        return component.sGetPartName();
    };
    EXPECT_EQ(named({}), "LINE");
    EXPECT_EQ(named({{"PART_NAME", "P"}}), "P");
    EXPECT_EQ(named({{"PART_NAME", "P"}, {"ALT_SYMBOLS", "A"}}), "A");
    EXPECT_EQ(named({{"PART_NAME", "P"}, {"ALT_SYMBOLS", ""}}), "P");
    EXPECT_EQ(named({{"ALT_SYMBOLS", ""}, {"ALT_SYMBOLS", "B"}, {"ALT_SYMBOLS", "C"}}), "B");
    EXPECT_EQ(named({{"PART_NAME", ""}, {"PART_NAME", "Q"}}), "Q");
    EXPECT_EQ(named({{"PART_NAME", ""}}), "LINE");
    EXPECT_EQ(named({{"part_name", "P"}, {"ALT_SYMBOLS2", "A"}}), "LINE");
}

TEST(Components, PinLookups_GiveTheFirstToeprintOfThePin)
{
    CJOBXcmp component;
    component.m_arrTops.Add(nullptr);
    AddTop(component, 4);
    CJOBXcmpTop& first = AddTop(component, 7);
    AddTop(component, 7);
    EXPECT_EQ(component.pGetODBcmpToeFromID(7), &first);
    EXPECT_EQ(component.m_arrTops.pGetCmpToeWithPinID(7), &first);
    EXPECT_EQ(component.m_arrTops.nGetCmpPinIndexWithPinID(7), 2);
    EXPECT_EQ(component.pGetODBcmpToeFromID(1), nullptr);
    EXPECT_EQ(component.m_arrTops.pGetCmpToeWithPinID(1), nullptr);
    EXPECT_EQ(component.m_arrTops.nGetCmpPinIndexWithPinID(1), -1);
}

TEST(Components, FirstBottom_IsTheFirstWithSideZeroOrZero)
{
    CJOBXcomponents components;
    EXPECT_EQ(components.nGetFirstBtmIndex(), 0);
    components.m_arrCmps.Add(nullptr);
    for (const int side : {1, 1, 0, 0})
        AddComponent(components, 0).m_nSide = side;
    EXPECT_EQ(components.nGetFirstBtmIndex(), 3);
    components.m_arrCmps.GetAt(3)->m_nSide = 1;
    components.m_arrCmps.GetAt(4)->m_nSide = 1;
    EXPECT_EQ(components.nGetFirstBtmIndex(), 0);
}

TEST(Components, Reader_LeavesTheSideUnset)
{
    const auto components = ReadOne("CMP 0 0 0 0 M R P\n");
    EXPECT_EQ(components->m_arrCmps.GetAt(0)->m_nSide, CJOBXcmp().m_nSide);
}

TEST(Components, UnitConvert_ScalesLocationsOnly)
{
    CJOBXcomponentsArray array;
    CJOBXcomponents& components = *array.Own(std::make_unique<CJOBXcomponents>());
    Read(components, "# CMP 0\nCMP 1 1 2 90 N R P\nTOP 0 3 4 45 N 1 1 1\n");
    components.m_arrCmps.Add(nullptr);
    components.m_arrCmps.GetAt(0)->m_arrTops.Add(nullptr);
    array.Add(nullptr);
    array.UnitConvert(25.4);
    const CJOBXcmp& component = *components.m_arrCmps.GetAt(0);
    EXPECT_EQ(component.m_ptLocation, CPointD(25.4, 50.8));
    EXPECT_EQ(component.m_dRotation, 90.0);
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_ptLocation, CPointD(3 * 25.4, 4 * 25.4));
    EXPECT_EQ(component.m_arrTops.GetAt(0)->m_dRotation, 45.0);
    EXPECT_EQ(components.m_sUnits, "INCH");
}

TEST(Components, UnitConvert_ByACoordinateOfAComponentUsesTheValueGiven)
{
    CJOBXcomponentsArray array;
    CJOBXcomponents& components = *array.Own(std::make_unique<CJOBXcomponents>());
    const char* const text = "# CMP 0\nCMP 1 2 3 90 N R P\nTOP 0 5 7 0 N 1 1 1\nTOP 1 11 13 0 N 1 1 1\n";
    Read(components, (std::string(text) + text).c_str());
    const auto locations = [&]
    {
        std::vector<CPointD> points;
        for (__int64 i = 0; i < 2; ++i)
        {
            const CJOBXcmp& component = *components.m_arrCmps.GetAt(i);
            points.push_back(component.m_ptLocation);
            points.push_back(component.m_arrTops.GetAt(0)->m_ptLocation);
            points.push_back(component.m_arrTops.GetAt(1)->m_ptLocation);
        }
        return points;
    };
    CJOBXcmp& first = *components.m_arrCmps.GetAt(0);
    first.UnitConvert(first.m_ptLocation.x);
    EXPECT_EQ(locations(), (std::vector<CPointD>{{4, 6}, {10, 14}, {22, 26}, {2, 3}, {5, 7}, {11, 13}}));
    components.m_arrCmps.UnitConvert(first.m_ptLocation.x);
    EXPECT_EQ(locations(), (std::vector<CPointD>{{16, 24}, {40, 56}, {88, 104}, {8, 12}, {20, 28}, {44, 52}}));
    first.m_arrTops.UnitConvert(first.m_arrTops.GetAt(0)->m_ptLocation.x);
    EXPECT_EQ(first.m_arrTops.GetAt(1)->m_ptLocation, CPointD(3520, 4160));
    CJOBXcomponents& second = *array.Own(std::make_unique<CJOBXcomponents>());
    Read(second, text);
    first.m_ptLocation.SetData(2, 0);
    array.UnitConvert(first.m_ptLocation.x);
    EXPECT_EQ(second.m_arrCmps.GetAt(0)->m_ptLocation, CPointD(4, 6));
}

TEST(Components, Reader_ComponentOfItsNumberLineOnlyHasNoPackage)
{
    CJOBXcomponents components;
    Read(components, "# CMP 7\n");
    ASSERT_EQ(components.m_arrCmps.GetSize(), 1);
    EXPECT_EQ(components.m_arrCmps.GetAt(0)->m_nNumber, 7);
    EXPECT_EQ(components.m_arrCmps.GetAt(0)->m_nPkgRef, -1);
}

TEST(Components, Reader_LargeFileWithLargeTables)
{
    constexpr int kCount = kIsSlowBuild ? 10'000 : 100'000;
    std::string text;
    for (int i = 0; i < kCount; ++i)
        text += "@" + std::to_string(i) + " name" + std::to_string(i) + "\n&" + std::to_string(i) + " t\n";
    for (int i = 0; i < kCount; ++i)
    {
        const std::string number = std::to_string(kCount - 1 - i);
        text += "# CMP " + number + "\nCMP 0 1 2 0 N R" + number + " P;" + number + "=1\nTOP 0 1 2 0 N 1 2 1\n";
    }
    CJOBXcomponents components;
    Read(components, text);
    ASSERT_EQ(components.m_arrCmps.GetSize(), kCount);
    for (int i = 0; i < kCount; ++i)
    {
        const CJOBXcmp& component = *components.m_arrCmps.GetAt(i);
        ASSERT_EQ(component.m_arrTops.GetSize(), 1);
        ASSERT_EQ(component.m_arrAttributes.GetAt(0)->m_sName, ("name" + std::to_string(kCount - 1 - i)).c_str());
    }
    const std::string written = Written(components);
    EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 5 * kCount + 5 + 3 + 3);
}

namespace
{
struct LineCounts
{
    __int64 components = 0;
    __int64 toeprints = 0;
    __int64 properties = 0;
    __int64 names = 0;
};

LineCounts CountLines(const std::string& path)
{
    LineCounts counts;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
    {
        counts.components += line.rfind("CMP ", 0) == 0 ? 1 : 0;
        counts.toeprints += line.rfind("TOP ", 0) == 0 ? 1 : 0;
        counts.properties += line.rfind("PRP ", 0) == 0 ? 1 : 0;
        counts.names += line.rfind('@', 0) == 0 ? 1 : 0;
    }
    return counts;
}
} // namespace

TEST(Components, Reader_RealJobsGiveARecordForEachLine)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const char* const kFiles[] = {"beagleboneblack/steps/stp/layers/comp_+_top/components",
                                  "beagleboneblack/steps/stp/layers/comp_+_bot/components",
                                  "flat_hierarchy/steps/pcb/layers/comp_+_top/components"};
    for (const char* const file : kFiles)
    {
        const std::string path = jobs + "/" + file;
        SCOPED_TRACE(path);
        ASSERT_TRUE(std::filesystem::is_regular_file(path));
        const LineCounts lines = CountLines(path);
        ASSERT_GT(lines.components, 0);
        CJOBXcomponents components;
        components.ParseODBOfMFC(path.c_str());
        EXPECT_EQ(components.m_arrCmps.GetSize(), lines.components);
        EXPECT_EQ(components.m_arrAttributeNames.GetSize(), lines.names);
        __int64 toeprints = 0;
        __int64 properties = 0;
        for (__int64 i = 0; i < components.m_arrCmps.GetSize(); ++i)
        {
            const CJOBXcmp& component = *components.m_arrCmps.GetAt(i);
            toeprints += component.m_arrTops.GetSize();
            properties += component.m_arrProperties.GetSize();
            EXPECT_FALSE(component.m_sName.IsEmpty()) << i;
            EXPECT_GE(component.m_nPkgRef, 0) << i;
            for (__int64 k = 0; k < component.m_arrAttributes.GetSize(); ++k)
                EXPECT_FALSE(component.m_arrAttributes.GetAt(k)->m_sName.IsEmpty()) << i;
        }
        EXPECT_EQ(toeprints, lines.toeprints);
        EXPECT_EQ(properties, lines.properties);
    }
}
