// jobx write: what it writes, what it refuses, and what is left after a failure.
#include "JOBXCLSDLL.h"
#include "RunProgram.h"
#include "support/CurrentDir.h"
#include "support/Golden.h"
#include "support/RaceDetector.h"
#include "support/SlowBuild.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace
{
constexpr const char* kFormerMatrix = "STEP {\nCOL=1\nNAME=FORMER\n}\n";

// Every entry below a directory by relative path: the bytes of a file, "/" for a directory, the target of a link.
std::map<std::string, std::string> TreeOf(const std::string& directory)
{
    std::map<std::string, std::string> tree;
    if (!fs::is_directory(directory))
        return tree;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
    {
        std::string& text = tree[entry.path().lexically_relative(directory).generic_string()];
        if (entry.is_symlink())
            text = "-> " + fs::read_symlink(entry.path()).string();
        else
            text = entry.is_directory() ? "/" : FileBytes(entry.path().string());
    }
    return tree;
}

// The names in a directory, those with a leading dot too.
std::vector<std::string> EntriesOf(const std::string& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

using Names = std::vector<std::string>;

// Compares what was written to `out` with a golden folder, its directories (empty ones too) as a list of their names.
void ExpectGolden(const TempDir& directory, const std::string& testCase)
{
    std::string list;
    for (const auto& [name, bytes] : TreeOf(directory.Path("out")))
        if (bytes == "/")
            list += name + "\n";
    directory.Write("out/directories.txt", list);
    ExpectSameFolder(directory.Path("out"), TestDataDir() + "/app/write/" + testCase + "/golden");
}

// Runs it in a directory of its own, so that no file named "standard" lies there unless a test puts it there.
ProgramResult RunWrite(const TempDir& directory, const std::string& arguments)
{
    const std::string here = directory.MakeDir("here");
    return RunShell("cd " + ShellWord(here) + "\nexec \"$JOBX\" write ../blinker -o ../out " + arguments);
}

void ExpectWritten(const TempDir& directory, const std::string& arguments, const std::string& testCase)
{
    CopySample(directory);
    const ProgramResult result = RunWrite(directory, "--quiet " + arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    ExpectGolden(directory, testCase);
}

// That code, that text in a line of standard error, nothing on standard output.
void ExpectRefusal(const ProgramResult& result, int exitCode, const std::string& text)
{
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr(text));
    for (const std::string& line : LinesOf(result.err))
        EXPECT_THAT(line, StartsWith("jobx: "));
}

// A former job of the name "job" in "out".
void MakeFormer(const TempDir& directory)
{
    directory.Write("out/job/matrix/matrix", kFormerMatrix);
    directory.Write("out/job/steps/old/profile", "former too");
    directory.MakeDir("out/job/input");
}

// A job whose writing takes a while: several layers of many lines.
std::string MakeLargeJob(const TempDir& directory)
{
    std::string features;
    for (int i = 0; i < 40000; ++i)
        features += "L " + std::to_string(i) + ".5 0.25 1.125 " + std::to_string(i) + " 0 P 0\n";
    const std::string job = MakeJob(directory, features);
    for (int i = 0; i < 8; ++i)
        directory.Write("job/steps/pcb/layers/l" + std::to_string(i) + "/features", features);
    return job;
}

bool IsRoot()
{
    return RunShell("test \"$(id -u)\" = 0").exitCode == 0;
}

// The program for a user who may not do everything, in a command line of the shell.
std::string AsOther()
{
    return IsRoot() ? "setpriv --reuid=65534 --regid=65534 --clear-groups \"$JOBX\" " : "\"$JOBX\" ";
}

void OpenToAll(const std::string& directory)
{
    fs::permissions(directory, fs::perms::all);
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        fs::permissions(entry.path(), fs::perms::all);
}

const std::string kNoStaging = "no directory of an unfinished write is left";
} // namespace

TEST(JobxWrite, WholeJobReadWithoutAFileNamedStandard)
{
    const TempDir directory;
    ExpectWritten(directory, "", "whole");
}

TEST(JobxWrite, WholeJobReadWithAFileNamedStandardInTheCurrentDirectory)
{
    const TempDir directory;
    directory.Write("here/standard", "XSIZE 0.25\nCHAR z\nLINE 0 0 0.1 0.2 P R 0.01\nECHAR\n");
    ExpectWritten(directory, "", "whole_with_font");
}

TEST(JobxWrite, ChosenStepsBringTheUserSymbols)
{
    const TempDir directory;
    ExpectWritten(directory, "--steps panel", "chosen_steps");
}

TEST(JobxWrite, WithoutEda)
{
    const TempDir directory;
    ExpectWritten(directory, "--no-eda", "no_eda");
}

TEST(JobxWrite, RebuiltSteps)
{
    const TempDir directory;
    ExpectWritten(directory, "--rebuild-steps", "rebuild_steps");
}

TEST(JobxWrite, ScaledByInchToMillimetre)
{
    const TempDir directory;
    directory.Write("here/standard", "");
    ExpectWritten(directory, "--steps pcb,panel --scale 25.4", "scale");
}

TEST(JobxWrite, WritingTwiceLeavesTheSecondTreeOnly)
{
    const TempDir directory;
    CopySample(directory);
    ASSERT_EQ(RunWrite(directory, "--quiet --steps pcb").exitCode, 0);
    directory.Write("out/blinker/steps/PCB/layers/old/features", "x");
    const ProgramResult result = RunWrite(directory, "--quiet --force --allow-incomplete"); // without the symbols
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    ExpectGolden(directory, "whole");
}

TEST(JobxWrite, EveryByteIsTheLibrarys)
{
    const TempDir directory;
    const std::string sample = CopySample(directory);
    directory.MakeDir("library");
    directory.MakeDir("here");
    {
        const CurrentDir here(directory.Path("here"));
        CJOBX job;
        CStringArray names;
        ASSERT_EQ(job.ParseMatrixInODBOfMFC(sample.c_str(), names), 1);
        job.ParseODBOfMFC(sample.c_str(), names);
        job.UnitConvert(0.5);
        job.RebuildStepObj();
        job.SetODBProjectName("other");
        job.WriteODBData("../library", 0);
    }
    ASSERT_EQ(
        RunWrite(directory, "--steps pcb,panel --scale 0.5 --rebuild-steps --name other --no-eda --quiet").exitCode, 0);
    EXPECT_EQ(TreeOf(directory.Path("out")), TreeOf(directory.Path("library")));
    EXPECT_TRUE(directory.Exists("out/other/led_mark/features"));
}

TEST(JobxWrite, RebuildingChangesNoFile)
{
    const TempDir directory;
    CopySample(directory);
    ASSERT_EQ(RunWrite(directory, "--quiet --name a").exitCode, 0);
    ASSERT_EQ(RunWrite(directory, "--quiet --name b --rebuild-steps").exitCode, 0);
    EXPECT_EQ(TreeOf(directory.Path("out/a")), TreeOf(directory.Path("out/b")));
}

TEST(JobxWrite, WhatIsNotWrittenIsNotedOncePerKind)
{
    const TempDir directory;
    CopySample(directory);
    const ProgramResult result = RunWrite(directory, "");
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.err);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_THAT(lines[0], StartsWith("jobx: note: the user symbols are not written"));
    EXPECT_THAT(lines[1], StartsWith("jobx: note: the font is not written"));
    EXPECT_THAT(lines[2], StartsWith("jobx: note: the job information and attributes in \"misc\" are not written"));
    EXPECT_EQ(RunWrite(directory, "--force --quiet").err, "");
}

