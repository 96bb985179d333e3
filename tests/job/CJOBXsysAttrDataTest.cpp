#include "job/CJOBXsysAttrData.h"
#include "foundation/framework/CException.h"
#include "support/CountFailedAllocations.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace
{
using Definitions = std::unique_ptr<CJOBXsysAttrDataArray>;

Definitions ReadAttributes(const std::string& bytes)
{
    const TempDir dir;
    auto definitions = std::make_unique<CJOBXsysAttrDataArray>();
    EXPECT_EQ(definitions->ParseODBOfMFC(dir.Write("attributes", bytes).c_str()), 1);
    return definitions;
}

std::vector<std::string> Options(const CJOBXsysAttrData& definition)
{
    std::vector<std::string> options;
    for (int i = 0; i < definition.m_arrOptions.GetSize(); ++i)
        options.emplace_back(definition.m_arrOptions[i].GetString());
    return options;
}

// The options of the one definition with these lines.
std::vector<std::string> OptionsOf(const std::string& lines)
{
    const Definitions read = ReadAttributes("OPTION {\n" + lines + "\n}\n");
    EXPECT_EQ(read->GetSize(), 1);
    return Options(*read->GetAt(0));
}

// A list of `count` pieces "o0;o1;...".
std::string Pieces(int count)
{
    std::string list = "o0";
    for (int i = 1; i < count; ++i)
        list += ";o" + std::to_string(i);
    return list;
}

void AddDefinition(CJOBXsysAttrDataArray& definitions, const char* name, const std::vector<const char*>& options)
{
    CJOBXsysAttrData* const definition = definitions.Own(std::make_unique<CJOBXsysAttrData>());
    definition->m_sName = name;
    for (const char* const option : options)
        definition->m_arrOptions.Add(option);
}

using Texts = std::vector<std::string>;
} // namespace

