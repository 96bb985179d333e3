// The job root: what a read finds, in which order, and what it tells the host.
#include "JOBXCLSDLL.h"
#include "support/HostWindow.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace
{
using testing::Test;

std::string Matrix(const std::vector<std::string>& steps)
{
    std::string text;
    for (const std::string& step : steps)
        text += "STEP {\n COL=1\n NAME=" + step + "\n}\n";
    return text + "LAYER {\n ROW=1\n NAME=TOP\n}\n";
}

void WriteStep(const TempDir& dir, const std::string& name, const std::string& header = "")
{
    dir.Write("job/steps/" + name + "/profile", "S P 0\nOB 0 0 I\nOE\nSE\n");
    if (!header.empty())
        dir.Write("job/steps/" + name + "/stephdr", header);
}

std::string Repeat(const std::string& name)
{
    return "STEP-REPEAT {\nNAME=" + name + "\nNX=1\nNY=1\n}\n";
}

std::string StepNames(const CJOBX& job)
{
    std::string names;
    for (__int64 i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
        names += std::string(i == 0 ? "" : " ") + job.m_pSteps->m_arrSteps.GetAt(i)->m_sName.GetString();
    return names;
}

std::string SymbolNames(const CJOBX& job, const std::string& below)
{
    std::string names;
    for (__int64 i = 0; i < job.m_pSpecialSymbols->GetSize(); ++i)
    {
        std::string name = job.m_pSpecialSymbols->GetAt(i)->m_sName.GetString();
        if (name.rfind(below, 0) == 0)
            name.erase(0, below.size());
        names += (i == 0 ? "" : " ") + name;
    }
    return names;
}

// The compressed form of a short text, nine bits a code.
std::string Compressed(const std::string& text)
{
    std::string packed = "\x1F\x9D\x90";
    unsigned bits = 0;
    int count = 0;
    for (const char c : text)
    {
        bits |= static_cast<unsigned>(static_cast<unsigned char>(c)) << count;
        for (count += 9; count >= 8; count -= 8, bits >>= 8)
            packed += static_cast<char>(bits & 0xFF);
    }
    return packed + static_cast<char>(bits);
}

CString JobPath(const TempDir& dir)
{
    return dir.Path("job").c_str();
}

// Each member of a shallow copy, none of which may have the value of a new object.
void ExpectSameParts(const CJOBX& copy, const CJOBX& source)
{
    EXPECT_EQ(copy.m_nVersionMajor, 7);
    EXPECT_EQ(copy.m_nVersionMinor, 8);
    EXPECT_EQ(copy.m_sName, "name");
    EXPECT_EQ(copy.m_pFonts, source.m_pFonts);
    EXPECT_EQ(copy.m_pMatrix, source.m_pMatrix);
    EXPECT_EQ(copy.m_pMisc, source.m_pMisc);
    EXPECT_EQ(copy.m_pSteps, source.m_pSteps);
    EXPECT_EQ(copy.m_pSpecialSymbols, source.m_pSpecialSymbols);
    EXPECT_EQ(copy.m_pSysAttrs, source.m_pSysAttrs);
    EXPECT_NE(copy.m_pProgress, nullptr);
    EXPECT_EQ(copy.m_pProgress, source.m_pProgress);
    EXPECT_NE(copy.m_pStatus, nullptr);
    EXPECT_EQ(copy.m_pStatus, source.m_pStatus);
}

void SetOwnMembers(CJOBX& job, CWnd& progress, CWnd& status)
{
    job.SetODBProjectName("name");
    job.m_nVersionMajor = 7;
    job.m_nVersionMinor = 8;
    job.m_pProgress = &progress;
    job.m_pStatus = &status;
}
} // namespace

TEST(Job, IsUsableAtOnce)
{
    CJOBX job;
    EXPECT_EQ(job.m_nVersionMajor, 6);
    EXPECT_EQ(job.m_nVersionMinor, 0);
    EXPECT_EQ(job.m_sName, "");
    EXPECT_EQ(job.m_pFonts->m_dXSize, 0.302);
    EXPECT_EQ(job.m_pFonts->m_dYSize, 0.302);
    EXPECT_EQ(job.m_pFonts->m_dOffset, 0.0);
    EXPECT_EQ(job.m_pMatrix->m_arrSteps.GetSize(), 0);
    EXPECT_EQ(job.m_pMisc->m_nODBVersionMajor, 6);
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 0);
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 0);
    EXPECT_EQ(job.m_pSysAttrs->GetSize(), 0);
    EXPECT_EQ(job.m_pProgress, nullptr);
    EXPECT_EQ(job.m_pStatus, nullptr);
    job.SetODBProjectName("name");
    EXPECT_EQ(job.m_sName, "name");
}

