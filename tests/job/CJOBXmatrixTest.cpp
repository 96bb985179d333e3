#include "job/CJOBXmatrix.h"
#include "foundation/framework/CException.h"
#include "support/CountFailedAllocations.h"
#include "support/Golden.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"
#include "support/WrittenText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <regex>
#include <sstream>
#include <vector>

using namespace std::string_literals;

namespace
{
std::unique_ptr<CJOBXmatrix> ReadMatrix(const std::string& bytes)
{
    const TempDir dir;
    dir.Write("matrix", bytes);
    auto matrix = std::make_unique<CJOBXmatrix>();
    EXPECT_EQ(matrix->ParseODBOfMFC(dir.Path().c_str()), 1);
    return matrix;
}

// The one layer of a matrix whose layer block has these lines.
std::unique_ptr<CJOBXmatrix> ReadLayer(const std::string& lines)
{
    auto matrix = ReadMatrix("LAYER {\n" + lines + "\n}\n");
    EXPECT_EQ(matrix->m_arrLayers.GetSize(), 1);
    return matrix;
}

std::unique_ptr<CJOBXmatrix> ReadStep(const std::string& lines)
{
    auto matrix = ReadMatrix("STEP {\n" + lines + "\n}\n");
    EXPECT_EQ(matrix->m_arrSteps.GetSize(), 1);
    return matrix;
}

CJOBXmatrixLayer& AddLayer(CJOBXmatrixLayerArray& layers, const char* name, const char* type = "SIGNAL",
                           const char* context = "BOARD")
{
    CJOBXmatrixLayer* const layer = layers.Own(std::make_unique<CJOBXmatrixLayer>());
    layer->m_sName = name;
    layer->m_sType = type;
    layer->m_sContext = context;
    return *layer;
}

CJOBXmatrixLayer& AddLayer(CJOBXmatrix& matrix, const char* name, const char* type = "SIGNAL",
                           const char* context = "BOARD")
{
    return AddLayer(matrix.m_arrLayers, name, type, context);
}

void AddStep(CJOBXmatrix& matrix, int column, const char* name)
{
    CJOBXmatrixStep* const step = matrix.m_arrSteps.Own(std::make_unique<CJOBXmatrixStep>());
    step->m_nColumn = column;
    step->m_sName = name;
}

// The text members of a layer by their keys.
const std::vector<std::pair<std::string, CString CJOBXmatrixLayer::*>> kLayerTexts = {
    {"CONTEXT", &CJOBXmatrixLayer::m_sContext},
    {"TYPE", &CJOBXmatrixLayer::m_sType},
    {"NAME", &CJOBXmatrixLayer::m_sName},
    {"POLARITY", &CJOBXmatrixLayer::m_sPolarity},
    {"START_NAME", &CJOBXmatrixLayer::m_sStartName},
    {"END_NAME", &CJOBXmatrixLayer::m_sEndName},
    {"OLD_NAME", &CJOBXmatrixLayer::m_sOldName},
    {"ADD_TYPE", &CJOBXmatrixLayer::m_sAddType},
    {"COLOR", &CJOBXmatrixLayer::m_sColor},
};

void ExpectOnlyText(const CJOBXmatrixLayer& layer, CString CJOBXmatrixLayer::*changed, const char* value)
{
    const CJOBXmatrixLayer fresh;
    for (const auto& [key, member] : kLayerTexts)
        EXPECT_EQ(layer.*member, member == changed ? CString(value) : fresh.*member) << key;
}

} // namespace

TEST(Matrix, Reader_StepAndLayersComeInFileOrder)
{
    const auto matrix = ReadMatrix("STEP {\n    COL=1\n    NAME=pcb\n}\n\n"
                                   "LAYER {\n    ROW=1\n    NAME=TOP\n}\nLAYER {\n    ROW=2\n    NAME=BOT\n}\n");
    ASSERT_EQ(matrix->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 1);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "pcb");
    ASSERT_EQ(matrix->m_arrLayers.GetSize(), 2);
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "TOP");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 1);
    EXPECT_EQ(matrix->m_arrLayers[1]->m_sName, "BOT");
    EXPECT_EQ(matrix->m_arrLayers[1]->m_nRow, 2);
}

TEST(Matrix, Reader_NewRecordsHaveTheirDefaults)
{
    const auto matrix = ReadMatrix("STEP {\n}\nLAYER {\n}\n");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 0);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "");
    const CJOBXmatrixLayer& layer = *matrix->m_arrLayers[0];
    EXPECT_EQ(layer.m_nRow, 0);
    for (const auto& [key, member] : kLayerTexts)
        EXPECT_EQ(layer.*member, key == "COLOR" ? "0" : "") << key;
}