TEST(JobxWrite, NothingIsNotedWhereNothingIsLeftOut)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    const ProgramResult result = RunJobx({"write", job, "-o", directory.Path("out")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"job"}) << kNoStaging;
}

TEST(JobxWrite, TheOutputDirectoryIsMadeWhenItsParentExists)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("made/")}).exitCode, 0);
    EXPECT_TRUE(directory.Exists("made/job/matrix/matrix"));
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("gone/out")}), 4, "gone\" is not a directory");
    EXPECT_FALSE(directory.Exists("gone"));
}

TEST(JobxWrite, TheCurrentDirectoryAsJobHasItsOwnName)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    const ProgramResult result = RunShell("cd " + ShellWord(job) + "\nexec \"$JOBX\" write . -o ../out");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_TRUE(directory.Exists("out/job/steps/PCB/profile"));
}

TEST(JobxWriteRefuses, AnExistingTargetWithoutForce)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out"));
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out")}), 4, "out/job\" exists: --force replaces it");
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}).exitCode, 0);
    EXPECT_FALSE(directory.Exists("out/job/steps/old"));
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"job"}) << kNoStaging;
}

TEST(JobxWriteRefuses, ToReplaceAJobByOneThatWasReadInPart)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.Write("job/symbols/s/features.Z", "not compressed");
    const ProgramResult fresh = RunJobx({"write", job, "-o", directory.Path("fresh"), "--quiet"});
    EXPECT_EQ(fresh.exitCode, 0) << "with a warning, where nothing can be lost";
    EXPECT_NE(fresh.err.find("features.Z"), std::string::npos) << fresh.err;
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out"));
    const ProgramResult result = RunJobx({"write", job, "-o", directory.Path("out"), "--force", "--quiet"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(
        result.err.find("not all of the job could be read (cannot decompress \"" + job + "/symbols/s/features.Z\": "),
        std::string::npos)
        << result.err;
    EXPECT_NE(
        result.err.find("); \"" + directory.Path("out/job") + "\" is not replaced (--allow-incomplete replaces it)"),
        std::string::npos)
        << result.err;
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWriteRefuses, AFileInTheWayEvenWithForce)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("out/job", "a file");
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}), 4, "is not a directory");
    EXPECT_EQ(directory.Read("out/job"), "a file");
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out/job")}), 4, "out/job\" is not a directory");
    EXPECT_EQ(directory.Read("out/job"), "a file");
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"job"});
}