TEST(Job, CopySharesEverythingWithItsSource)
{
    CJOBX job;
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    HostWindow status("text", calls);
    SetOwnMembers(job, progress, status);
    // Only one of the two may be destroyed: the copy is made in memory of its own and never ends.
    alignas(CJOBX) std::byte memory[sizeof(CJOBX)];
    const CJOBX* const copy = new (memory) CJOBX(job);
    ExpectSameParts(*copy, job);
    const_cast<CJOBX*>(copy)->m_sName = CString();
}

TEST(Job, AssignmentSharesEverythingWithItsSource)
{
    const CJOBX before;
    CJOBX job;
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    HostWindow status("text", calls);
    SetOwnMembers(job, progress, status);
    alignas(CJOBX) std::byte memory[sizeof(CJOBX)]; // as above
    CJOBX* const assigned = new (memory) CJOBX(before);
    *assigned = job;
    ExpectSameParts(*assigned, job);
    assigned->m_sName = CString();
}

TEST(Job, ConstructorLoadsAFontOfTheCurrentDirectory)
{
    const TempDir dir;
    dir.Write("standard", "XSIZE 0.5\nCHAR A\nLINE 0 0 1 1 P R 0.01\nECHAR\n");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(dir.Path());
    {
        const CJOBX job;
        EXPECT_EQ(job.m_pFonts->m_dXSize, 0.5);
        EXPECT_EQ(job.m_pFonts->m_dYSize, 0.302);
    }
    std::filesystem::current_path(before);
    EXPECT_EQ(CJOBX().m_pFonts->m_dXSize, 0.302);
}

TEST(Job, WithoutStepsShowsTheMessageAndLeavesTheMatrixAlone)
{
    const MessageBoxes boxes;
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"pcb"}));
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 0);
    EXPECT_EQ(MessageBoxes::Shown(), std::vector<std::string>{"WARNING|There is no ODB Data!|48"});
    EXPECT_EQ(job.m_pMatrix->m_arrSteps.GetSize(), 0);
    EXPECT_EQ(job.m_sName, "job");
}

TEST(Job, WithoutMatrixShowsTheMessage)
{
    const MessageBoxes boxes;
    const TempDir dir;
    WriteStep(dir, "pcb");
    CJOBX job;
    CStringArray names;
    names.Add("kept");
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 0);
    EXPECT_EQ(job.ParseMatrixInODBOfMFC(JobPath(dir), names), 0);
    dir.MakeDir("job/matrix");
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 0);
    EXPECT_EQ(job.ParseMatrixInODBOfMFC(JobPath(dir), names), 0);
    EXPECT_EQ(job.ParseODBOfMFC(dir.Path("nowhere").c_str()), 0);
    EXPECT_EQ(MessageBoxes::Shown().size(), 5U);
    EXPECT_EQ(names.GetSize(), 1);
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 0);
    EXPECT_EQ(job.m_sName, "nowhere");
}

TEST(Job, ReadsTheStepsOfTheMatrixInItsOrder)
{
    const MessageBoxes boxes;
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"B", "none", "A", "..", ".", "", "x/y"}));
    WriteStep(dir, "a");
    WriteStep(dir, "b");
    dir.Write("job/misc/info", "JOB_NAME=x\nODB_VERSION_MAJOR=8\n");
    dir.Write("job/fonts/standard", "XSIZE 0.25\n");
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(StepNames(job), "B A"); // as the matrix spells them
    EXPECT_EQ(job.m_pMisc->m_nODBVersionMajor, 8);
    EXPECT_EQ(job.m_nVersionMajor, 6);
    EXPECT_EQ(job.m_pFonts->m_dXSize, 0.25);
    EXPECT_TRUE(MessageBoxes::Shown().empty());
}