TEST(Matrix, Reader_EachLayerKeySetsItsTextAlone)
{
    for (const auto& [key, member] : kLayerTexts)
        ExpectOnlyText(*ReadLayer(key + "=vAl")->m_arrLayers[0], member, "vAl");
}

TEST(Matrix, Reader_KeysAreFoundInAnyLetterCase)
{
    for (const auto& [key, member] : kLayerTexts)
    {
        std::string mixed = key;
        for (std::size_t i = 0; i < mixed.size(); i += 2)
            mixed[i] = static_cast<char>(mixed[i] == '_' ? '_' : mixed[i] + ('a' - 'A'));
        ExpectOnlyText(*ReadLayer(mixed + "=vAl")->m_arrLayers[0], member, "vAl");
    }
    EXPECT_EQ(ReadMatrix("step {\n col=4\n}\n")->m_arrSteps[0]->m_nColumn, 4);
    EXPECT_EQ(ReadMatrix("Layer {\n Row=4\n}\n")->m_arrLayers[0]->m_nRow, 4);
}

TEST(Matrix, Reader_KeysAreBeginnings)
{
    for (const auto& [key, member] : kLayerTexts)
        ExpectOnlyText(*ReadLayer(key + "_X=v")->m_arrLayers[0], member, "v");
    EXPECT_EQ(ReadLayer("ROWS=7")->m_arrLayers[0]->m_nRow, 7);
    EXPECT_EQ(ReadStep("COLUMN=7")->m_arrSteps[0]->m_nColumn, 7);
    EXPECT_EQ(ReadStep("NAMES=x")->m_arrSteps[0]->m_sName, "x");
}

TEST(Matrix, Reader_KeysWithinALineAreNoKeys)
{
    const auto matrix = ReadLayer("X_NAME=a\nMY_TYPE=b\n =ROW=3\nxCOLOR=4");
    ExpectOnlyText(*matrix->m_arrLayers[0], nullptr, "");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 0);
}

TEST(Matrix, Reader_ColorInsideStepSetsColumn)
{
    const auto matrix = ReadStep("COL=1\nCOLOR=5");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 5);
}

TEST(Matrix, Reader_ColInsideLayerIsDropped)
{
    const auto matrix = ReadLayer("COLOR=3\nCOL=5");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sColor, "3");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 0);
}

TEST(Matrix, Reader_LayerWithAnythingBehindItBeginsALayer)
{
    const auto matrix = ReadMatrix("LAYER\nNAME=a\nLAYER_TYPE=x\nNAME=b\nlayer{\nNAME=c\n");
    ASSERT_EQ(matrix->m_arrLayers.GetSize(), 3);
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "a");
    EXPECT_EQ(matrix->m_arrLayers[1]->m_sName, "b");
    EXPECT_EQ(matrix->m_arrLayers[1]->m_sType, "");
    EXPECT_EQ(matrix->m_arrLayers[2]->m_sName, "c");
}

TEST(Matrix, Reader_StepWithAnythingBehindItBeginsAStep)
{
    const auto matrix = ReadMatrix("STEP\nNAME=a\nSTEP_REPEAT=x\nNAME=b\n");
    ASSERT_EQ(matrix->m_arrSteps.GetSize(), 2);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "a");
    EXPECT_EQ(matrix->m_arrSteps[1]->m_sName, "b");
}

TEST(Matrix, Reader_BlocksBeginInsideBlocks)
{
    const auto matrix = ReadMatrix("LAYER {\nNAME=l\nSTEP {\nNAME=s\nLAYER {\nNAME=m\n");
    ASSERT_EQ(matrix->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "s");
    ASSERT_EQ(matrix->m_arrLayers.GetSize(), 2);
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "l");
    EXPECT_EQ(matrix->m_arrLayers[1]->m_sName, "m");
}

TEST(Matrix, Reader_LayerKeysInsideStepAreDropped)
{
    const auto matrix = ReadMatrix("LAYER {\nNAME=L\n}\nSTEP {\nNAME=s\nROW=9\nCONTEXT=BOARD\nTYPE=SIGNAL\n"
                                   "POLARITY=POSITIVE\nSTART_NAME=a\nEND_NAME=b\nOLD_NAME=c\nADD_TYPE=d\n}\n");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "s");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 0);
    ASSERT_EQ(matrix->m_arrLayers.GetSize(), 1);
    ExpectOnlyText(*matrix->m_arrLayers[0], &CJOBXmatrixLayer::m_sName, "L");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 0);
}