TEST(JobxWriteRefuses, ABrokenLinkInTheWayWhichItCallsByItsName)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.MakeDir("out");
    fs::create_symlink("nowhere", directory.Path("out/link"));
    const auto before = TreeOf(directory.Path("out"));
    const std::string link = directory.Path("out/link");
    for (const std::string options : {"", " --force"})
    {
        const auto expectLine = [&](const std::string& arguments, const std::string& line)
        {
            const ProgramResult result = RunShell("exec \"$JOBX\" write " + ShellWord(job) + options + arguments);
            EXPECT_EQ(result.exitCode, 4);
            EXPECT_EQ(result.err, "jobx: " + line + "\n");
        };
        expectLine(" -o " + ShellWord(link), "\"" + link + "\" is a broken link");
        expectLine(" -o " + ShellWord(link + "/"), "\"" + link + "/\" is a broken link");
        expectLine(" -o " + ShellWord(link + "/new"),
                   "cannot make the directory \"" + link + "/new\": \"" + link + "\" is a broken link");
        expectLine(" --name link -o " + ShellWord(directory.Path("out")),
                   "\"" + link + "\" exists and is a broken link");
    }
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWriteRefuses, ADirectoryThatIsNoJobEvenWithForce)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.Write("out/proj/src/main.cpp", "int main() {}\n");
    directory.MakeDir("out/proj/matrix");
    directory.MakeDir("out/features/steps"); // of another trade
    directory.Write("out/features/login.feature", "Feature: Login\n");
    fs::create_directory_symlink("proj", directory.Path("out/link"));
    const auto before = TreeOf(directory.Path("out"));
    for (const std::string name : {"proj", "link", "features"})
        for (const std::string options : {"", " --force", " --force --allow-incomplete"})
            ExpectRefusal(RunShell("exec \"$JOBX\" write " + ShellWord(job) + " --name " + name + options + " -o " +
                                   ShellWord(directory.Path("out"))),
                          4, "out/" + name + "\" is neither a job nor empty: it is not replaced\n");
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWrite, ForceReplacesAnEmptyDirectoryAndWhatHasRowsOfAMatrixOrSteps)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.MakeDir("out/empty");
    directory.MakeDir("out/steps_only/STEPS");
    directory.MakeDir("out/steps_only/Symbols");
    directory.Write("out/matrix_only/Matrix/MATRIX", kFormerMatrix);
    directory.Write("out/matrix_only/notes.txt", "foreign");
    for (const std::string name : {"empty", "steps_only", "matrix_only"})
    {
        SCOPED_TRACE(name);
        const ProgramResult result =
            RunJobx({"write", job, "-o", directory.Path("out"), "--name", name, "--force", "--quiet"});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_TRUE(directory.Exists("out/" + name + "/steps/PCB/profile"));
    }
}

