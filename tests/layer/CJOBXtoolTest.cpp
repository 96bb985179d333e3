#include "layer/CJOBXtool.h"
#include "support/CommaLocale.h"
#include "support/CountFailedAllocations.h"
#include "support/Golden.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"
#include "support/WrittenText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
CJOBXtoolData MakeTool(int number)
{
    CJOBXtoolData tool;
    tool.m_nNum = number;
    tool.m_sType = "PLATED";
    tool.m_sType2 = "STANDARD";
    tool.m_dMinTol = 0.25;
    tool.m_dMaxTol = 0.125;
    tool.m_sBit = "b1";
    tool.m_dFinishSize = 0.75;
    tool.m_dDrillSize = 0.5;
    return tool;
}

void AddTool(CJOBXtoolDataArray& tools, const CJOBXtoolData& tool)
{
    tools.Own(std::make_unique<CJOBXtoolData>(tool));
}

CJOBXtool MakeToolList()
{
    CJOBXtool tool;
    tool.m_sUnits = "MM";
    tool.m_dThickness = 1.6;
    tool.m_sUserParams = "a b";
    AddTool(tool.m_arrToolData, MakeTool(1));
    AddTool(tool.m_arrToolData, MakeTool(2));
    return tool;
}

// One change for every member but the number.
const std::vector<std::pair<const char*, std::function<void(CJOBXtoolData&)>>> kChanges = {
    {"type", [](CJOBXtoolData& tool) { tool.m_sType = "plated"; }},
    {"type2", [](CJOBXtoolData& tool) { tool.m_sType2 = "Standard"; }},
    {"minimum tolerance", [](CJOBXtoolData& tool) { tool.m_dMinTol += 1e-15; }},
    {"maximum tolerance", [](CJOBXtoolData& tool) { tool.m_dMaxTol += 1e-15; }},
    {"bit", [](CJOBXtoolData& tool) { tool.m_sBit = "B1"; }},
    {"finish size", [](CJOBXtoolData& tool) { tool.m_dFinishSize += 1e-15; }},
    {"drill size", [](CJOBXtoolData& tool) { tool.m_dDrillSize += 1e-15; }},
};

const char* const kRecord = "      NUM=1\n      TYPE=PLATED\n      TYPE2=STANDARD\n      MIN_TOL=0.250000\n"
                            "      MAX_TOL=0.125000\n      BIT=b1\n      FINISH_SIZE=0.750000\n"
                            "      DRILL_SIZE=0.500000\n";
} // namespace

TEST(Tool, NewRecordsAreEmpty)
{
    const CJOBXtool tool;
    EXPECT_EQ(tool.m_sUnits, "");
    EXPECT_EQ(tool.m_dThickness, 0.0);
    EXPECT_EQ(tool.m_sUserParams, "");
    EXPECT_EQ(tool.GetToolDataArray()->GetSize(), 0);
    const CJOBXtoolData data;
    EXPECT_EQ(data.m_nNum, 0);
    for (const CString* const text : {&data.m_sType, &data.m_sType2, &data.m_sBit})
        EXPECT_EQ(*text, "");
    for (const double number : {data.m_dMinTol, data.m_dMaxTol, data.m_dFinishSize, data.m_dDrillSize})
        EXPECT_EQ(number, 0.0);
}

TEST(Tool, TypeOfATextIsItsCodeAndZeroForAnyOther)
{
    EXPECT_EQ(CJOBXtoolData::GetType("PLATED"), 0);
    EXPECT_EQ(CJOBXtoolData::GetType("NON_PLATED"), 1);
    EXPECT_EQ(CJOBXtoolData::GetType("VIA"), 2);
    for (const char* const other : {"via", "Non_Plated", "", "VIA ", "VIAS", "NON"})
        EXPECT_EQ(CJOBXtoolData::GetType(other), 0) << other;
}