TEST(Matrix, Reader_ClosingBraceDoesNotEndTheBlock)
{
    const auto matrix = ReadMatrix("STEP {\n}\nNAME=late\nLAYER {\n}\nNAME=later\nROW=2\n");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "late");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "later");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 2);
}

TEST(Matrix, Reader_LineThatBeginsWithABraceIsSkipped)
{
    ExpectOnlyText(*ReadLayer("} NAME=x\n}NAME=x\n{ NAME=x")->m_arrLayers[0], nullptr, "");
}

TEST(Matrix, Reader_KeysBeforeAnyBlockAreDropped)
{
    const auto matrix = ReadMatrix("NAME=x\nCOL=1\nROW=1\nTYPE=DRILL\nCOLOR=3\n}\nSTEP {\n}\n");
    ASSERT_EQ(matrix->m_arrSteps.GetSize(), 1);
    EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "");
    EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 0);
    EXPECT_EQ(matrix->m_arrLayers.GetSize(), 0);
}

TEST(Matrix, Reader_NewerKeysAreDropped)
{
    const auto matrix = ReadLayer("DIELECTRIC_TYPE=x\nCU_TOP=1\nREF=2\nID=7\nFORM=RIGID");
    ExpectOnlyText(*matrix->m_arrLayers[0], nullptr, "");
}

TEST(Matrix, Reader_ValueIsWhatFollowsTheFirstEqualsSignTrimmed)
{
    const std::pair<std::string, const char*> cases[] = {
        {"NAME=a", "a"},
        {"NAME =  a b \t", "a b"},
        {"NAME=a=b", "a=b"},
        {"NAME=", ""},
        {"NAME= = ", "="},
        {"  \t NAME=Mixed", "Mixed"},
        {"NAME", "NAME"},
        {"Name x", "Name x"},
        {"NAME\f=\v\"q\"", "\"q\""},
        {"NAME=\xC3\xA4\xFF", "\xC3\xA4\xFF"},
        {"NAME=a\rb", "a\rb"},
    };
    for (const auto& [line, expected] : cases)
        EXPECT_EQ(ReadLayer(line)->m_arrLayers[0]->m_sName, expected) << line;
}

TEST(Matrix, Reader_IntegersAreReadAsFarAsTheyGo)
{
    const std::pair<std::string, int> cases[] = {
        {"=12abc", 12},
        {"=x", 0},
        {"=", 0},
        {"= -3", -3},
        {"=+4", 4},
        {"=99999999999", 2147483647},
        {"=-99999999999", -2147483647 - 1},
        {"=1.9", 1},
        {"", 0},
        {"=0x10", 0},
        {"=1 2", 1},
    };
    for (const auto& [value, expected] : cases)
    {
        EXPECT_EQ(ReadLayer("ROW" + value)->m_arrLayers[0]->m_nRow, expected) << value;
        EXPECT_EQ(ReadStep("COL" + value)->m_arrSteps[0]->m_nColumn, expected) << value;
    }
}

TEST(Matrix, Reader_LastOfRepeatedKeysWins)
{
    const auto matrix = ReadLayer("NAME=a\nNAME=b\nROW=1\nROW=2");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "b");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 2);
}

TEST(Matrix, Reader_AppendsToWhatIsThere)
{
    const TempDir dir;
    dir.Write("matrix", "STEP {\nNAME=s\n}\nLAYER {\nNAME=l\n}\n");
    CJOBXmatrix matrix;
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 1);
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 1);
    EXPECT_EQ(matrix.m_arrSteps.GetSize(), 2);
    EXPECT_EQ(matrix.m_arrLayers.GetSize(), 2);
}

TEST(Matrix, Reader_KeyOfASecondFileDoesNotReachTheRecordsOfTheFirst)
{
    const TempDir dir;
    dir.Write("a/matrix", "STEP {\nNAME=s\n");
    dir.Write("b/matrix", "NAME=x\n");
    CJOBXmatrix matrix;
    matrix.ParseODBOfMFC(dir.Path("a").c_str());
    matrix.ParseODBOfMFC(dir.Path("b").c_str());
    EXPECT_EQ(matrix.m_arrSteps[0]->m_sName, "s");
}