TEST(JobxWriteRefuses, ItsOwnInput)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.MakeDir("out");
    fs::create_directory_symlink(job, directory.Path("out/job"));
    fs::create_directory_symlink(directory.Path(), directory.Path("out/above"));
    const auto before = TreeOf(directory.Path());
    const std::string isInput = "is the input job or contains it";
    const std::string isInside = "is inside the input job";
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path(), "--force"}), 4, isInput);
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}), 4, isInput);
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out"), "--name", "above", "--force"}), 4, isInput);
    ExpectRefusal(RunJobx({"write", job, "-o", fs::path(directory.Path()).parent_path().string(), "--name",
                           fs::path(directory.Path()).filename().string(), "--force"}),
                  4, isInput);
    ExpectRefusal(RunJobx({"write", job, "-o", job}), 4, isInside);
    ExpectRefusal(RunJobx({"write", job, "-o", job + "/steps", "--force"}), 4, isInside);
    ExpectRefusal(RunJobx({"write", job, "-o", job + "/new"}), 4, isInside);
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out/job/steps"), "--force"}), 4, isInside);
    ExpectRefusal(RunShell("cd " + ShellWord(job) + "\nexec \"$JOBX\" write . -o .. --force"), 4, isInput);
    EXPECT_EQ(TreeOf(directory.Path()), before);
}

TEST(JobxWriteRefuses, WhatLinksOfTheInputLeadTo)
{
    const TempDir directory;
    MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.MakeDir("links");
    for (const std::string part : {"matrix", "steps"})
        fs::create_directory_symlink("../job/" + part, directory.Path("links/" + part));
    const auto before = TreeOf(directory.Path());
    const std::vector<std::string> write = {
        "write", directory.Path("links"), "--follow-links", "--name", "job", "--force", "-o", directory.Path()};
    ExpectRefusal(RunJobx(write), 4, "job\" has a part of the input job, by the link \"" + directory.Path("links/"));
    EXPECT_EQ(TreeOf(directory.Path()), before);
    fs::rename(directory.Path("job"), directory.Path("other"));
    for (const std::string part : {"matrix", "steps"})
    {
        fs::remove(directory.Path("links/" + part));
        fs::create_directory_symlink("../other/" + part, directory.Path("links/" + part));
    }
    directory.Write("job/matrix/matrix", kFormerMatrix);
    EXPECT_EQ(RunJobx(write).exitCode, 0);
}