TEST(Tool, TextOfACodeIsEmptyForAnyOther)
{
    EXPECT_EQ(CJOBXtoolData::GetSType(0), "PLATED");
    EXPECT_EQ(CJOBXtoolData::GetSType(1), "NON_PLATED");
    EXPECT_EQ(CJOBXtoolData::GetSType(2), "VIA");
    for (const int other : {-1, 3, 2147483647, -2147483647 - 1})
        EXPECT_EQ(CJOBXtoolData::GetSType(other), "") << other;
}

TEST(Tool, RecordsAreEqualWhenAllMembersAre)
{
    const CJOBXtoolData tool = MakeTool(1);
    EXPECT_TRUE(tool == tool);
    EXPECT_TRUE(tool == MakeTool(1));
    EXPECT_FALSE(tool != MakeTool(1));
    EXPECT_FALSE(tool == MakeTool(2));
    for (const auto& [what, change] : kChanges)
    {
        CJOBXtoolData other = MakeTool(1);
        change(other);
        EXPECT_FALSE(tool == other) << what;
        EXPECT_TRUE(tool != other) << what;
    }
}

TEST(Tool, RecordEqualsItselfEvenWithANumberThatIsNone)
{
    CJOBXtoolData tool;
    tool.m_dDrillSize = std::nan("");
    EXPECT_TRUE(tool == tool); // NOLINT(misc-redundant-expression)
    EXPECT_FALSE(tool == CJOBXtoolData(tool));
}

TEST(Tool, RecordCopiesCarryEveryMember)
{
    const CJOBXtoolData tool = MakeTool(7);
    EXPECT_TRUE(CJOBXtoolData(tool) == tool);
    CJOBXtoolData assigned;
    assigned = tool;
    EXPECT_TRUE(assigned == tool);
    const std::unique_ptr<CJOBXtoolData> cloned(tool.clone());
    EXPECT_TRUE(*cloned == tool);
    CJOBXtoolData& self = assigned;
    assigned = self;
    EXPECT_TRUE(assigned == tool);
}

TEST(Tool, ListCopiesAreDeepAndLeaveNullOut)
{
    CJOBXtoolDataArray tools;
    tools.Add(nullptr);
    AddTool(tools, MakeTool(1));
    tools.Add(nullptr);
    AddTool(tools, MakeTool(2));
    CJOBXtoolDataArray assigned;
    AddTool(assigned, MakeTool(9));
    assigned = tools;
    const CJOBXtoolDataArray copied(tools);
    const std::unique_ptr<CJOBXtoolDataArray> cloned(tools.clone());
    tools[1]->m_nNum = 100;
    const CJOBXtoolDataArray* const copies[] = {&assigned, &copied, cloned.get()};
    for (const CJOBXtoolDataArray* const copy : copies)
    {
        ASSERT_EQ(copy->GetSize(), 2);
        EXPECT_TRUE(*copy->GetAt(0) == MakeTool(1));
        EXPECT_TRUE(*copy->GetAt(1) == MakeTool(2));
    }
}

TEST(Tool, ListAssignedToItselfKeepsItsElements)
{
    CJOBXtoolDataArray tools;
    AddTool(tools, MakeTool(1));
    const CJOBXtoolData* const element = tools[0];
    CJOBXtoolDataArray& self = tools;
    tools = self;
    ASSERT_EQ(tools.GetSize(), 1);
    EXPECT_EQ(tools[0], element);
}

TEST(Tool, ListsAreEqualWhenSizesAndElementsAre)
{
    CJOBXtoolDataArray a;
    CJOBXtoolDataArray b;
    EXPECT_TRUE(a == a); // NOLINT(misc-redundant-expression)
    EXPECT_TRUE(a == b);
    AddTool(a, MakeTool(1));
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    AddTool(b, MakeTool(1));
    EXPECT_TRUE(a == b);
    AddTool(a, MakeTool(2));
    AddTool(b, MakeTool(3));
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
}

TEST(Tool, MissingElementEqualsOnlyAMissingOne)
{
    CJOBXtoolDataArray a;
    CJOBXtoolDataArray b;
    a.Add(nullptr);
    AddTool(b, MakeTool(1));
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    b.DeleteAll();
    b.Add(nullptr);
    EXPECT_TRUE(a == b);
}

