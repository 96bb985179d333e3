#include "RunProgram.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <vector>

using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace
{
std::string WithPath(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

// The sample, moved below a folder of that name.
std::string SampleBelow(const TempDir& directory, const std::string& folder)
{
    fs::create_directories(directory.Path(folder));
    const std::string job = directory.Path(folder + "/blinker");
    fs::rename(CopySample(directory), job);
    return job;
}
} // namespace

TEST(JobxPlace, AJobSaysTheSameWhereverItLies)
{
    const TempDir plain;
    const std::string plainJob = SampleBelow(plain, "plain");
    for (const std::string command :
         {"info --legacy", "json --legacy", "info --compact", "info --json --legacy", "info", "json"})
    {
        const TempDir fresh;
        const std::string freshJob = SampleBelow(fresh, "plain");
        const ProgramResult wanted = RunShell("\"$JOBX\" " + command + " " + ShellWord(freshJob));
        for (const std::string folder : {"a.sum", "job.Z", "features", "x.SUM.old", "My.zip/Features"})
        {
            SCOPED_TRACE(folder + " " + command);
            const TempDir directory;
            const std::string job = SampleBelow(directory, folder);
            const ProgramResult found = RunShell("\"$JOBX\" " + command + " " + ShellWord(job));
            EXPECT_EQ(found.exitCode, 0);
            EXPECT_EQ(found.err, "");
            EXPECT_EQ(WithPath(found.out, job, "JOB"), WithPath(wanted.out, freshJob, "JOB"));
            const bool isLegacy = command != "info" && command != "json";
            EXPECT_EQ(fs::exists(job + "/symbols/mount_ring/features"), isLegacy) << "decompressed beside itself";
        }
    }
    EXPECT_THAT(RunLegacy({"info", plainJob}).out, HasSubstr("Symbols of the job: 2\n"));
}

TEST(JobxPlace, TheJobIsNamedAsItWasGiven)
{
    const TempDir directory;
    const std::string job = SampleBelow(directory, "boards.sum");
    directory.Write("boards.sum/blinker/symbols/broken/features.Z", "not compressed");
    const auto in = [&](const std::string& place, const std::string& path)
    { return RunShell("cd " + ShellWord(place) + "\n\"$JOBX\" json --legacy " + path); };
    for (const auto& [place, path, prefix] :
         std::vector<std::array<std::string, 3>>{{directory.Path(), "boards.sum/blinker", "boards.sum/blinker"},
                                                 {directory.Path(), "./boards.sum/blinker/", "./boards.sum/blinker"},
                                                 {directory.Path("boards.sum"), "blinker", "blinker"},
                                                 {job, ".", job},
                                                 {job + "/steps", "../", job}})
    {
        SCOPED_TRACE(place + " " + path);
        const ProgramResult result = in(place, path);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.err,
                    HasSubstr("jobx: warning: cannot decompress \"" + prefix + "/symbols/broken/features.Z\": "));
        EXPECT_THAT(result.out, HasSubstr("\"name\":\"blinker\""));
        EXPECT_THAT(result.out, HasSubstr("\"path\":\"" + prefix + "/symbols/led_mark\""));
        EXPECT_THAT(result.out, HasSubstr("\"name\":\"" + prefix + "/symbols/led_mark\""));
    }
}

TEST(JobxPlace, TwoJobsOfRelativePathsAreCompared)
{
    const TempDir directory;
    SampleBelow(directory, "a.sum");
    fs::copy(directory.Path("a.sum"), directory.Path("b"), fs::copy_options::recursive);
    const ProgramResult result =
        RunShell("cd " + ShellWord(directory.Path()) + "\n\"$JOBX\" diff a.sum/blinker b/blinker");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "identical\n");
}

