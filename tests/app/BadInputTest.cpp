#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/SlowBuild.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

namespace fs = std::filesystem;

namespace
{
// Exactly one line on standard error, with that text in it, that code, and no data.
void ExpectFailure(const ProgramResult& result, int exitCode, const std::string& text)
{
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, MatchesRegex("jobx: [^\n]*\n"));
    EXPECT_THAT(result.err, HasSubstr(text));
}

std::string RandomBytes(std::mt19937& random, std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(random() & 0xFFU);
    return bytes;
}

// Every command reads it: done, and valid JSON where JSON was asked for.
void ExpectReadable(const std::string& job)
{
    for (const std::string command : {"info", "nets", "components", "packages"})
    {
        EXPECT_EQ(RunJobx({command, job}).exitCode, 0) << command;
        const ProgramResult result = RunJobx({command, job, "--json"});
        EXPECT_EQ(result.exitCode, 0) << command << result.err;
        EXPECT_TRUE(CountJson(result.out).isValid) << command;
    }
    const ProgramResult result = RunJobx({"json", job});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_TRUE(CountJson(result.out).isValid);
}
} // namespace

TEST(JobxBadInput, AMissingPathIsNamed)
{
    const TempDir directory;
    const std::string path = directory.Path("nowhere");
    ExpectFailure(RunJobx({"info", path}), 3, "\"" + path + "\" does not exist");
    ExpectFailure(RunJobx({"json", path}), 3, "\"" + path + "\" does not exist");
    ExpectFailure(RunJobx({"info", ""}), 3, "does not exist");
    fs::create_symlink("gone", path);
    ExpectFailure(RunJobx({"info", path}), 3, "\"" + path + "\" is a broken link");
}

TEST(JobxBadInput, AFileIsNoJob)
{
    const TempDir directory;
    ExpectFailure(RunJobx({"info", directory.Write("matrix", "STEP {")}), 3, "is not a directory");
}

TEST(JobxBadInput, APipeOrADeviceIsNoJobAndIsNotOpened)
{
    const TempDir directory;
    const std::string sample = CopySample(directory);
    const std::string pipe = directory.Path("pipe");
    if (RunShell("mkfifo " + ShellWord(pipe)).exitCode != 0)
        GTEST_SKIP() << "cannot make a pipe here";
    for (const std::string& path : {pipe, std::string("/dev/zero")})
    {
        ExpectFailure(RunJobx({"info", path}), 3, "is not a directory");
        ExpectFailure(RunJobx({"panel", path}), 3, "is not a directory");
        ExpectFailure(RunJobx({"info", sample, "--sysattr", path}), 3, "is not a regular file");
    }
}

TEST(JobxBadInput, LinksInCirclesAndPipesInAJobAreNotFollowed)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    fs::create_directory_symlink(".", job + "/steps/pcb/layers/itself");
    fs::create_directory_symlink("/", job + "/steps/pcb/layers/root");
    fs::create_directory_symlink("../..", job + "/steps/pcb/layers/up");
    directory.Write("job/steps/pcb/layers/pipe/x", "");
    if (RunShell("mkfifo " + ShellWord(job + "/steps/pcb/layers/pipe/features")).exitCode != 0)
        GTEST_SKIP() << "cannot make a pipe here";
    directory.Write("job/symbols/zero/x", "");
    fs::create_symlink("/dev/zero", job + "/symbols/zero/features");
    ExpectReadable(job);
    const ProgramResult info = RunLegacy({"info", job, "--json"});
    EXPECT_THAT(info.out, HasSubstr("\"top\""));
    EXPECT_THAT(info.out, Not(HasSubstr("\"pipe\"")));
}

TEST(JobxBadInput, AJobOfAnyNameIsRead)
{
    for (const std::string name : {"a blank", "\"quoted\"", "it's", "100%s%n", "\xFF\xFE", "$HOME", "a;b", "-rf", "*?"})
    {
        SCOPED_TRACE(name);
        const TempDir directory;
        MakeJob(directory, "L 0 0 1 1 0 P 0\n");
        const std::string job = directory.Path(name);
        fs::rename(directory.Path("job"), job);
        ExpectReadable(job);
    }
}