TEST(Job, SecondReadAppends)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a"}));
    WriteStep(dir, "a");
    dir.Write("job/symbols/s/features", "");
    CJOBX job;
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(StepNames(job), "a a a"); // the matrix too has the step twice by then
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 2);
}

TEST(Job, ChosenStepsAreReadWithoutTheMatrix)
{
    const MessageBoxes boxes;
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a", "b"}));
    WriteStep(dir, "a");
    WriteStep(dir, "b");
    CJOBX job;
    CStringArray names;
    names.Add("old");
    EXPECT_EQ(job.ParseMatrixInODBOfMFC(JobPath(dir), names), 1);
    ASSERT_EQ(names.GetSize(), 2);
    EXPECT_EQ(names[1], "b");
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 0);
    names.RemoveAt(0);
    EXPECT_EQ(job.ParseODBOfMFC(JobPath(dir), names), 1);
    EXPECT_EQ(StepNames(job), "b");
    EXPECT_EQ(job.m_pMatrix->m_arrSteps.GetSize(), 2);
    CJOBX none;
    CStringArray empty;
    EXPECT_EQ(none.ParseODBOfMFC(dir.Path("nowhere").c_str(), empty), 1);
    EXPECT_EQ(none.m_pMatrix->m_arrSteps.GetSize(), 0);
    EXPECT_TRUE(MessageBoxes::Shown().empty());
}

TEST(Job, NamesAreFoundInAnyLetterCase)
{
    const TempDir dir;
    dir.Write("job/MATRIX/Matrix", Matrix({"PCB"}));
    dir.Write("job/Steps/pcb/PROFILE", "L 0 0 0 0 0 P 0\n");
    dir.Write("job/Steps/pcb/Layers/Top/FEATURES", "P 0 0 0 P 0 0\n");
    dir.Write("job/Steps/pcb/Layers/Top/Components", "# CMP 0\n");
    dir.Write("job/Steps/pcb/EDA/DATA", "# NET 0\nNET A\n");
    dir.Write("job/Steps/pcb/Netlists/CadNet/NetList", "$0 A\n");
    dir.Write("job/Steps/pcb/StepHdr", "X_DATUM=3\n");
    dir.Write("job/SYMBOLS/S/Features", "");
    dir.Write("job/Fonts/Standard", "XSIZE 0.5\n");
    dir.Write("job/MISC/Info", "JOB_NAME=x\n");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    ASSERT_EQ(StepNames(job), "PCB");
    const CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.GetAt(0);
    EXPECT_EQ(step.GetProfile()->GetFeatures()->GetSize(), 1);
    ASSERT_EQ(step.m_arrLayers.GetSize(), 1);
    EXPECT_EQ(step.m_arrLayers.GetAt(0)->m_sName, "Top");
    ASSERT_EQ(step.m_arrComponents.GetSize(), 1);
    EXPECT_EQ(step.m_arrComponents.GetAt(0)->m_sRelativePath, "Top/components");
    EXPECT_EQ(step.GetEda()->m_pData->m_arrNets.GetSize(), 1);
    EXPECT_EQ(step.GetNetlist()->m_arrNets.GetSize(), 1);
    EXPECT_EQ(step.GetHeader()->m_ptDatum.GetX(), 3);
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 1);
    EXPECT_EQ(job.m_pFonts->m_dXSize, 0.5);
    EXPECT_EQ(job.m_pMisc->m_sJobName, "x");
}

TEST(Job, ExactSpellingWinsOverAnother)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"pcb", "Pcb"}));
    dir.Write("job/steps/PCB/profile", "L\n");
    dir.Write("job/steps/pcb/profile", "L\nL\n");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetAt(0)->GetProfile()->GetFeatures()->GetSize(), 2);
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetAt(1)->GetProfile()->GetFeatures()->GetSize(), 1); // PCB sorts first
}