TEST(Matrix, Reader_MissingFileGivesZeroAndChangesNothing)
{
    const TempDir dir;
    CJOBXmatrix matrix;
    AddStep(matrix, 1, "s");
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 0);
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path("none").c_str()), 0);
    EXPECT_EQ(matrix.ParseODBOfMFC(""), 0);
    EXPECT_EQ(matrix.m_arrSteps.GetSize(), 1);
    EXPECT_EQ(matrix.m_arrLayers.GetSize(), 0);
}

TEST(Matrix, Reader_DirectoryInPlaceOfTheFileGivesZero)
{
    const TempDir dir;
    dir.MakeDir("matrix");
    CJOBXmatrix matrix;
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 0);
}

TEST(Matrix, Reader_EmptyFileGivesOneAndNothing)
{
    const auto matrix = ReadMatrix("");
    EXPECT_EQ(matrix->m_arrSteps.GetSize(), 0);
    EXPECT_EQ(matrix->m_arrLayers.GetSize(), 0);
}

TEST(Matrix, Reader_FileIsFoundInAnyLetterCase)
{
    const TempDir dir;
    dir.Write("MATRIX", "STEP {\nNAME=upper\n}\n");
    CJOBXmatrix matrix;
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 1);
    ASSERT_EQ(matrix.m_arrSteps.GetSize(), 1);
    EXPECT_EQ(matrix.m_arrSteps[0]->m_sName, "upper");
}

TEST(Matrix, Reader_ExactSpellingOfTheFileWins)
{
    const TempDir dir;
    dir.Write("MATRIX", "STEP {\nNAME=upper\n}\n");
    dir.Write("matrix", "STEP {\nNAME=exact\n}\n");
    if (std::filesystem::equivalent(dir.Path("MATRIX"), dir.Path("matrix")))
        GTEST_SKIP() << "this file system does not tell letter case apart";
    CJOBXmatrix matrix;
    EXPECT_EQ(matrix.ParseODBOfMFC(dir.Path().c_str()), 1);
    EXPECT_EQ(matrix.m_arrSteps[0]->m_sName, "exact");
}

TEST(Matrix, Reader_LineEndsMayBeCrLfAndTheLastOneMayMiss)
{
    const std::string lines[] = {"STEP {", "COL=2", "NAME=s", "}", "", "LAYER {", "ROW=3", "NAME=l"};
    for (const char* const lineEnd : {"\n", "\r\n"})
        for (const bool ended : {true, false})
        {
            std::string bytes;
            for (const std::string& line : lines)
                bytes += (bytes.empty() ? "" : lineEnd) + line;
            const auto matrix = ReadMatrix(bytes + (ended ? lineEnd : ""));
            ASSERT_EQ(matrix->m_arrSteps.GetSize(), 1);
            EXPECT_EQ(matrix->m_arrSteps[0]->m_nColumn, 2);
            EXPECT_EQ(matrix->m_arrSteps[0]->m_sName, "s");
            ASSERT_EQ(matrix->m_arrLayers.GetSize(), 1);
            EXPECT_EQ(matrix->m_arrLayers[0]->m_nRow, 3);
            EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "l");
        }
}

TEST(Matrix, Reader_NulEndsTheTextOfItsLine)
{
    const auto matrix = ReadMatrix("LAYER {\nNAME=a\0b\nTYPE=t\n\0POLARITY=p\n"s);
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "a");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sType, "t");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sPolarity, "");
}

TEST(Matrix, Reader_EightBitBytesAreNoWhiteSpaceAndPassUnchanged)
{
    const auto matrix = ReadLayer("NAME=\xA0n\x85\nTYPE=\xE4\xF6");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sName, "\xA0n\x85");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sType, "\xE4\xF6");
}

TEST(Matrix, Reader_EveryBeginningOfAFileGivesTheBlocksBegunInIt)
{
    const std::string whole = FileBytes(TestDataDir() + "/job/matrix/in/matrix");
    ASSERT_GT(whole.size(), 100U);
    const std::regex stepHead("^\\s*step", std::regex::icase);
    const std::regex layerHead("^\\s*layer", std::regex::icase);
    for (std::size_t size = 0; size <= whole.size(); ++size)
    {
        const std::string bytes = whole.substr(0, size);
        int steps = 0;
        int layers = 0;
        std::istringstream lines(bytes);
        for (std::string line; std::getline(lines, line);)
        {
            steps += std::regex_search(line, stepHead) ? 1 : 0;
            layers += std::regex_search(line, layerHead) ? 1 : 0;
        }
        const auto matrix = ReadMatrix(bytes);
        ASSERT_EQ(matrix->m_arrSteps.GetSize(), steps) << size;
        ASSERT_EQ(matrix->m_arrLayers.GetSize(), layers) << size;
    }
}