TEST(JobxBadInput, AnArchiveIsToBeUnpackedFirst)
{
    const TempDir directory;
    for (const std::string name : {"job.tgz", "job.TAR.GZ", "job.zip", "job.tar"})
        ExpectFailure(RunJobx({"info", directory.Write(name, "anything")}), 3, "is an archive: unpack it");
    for (const std::string bytes : {"\x1F\x8B\x08 gzip", "PK\x03\x04 zip"})
        ExpectFailure(RunJobx({"nets", directory.Write("job", bytes)}), 3, "is an archive: unpack it");
    ExpectFailure(RunJobx({"info", directory.Write("job", std::string(257, 'x') + "ustar")}), 3,
                  "is an archive: unpack it");
}

TEST(JobxBadInput, ADirectoryWithoutStepsOrMatrixIsNoJob)
{
    const TempDir directory;
    const std::string empty = directory.MakeDir("empty");
    ExpectFailure(RunJobx({"info", empty}), 3, "it has no directory \"steps\"");
    ExpectFailure(RunJobx({"info", empty, "--steps", "pcb"}), 3, "it has no directory \"steps\"");
    const std::string job = MakeJob(directory, "");
    fs::remove(job + "/matrix/matrix");
    ExpectFailure(RunJobx({"components", job}), 3, "it has no file \"matrix/matrix\"");
    fs::remove_all(job + "/matrix");
    ExpectFailure(RunJobx({"packages", job}), 3, "it has no directory \"matrix\"");
}

TEST(JobxBadInput, TheLibrarysMessageIsNotPrintedASecondTime)
{
    const TempDir directory;
    EXPECT_THAT(RunJobx({"info", directory.MakeDir("empty")}).err, Not(HasSubstr("There is no ODB Data")));
}

TEST(JobxBadInput, AnUnreadableDirectoryIsNamedWithItsReason)
{
    const TempDir directory;
    fs::permissions(directory.Path(), fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    const std::string job = MakeJob(directory, "");
    const std::string asOther = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
    const bool isRoot = RunShell("test \"$(id -u)\" = 0").exitCode == 0;
    const std::string run = (isRoot ? asOther : std::string()) + "\"$JOBX\" ";
    if (RunShell(run + "info " + ShellWord(job)).exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not read everything";
    fs::permissions(job + "/matrix/matrix", fs::perms::none);
    ExpectFailure(RunShell(run + "info " + ShellWord(job)), 3, "/matrix/matrix\": Permission denied");
    fs::permissions(job + "/matrix", fs::perms::none);
    ExpectFailure(RunShell(run + "info " + ShellWord(job)), 3, "/matrix/matrix\": Permission denied");
    fs::permissions(job, fs::perms::none);
    ExpectFailure(RunShell(run + "info " + ShellWord(job)), 3,
                  "cannot read the directory \"" + job + "\": Permission denied");
    fs::permissions(job, fs::perms::owner_all);
    fs::permissions(job + "/matrix", fs::perms::owner_all);
}

TEST(JobxBadInput, ALayerThatCannotBeReadIsAWarning)
{
    const TempDir directory;
    fs::permissions(directory.Path(), fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    const bool isRoot = RunShell("test \"$(id -u)\" = 0").exitCode == 0;
    const std::string run =
        (isRoot ? std::string("setpriv --reuid=65534 --regid=65534 --clear-groups ") : std::string()) +
        "\"$JOBX\" info ";
    if (RunShell(run + ShellWord(job)).exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not read everything";
    fs::permissions(job + "/steps/pcb/layers", fs::perms::none);
    const ProgramResult result = RunShell(run + ShellWord(job));
    fs::permissions(job + "/steps/pcb/layers", fs::perms::owner_all);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, MatchesRegex("jobx: warning: cannot list [^\n]*/layers\": Permission denied\n"));
}

TEST(JobxBadInput, AStepWithoutADirectoryIsAWarning)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/matrix/matrix",
                    "STEP {\nCOL=1\nNAME=GONE\x1B\n}\nSTEP {\nCOL=2\nNAME=PCB\n}\nLAYER {\nROW=1\nNAME=TOP\n}\n");
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "jobx: warning: step \"GONE\\x1B\" of the matrix has no directory below \"steps\"\n");
    EXPECT_THAT(result.out, HasSubstr("\nStep PCB\n"));
}