TEST(Job, SymbolFilesAreToldByTheirPath)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    dir.Write("job/symbols/b/features", "P 0 0 0 P 0 0\n");
    dir.Write("job/symbols/a/FeatUres", "");
    dir.Write("job/symbols/a/features.sum", "");
    dir.Write("job/symbols/a/.features.SUM", "");
    dir.Write("job/symbols/a/attrlist", "");
    dir.Write("job/symbols/my_features/attrlist", ""); // the word may stand anywhere in the path
    dir.MakeDir("job/symbols/features");
    CJOBX whole;
    ASSERT_EQ(whole.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(SymbolNames(whole, dir.Path("job/symbols")), "/a /b /my_features");
    EXPECT_EQ(whole.m_pSpecialSymbols->GetAt(1)->GetLayer()->GetFeatures()->GetSize(), 1);
    CJOBX chosen;
    CStringArray none;
    ASSERT_EQ(chosen.ParseODBOfMFC(JobPath(dir), none), 1);
    EXPECT_EQ(SymbolNames(chosen, ""), "a b my_features");
    EXPECT_EQ(chosen.m_pSpecialSymbols->GetAt(1)->m_sPath, dir.Path("job/symbols/b").c_str());
}

TEST(Job, WholeReadNamesASymbolByItsDirectoryPath)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    dir.Write("job/symbols/sym1/features", "");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    const CJOBXSpecialSymbol& symbol = *job.m_pSpecialSymbols->GetAt(0);
    EXPECT_EQ(symbol.m_sName, dir.Path("job/symbols/sym1").c_str());
    EXPECT_EQ(symbol.m_sName, symbol.m_sPath);
}

TEST(Job, CompressedSymbolIsDecompressedBesideItself)
{
    const TempDir dir;
    const std::string bytes = Compressed("P 1 2 0 P 0 0\n");
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    dir.Write("job/symbols/sym1/features.Z", bytes);
    dir.Write("job/symbols/sym2/FEATURES.z", bytes);
    dir.Write("job/symbols/sym3/features.Z", "no compressed file");
    dir.Write("job/symbols/sym4/features.Z", "damaged, but there is a plain one");
    dir.Write("job/symbols/sym4/features", "L\nL\n");
    CJOBX job;
    CStringArray none;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir), none), 1);
    EXPECT_EQ(SymbolNames(job, ""), "sym1 sym2 sym4 sym4");
    EXPECT_EQ(dir.Read("job/symbols/sym1/features"), "P 1 2 0 P 0 0\n");
    EXPECT_TRUE(dir.Exists("job/symbols/sym1/features.Z"));
    EXPECT_FALSE(dir.Exists("job/symbols/sym3/features"));
    const auto* const pad =
        dynamic_cast<const CJOBXlayObjPad*>(job.m_pSpecialSymbols->GetAt(1)->GetLayer()->GetFeatures()->GetAt(0));
    ASSERT_NE(pad, nullptr);
    EXPECT_EQ(pad->GetCenterPoint(), CPointD(1, 2));
    EXPECT_EQ(job.m_pSpecialSymbols->GetAt(3)->GetLayer()->GetFeatures()->GetSize(), 2);
}

TEST(Job, CompressedSymbolIsDecompressedBeforeThePlainOneBesideItIsRead)
{
    const TempDir dir;
    dir.MakeDir("job/steps");
    dir.Write("job/symbols/both/features", "P 9 9 0 P 0 0\nP 9 9 0 P 0 0\n");
    dir.Write("job/symbols/both/features.Z", Compressed("P 1 2 0 P 0 0\n"));
    CJOBX job;
    CStringArray none;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir), none), 1);
    EXPECT_EQ(SymbolNames(job, ""), "both both");
    for (__int64 i = 0; i < 2; ++i)
        EXPECT_EQ(job.m_pSpecialSymbols->GetAt(i)->GetLayer()->GetFeatures()->GetSize(), 1) << i;
}