TEST(Matrix, Reader_ExhaustedMemoryLeavesAsTheFrameworksException)
{
    JOBX_REQUIRE_FAILING_ALLOCATION();
    const TempDir dir;
    dir.Write("matrix", "STEP {\nNAME=a step with a long name\n}\nLAYER {\nNAME=a layer with a long name\n}\n");
    const CString path = dir.Path().c_str();
    EXPECT_GT(CountFailedAllocations(
                  [&]
                  {
                      CJOBXmatrix matrix;
                      matrix.ParseODBOfMFC(path);
                      EXPECT_EQ(matrix.m_arrLayers.GetSize(), 1);
                  }),
              1);
}

TEST(Matrix, Writer_WritesTheWholeFile)
{
    const TempDir dir;
    CJOBXmatrix matrix;
    ASSERT_EQ(matrix.ParseODBOfMFC((TestDataDir() + "/job/matrix/in").c_str()), 1);
    matrix.WriteODBData(dir.Path().c_str());
    ExpectSameFolder(dir.Path(), TestDataDir() + "/job/matrix/golden");
}

TEST(Matrix, Writer_StepBlockHasNoLineEndOfItsOwn)
{
    CJOBXmatrixStep step;
    step.m_nColumn = -7;
    step.m_sName = "PCB";
    EXPECT_EQ(WrittenText([&](FILE* file) { step.WriteODBData(file); }), "\nSTEP {\n    COL=-7\n    NAME=PCB\n}");
}

TEST(Matrix, Writer_LayerBlockHasAllTenKeysInOrder)
{
    CJOBXmatrixLayer layer;
    EXPECT_EQ(WrittenText([&](FILE* file) { layer.WriteODBData(file); }),
              "\nLAYER {\n    ROW=0\n    CONTEXT=\n    TYPE=\n    NAME=\n    POLARITY=\n    START_NAME=\n"
              "    END_NAME=\n    OLD_NAME=\n    ADD_TYPE=\n    COLOR=0\n}");
    layer.m_nRow = 3;
    for (const auto& [key, member] : kLayerTexts)
        layer.*member = ("v" + key).c_str();
    EXPECT_EQ(WrittenText([&](FILE* file) { layer.WriteODBData(file); }),
              "\nLAYER {\n    ROW=3\n    CONTEXT=vCONTEXT\n    TYPE=vTYPE\n    NAME=vNAME\n    POLARITY=vPOLARITY\n"
              "    START_NAME=vSTART_NAME\n    END_NAME=vEND_NAME\n    OLD_NAME=vOLD_NAME\n    ADD_TYPE=vADD_TYPE\n"
              "    COLOR=vCOLOR\n}");
}

TEST(Matrix, Writer_ListsEndEachBlockByALineEndAndPassOverNull)
{
    CJOBXmatrix matrix;
    AddStep(matrix, 1, "a");
    matrix.m_arrSteps.Add(nullptr);
    AddStep(matrix, 2, "b");
    EXPECT_EQ(WrittenText([&](FILE* file) { matrix.m_arrSteps.WriteODBData(file); }),
              "\nSTEP {\n    COL=1\n    NAME=a\n}\n\nSTEP {\n    COL=2\n    NAME=b\n}\n");
    AddLayer(matrix, "l");
    matrix.m_arrLayers.Add(nullptr);
    const std::string one = WrittenText([&](FILE* file) { matrix.m_arrLayers[0]->WriteODBData(file); });
    EXPECT_EQ(WrittenText([&](FILE* file) { matrix.m_arrLayers.WriteODBData(file); }), one + "\n");
}

TEST(Matrix, Writer_NullFileWritesNothing)
{
    CJOBXmatrix matrix;
    AddStep(matrix, 1, "a");
    AddLayer(matrix, "l");
    matrix.m_arrSteps.WriteODBData(nullptr);
    matrix.m_arrSteps[0]->WriteODBData(nullptr);
    matrix.m_arrLayers.WriteODBData(nullptr);
    matrix.m_arrLayers[0]->WriteODBData(nullptr);
    EXPECT_EQ(matrix.m_arrLayers.GetSize(), 1);
}

TEST(Matrix, Writer_EmptyMatrixIsAnEmptyFile)
{
    const TempDir dir;
    CJOBXmatrix().WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("matrix/matrix"), "");
}