TEST(JobxBadInput, AStepWithoutAProfileIsAWarning)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    fs::remove(job + "/steps/pcb/profile");
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "jobx: warning: step \"PCB\" has no profile and was not read\n");
}

TEST(JobxBadInput, ADamagedCompressedSymbolIsAWarning)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    directory.Write("job/symbols/broken/features.Z", "not compressed");
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, MatchesRegex("jobx: warning: cannot [^\n]*broken/features.Z[^\n]*\n"));
}

// Decompressing writes beside the compressed file, which a job that must not be changed does not allow.
TEST(JobxBadInput, ACompressedSymbolOfAReadOnlyJobIsAWarning)
{
    const TempDir directory;
    fs::permissions(directory.Path(), fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    const std::string job = CopySample(directory);
    const bool isRoot = RunShell("test \"$(id -u)\" = 0").exitCode == 0;
    const std::string run =
        (isRoot ? std::string("setpriv --reuid=65534 --regid=65534 --clear-groups ") : std::string()) +
        "\"$JOBX\" info ";
    if (RunShell("chmod -R a+rX,a-w " + ShellWord(job) + " && " + run + "--help").exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not write everything";
    const ProgramResult complete = RunShell(run + ShellWord(job));
    const ProgramResult result = RunShell(run + "--legacy " + ShellWord(job));
    RunShell("chmod -R u+w " + ShellWord(job));
    EXPECT_EQ(complete.exitCode, 0);
    EXPECT_EQ(complete.err, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "jobx: warning: cannot decompress \"" + job + "/symbols/mount_ring/features.Z\": Permission denied\n");
    EXPECT_FALSE(fs::exists(job + "/symbols/mount_ring/features"));
}

TEST(JobxBadInput, WarningsAreBoundedAndTheRestIsCounted)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    for (int i = 0; i < 30; ++i)
        directory.Write("job/symbols/broken" + std::to_string(i) + "/features.Z", "not compressed");
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.err);
    ASSERT_EQ(lines.size(), 21U);
    EXPECT_EQ(lines.back(), "jobx: warning: 10 further file operations failed");
}

TEST(JobxBadInput, FilesOfZeroBytesAreReadAsEmpty)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    for (const std::string path : {"steps/pcb/profile", "steps/pcb/stephdr", "steps/pcb/eda/data", "misc/info",
                                   "steps/pcb/netlists/cadnet/netlist", "fonts/standard", "symbols/s/features",
                                   "steps/pcb/layers/top/components"})
        directory.Write("job/" + path, "");
    ExpectReadable(job);
}

TEST(JobxBadInput, RandomBytesCrashNothing)
{
    const std::uint32_t seed = 20240607;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 3; ++round)
    {
        const TempDir directory;
        const std::string job = MakeJob(directory, RandomBytes(random, 50000));
        for (const std::string path : {"steps/pcb/profile", "steps/pcb/stephdr", "steps/pcb/eda/data", "misc/info",
                                       "steps/pcb/netlists/cadnet/netlist", "fonts/standard", "symbols/s/features",
                                       "steps/pcb/layers/top/components"})
            directory.Write("job/" + path, RandomBytes(random, 20000));
        ExpectReadable(job);
    }
}

TEST(JobxBadInput, AFeaturesFileOfOneVeryLongLineIsRead)
{
    const TempDir directory;
    const std::string job =
        MakeJob(directory, "L 0 0 1 1 0 P 0 ;" + std::string(kIsSlowBuild ? 5'000'000 : 50'000'000, 'x'));
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
}