TEST(Job, SymbolsStandInTheOrderOfTheListing)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    std::string expected;
    for (int i = 100; i < 300; ++i)
    {
        dir.Write("job/symbols/s" + std::to_string(i) + "/features",
                  std::string(static_cast<std::size_t>(300 - i), '\n'));
        expected += (i == 100 ? "s" : " s") + std::to_string(i);
    }
    for (int run = 0; run < 3; ++run)
    {
        CJOBX job;
        CStringArray none;
        job.ParseODBOfMFC(JobPath(dir), none);
        EXPECT_EQ(SymbolNames(job, ""), expected);
    }
}

TEST(Job, ReportsProgressInOrder)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a", "b"}));
    WriteStep(dir, "a");
    dir.Write("job/steps/b/profile", "");
    dir.Write("job/steps/b/eda/data", "");
    dir.Write("job/steps/b/netlists/cadnet/netlist", "");
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    HostWindow status("text", calls);
    CJOBX job;
    job.m_pProgress = &progress;
    job.m_pStatus = &status;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    const std::vector<std::string> expected = {
        "bar: SendMessage 1026 20 0",
        "bar: UpdateData 0",
        "bar: SetFocus",
        "text: SetWindowText Complete symbol file reading.",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete profile file reading",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete layers file reading",
        "text: RedrawWindow 11 261",
        "bar: SendMessage 1026 20 0",
        "bar: SetFocus",
        "bar: UpdateData 0",
        "text: SetWindowText Complete a reading.",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete profile file reading",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete layers file reading",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete eda file reading",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete netlists file reading",
        "text: RedrawWindow 11 261",
        "bar: SendMessage 1026 100 0",
        "bar: SetFocus",
        "bar: UpdateData 0",
        "text: SetWindowText Complete b reading.",
        "text: RedrawWindow 11 261",
    };
    EXPECT_EQ(calls, expected);
}

TEST(Job, BarStandsAtTwentyUntilTheLastStep)
{
    const TempDir dir;
    std::vector<std::string> names;
    for (int i = 0; i < 10; ++i)
    {
        names.push_back("s" + std::to_string(i));
        WriteStep(dir, names.back());
    }
    dir.Write("job/matrix/matrix", Matrix(names));
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    CJOBX job;
    job.m_pProgress = &progress; // without a status window only that window's calls are left out
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    std::vector<std::string> positions;
    for (const std::string& call : calls)
        if (call.find("SendMessage") != std::string::npos)
            positions.push_back(call.substr(22));
    const std::vector<std::string> expected = {"20 0", "20 0", "20 0", "20 0", "20 0", "20 0",
                                               "20 0", "20 0", "20 0", "20 0", "100 0"};
    EXPECT_EQ(positions, expected);
    EXPECT_EQ(calls.size(), 33U);
}

TEST(Job, StatusWindowAloneIsNotTold)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a"}));
    WriteStep(dir, "a");
    std::vector<std::string> calls;
    HostWindow status("text", calls);
    CJOBX job;
    job.m_pStatus = &status;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_TRUE(calls.empty());
}

TEST(Job, StepsHolderReportsToItsOwnWindows)
{
    const TempDir dir;
    WriteStep(dir, "a");
    std::vector<std::string> calls;
    HostWindow status("text", calls);
    HostWindow progress("bar", calls);
    CJOBXsteps steps;
    steps.m_pProgress = &progress;
    steps.m_pStatus = &status;
    CStringArray names;
    names.Add("a");
    steps.ParseODBOfMFC(dir.Path("job/steps").c_str(), names);
    const std::vector<std::string> expected = {
        "text: SetWindowText Complete profile file reading",
        "text: RedrawWindow 11 261",
        "text: SetWindowText Complete layers file reading",
        "text: RedrawWindow 11 261",
        "bar: SendMessage 1026 100 0",
        "bar: SetFocus",
        "bar: UpdateData 0",
        "text: SetWindowText Complete a reading.",
        "text: RedrawWindow 11 261",
    };
    EXPECT_EQ(calls, expected);
}