TEST(Matrix, Writer_ReplacesTheFolderWithEverythingInIt)
{
    const TempDir dir;
    dir.Write("matrix/old/deep", "x");
    dir.Write("matrix/matrix", "old");
    CJOBXmatrix matrix;
    AddStep(matrix, 1, "s");
    matrix.WriteODBData(dir.Path().c_str());
    EXPECT_FALSE(dir.Exists("matrix/old"));
    EXPECT_EQ(dir.Read("matrix/matrix"), "\nSTEP {\n    COL=1\n    NAME=s\n}\n");
}

TEST(Matrix, Writer_ReplacesALinkNotWhatItPointsTo)
{
    const TempDir dir;
    dir.Write("elsewhere/keep", "x");
    dir.MakeDir("job");
    std::filesystem::create_directory_symlink(dir.Path("elsewhere"), dir.Path("job/matrix"));
    CJOBXmatrix().WriteODBData(dir.Path("job").c_str());
    EXPECT_EQ(dir.Read("elsewhere/keep"), "x");
    EXPECT_FALSE(dir.Exists("elsewhere/matrix"));
    EXPECT_FALSE(std::filesystem::is_symlink(dir.Path("job/matrix")));
    EXPECT_TRUE(dir.Exists("job/matrix/matrix"));
}

TEST(Matrix, Writer_MissingJobFolderIsNotMade)
{
    const TempDir dir;
    CJOBXmatrix().WriteODBData(dir.Path("none").c_str());
    EXPECT_FALSE(dir.Exists("none"));
}

TEST(Matrix, Writer_FileInPlaceOfTheFolderStays)
{
    const TempDir dir;
    dir.Write("matrix", "a file");
    CJOBXmatrix().WriteODBData(dir.Path().c_str());
    EXPECT_EQ(dir.Read("matrix"), "a file");
}

TEST(Matrix, Writer_WhatWasWrittenReadsBackAndWritesTheSameBytes)
{
    const TempDir dir;
    dir.Write("in/matrix", "STEP {\n    COL=1\n    NAME=pcb\n}\nLAYER {\n ROW=1\n CONTEXT=BOARD\n NAME=TOP\n}\n"
                           "LAYER {\n ROW=2\n TYPE=SIGNAL\n NAME=\xE4\n COLOR=7\n}\n");
    CJOBXmatrix first;
    first.ParseODBOfMFC(dir.Path("in").c_str());
    dir.MakeDir("a");
    first.WriteODBData(dir.Path("a").c_str());
    CJOBXmatrix second;
    EXPECT_EQ(second.ParseODBOfMFC(dir.Path("a/matrix").c_str()), 1);
    ASSERT_EQ(second.m_arrSteps.GetSize(), 1);
    EXPECT_EQ(second.m_arrSteps[0]->m_sName, "pcb");
    ASSERT_EQ(second.m_arrLayers.GetSize(), 2);
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(second.m_arrLayers[i]->m_nRow, first.m_arrLayers[i]->m_nRow);
        for (const auto& [key, member] : kLayerTexts)
            EXPECT_EQ(second.m_arrLayers[i]->*member, first.m_arrLayers[i]->*member) << key;
    }
    EXPECT_EQ(second.m_arrLayers[0]->m_sColor, "0");
    dir.MakeDir("b");
    second.WriteODBData(dir.Path("b").c_str());
    EXPECT_EQ(dir.Read("a/matrix/matrix"), dir.Read("b/matrix/matrix"));
}

TEST(Matrix, TopAndBottomAreTheFirstAndLastCopperLayers)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "MASK", "SOLDER_MASK");
    AddLayer(matrix, "TOP");
    AddLayer(matrix, "INNER", "POWER_GROUND");
    AddLayer(matrix, "BOTTOM");
    AddLayer(matrix, "DRL", "DRILL");
    EXPECT_EQ(matrix.GetTopLayerName(), "TOP");
    EXPECT_EQ(matrix.GetBottomLayerName(), "BOTTOM");
}

TEST(Matrix, TheOnlyCopperLayerIsTopAndBottom)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "ONE");
    AddLayer(matrix, "MASK", "SOLDER_MASK");
    EXPECT_EQ(matrix.GetTopLayerName(), "ONE");
    EXPECT_EQ(matrix.GetBottomLayerName(), "ONE");
}