TEST(JobxBadInput, AnAttributeFileThatCannotBeReadIsNamed)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "");
    ExpectFailure(RunJobx({"info", job, "--sysattr", directory.Path("gone")}), 3, "gone\" does not exist");
    ExpectFailure(RunJobx({"json", job, "--sysattr", job}), 3, "is not a regular file");
    const std::string broken = directory.Write("broken", "OPTION {\nNAME =\n}\n");
    ExpectFailure(RunJobx({"info", job, "--sysattr", broken}), 3, "has a NAME or OPTIONS line without a value");
    for (const std::string text : {"", "# Notes\nno definitions\n", "OPTION {\nNAME = .x\n"})
    {
        const std::string wrong = directory.Write("wrong", text);
        ExpectFailure(RunJobx({"info", job, "--sysattr", wrong}), 3,
                      "wrong\" has no complete OPTION block: nothing was read from it");
    }
}

TEST(JobxBadInput, UnknownStepsAreWrongUsageAndTheKnownOnesAreNamed)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    ExpectFailure(RunJobx({"info", job, "--steps", "pcb,nope"}), 2, "no step \"nope\"; its steps are: PCB, PANEL");
    ExpectFailure(RunJobx({"nets", job, "--step", "nope"}), 2, "no step \"nope\"");
}

TEST(JobxBadInput, WrongUsageIsOneLine)
{
    ExpectFailure(RunJobx({}), 2, "a command is needed");
    ExpectFailure(RunJobx({"frobnicate"}), 2, "there is no command \"frobnicate\" (try: jobx --help)");
    ExpectFailure(RunJobx({"info"}), 2, "JOB is missing (try: jobx info --help)");
    ExpectFailure(RunJobx({"info", "--nope", "job"}), 2, "--nope");
    ExpectFailure(RunJobx({"info", "job", "second"}), 2, "second");
    ExpectFailure(RunJobx({"nets", "--csv", "--json", "job"}), 2, "--csv and --json cannot be combined");
    ExpectFailure(RunJobx({"info", "job", "--steps", "a,,b"}), 2, "--step needs step names");
    ExpectFailure(RunJobx({"info", "job", "--steps", ""}), 2, "--step needs step names");
}

TEST(JobxBadInput, AFullDiskIsTold)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no device here that is always full";
    const TempDir directory;
    const std::string job = ShellWord(CopySample(directory));
    for (const std::string command : {"info", "json", "nets", "components --csv", "packages --json"})
    {
        SCOPED_TRACE(command);
        ExpectFailure(RunShell("\"$JOBX\" " + command + " " + job + " >/dev/full"), 4,
                      "cannot write the output: No space left on device");
    }
    ExpectFailure(RunShell("\"$JOBX\" --help >/dev/full"), 4, "cannot write the output");
}

TEST(JobxUsage, HelpAndVersionAreData)
{
    const ProgramResult help = RunJobx({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.err, "");
    for (const char* const text : {"jobx info board", "Exit codes:", "components", "json"})
        EXPECT_THAT(help.out, HasSubstr(text));
    const ProgramResult version = RunJobx({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_THAT(version.out, MatchesRegex("jobx [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_EQ(RunJobx({"json", "--help"}).exitCode, 0);
    EXPECT_EQ(RunJobx({"help"}).out, help.out);
    EXPECT_EQ(RunJobx({"help", "json"}).out, RunJobx({"json", "--help"}).out);
    EXPECT_EQ(RunJobx({"help", "jsno"}).err, "jobx: there is no command \"jsno\"; did you mean \"json\"?\n");
    for (const std::string command : {"layers", "nets", "components", "packages", "panel", "features", "tree"})
    {
        const std::string text = RunJobx({command, "--help"}).out;
        EXPECT_THAT(text, testing::StartsWith("Example:\n  # ")) << text;
        EXPECT_THAT(text, HasSubstr("\nColumns"));
    }
}