TEST(Job, LaterReadWithoutWindowsReportsToNone)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a"}));
    WriteStep(dir, "a");
    CJOBX job;
    std::vector<std::string> calls;
    {
        HostWindow progress("bar", calls);
        job.m_pProgress = &progress;
        ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    }
    calls.clear();
    job.m_pProgress = nullptr;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_TRUE(calls.empty());
}

TEST(Job, WindowsOfTheHostOnTheStepsStayWithoutAProgressWindow)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a"}));
    WriteStep(dir, "a");
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    HostWindow status("text", calls);
    CJOBX job;
    job.m_pSteps->m_pProgress = &progress;
    job.m_pSteps->m_pStatus = &status;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.m_pSteps->m_pProgress, &progress);
    EXPECT_EQ(job.m_pSteps->m_pStatus, &status);
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "text: SetWindowText Complete profile file reading");
    EXPECT_EQ(calls.back(), "text: RedrawWindow 11 261");
}

TEST(Job, WindowsThatTheReadHandedOverAreTakenBackByTheNextWithoutThem)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    std::vector<std::string> calls;
    HostWindow progress("bar", calls);
    HostWindow status("text", calls);
    HostWindow hosts("host", calls);
    CJOBX job;
    job.m_pProgress = &progress;
    job.m_pStatus = &status;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.m_pSteps->m_pProgress, &progress);
    EXPECT_EQ(job.m_pSteps->m_pStatus, &status);
    job.m_pSteps->m_pStatus = &hosts;
    job.m_pProgress = nullptr;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.m_pSteps->m_pProgress, nullptr);
    EXPECT_EQ(job.m_pSteps->m_pStatus, &hosts) << "the host set it";
}

TEST(Job, WindowsAreHandedOverAfterTheReportOfTheSymbols)
{
    class CLookingWindow : public HostWindow
    {
    public:
        using HostWindow::HostWindow;
        LRESULT SendMessageA(UINT /*message*/, WPARAM position, LPARAM /*lParam*/) override
        {
            if (m_seen.empty() && position == 20)
                m_seen.push_back(m_pSteps->m_pProgress);
            return 0;
        }
        CJOBXsteps* m_pSteps = nullptr;
        std::vector<const CWnd*> m_seen;
    };
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    CJOBX job;
    std::vector<std::string> calls;
    CLookingWindow window("bar", calls);
    window.m_pSteps = job.m_pSteps;
    job.m_pProgress = &window;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(window.m_seen, std::vector<const CWnd*>{nullptr});
    EXPECT_EQ(job.m_pSteps->m_pProgress, &window);
}

TEST(Job, PathsOfSymbolsAreSpelledAsTheLibrarySpellsThem)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({}));
    dir.MakeDir("job/steps");
    dir.Write("job/SYMBOLS/Round/FEATURES", "P 1 2 0 P 0 0\n");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    ASSERT_EQ(job.m_pSpecialSymbols->GetSize(), 1);
    const CJOBXSpecialSymbol& symbol = *job.m_pSpecialSymbols->GetAt(0);
    EXPECT_EQ(symbol.m_sPath, dir.Path("job/symbols/Round").c_str());
    EXPECT_EQ(symbol.m_sName, dir.Path("job/symbols/Round").c_str());
    EXPECT_EQ(symbol.GetLayer()->GetFeatures()->GetSize(), 1);
}