TEST(Tool, ToolListsAreEqualWhenAllMembersAre)
{
    const CJOBXtool tool = MakeToolList();
    EXPECT_TRUE(tool == tool); // NOLINT(misc-redundant-expression)
    EXPECT_TRUE(tool == MakeToolList());
    CJOBXtool units = MakeToolList();
    units.m_sUnits = "mm";
    CJOBXtool thickness = MakeToolList();
    thickness.m_dThickness += 1e-15;
    CJOBXtool parameters = MakeToolList();
    parameters.m_sUserParams = "";
    CJOBXtool tools = MakeToolList();
    tools.m_arrToolData[1]->m_nNum = 3;
    for (const CJOBXtool* const other : {&units, &thickness, &parameters, &tools})
    {
        EXPECT_FALSE(tool == *other);
        EXPECT_TRUE(tool != *other);
    }
}

TEST(Tool, ToolListCopiesAreDeep)
{
    CJOBXtool tool = MakeToolList();
    const CJOBXtool copied(tool);
    CJOBXtool assigned;
    AddTool(assigned.m_arrToolData, MakeTool(9));
    assigned = tool;
    tool.m_arrToolData[0]->m_nNum = 100;
    EXPECT_TRUE(copied == MakeToolList());
    EXPECT_TRUE(assigned == MakeToolList());
    const CJOBXtool& self = assigned;
    assigned = self;
    EXPECT_TRUE(assigned == MakeToolList());
}

TEST(Tool, GivenToolsAreCopied)
{
    CJOBXtool tool = MakeToolList();
    CJOBXtoolDataArray tools;
    AddTool(tools, MakeTool(5));
    tool.SetToolDataArray(&tools);
    ASSERT_EQ(tool.GetToolDataArray()->GetSize(), 1);
    EXPECT_NE(tool.GetToolDataArray()->GetAt(0), tools[0]);
    EXPECT_TRUE(*tool.GetToolDataArray()->GetAt(0) == MakeTool(5));
    tool.GetToolDataArray()->GetAt(0)->m_nNum = 6; // the owned list itself
    EXPECT_EQ(tool.m_arrToolData[0]->m_nNum, 6);
}

TEST(Tool, NoToolsGivenLeaveNoneAndItsOwnStay)
{
    CJOBXtool tool = MakeToolList();
    tool.SetToolDataArray(tool.GetToolDataArray());
    EXPECT_TRUE(tool == MakeToolList());
    tool.SetToolDataArray(nullptr);
    EXPECT_EQ(tool.GetToolDataArray()->GetSize(), 0);
}

TEST(Tool, CopyThatRunsOutOfMemoryRaisesTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const CJOBXtool tool = MakeToolList();
    EXPECT_EQ(CountFailedAllocations([&] { const CJOBXtool copy(tool); }), 2);
    EXPECT_EQ(CountFailedAllocations([&] { delete tool.GetToolDataArray()->clone(); }), 3);
}

TEST(Tool, SameTool_NumberDoesNotTakePart)
{
    CJOBXtoolDataArray tools;
    AddTool(tools, MakeTool(4));
    AddTool(tools, MakeTool(5));
    const CJOBXtoolData candidate = MakeTool(77);
    EXPECT_EQ(tools.GetSameToolNum(&candidate), 4);
}

TEST(Tool, SameTool_EveryOtherMemberMustBeEqual)
{
    CJOBXtoolDataArray tools;
    tools.Add(nullptr);
    AddTool(tools, MakeTool(4));
    for (const auto& [what, change] : kChanges)
    {
        CJOBXtoolData candidate = MakeTool(4);
        change(candidate);
        EXPECT_EQ(tools.GetSameToolNum(&candidate), 0) << what;
    }
}

TEST(Tool, SameTool_NullCandidateGivesMinusOneAndNoMatchZero)
{
    CJOBXtoolDataArray tools;
    const CJOBXtoolData candidate = MakeTool(1);
    EXPECT_EQ(tools.GetSameToolNum(nullptr), -1);
    EXPECT_EQ(tools.GetSameToolNum(&candidate), 0);
    AddTool(tools, MakeTool(0));
    EXPECT_EQ(tools.GetSameToolNum(nullptr), -1);
    EXPECT_EQ(tools.GetSameToolNum(&candidate), 0); // matches the tool numbered 0
}