TEST(JobxLinks, DirectoriesOutsideTheJobAreReadOnlyWhenAskedTo)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    fs::rename(job + "/steps/pcb/layers/top", directory.Path("top"));
    fs::create_directory_symlink(directory.Path("top"), job + "/steps/pcb/layers/top");
    const ProgramResult closed = RunLegacy({"nets", job});
    EXPECT_EQ(closed.exitCode, 0);
    EXPECT_EQ(closed.err, "jobx: warning: cannot follow \"" + job +
                              "/steps/pcb/layers/top\": it leads out of the job (--follow-links follows it)\n");
    EXPECT_THAT(RunLegacy({"info", job, "--json"}).out, Not(HasSubstr("\"top\"")));
    const ProgramResult open = RunLegacy({"info", job, "--json", "--follow-links"});
    EXPECT_EQ(open.err, "");
    EXPECT_THAT(open.out, HasSubstr("\"top\""));
    EXPECT_NE(RunLegacy({"diff", job, job}).err, "");
    EXPECT_EQ(RunLegacy({"diff", job, job, "--follow-links"}).err, "");
}

TEST(JobxLinks, ASymbolWhoseDirectoryIsALinkIsReadOrMissed)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    fs::rename(job + "/symbols/led_mark", job + "/elsewhere");
    fs::create_directory_symlink("../elsewhere", job + "/symbols/led_mark");
    const ProgramResult complete = RunJobx({"info", job, "--symbols"});
    EXPECT_THAT(complete.out, HasSubstr("Symbols of the job: 2\n"));
    EXPECT_EQ(complete.err, "");
    const std::string line = "jobx: warning: symbol \"led_mark\" was not read, because its directory is a link\n";
    const ProgramResult legacy = RunJobx({"info", job, "--legacy"});
    EXPECT_THAT(legacy.out, HasSubstr("Symbols of the job: 1\n"));
    EXPECT_EQ(legacy.err, line);
    EXPECT_THAT(RunJobx({"write", job, "-o", directory.Path("out"), "--step", "pcb"}).err, HasSubstr(line));
}

TEST(JobxLinks, FilesOutsideTheJobAreReadOnlyWhenAskedTo)
{
    for (const std::string file :
         {"steps/pcb/profile", "steps/pcb/stephdr", "steps/pcb/layers/top/features",
          "steps/pcb/layers/comp_+_top/components", "steps/pcb/eda/data", "steps/pcb/netlists/cadnet/netlist",
          "symbols/led_mark/features", "symbols/mount_ring/features.Z", "fonts/standard", "misc/info"})
    {
        SCOPED_TRACE(file);
        const TempDir directory;
        const std::string job = CopySample(directory);
        const std::string path = job + "/" + file;
        fs::rename(path, directory.Path("secret"));
        fs::create_symlink(directory.Path("secret"), path);
        const ProgramResult closed = RunLegacy({"json", job});
        EXPECT_EQ(closed.exitCode, 0);
        EXPECT_EQ(closed.err, "jobx: warning: cannot follow \"" + path +
                                  "\": it leads out of the job (--follow-links follows it)\n");
        EXPECT_FALSE(fs::exists(job + "/symbols/mount_ring/features") && file == "symbols/mount_ring/features.Z");
        const ProgramResult open = RunLegacy({"json", job, "--follow-links"});
        EXPECT_EQ(open.err, "");
        EXPECT_NE(open.out, closed.out);
        EXPECT_EQ(RunJobx({"write", job, "-o", directory.MakeDir("out"), "--quiet"}).exitCode, 0);
        EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--quiet", "--force"}).exitCode, 3);
    }
}

TEST(JobxLinks, AMatrixOutsideTheJobIsNotRead)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    fs::rename(job + "/matrix/matrix", directory.Path("secret"));
    fs::create_symlink("../../secret", job + "/matrix/matrix");
    const ProgramResult closed = RunJobx({"info", job});
    EXPECT_EQ(closed.exitCode, 3);
    EXPECT_EQ(closed.err,
              "jobx: cannot read \"" + job + "/matrix/matrix\": it leads out of the job (--follow-links follows it)\n");
    EXPECT_EQ(RunJobx({"info", job, "--follow-links"}).exitCode, 0);
}