#if !defined(_WIN32)
TEST(Job, StepWithABackslashIsReadAndWrittenUnderThatName)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a\\b"}));
    WriteStep(dir, "a\\b");
    dir.MakeDir("out");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    ASSERT_EQ(StepNames(job), "a\\b");
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetAt(0)->GetProfile()->GetFeatures()->GetSize(), 1);
    job.WriteODBData(dir.Path("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("out/job/steps/a\\b/profile"));
}
#endif

TEST(Job, UnitConvert_ByASizeOfItsFontUsesTheValueGiven)
{
    CJOBX job;
    CJOBXstepObj& step = *job.m_pSteps->m_arrSteps.Own(std::make_unique<CJOBXstepObj>());
    CJOBXnetPt& point = *step.GetNetlist()->m_arrPts.Own(std::make_unique<CJOBXnetPt>());
    point.m_dWidth = 1.0;
    job.m_pFonts->m_dXSize = 3.0;
    job.UnitConvert(job.m_pFonts->m_dXSize);
    EXPECT_EQ(job.m_pFonts->m_dXSize, 9.0);
    EXPECT_EQ(point.m_dWidth, 3.0);
}

TEST(Job, RebuildPutsAPanelBeforeWhatItRepeats)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"pcb", "panel"}));
    WriteStep(dir, "pcb");
    WriteStep(dir, "panel", Repeat("PCB"));
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    CJOBXstepObj* const pcb = job.m_pSteps->m_arrSteps.GetAt(0);
    job.RebuildStepObj();
    EXPECT_EQ(StepNames(job), "panel pcb");
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetAt(1), pcb);
    job.RebuildStepObj();
    EXPECT_EQ(StepNames(job), "panel pcb");
}

TEST(Job, RebuildPutsAPanelToTheFrontWhenNothingPlacedRepeatsIt)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"sub", "panel", "pcb"}));
    WriteStep(dir, "sub", Repeat("pcb"));
    WriteStep(dir, "panel", Repeat("sub"));
    WriteStep(dir, "pcb");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    job.RebuildStepObj();
    EXPECT_EQ(StepNames(job), "panel sub pcb");
}

TEST(Job, RebuildInsertsRightAfterTheFirstThatRepeats)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"plain", "p1", "p2", "sub", "other"}));
    WriteStep(dir, "plain");
    WriteStep(dir, "p1", Repeat("x") + Repeat("Sub"));
    WriteStep(dir, "p2", Repeat("sub"));
    WriteStep(dir, "sub", Repeat("plain"));
    WriteStep(dir, "other", Repeat("other"));
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    job.RebuildStepObj();
    // p1 and p2 go to the front one after the other, sub behind the first placed step that repeats it.
    EXPECT_EQ(StepNames(job), "other p2 sub p1 plain");
}

TEST(Job, SymbolIsFoundByItsNameInUpperCase)
{
    CJOBX job;
    for (const char* name : {"Abc", "ABC", "d1"})
        job.m_pSpecialSymbols->Own(std::make_unique<CJOBXSpecialSymbol>())->m_sName = name;
    EXPECT_EQ(job.FindSpecialSymbolID("ABC"), 0);
    EXPECT_EQ(job.FindSpecialSymbolID("D1"), 2);
    EXPECT_EQ(job.FindSpecialSymbolID("d1"), -1);
    EXPECT_EQ(job.FindSpecialSymbolID("Abc"), -1);
    EXPECT_EQ(job.FindSpecialSymbolID(""), -1);
}

TEST(Job, NthColumnCountsFromOne)
{
    const CJOBX job;
    EXPECT_EQ(job.GetNthColumn(" A B ", 2), "B");
    EXPECT_EQ(job.GetNthColumn(" A B ", 0), "");
    EXPECT_EQ(job.GetNthColumn("A   B  C", 3), "C");
    EXPECT_EQ(job.GetNthColumn("A\tB C", 1), "A\tB");
    for (const int column : {3, -1})
    {
        bool raised = false;
        try
        {
            (void)job.GetNthColumn(" A B ", column);
        }
        catch (CInvalidArgException* exception)
        {
            exception->Delete();
            raised = true;
        }
        EXPECT_TRUE(raised) << column;
    }
}