TEST(Matrix, PowerLayerOfAnyContextCountsAsCopper)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "P1", "POWER_GROUND", "MISC");
    AddLayer(matrix, "TOP");
    AddLayer(matrix, "P2", "POWER_GROUND", "");
    EXPECT_EQ(matrix.GetTopLayerName(), "P1");
    EXPECT_EQ(matrix.GetBottomLayerName(), "P2");
}

TEST(Matrix, SignalLayerOffTheBoardIsNoCopper)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "S", "SIGNAL", "MISC");
    EXPECT_EQ(matrix.GetTopLayerName(), "");
    EXPECT_EQ(matrix.GetBottomLayerName(), "");
}

TEST(Matrix, LowerCaseContextIsKeptAndNeverTopOrBottom)
{
    const auto matrix = ReadLayer("CONTEXT=board\nTYPE=SIGNAL\nNAME=S");
    EXPECT_EQ(matrix->m_arrLayers[0]->m_sContext, "board");
    EXPECT_EQ(matrix->GetTopLayerName(), "");
    EXPECT_EQ(matrix->GetBottomLayerName(), "");
    CJOBXmatrix lowerTypes;
    AddLayer(lowerTypes, "S", "signal");
    AddLayer(lowerTypes, "P", "Power_Ground");
    EXPECT_EQ(lowerTypes.GetTopLayerName(), "");
}

TEST(Matrix, TopAndBottomOfAnEmptyMatrixAreEmpty)
{
    CJOBXmatrix matrix;
    EXPECT_EQ(matrix.GetTopLayerName(), "");
    EXPECT_EQ(matrix.GetBottomLayerName(), "");
    matrix.m_arrLayers.Add(nullptr);
    EXPECT_EQ(matrix.GetTopLayerName(), "");
    EXPECT_EQ(matrix.GetBottomLayerName(), "");
}

TEST(Matrix, LayerTypeIsFoundByIndexAndABadIndexRaises)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "A", "DRILL");
    AddLayer(matrix, "B", "ROUT");
    EXPECT_EQ(matrix.sGetMatrixLayerType(0), "DRILL");
    EXPECT_EQ(matrix.sGetMatrixLayerType(1), "ROUT");
    for (const int bad : {-1, 2, 2147483647})
        EXPECT_THROW(matrix.sGetMatrixLayerType(bad), CInvalidArgException*) << bad;
}

TEST(Matrix, UpperCasingLookUpChangesTheNameAndFindsUpperCaseOnly)
{
    CJOBXmatrix matrix;
    matrix.m_arrLayers.Add(nullptr);
    AddLayer(matrix, "Top");
    CString name = "top";
    EXPECT_EQ(matrix.pGetMatrixLayerFromName(name), nullptr);
    EXPECT_EQ(name, "TOP");
    CJOBXmatrixLayer& upper = AddLayer(matrix, "TOP");
    AddLayer(matrix, "TOP");
    name = "top";
    EXPECT_EQ(matrix.pGetMatrixLayerFromName(name), &upper);
    EXPECT_EQ(name, "TOP");
}

TEST(Matrix, CaseIgnoringLookUpFindsBothAndTheFirst)
{
    CJOBXmatrix matrix;
    matrix.m_arrLayers.Add(nullptr);
    CJOBXmatrixLayer& mixed = AddLayer(matrix, "Top");
    CJOBXmatrixLayer& upper = AddLayer(matrix, "BOT");
    AddLayer(matrix, "BOT");
    EXPECT_EQ(matrix.GetMatrixLayerFromName("top"), &mixed);
    EXPECT_EQ(matrix.GetMatrixLayerFromName("bot"), &upper);
    EXPECT_EQ(matrix.GetMatrixLayerFromName("to"), nullptr);
    EXPECT_EQ(matrix.m_arrLayers.GetMatrixLayer("tOP"), &mixed);
    EXPECT_EQ(matrix.m_arrLayers.GetMatrixLayer("none"), nullptr);
}

TEST(Matrix, LookUpsFoldAsciiLettersOnly)
{
    CJOBXmatrix matrix;
    AddLayer(matrix, "\xC4");
    EXPECT_EQ(matrix.GetMatrixLayerFromName("\xE4"), nullptr);
    EXPECT_NE(matrix.GetMatrixLayerFromName("\xC4"), nullptr);
}

TEST(Matrix, DrillLayerIsFoundInAnyLetterCaseButOnlyOfTheExactType)
{
    CJOBXmatrixLayerArray layers;
    layers.Add(nullptr);
    AddLayer(layers, "D1", "DRILL");
    AddLayer(layers, "D2", "drill");
    EXPECT_EQ(layers.IsDrillLayer("d1"), 1);
    EXPECT_EQ(layers.IsDrillLayer("D1"), 1);
    EXPECT_EQ(layers.IsDrillLayer("d2"), 0);
    EXPECT_EQ(layers.IsDrillLayer("d3"), 0);
}