TEST(JobxWriteRefuses, ANameThatIsNoneOfADirectory)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    const std::string out = directory.MakeDir("out/in");
    for (const std::string name : {"", ".", "..", "a/b", "/a", "a/"})
        ExpectRefusal(RunJobx({"write", job, "-o", out, "--force", "--name", name}), 2,
                      "cannot name a directory: give another with --name");
    EXPECT_EQ(EntriesOf(out), Names{});
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"in"});
}

TEST(JobxWriteRefuses, AScaleThatIsNoNumberAboveZero)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    for (const std::string scale : {"0", "-1", "inf", "nan", "1,5", "2x", "1e999"})
        ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out"), "--scale=" + scale}), 2,
                      "--scale needs a number from 0.000001 to 1000000");
    EXPECT_FALSE(directory.Exists("out"));
}

TEST(JobxWriteRefuses, AJobThatCannotBeRead)
{
    const TempDir directory;
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out"));
    const std::string job = directory.MakeDir("job");
    ExpectRefusal(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}), 3, "is not a job");
    ExpectRefusal(RunJobx({"write", directory.Path("gone"), "-o", directory.Path("out")}), 3, "does not exist");
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWriteRefuses, AUserSymbolThatWouldReplaceADirectoryOfTheJob)
{
    for (const std::string name : {"steps", "matrix", "misc", "symbols", "fonts", "input", "ext", "output", "stackups",
                                   "user", "whltemps", "wheels", "Steps"})
    {
        SCOPED_TRACE(name);
        const TempDir directory;
        const std::string job = MakeJob(directory, "");
        directory.Write("job/symbols/" + name + "/features", "P 0 0 0 P 0 0\n");
        MakeFormer(directory);
        const auto before = TreeOf(directory.Path("out"));
        const std::vector<std::string> chosen = {"write",   job,   "-o",     directory.Path("out"),
                                                 "--steps", "pcb", "--force"};
        ExpectRefusal(RunJobx(chosen), 4, "the user symbol \"" + name + "\" would take the place of");
        EXPECT_EQ(TreeOf(directory.Path("out")), before);
        // A read of the whole job names symbols by their paths; none of them is written.
        EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}).exitCode, 0);
        EXPECT_TRUE(directory.Exists("out/job/steps/PCB/profile"));
    }
}

TEST(JobxWriteRefuses, ASymbolWhosePathWouldLeadIntoAStep)
{
    const TempDir directory;
    MakeJob(directory, "");
    fs::rename(directory.Path("job"), directory.Path("steps"));
    directory.Write("steps/matrix/matrix", "STEP {\nCOL=1\nNAME=symbols\n}\n");
    directory.Write("steps/steps/symbols/profile", "");
    directory.Write("steps/symbols/layers/features", "");
    const ProgramResult result = RunShell("cd " + ShellWord(directory.Path()) + "\nexec \"$JOBX\" write steps -o out");
    ExpectRefusal(result, 4, "the user symbol \"steps/symbols/layers\" would take the place of");
    EXPECT_FALSE(directory.Exists("out"));
}

TEST(JobxWrite, HostileNamesInTheMatrixLeadNowhere)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("victim/steps/kept", "kept");
    directory.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=..\n}\nSTEP {\nCOL=2\nNAME=a/b\n}\nSTEP {\nCOL=3\nNAME="
                                         "\n}\nSTEP {\nCOL=4\nNAME=../../victim\n}\nSTEP {\nCOL=5\nNAME=PCB\n}\n");
    const auto victim = TreeOf(directory.Path("victim"));
    const ProgramResult result = RunJobx({"write", job, "-o", directory.Path("out")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, HasSubstr("step \"..\" of the matrix has no directory"));
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"job"});
    EXPECT_EQ(EntriesOf(directory.Path("out/job/steps")), Names{"PCB"});
    EXPECT_EQ(TreeOf(directory.Path("victim")), victim);
}