TEST(Job, UnitChangeScalesFontStepsAndSymbolsOnly)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a"}));
    dir.Write("job/steps/a/profile", "P 1 2 0 P 0 0\n");
    dir.Write("job/steps/a/stephdr", "X_DATUM=1\n" + Repeat("a"));
    dir.Write("job/symbols/s/features", "P 1 2 0 P 0 0\n");
    dir.Write("job/fonts/standard", "XSIZE 1\nYSIZE 2\nOFFSET 3\nCHAR A\nLINE 1 2 3 4 P R 5\nECHAR\n");
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    job.UnitConvert(10);
    EXPECT_EQ(job.m_pFonts->m_dXSize, 10);
    EXPECT_EQ(job.m_pFonts->m_dYSize, 20);
    EXPECT_EQ(job.m_pFonts->m_dOffset, 30);
    const auto& profile = *job.m_pSteps->m_arrSteps.GetAt(0)->GetProfile()->GetFeatures();
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*profile.GetAt(0)).GetCenterPoint(), CPointD(10, 20));
    const auto& symbol = *job.m_pSpecialSymbols->GetAt(0)->GetLayer()->GetFeatures();
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*symbol.GetAt(0)).GetCenterPoint(), CPointD(10, 20));
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetAt(0)->GetHeader()->m_ptDatum.GetX(), 1);
}

TEST(Job, TwoHostThreadsReadAtOnce)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"a", "b"}));
    for (const char* step : {"a", "b"})
    {
        WriteStep(dir, step);
        for (int i = 0; i < 20; ++i)
            dir.Write(std::string("job/steps/") + step + "/layers/l" + std::to_string(i) + "/features",
                      "@0 .a\nL 0 0 1 1 0 P 0 ;0\nL 0 0 1 1 0 P 0 ;0\n");
    }
    const auto read = [&dir](int& layers)
    {
        CJOBX job;
        if (job.ParseODBOfMFC(JobPath(dir)) == 1)
            for (__int64 i = 0; i < job.m_pSteps->m_arrSteps.GetSize(); ++i)
                layers += static_cast<int>(job.m_pSteps->m_arrSteps.GetAt(i)->m_arrLayers.GetSize());
    };
    int first = 0;
    int second = 0;
    std::thread other(read, std::ref(second));
    read(first);
    other.join();
    EXPECT_EQ(first, 40);
    EXPECT_EQ(second, 40);
}

TEST(Job, ReadsTheSample)
{
    const TempDir dir;
    std::filesystem::copy(SamplesDir() + "/blinker", dir.Path("job"), std::filesystem::copy_options::recursive);
    CJOBX job;
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir)), 1);
    EXPECT_EQ(job.m_pSteps->m_arrSteps.GetSize(), 2);
    EXPECT_EQ(job.m_pSpecialSymbols->GetSize(), 2); // one of them stored compressed
    EXPECT_GT(job.m_pFonts->m_arrCharacters.GetSize(), 36);
}

TEST(Job, NullEntriesAreHarmless)
{
    const TempDir dir;
    dir.Write("job/matrix/matrix", Matrix({"array", "panel", "top"}));
    WriteStep(dir, "array");
    WriteStep(dir, "panel", Repeat("array"));
    WriteStep(dir, "top", Repeat("panel"));
    CJOBX job;
    job.m_pMatrix->m_arrSteps.Add(nullptr);
    CStringArray names;
    ASSERT_EQ(job.ParseMatrixInODBOfMFC(JobPath(dir), names), 1);
    EXPECT_EQ(names.GetSize(), 3);
    job.m_pSteps->m_arrSteps.Add(nullptr);
    ASSERT_EQ(job.ParseODBOfMFC(JobPath(dir), names), 1);
    job.m_pSteps->m_arrSteps.GetAt(2)->GetHeader()->m_arrStepRepeats.Add(nullptr);
    job.RebuildStepObj();
    job.m_pSteps->m_arrSteps.RemoveNullElement();
    EXPECT_EQ(StepNames(job), "top panel array");
    job.m_pSteps->m_arrSteps.Add(nullptr);
    job.m_pSpecialSymbols->Add(nullptr);
    job.m_pSpecialSymbols->Own(std::make_unique<CJOBXSpecialSymbol>())->m_sName = "SYM";
    EXPECT_EQ(job.FindSpecialSymbolID("SYM"), 1);
    EXPECT_EQ(job.FindSpecialSymbolID(""), -1);
    job.UnitConvert(2);
    job.WriteODBData(dir.MakeDir("out").c_str(), 1);
    EXPECT_TRUE(dir.Exists("out/job/steps/panel/profile"));
    EXPECT_TRUE(dir.Exists("out/job/SYM/features"));
}