TEST(SysAttrData, Reader_DefinitionHasItsNameAndOptions)
{
    const Definitions read = ReadAttributes("OPTION {\nNAME = drc\nOPTIONS = a;b;c\n}\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "drc");
    EXPECT_EQ(Options(*read->GetAt(0)), (Texts{"a", "b", "c"}));
    EXPECT_EQ(read->GetAt(0)->sGetOptionsFromIndexID(0), "a");
    EXPECT_EQ(read->GetAt(0)->sGetOptionsFromIndexID(2), "c");
    EXPECT_EQ(read->GetAt(0)->sGetOptionsFromIndexID(3), "");
}

TEST(SysAttrData, Reader_OptionsAreSplitAtSemicolons)
{
    const std::pair<const char*, Texts> cases[] = {
        {"OPTIONS = one", {"one"}},         {"OPTIONS = a;", {"a", ""}},       {"OPTIONS = ;", {"", ""}},
        {"OPTIONS = a;;b", {"a", "", "b"}}, {"OPTIONS = a;b c;d", {"a", "b"}}, {"OPTIONS =   a;b  ", {"a", "b"}},
        {"OPTIONS = a,b", {"a,b"}},         {"OPTIONS x y;z", {"y", "z"}},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(OptionsOf(line), expected) << line;
}

TEST(SysAttrData, Reader_SeveralOptionLinesAddUp)
{
    EXPECT_EQ(OptionsOf("OPTIONS = a;b\nOPTIONS = c"), (Texts{"a", "b", "c"}));
}

TEST(SysAttrData, Reader_OfManyPiecesTheFirstHundredAreKept)
{
    for (const int count : {99, 100, 101, 150})
    {
        const Texts options = OptionsOf("OPTIONS = " + Pieces(count));
        ASSERT_EQ(options.size(), static_cast<std::size_t>(std::min(count, 100))) << count;
        EXPECT_EQ(options.front(), "o0");
        EXPECT_EQ(options.back(), "o" + std::to_string(std::min(count, 100) - 1));
    }
    EXPECT_EQ(OptionsOf("OPTIONS = " + Pieces(100) + ";").size(), 100U);
}

TEST(SysAttrData, Reader_TheLimitOfPiecesCountsForEachLine)
{
    EXPECT_EQ(OptionsOf("OPTIONS = " + Pieces(150) + "\nOPTIONS = " + Pieces(150)).size(), 200U);
}

TEST(SysAttrData, Reader_OfANameWithBlanksTheFirstWordIsKept)
{
    EXPECT_EQ(ReadAttributes("OPTION\nNAME =   drc check  \n}\n")->GetAt(0)->m_sName, "drc");
}

TEST(SysAttrData, Reader_OnlyTheBlankSeparatesWords)
{
    EXPECT_EQ(ReadAttributes("OPTION\nNAME = a\tb\n}\n")->GetAt(0)->m_sName, "a\tb");
    EXPECT_THROW(ReadAttributes("OPTION\nNAME\t=\tx y\n}\nNAME = x\nOPTION\nNAME =\tx\n}\n"), CInvalidArgException*);
}

TEST(SysAttrData, Reader_KeywordsAreWholeWordsInUpperCase)
{
    const Definitions read = ReadAttributes("option {\nNAME = a\n}\nOPTION{\nNAME = b\n}\nOPTIONX\nNAME = c\n}\n"
                                            "OPTION {\nname = d\nNAMES = e\nNAME= f\noptions = o\nOPTIONS= p\n}\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "");
    EXPECT_EQ(Options(*read->GetAt(0)), Texts{});
}

TEST(SysAttrData, Reader_LinesOutsideADefinitionAreIgnored)
{
    const Definitions read = ReadAttributes("NAME = a\nNAME\nOPTIONS\n}\nOPTION\nNAME = b\n}\nNAME = c\nNAME\n}\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "b");
}

TEST(SysAttrData, Reader_OtherKeywordsInsideADefinitionAreIgnored)
{
    const Definitions read = ReadAttributes("OPTION {\nTYPE = x\n{\n#\nNAME = b\n}\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "b");
}

TEST(SysAttrData, Reader_DefinitionThatIsNotClosedIsNotKept)
{
    const Definitions read = ReadAttributes("OPTION\nNAME = lost\nOPTION\nNAME = kept\n}\nOPTION\nNAME = open\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "kept");
}

TEST(SysAttrData, Reader_WordsBehindAKeywordDoNotMatter)
{
    const Definitions read = ReadAttributes("  OPTION x y z\nNAME is b\n} more\n");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "b");
}

TEST(SysAttrData, Reader_LastNameWins)
{
    EXPECT_EQ(ReadAttributes("OPTION\nNAME = a\nNAME = b\n}\n")->GetAt(0)->m_sName, "b");
}

TEST(SysAttrData, Reader_ShortLinesRaiseAndKeepTheDefinitionsBefore)
{
    for (const char* const line : {"NAME", "NAME =", "NAME=x", "OPTIONS", "OPTIONS =", "NAME = "})
    {
        const TempDir dir;
        const std::string path =
            dir.Write("a", "OPTION\nNAME = kept\n}\nOPTION\nNAME = open\n"s + line + "\n}\nOPTION\nNAME = c\n}\n");
        CJOBXsysAttrDataArray definitions;
        const bool isShort = std::string(line) != "NAME=x"; // another keyword, ignored
        bool raised = false;
        try
        {
            definitions.ParseODBOfMFC(path.c_str());
        }
        catch (CInvalidArgException* exception)
        {
            exception->Delete();
            raised = true;
        }
        EXPECT_EQ(raised, isShort) << line;
        ASSERT_EQ(definitions.GetSize(), isShort ? 1 : 3) << line;
        EXPECT_EQ(definitions.GetAt(0)->m_sName, "kept");
    }
}

TEST(SysAttrData, Reader_AppendsToWhatIsThere)
{
    const TempDir dir;
    const std::string path = dir.Write("a", "OPTION\nNAME = n\n}\n");
    CJOBXsysAttrDataArray definitions;
    EXPECT_EQ(definitions.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(definitions.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(definitions.GetSize(), 2);
}

TEST(SysAttrData, Reader_MissingFileGivesZeroAndAnEmptyOneNothing)
{
    const TempDir dir;
    CJOBXsysAttrDataArray definitions;
    EXPECT_EQ(definitions.ParseODBOfMFC(dir.Path("none").c_str()), 0);
    EXPECT_EQ(definitions.ParseODBOfMFC(dir.Path().c_str()), 0);
    EXPECT_EQ(definitions.ParseODBOfMFC(dir.Write("empty", "").c_str()), 1);
    EXPECT_EQ(definitions.GetSize(), 0);
}

TEST(SysAttrData, Reader_LineEndsMayBeCrLfAndTheLastOneMayMiss)
{
    const Definitions read = ReadAttributes("OPTION {\r\n\r\n  NAME = n\r\nOPTIONS = a;b\r\n}");
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "n");
    EXPECT_EQ(Options(*read->GetAt(0)), (Texts{"a", "b"}));
}

TEST(SysAttrData, Reader_NulEndsTheTextOfItsLineAndEightBitBytesPass)
{
    const Definitions read = ReadAttributes("OPTION\nNAME = a\0b\nOPTIONS = \xE4;\xA0\n\0\n}\n"s);
    ASSERT_EQ(read->GetSize(), 1);
    EXPECT_EQ(read->GetAt(0)->m_sName, "a");
    EXPECT_EQ(Options(*read->GetAt(0)), (Texts{"\xE4", "\xA0"}));
}

TEST(SysAttrData, Reader_EveryBeginningOfAFileGivesTheDefinitionsClosedInIt)
{
    const std::string whole = "OPTION {\n  NAME = drc\n  OPTIONS = a;b;c\n}\n\nOPTION {\n  NAME = x\n}\n";
    for (std::size_t size = 0; size <= whole.size(); ++size)
    {
        const TempDir dir;
        const std::string bytes = whole.substr(0, size);
        const auto closed = std::count(bytes.begin(), bytes.end(), '}');
        // A line of keyword and equals sign only is the last one of the text.
        const std::string last = bytes.substr(bytes.rfind('\n') + 1);
        const bool isShort = last == "  NAME" || last == "  NAME " || last == "  NAME =" || last == "  NAME = " ||
                             last == "  OPTIONS" || last == "  OPTIONS " || last == "  OPTIONS =" ||
                             last == "  OPTIONS = ";
        CJOBXsysAttrDataArray definitions;
        bool raised = false;
        try
        {
            definitions.ParseODBOfMFC(dir.Write("a", bytes).c_str());
        }
        catch (CInvalidArgException* exception)
        {
            exception->Delete();
            raised = true;
        }
        ASSERT_EQ(raised, isShort) << size;
        ASSERT_EQ(definitions.GetSize(), closed) << size;
    }
}

TEST(SysAttrData, Reader_ExhaustedMemoryLeavesAsTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    const CString path = dir.Write("a", "OPTION\nNAME = a_name_of_some_length\nOPTIONS = a;b\n}\nOPTION\n").c_str();
    EXPECT_GT(CountFailedAllocations(
                  [&]
                  {
                      CJOBXsysAttrDataArray definitions;
                      EXPECT_EQ(definitions.ParseODBOfMFC(path), 1);
                      EXPECT_EQ(definitions.GetSize(), 1);
                  }),
              0);
}

TEST(SysAttrData, OptionOfANegativeIndexRaises)
{
    CJOBXsysAttrDataArray definitions;
    AddDefinition(definitions, "n", {"a"});
    EXPECT_THROW(definitions.GetAt(0)->sGetOptionsFromIndexID(-1), CInvalidArgException*);
    EXPECT_THROW(definitions.sGetOptionsFromOptionNameAndIndexID("n", -1), CInvalidArgException*);
}

TEST(SysAttrData, OptionOfADefinitionWithoutOptionsIsEmptyForEveryIndex)
{
    const CJOBXsysAttrData definition;
    for (const int index : {-1, 0, 1})
        EXPECT_EQ(definition.sGetOptionsFromIndexID(index), "");
}

TEST(SysAttrData, LookUpByNameIsExactAndFindsTheFirst)
{
    CJOBXsysAttrDataArray definitions;
    definitions.Add(nullptr);
    AddDefinition(definitions, "Drc", {"x"});
    AddDefinition(definitions, "drc", {"y"});
    AddDefinition(definitions, "drc", {"z"});
    EXPECT_EQ(definitions.pGetODBsysAttrDataFromName("drc"), definitions.GetAt(2));
    EXPECT_EQ(definitions.pGetODBsysAttrDataFromName("DRC"), nullptr);
    EXPECT_EQ(definitions.pGetODBsysAttrDataFromName(""), nullptr);
    EXPECT_EQ(CJOBXsysAttrDataArray().pGetODBsysAttrDataFromName("drc"), nullptr);
}

TEST(SysAttrData, OptionByNameComesFromTheNamedDefinition)
{
    CJOBXsysAttrDataArray definitions;
    AddDefinition(definitions, "a", {"a0", "a1"});
    AddDefinition(definitions, "b", {"b0"});
    CString name = "a"; // hosts pass variables
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID(name, 1), "a1");
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID(name, 2), "");
    EXPECT_EQ(name, "a");
}

TEST(SysAttrData, OptionOfAnUnknownNameComesFromTheLastDefinition)
{
    CJOBXsysAttrDataArray definitions;
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID("none", 0), "");
    AddDefinition(definitions, "a", {"a0"});
    AddDefinition(definitions, "b", {"b0"});
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID("none", 0), "b0");
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID("A", 0), "b0");
    definitions.Add(nullptr);
    EXPECT_EQ(definitions.sGetOptionsFromOptionNameAndIndexID("none", 0), "");
}