TEST(JobxWrite, ALinkInThePlaceOfTheTargetIsReplacedNotFollowed)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("elsewhere/steps/kept", "kept");
    directory.MakeDir("out");
    fs::create_directory_symlink("../elsewhere", directory.Path("out/job"));
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--force"}).exitCode, 0);
    EXPECT_FALSE(fs::is_symlink(directory.Path("out/job")));
    EXPECT_EQ(EntriesOf(directory.Path("elsewhere/steps")), Names{"kept"});
    EXPECT_EQ(EntriesOf(directory.Path("out")), Names{"job"}) << kNoStaging;
}

TEST(JobxWriteFails, OnAReadOnlyOutputDirectory)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    MakeFormer(directory);
    OpenToAll(directory.Path());
    const std::string write = AsOther() + "write " + ShellWord(job) + " --force -o ";
    if (RunShell(write + ShellWord(directory.Path("new"))).exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not write everywhere";
    const auto before = TreeOf(directory.Path("out"));
    const fs::perms readOnly =
        fs::perms::all & ~(fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write);
    fs::permissions(directory.Path("out"), readOnly);
    ExpectRefusal(RunShell(write + ShellWord(directory.Path("out"))), 4,
                  "cannot make a directory in \"" + directory.Path("out") + "\": Permission denied");
    fs::permissions(directory.Path("out"), fs::perms::all);
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
    fs::permissions(directory.Path(), readOnly);
    ExpectRefusal(RunShell(write + ShellWord(directory.Path("out2"))), 4, "out2\": Permission denied");
    fs::permissions(directory.Path(), fs::perms::all);
}

TEST(JobxWriteFails, OnAReadOnlyFormerJob)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    MakeFormer(directory);
    OpenToAll(directory.Path());
    const std::string write = AsOther() + "write " + ShellWord(job) + " --force -o ";
    if (RunShell(write + ShellWord(directory.Path("new"))).exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not write everywhere";
    if (IsRoot())
    {
        ASSERT_EQ(RunShell("chown -R 65534:65534 " + ShellWord(directory.Path("out"))).exitCode, 0);
    }
    const auto before = TreeOf(directory.Path("out"));
    fs::permissions(directory.Path("out/job"), fs::perms::owner_read | fs::perms::owner_exec);
    ExpectRefusal(RunShell(write + ShellWord(directory.Path("out"))), 4, "cannot replace \"");
    fs::permissions(directory.Path("out/job"), fs::perms::all);
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWriteFails, OnAFileSystemThatTakesNoMore)
{
#if defined(JOBX_RACE_DETECTOR)
    GTEST_SKIP() << "the race detector needs larger files than this test allows";
#endif
    const TempDir directory;
    std::string features;
    for (int i = 0; i < 20000; ++i)
        features += "L 0 0 1 1 0 P 0\n";
    const std::string job = MakeJob(directory, features);
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out"));
    const std::string write = "ulimit -f 100\n\"$JOBX\" write " + ShellWord(job) + " --force -o ";
    const ProgramResult result = RunShell(write + ShellWord(directory.Path("out")));
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.err,
              "jobx: cannot write \"" + directory.Path("out/job") +
                  "/steps/PCB/layers/top/features\": File too large\njobx: the job could not be written; \"" +
                  directory.Path("out/job") + "\" is unchanged\n");
    EXPECT_EQ(TreeOf(directory.Path("out")), before) << kNoStaging;
    const ProgramResult fresh = RunShell(write + ShellWord(directory.Path("new")));
    EXPECT_EQ(fresh.exitCode, 4);
    EXPECT_THAT(fresh.err, HasSubstr("could not be written; \"" + directory.Path("new/job") + "\" was not made\n"));
    EXPECT_FALSE(directory.Exists("new"));
}