TEST(Matrix, DrillSearchGoesOnPastALayerOfTheSameName)
{
    CJOBXmatrixLayerArray layers;
    AddLayer(layers, "D", "ROUT");
    AddLayer(layers, "d", "DRILL");
    EXPECT_EQ(layers.IsDrillLayer("D"), 1);
}

TEST(Matrix, SettersGiveEveryLayerTheSameValue)
{
    CJOBXmatrixLayerArray layers;
    AddLayer(layers, "a");
    layers.Add(nullptr);
    AddLayer(layers, "b");
    layers.SetODBmatrixLayerName("n");
    layers.SetODBmatrixLayerPolarity("p");
    layers.SetODBmatrixLayerType("t");
    layers.SetODBmatrixLayerContext("c");
    layers.SetODBmatrixLayerRow(5);
    for (const int i : {0, 2})
    {
        EXPECT_EQ(layers[i]->m_sName, "n");
        EXPECT_EQ(layers[i]->m_sPolarity, "p");
        EXPECT_EQ(layers[i]->m_sType, "t");
        EXPECT_EQ(layers[i]->m_sContext, "c");
        EXPECT_EQ(layers[i]->m_nRow, 5 + i);
    }
}

TEST(Matrix, SetterGivesEveryStepTheSameName)
{
    CJOBXmatrix matrix;
    AddStep(matrix, 1, "a");
    matrix.m_arrSteps.Add(nullptr);
    AddStep(matrix, 2, "b");
    matrix.m_arrSteps.SetODBmatrixStepArrayName("s");
    EXPECT_EQ(matrix.m_arrSteps[0]->m_sName, "s");
    EXPECT_EQ(matrix.m_arrSteps[2]->m_sName, "s");
    EXPECT_EQ(matrix.m_arrSteps[2]->m_nColumn, 2);
}

TEST(Matrix, RealJobs_EveryLayerIsReadAsItsBlockSays)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    int read = 0;
    for (const auto& job : std::filesystem::directory_iterator(jobs))
    {
        const std::string folder = (job.path() / "matrix").string();
        if (!std::filesystem::exists(folder + "/matrix"))
            continue;
        const std::string bytes = FileBytes(folder + "/matrix");
        CJOBXmatrix matrix;
        ASSERT_EQ(matrix.ParseODBOfMFC(folder.c_str()), 1);
        // Blocks and their keys, taken apart by other means.
        const std::regex blocks(R"((STEP|LAYER)\s*\{([^}]*)\})");
        int steps = 0;
        int layers = 0;
        for (std::sregex_iterator block(bytes.begin(), bytes.end(), blocks), end; block != end; ++block)
        {
            const std::string body = (*block)[2];
            const auto valueOf = [&body](const std::string& key, const char* missing)
            {
                std::smatch found;
                const std::regex line("(^|\\n)\\s*" + key + "=([^\\r\\n]*)");
                return std::regex_search(body, found, line) ? found[2].str() : std::string(missing);
            };
            if ((*block)[1] == "STEP")
            {
                const CJOBXmatrixStep& step = *matrix.m_arrSteps[steps++];
                EXPECT_EQ(step.m_sName, valueOf("NAME", "").c_str());
                EXPECT_EQ(step.m_nColumn, std::stoi(valueOf("COL", "0")));
                continue;
            }
            const CJOBXmatrixLayer& layer = *matrix.m_arrLayers[layers++];
            EXPECT_EQ(layer.m_nRow, std::stoi(valueOf("ROW", "0")));
            for (const auto& [key, member] : kLayerTexts)
                EXPECT_EQ(layer.*member, valueOf(key, key == "COLOR" ? "0" : "").c_str()) << key << " of " << layers;
        }
        EXPECT_GT(steps, 0);
        EXPECT_GT(layers, 10);
        EXPECT_EQ(matrix.m_arrSteps.GetSize(), steps);
        EXPECT_EQ(matrix.m_arrLayers.GetSize(), layers);
        EXPECT_NE(matrix.GetTopLayerName(), "");
        EXPECT_NE(matrix.GetTopLayerName(), matrix.GetBottomLayerName());
        ++read;
    }
    if (read == 0)
        GTEST_SKIP() << "no job with a matrix in " << jobs;
}