TEST(JobxLinks, EachLinkOutHasItsLineAndFilesInsideTheJobAreRead)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.Write("secret", "L 0 0 1 1 0 P 0\n");
    for (int i = 0; i < 30; ++i)
    {
        directory.MakeDir("job/symbols/s" + std::to_string(i));
        fs::create_symlink(directory.Path("secret"), job + "/symbols/s" + std::to_string(i) + "/features");
    }
    directory.MakeDir("job/symbols/t");
    fs::create_symlink("../../steps/pcb/layers/top/features", job + "/symbols/t/features");
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(LinesOf(result.err).size(), 30U) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Symbols of the job: 1\n"));
}

TEST(JobxLinks, AThousandLinksOutHaveTheirLinesAndTheRestIsCounted)
{
    constexpr int kLinks = 1003;
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    directory.MakeDir("outside");
    directory.MakeDir("job/symbols");
    for (int i = 0; i < kLinks; ++i)
        fs::create_directory_symlink("../../outside", job + "/symbols/s" + std::to_string(i));
    const ProgramResult result = RunLegacy({"info", job});
    EXPECT_EQ(result.exitCode, 0);
    const std::vector<std::string> lines = LinesOf(result.err);
    ASSERT_EQ(lines.size(), 1001U);
    EXPECT_EQ(lines.back(), "jobx: warning: 3 further file operations failed");
}

TEST(JobxLinks, DirectoriesInsideTheJobAreRead)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    fs::rename(job + "/steps/pcb/layers/top", job + "/kept");
    fs::create_directory_symlink("../../../kept", job + "/steps/pcb/layers/top");
    fs::create_directory_symlink(job, directory.Path("link"));
    for (const std::string& path : {job, directory.Path("link")})
    {
        const ProgramResult result = RunLegacy({"info", path, "--json"});
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr("\"top\""));
    }
}

TEST(JobxLinks, AStepOutsideTheJobIsNamedOnceAndNotForTheLayersOfOtherSteps)
{
    for (const std::string part : {"steps/pcb", "steps/pcb/layers"})
    {
        const TempDir directory;
        const std::string path = CopySample(directory) + "/" + part;
        fs::rename(path, directory.Path("outside"));
        fs::create_directory_symlink(directory.Path("outside"), path);
        EXPECT_EQ(RunLegacy({"info", directory.Path("blinker")}).err,
                  "jobx: warning: cannot follow \"" + path +
                      "\": it leads out of the job (--follow-links follows it)\n");
    }
}

TEST(JobxLinks, AStepAndTheMatrixOutsideTheJobAreNotRead)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    fs::rename(job + "/steps/pcb", directory.Path("pcb"));
    fs::create_directory_symlink(directory.Path("pcb"), job + "/steps/pcb");
    const ProgramResult step = RunLegacy({"info", job});
    EXPECT_EQ(step.err, "jobx: warning: cannot follow \"" + job +
                            "/steps/pcb\": it leads out of the job (--follow-links follows it)\n");
    EXPECT_THAT(step.out, Not(HasSubstr("\nStep PCB\n")));
    fs::rename(job + "/matrix", directory.Path("matrix"));
    fs::create_directory_symlink(directory.Path("matrix"), job + "/matrix");
    const ProgramResult matrix = RunLegacy({"info", job});
    EXPECT_EQ(matrix.exitCode, 3);
    EXPECT_EQ(matrix.err,
              "jobx: cannot read \"" + job + "/matrix\": it leads out of the job (--follow-links follows it)\n");
}

TEST(JobxLinks, AListingOfMoreEntriesThanAllowedAddsNothing)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "L 0 0 1 1 0 P 0\n");
    for (int i = 0; i < 5; ++i)
        directory.Write("job/symbols/s" + std::to_string(i) + "/features", "L 0 0 1 1 0 P 0\n");
    EXPECT_EQ(RunLegacy({"info", job, "--max-entries", "10"}).err, "");
    const ProgramResult result = RunLegacy({"info", job, "--max-entries", "9"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "jobx: warning: cannot list \"" + job + "/symbols\": it has more entries than --max-entries allows\n");
    EXPECT_THAT(result.out, Not(HasSubstr("Symbols of the job")));
}