TEST(JobxWriteFails, OnAFullFileSystem)
{
    const TempDir directory;
    std::string features;
    for (int i = 0; i < 20000; ++i)
        features += "L 0 0 1 1 0 P 0\n";
    const std::string job = MakeJob(directory, features);
    const std::string disk = directory.MakeDir("disk");
    if (RunShell("mount -t tmpfs -o size=400k tmpfs " + ShellWord(disk)).exitCode != 0)
        GTEST_SKIP() << "cannot mount a small file system here";
    directory.Write("disk/job/matrix/matrix", kFormerMatrix);
    const auto before = TreeOf(disk);
    const ProgramResult result = RunJobx({"write", job, "--force", "-o", disk});
    const auto after = TreeOf(disk);
    RunShell("umount " + ShellWord(disk));
    ExpectRefusal(result, 4, "/steps/PCB/layers/top/features\": No space left on device\n");
    EXPECT_EQ(after, before);
}

TEST(JobxWriteFails, WhenKilledAndTheFormerJobStays)
{
    const TempDir directory;
    const std::string job = MakeLargeJob(directory);
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out/job"));
    fs::create_directory(directory.Path("full"));
    ASSERT_EQ(RunJobx({"write", job, "-o", directory.Path("full")}).exitCode, 0);
    const auto complete = TreeOf(directory.Path("full/job"));
    int unfinished = 0;
    for (const std::string moment : {"0", "0.01", "0.03", "0.06", "0.1"})
    {
        if (kIsSlowBuild && unfinished > 0)
            break;
        SCOPED_TRACE(moment);
        const ProgramResult result =
            RunShell("\"$JOBX\" write " + ShellWord(job) + " --force -o " + ShellWord(directory.Path("out")) +
                     " &\npid=$!\nwhile kill -0 $pid 2>/dev/null && ! ls -d " + ShellWord(directory.Path("out")) +
                     "/.jobx-*/new/job >/dev/null 2>&1; do :; done\nsleep " + moment +
                     "\nkill -9 $pid 2>/dev/null\nwait $pid\n");
        const Names entries = EntriesOf(directory.Path("out"));
        for (const std::string& entry : entries)
        {
            if (entry == "job")
                continue;
            EXPECT_THAT(entry, StartsWith(".jobx-"));
            ExpectRefusal(RunJobx({"info", directory.Path("out/" + entry)}), 3, "is not a job");
            fs::remove_all(directory.Path("out/" + entry));
        }
        const auto after = TreeOf(directory.Path("out/job"));
        if (after == complete) // too late: the new one is there
        {
            fs::remove_all(directory.Path("out/job"));
            MakeFormer(directory);
            continue;
        }
        EXPECT_EQ(result.exitCode, 128 + 9);
        ++unfinished;
        EXPECT_EQ(entries.size(), 2U);
        EXPECT_EQ(after, before);
    }
    EXPECT_GT(unfinished, 0);
}

TEST(JobxWriteFails, WhenAskedToEndAndNothingIsLeftBehind)
{
    const TempDir directory;
    const std::string job = MakeLargeJob(directory);
    MakeFormer(directory);
    const auto before = TreeOf(directory.Path("out"));
    const ProgramResult result =
        RunShell("\"$JOBX\" write " + ShellWord(job) + " --force -o " + ShellWord(directory.Path("out")) +
                 " &\npid=$!\nwhile kill -0 $pid 2>/dev/null && ! ls -d " + ShellWord(directory.Path("out")) +
                 "/.jobx-* >/dev/null 2>&1; do :; done\nkill -TERM $pid\nwait $pid\n");
    EXPECT_EQ(result.exitCode, 128 + 15);
    EXPECT_EQ(TreeOf(directory.Path("out")), before);
}

TEST(JobxWrite, StagingOfAKilledRunIsInNobodysWay)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("out/.jobx-00000000/new/job/matrix/matrix", "unfinished");
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out")}).exitCode, 0);
    EXPECT_EQ(EntriesOf(directory.Path("out")), (Names{".jobx-00000000", "job"}));
    EXPECT_EQ(directory.Read("out/.jobx-00000000/new/job/matrix/matrix"), "unfinished");
}