TEST(Tool, UnitConvert_MultipliesEveryLength)
{
    CJOBXtool tool = MakeToolList();
    tool.m_arrToolData.Add(nullptr);
    tool.UnitConvert(2.0);
    EXPECT_EQ(tool.m_dThickness, 3.2);
    for (const int i : {0, 1})
    {
        const CJOBXtoolData& data = *tool.m_arrToolData[i];
        EXPECT_EQ(data.m_dMinTol, 0.5);
        EXPECT_EQ(data.m_dMaxTol, 0.25);
        EXPECT_EQ(data.m_dFinishSize, 1.5);
        EXPECT_EQ(data.m_dDrillSize, 1.0);
        EXPECT_EQ(data.m_nNum, i + 1);
    }
    EXPECT_EQ(tool.m_sUnits, "MM");
}

TEST(Tool, Writer_WritesTheWholeFile)
{
    const TempDir dir;
    CJOBXtool tool = MakeToolList();
    tool.m_arrToolData.Add(nullptr);
    CJOBXtoolData last;
    last.m_nNum = -3;
    last.m_sBit = "\xE4";
    last.m_dDrillSize = 1e20;
    last.m_dMinTol = -1e-9;
    AddTool(tool.m_arrToolData, last);
    tool.WriteODBData(dir.Path().c_str());
    ExpectSameFolder(dir.Path(), TestDataDir() + "/layer/tools/golden");
}

TEST(Tool, Writer_RecordHasEightIndentedLines)
{
    const CJOBXtoolData tool = MakeTool(1);
    EXPECT_EQ(WrittenText([&](FILE* file) { tool.WriteODBData(file); }), kRecord);
    CJOBXtoolDataArray tools;
    tools.Add(nullptr);
    AddTool(tools, tool);
    AddTool(tools, tool);
    const std::string block = std::string("\nTOOLS {\n") + kRecord + "}\n\n";
    EXPECT_EQ(WrittenText([&](FILE* file) { tools.WriteODBData(file); }), block + block);
}

TEST(Tool, Writer_NullFileWritesNothing)
{
    CJOBXtoolDataArray tools;
    AddTool(tools, MakeTool(1));
    tools.WriteODBData(nullptr);
    tools[0]->WriteODBData(nullptr);
    EXPECT_EQ(tools.GetSize(), 1);
}

TEST(Tool, Writer_EmptyListIsItsHeadOnly)
{
    const TempDir dir;
    CJOBXtool().WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("tools"), "UNITS=\nTHICKNESS=0.000000\nUSER_PARAMS=\n");
}

TEST(Tool, Writer_MissingFolderIsNotMade)
{
    const TempDir dir;
    MakeToolList().WriteODBData(dir.Path("none").c_str());
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(Tool, Writer_ReplacesTheFileAndLeavesItsNeighbours)
{
    const TempDir dir;
    dir.Write("tools", std::string(1000, 'x'));
    dir.Write("features", "kept");
    CJOBXtool().WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("tools").size(), 39U);
    EXPECT_EQ(dir.Read("features"), "kept");
}

TEST(Tool, Writer_FileThatCannotBeOpenedIsSkipped)
{
    const TempDir dir;
    dir.MakeDir("a/tools");
    dir.Write("b", "a file");
    MakeToolList().WriteODBData(dir.Path("a").c_str());
    MakeToolList().WriteODBData(dir.Path("b").c_str());
    EXPECT_TRUE(std::filesystem::is_directory(dir.Path("a/tools")));
    EXPECT_EQ(dir.Read("b"), "a file");
}

TEST(Tool, Writer_PrintsPointsInALocaleWithADecimalComma)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    const CJOBXtoolData tool = MakeTool(1);
    EXPECT_EQ(WrittenText([&](FILE* file) { tool.WriteODBData(file); }), kRecord);
}
