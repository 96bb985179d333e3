#include "RunProgram.h"

#include "support/MemoryChecker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <stdexcept>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace fs = std::filesystem;

namespace
{
constexpr const char* kLine = "$0 r10\nL 0 0 1 1 0 P 0\n";

// A change to a good job, whose only step PCB has the layer TOP.
struct Fault
{
    std::string name; // as docs/malformed_jobs.md has it
    std::function<void(const TempDir&, const std::string&)> make;
};

void Replace(const std::string& path)
{
    fs::remove_all(path);
}

void MakePipe(const std::string& path)
{
    Replace(path);
#if !defined(_WIN32)
    if (::mkfifo(path.c_str(), 0600) != 0)
        throw std::runtime_error("cannot make a pipe");
#endif
}

void MakeLink(const std::string& path, const std::string& to)
{
    Replace(path);
    fs::create_symlink(to, path);
}

void MakeMatrix(const TempDir& directory, const std::string& type)
{
    directory.Write("job/matrix/matrix",
                    "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nTYPE=" + type + "\nNAME=TOP\n}\n");
}

const std::vector<Fault>& Faults()
{
    using Dir = const TempDir&;
    using Path = const std::string&;
    static const std::vector<Fault> kFaults = {
        {"no folder `steps`", [](Dir, Path job) { fs::remove_all(job + "/steps"); }},
        {"a file in the place of `steps`",
         [](Dir dir, Path job)
         {
             fs::remove_all(job + "/steps");
             dir.Write("job/steps", "x");
         }},
        {"no folder `matrix`", [](Dir, Path job) { fs::remove_all(job + "/matrix"); }},
        {"no file `matrix/matrix`", [](Dir, Path job) { fs::remove(job + "/matrix/matrix"); }},
        {"`matrix/matrix` is a pipe", [](Dir, Path job) { MakePipe(job + "/matrix/matrix"); }},
        {"`matrix/matrix` is empty", [](Dir dir, Path) { dir.Write("job/matrix/matrix", ""); }},
        {"`matrix/matrix` names no step",
         [](Dir dir, Path) { dir.Write("job/matrix/matrix", "LAYER {\nROW=1\nNAME=TOP\n}\n"); }},
        {"`matrix/matrix` names no layer",
         [](Dir dir, Path) { dir.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\n"); }},
        {"`matrix/matrix` is cut in a block", [](Dir dir, Path)
         { dir.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nNAME=TOP\n"); }},
        {"`matrix/matrix` is a link out of the job",
         [](Dir dir, Path job)
         {
             fs::rename(job + "/matrix/matrix", dir.Path("matrix"));
             MakeLink(job + "/matrix/matrix", dir.Path("matrix"));
         }},
        {"no folder of the step", [](Dir, Path job) { fs::remove_all(job + "/steps/pcb"); }},
        {"a file in the place of the step's folder",
         [](Dir dir, Path job)
         {
             fs::remove_all(job + "/steps/pcb");
             dir.Write("job/steps/pcb", "x");
         }},
        {"the step's folder is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb", "gone"); }},
        {"no profile", [](Dir, Path job) { fs::remove(job + "/steps/pcb/profile"); }},
        {"the profile is empty", [](Dir dir, Path) { dir.Write("job/steps/pcb/profile", ""); }},
        {"the profile is a pipe", [](Dir, Path job) { MakePipe(job + "/steps/pcb/profile"); }},
        {"the profile is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/profile", "gone"); }},
        {"no `stephdr`", [](Dir, Path job) { fs::remove(job + "/steps/pcb/stephdr"); }},
        {"`stephdr` is empty", [](Dir dir, Path) { dir.Write("job/steps/pcb/stephdr", ""); }},
        {"`stephdr` is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/stephdr", "gone"); }},
        {"`stephdr` is cut in a block",
         [](Dir dir, Path) { dir.Write("job/steps/pcb/stephdr", "X_DATUM=0\nSTEP-REPEAT {\nNAME=PCB\nNX=1\nNY=1\n"); }},
        {"no folder `layers`", [](Dir, Path job) { fs::remove_all(job + "/steps/pcb/layers"); }},
        {"no folder of the layer", [](Dir, Path job) { fs::remove_all(job + "/steps/pcb/layers/top"); }},
        {"`layers` is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/layers", "gone"); }},
        {"the layer's folder is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/layers/top", "gone"); }},
        {"no folder of a layer `a`, U+202E, `b`",
         [](Dir dir, Path job)
         {
             fs::remove_all(job + "/steps/pcb/layers/top"); // which no row would name
             dir.Write("job/matrix/matrix", "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nNAME=a\xE2\x80\xAE"
                                            "b\n}\n");
         }},
        {"no features", [](Dir, Path job) { fs::remove(job + "/steps/pcb/layers/top/features"); }},
        {"the features are empty", [](Dir dir, Path) { dir.Write("job/steps/pcb/layers/top/features", ""); }},
        {"the features are a pipe", [](Dir, Path job) { MakePipe(job + "/steps/pcb/layers/top/features"); }},
        {"the features are a broken link",
         [](Dir, Path job) { MakeLink(job + "/steps/pcb/layers/top/features", "gone"); }},
        {"the features are a folder",
         [](Dir, Path job)
         {
             Replace(job + "/steps/pcb/layers/top/features");
             fs::create_directory(job + "/steps/pcb/layers/top/features");
         }},
        {"the features exist only as `features.Z`", [](Dir, Path job)
         { fs::rename(job + "/steps/pcb/layers/top/features", job + "/steps/pcb/layers/top/features.Z"); }},
        {"the features are a link out of the job",
         [](Dir dir, Path job) { MakeLink(job + "/steps/pcb/layers/top/features", dir.Write("features", kLine)); }},
        {"no components in a layer of components", [](Dir dir, Path) { MakeMatrix(dir, "COMPONENT"); }},
        {"empty components in a layer of components",
         [](Dir dir, Path)
         {
             MakeMatrix(dir, "COMPONENT");
             dir.Write("job/steps/pcb/layers/top/components", "");
         }},
        {"the EDA data are a pipe",
         [](Dir, Path job)
         {
             fs::create_directory(job + "/steps/pcb/eda");
             MakePipe(job + "/steps/pcb/eda/data");
         }},
        {"the EDA data are empty", [](Dir dir, Path) { dir.Write("job/steps/pcb/eda/data", ""); }},
        {"the EDA data are a broken link",
         [](Dir, Path job)
         {
             fs::create_directory(job + "/steps/pcb/eda");
             MakeLink(job + "/steps/pcb/eda/data", "gone");
         }},
        {"a file in the place of `eda`", [](Dir dir, Path) { dir.Write("job/steps/pcb/eda", "x"); }},
        {"a file in the place of `netlists/cadnet`",
         [](Dir dir, Path) { dir.Write("job/steps/pcb/netlists/cadnet", "x"); }},
        {"a folder `eda` without `data`", [](Dir, Path job) { fs::create_directory(job + "/steps/pcb/eda"); }},
        {"`eda` is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/eda", "gone"); }},
        {"`netlists` is a broken link", [](Dir, Path job) { MakeLink(job + "/steps/pcb/netlists", "gone"); }},
        {"`netlists/cadnet` is a broken link",
         [](Dir, Path job)
         {
             fs::create_directory(job + "/steps/pcb/netlists");
             MakeLink(job + "/steps/pcb/netlists/cadnet", "gone");
         }},
        {"the netlist is empty", [](Dir dir, Path) { dir.Write("job/steps/pcb/netlists/cadnet/netlist", ""); }},
        {"the netlist is a pipe",
         [](Dir, Path job)
         {
             fs::create_directories(job + "/steps/pcb/netlists/cadnet");
             MakePipe(job + "/steps/pcb/netlists/cadnet/netlist");
         }},
        {"no features in a user symbol", [](Dir, Path job) { fs::create_directories(job + "/symbols/s"); }},
        {"a user symbol is a broken link",
         [](Dir, Path job)
         {
             fs::create_directories(job + "/symbols");
             MakeLink(job + "/symbols/s", "gone");
         }},
        {"a user symbol is a pipe",
         [](Dir, Path job)
         {
             fs::create_directories(job + "/symbols");
             MakePipe(job + "/symbols/s");
         }},
        {"the features of a user symbol are a pipe",
         [](Dir, Path job)
         {
             fs::create_directories(job + "/symbols/s");
             MakePipe(job + "/symbols/s/features");
         }},
        {"the features of a user symbol are a broken link",
         [](Dir, Path job)
         {
             fs::create_directories(job + "/symbols/s");
             MakeLink(job + "/symbols/s/features", "gone");
         }},
        {"the features of a user symbol are empty", [](Dir dir, Path) { dir.Write("job/symbols/s/features", ""); }},
        {"`symbols` is a broken link", [](Dir, Path job) { MakeLink(job + "/symbols", "gone"); }},
        {"`fonts/standard` is a pipe",
         [](Dir, Path job)
         {
             fs::create_directory(job + "/fonts");
             MakePipe(job + "/fonts/standard");
         }},
        {"`misc/info` is a broken link",
         [](Dir, Path job)
         {
             fs::create_directory(job + "/misc");
             MakeLink(job + "/misc/info", "gone");
         }},
        {"`misc` is a broken link", [](Dir, Path job) { MakeLink(job + "/misc", "gone"); }},
        {"a damaged `features.Z` of a user symbol", [](Dir dir, Path) { dir.Write("job/symbols/s/features.Z", "x"); }},
        {"`symbols` is a link to `/`", [](Dir, Path job) { MakeLink(job + "/symbols", "/"); }},
        {"`layers` is a link out of the job",
         [](Dir dir, Path job)
         {
             fs::rename(job + "/steps/pcb/layers", dir.Path("layers"));
             MakeLink(job + "/steps/pcb/layers", dir.Path("layers"));
         }},
    };
    return kFaults;
}

std::string FirstLineOf(const std::string& text)
{
    return text.substr(0, text.find('\n'));
}

std::string WithoutPath(std::string text, const std::string& path)
{
    for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path, at))
        text.replace(at, path.size(), "JOB");
    return text;
}

// The first line of its standard error as the table has it.
std::string LineFor(const ProgramResult& result, const std::string& job)
{
    const std::string line = FirstLineOf(result.err);
    return line.empty() ? "none" : "`" + WithoutPath(line, job) + "`";
}

// The row of the table that the fault makes.
std::string RowOf(const Fault& fault)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, kLine);
    fault.make(directory, job);
    const ProgramResult info = RunJobx({"info", job, "--quiet"});
    const ProgramResult legacy = RunJobx({"info", job, "--quiet", "--legacy"});
    directory.Write("out/good/steps/kept", "kept");
    const ProgramResult write =
        RunJobx({"write", job, "-o", directory.Path("out"), "--name", "good", "--force", "--quiet"});
    EXPECT_EQ(directory.Exists("out/good/steps/kept"), write.exitCode != 0) << fault.name;
    EXPECT_EQ(info.exitCode, legacy.exitCode) << fault.name;
    EXPECT_LE(LinesOf(info.err).size(), 1U) << fault.name << ": " << info.err;
    EXPECT_EQ(LinesOf(legacy.err).size(), 1U) << fault.name << ": " << legacy.err;
    const ProgramResult step =
        RunJobx({"write", job, "-o", directory.Path("out"), "--name", "good", "--force", "--quiet", "--step", "pcb"});
    EXPECT_NE(step.exitCode, 0) << fault.name;
    EXPECT_TRUE(directory.Exists("out/good/steps/kept")) << fault.name;
    return "| " + fault.name + " | " + std::to_string(info.exitCode) + " | " + std::to_string(write.exitCode) + " | " +
           LineFor(info, job) + " | " + LineFor(legacy, job) + " |";
}
} // namespace

namespace
{
// The rows of the table with that head.
std::string RowsBelow(const std::string& head)
{
    std::string rows;
    bool isInTable = false;
    for (const std::string& line : LinesOf(FileBytes(JOBX_MALFORMED_JOBS)))
    {
        isInTable = line.starts_with("| " + head + " |") || (isInTable && line.starts_with("|"));
        if (isInTable && line.starts_with("| ") && !line.starts_with("| " + head + " |"))
            rows += line + "\n";
    }
    return rows;
}

// What surrounds a complete job: the folder that it lies in, what the shell does first, and options.
struct Surroundings
{
    std::string name; // as docs/malformed_jobs.md has it
    std::string folder = "in";
    std::string before;
    std::string options;
};

const std::vector<Surroundings>& AllSurroundings()
{
    static const std::vector<Surroundings> kAll = {
        {"the job lies below a folder `a.sum`", "a.sum", "", ""},
        {"the job lies below a folder `B.Z`", "B.Z", "", ""},
        {"the job lies below a folder `My_Features`", "My_Features", "", ""},
        {"the job lies below a folder with U+202E and a line break in its name", "a\xE2\x80\xAE\nb", "", ""},
        {"`OMP_NUM_THREADS=100000`", "in", "export OMP_NUM_THREADS=100000", ""},
        {"`OMP_THREAD_LIMIT=1`", "in", "export OMP_THREAD_LIMIT=1", ""},
        {"`--max-entries 1`, and `symbols` has two entries", "in", "", "--max-entries 1"},
        {"a stack of 128 KB (`ulimit -s 128`)", "in", "ulimit -s 128", ""},
    };
    return kAll;
}

// The row of the table that they make.
std::string RowOf(const Surroundings& surroundings)
{
    const TempDir directory;
    MakeJob(directory, kLine);
    directory.Write("job/symbols/s/features", kLine);
    directory.Write("job/symbols/readme", "of no symbol");
    fs::create_directories(directory.Path(surroundings.folder));
    const std::string job = directory.Path(surroundings.folder + "/job");
    fs::rename(directory.Path("job"), job);
    directory.Write("out/good/steps/kept", "kept");
    const std::string before = surroundings.before + "\n\"$JOBX\" ";
    const std::string after = " " + ShellWord(job) + " --quiet " + surroundings.options;
    const ProgramResult info = RunShell(before + "info --symbols" + after);
    const ProgramResult write =
        RunShell(before + "write" + after + " --force --name good -o " + ShellWord(directory.Path("out")));
    EXPECT_EQ(directory.Exists("out/good/steps/kept"), write.exitCode != 0) << surroundings.name;
    EXPECT_EQ(info.out.find("Symbols of the job: 1\n") != std::string::npos, info.err.empty()) << info.out;
    EXPECT_LE(LinesOf(info.err).size(), 1U) << info.err;
    const std::string line = WithoutPath(FirstLineOf(info.err), job);
    return "| " + surroundings.name + " | " + std::to_string(info.exitCode) + " | " + std::to_string(write.exitCode) +
           " | " + (line.empty() ? "none" : "`" + line + "`") + " |";
}
} // namespace

TEST(MalformedJobs, ExitCodesAndLinesAreThoseOfTheTable)
{
    std::string found;
    for (const Fault& fault : Faults())
        found += RowOf(fault) + "\n";
    EXPECT_EQ(found, RowsBelow("Change"));
}

TEST(CompleteJobs, ExitCodesAndLinesInOddSurroundingsAreThoseOfTheTable)
{
#if !defined(__linux__) || defined(JOBX_MEMORY_CHECKER)
    GTEST_SKIP() << "limits the stack to less than a program with a memory checker needs";
#endif
    std::string found;
    for (const Surroundings& surroundings : AllSurroundings())
        found += RowOf(surroundings) + "\n";
    EXPECT_EQ(found, RowsBelow("Surroundings"));
}

TEST(MalformedJobs, AllowIncompleteReplacesAGoodJobByAnIncompleteOne)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, kLine);
    fs::remove_all(job + "/steps/pcb/layers");
    directory.Write("out/good/steps/kept", "kept");
    const std::vector<std::string> command = {"write",  job,    "-o",      directory.Path("out"),
                                              "--name", "good", "--force", "--quiet"};
    const ProgramResult refused = RunJobx(command);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(refused.err, "jobx: warning: step \"PCB\" has no directory \"layers\"\n"
                           "jobx: not all of the job could be read (step \"PCB\" has no directory \"layers\"); \"" +
                               directory.Path("out/good") + "\" is not replaced (--allow-incomplete replaces it)\n");
    EXPECT_TRUE(directory.Exists("out/good/steps/kept"));
    std::vector<std::string> allowed = command;
    allowed.emplace_back("--allow-incomplete");
    EXPECT_EQ(RunJobx(allowed).exitCode, 0);
    EXPECT_FALSE(directory.Exists("out/good/steps/kept"));
    EXPECT_TRUE(directory.Exists("out/good/steps/PCB/profile"));
}

TEST(MalformedJobs, AWholeJobReplacesAnotherWithForceAlone)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    directory.Write("out/blinker/steps/kept", "kept");
    const ProgramResult result = RunJobx({"write", job, "-o", directory.Path("out"), "--force", "--quiet"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_FALSE(directory.Exists("out/blinker/steps/kept"));
}

TEST(MalformedJobs, EveryCommandSaysWhatIsMissing)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, kLine);
    fs::remove(job + "/steps/pcb/layers/top/features");
    const std::string line = "jobx: warning: step \"PCB\", layer \"TOP\" has no file \"features\"\n";
    for (const std::string command : {"info", "nets", "components", "packages", "panel", "json"})
        EXPECT_EQ(RunLegacy({command, job}).err, line) << command;
    EXPECT_EQ(RunLegacy({"diff", job, job}).err, line + line);
    EXPECT_EQ(RunJobx({"write", job, "-o", directory.Path("out"), "--quiet"}).err, line);
}

TEST(MalformedJobs, AStepThatRepeatsOthersMayLackTheirLayersButNotOneThatNoStepHas)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    EXPECT_EQ(RunLegacy({"info", job, "--steps", "panel"}).err, "");
    fs::remove_all(job + "/steps/pcb/layers/gnd");
    EXPECT_EQ(RunLegacy({"info", job, "--steps", "panel"}).err,
              "jobx: warning: step \"PANEL\", layer \"GND\" has no directory\n");
    EXPECT_EQ(RunLegacy({"info", job, "--steps", "pcb"}).err,
              "jobx: warning: step \"PCB\", layer \"GND\" has no directory\n");
}

TEST(MalformedJobs, ALayerOfComponentsWithoutFeaturesIsNoneOfThem)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, kLine);
    MakeMatrix(directory, "COMPONENT");
    fs::remove(job + "/steps/pcb/layers/top/features");
    directory.Write("job/steps/pcb/layers/top/components", "CMP 0 0 0 0 N A B\n");
    EXPECT_EQ(RunJobx({"info", job}).err, "");
    directory.Write("job/steps/pcb/layers/top/features", "");
    EXPECT_EQ(RunJobx({"info", job}).err, "");
}

TEST(MalformedJobs, AMissingStepHeaderIsReportedOnceAndNotForEachLayerThatOtherStepsHave)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    fs::remove(job + "/steps/panel/stephdr");
    EXPECT_EQ(RunLegacy({"info", job}).err, "jobx: warning: step \"PANEL\" has no file \"stephdr\"\n");
}

namespace
{
// Writes steps of the sample, removes a part of it, and writes it again over the first.
ProgramResult WriteWithout(const TempDir& directory, const std::string& part, const std::string& options,
                           const std::string& steps = "")
{
    const std::string job = CopySample(directory);
    const std::string write = "\"$JOBX\" write " + ShellWord(job) + " --quiet -o " + ShellWord(directory.Path("out"));
    EXPECT_EQ(RunShell(write + " " + steps).exitCode, 0);
    fs::remove_all(job + "/" + part);
    directory.Write("out/blinker/steps/kept", "kept");
    return RunShell(write + " --force " + options + " " + steps);
}
} // namespace

TEST(MalformedJobs, PartsThatAJobMayLackAreMissingIfTheReplacedJobHasThem)
{
    struct Row
    {
        std::string part;
        std::string line;
    };
    for (const Row& row :
         std::vector<Row>{{"steps/pcb/eda", "step \"PCB\" has no file \"eda/data\""},
                          {"steps/pcb/netlists", "step \"PCB\" has no file \"netlists/cadnet/netlist\""},
                          {"symbols/led_mark", "the user symbol \"led_mark\" is missing"}})
        for (const std::string steps : {"", "--steps pcb"})
        {
            if (steps.empty() && row.part.starts_with("symbols"))
                continue; // a read of the whole job writes none
            SCOPED_TRACE(row.part + " " + steps);
            const std::string line = row.line + ", but the job to be replaced has it";
            const TempDir directory;
            const ProgramResult refused = WriteWithout(directory, row.part, "", steps);
            EXPECT_EQ(refused.exitCode, 3);
            EXPECT_EQ(refused.err, "jobx: warning: " + line +
                                       "\njobx: parts of the job to be replaced would be lost (" + line + "); \"" +
                                       directory.Path("out/blinker") +
                                       "\" is not replaced (--allow-incomplete replaces it)\n");
            EXPECT_TRUE(directory.Exists("out/blinker/steps/kept"));
            const TempDir other;
            EXPECT_EQ(WriteWithout(other, row.part, "--allow-incomplete", steps).exitCode, 0);
            EXPECT_FALSE(other.Exists("out/blinker/steps/kept"));
        }
}

TEST(MalformedJobs, AMatrixCutBetweenItsBlocksLosesRowsOfTheReplacedJob)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string write =
        "\"$JOBX\" write " + ShellWord(job) + " --quiet -o " + ShellWord(directory.Path("out")) + " --steps pcb";
    ASSERT_EQ(RunShell(write).exitCode, 0);
    const std::string matrix = directory.Read("blinker/matrix/matrix");
    const std::size_t layer = matrix.rfind("LAYER {");
    const std::size_t step = matrix.rfind("STEP {");
    const auto lineFor = [](const std::string& row)
    { return "jobx: warning: the matrix does not name the " + row + ", but the job to be replaced has it"; };
    directory.Write("blinker/matrix/matrix", matrix.substr(0, layer));
    const ProgramResult noLayer = RunShell(write + " --force");
    EXPECT_EQ(noLayer.exitCode, 3);
    EXPECT_EQ(FirstLineOf(noLayer.err), lineFor("layer \"NOTES\""));
    directory.Write("blinker/matrix/matrix", matrix.substr(0, step) + matrix.substr(matrix.find("LAYER {")));
    const ProgramResult noStep = RunShell(write + " --force");
    EXPECT_EQ(noStep.exitCode, 3);
    EXPECT_EQ(FirstLineOf(noStep.err), lineFor("step \"PANEL\""));
    fs::remove_all(job + "/steps/panel"); // the step is not there: it was removed on purpose
    EXPECT_EQ(RunShell(write + " --force").exitCode, 0);
}

TEST(MalformedJobs, AFileWithoutItsContentsLosesThoseOfTheReplacedJob)
{
    struct Row
    {
        std::string file;
        std::string contents;
    };
    for (const Row& row : std::vector<Row>{{"eda/data", "EDA data"}, {"netlists/cadnet/netlist", "netlist"}})
    {
        const TempDir directory;
        const std::string job = CopySample(directory);
        const std::string write =
            "\"$JOBX\" write " + ShellWord(job) + " --quiet -o " + ShellWord(directory.Path("out")) + " --steps pcb";
        ASSERT_EQ(RunShell(write).exitCode, 0);
        directory.Write("blinker/steps/pcb/" + row.file, "of another format\n");
        const ProgramResult result = RunShell(write + " --force");
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(FirstLineOf(result.err), "jobx: warning: step \"PCB\": the file \"" + row.file + "\" holds no " +
                                               row.contents + ", but the job to be replaced has it");
        EXPECT_EQ(RunShell(write + " --force --no-eda").exitCode, 0);
    }
}

TEST(MalformedJobs, SymbolsThatAreReadButNotWrittenAreLostToo)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string write = "\"$JOBX\" write " + ShellWord(job) + " --quiet -o " + ShellWord(directory.Path("out"));
    ASSERT_EQ(RunShell(write + " --steps pcb").exitCode, 0);
    const ProgramResult result = RunShell(write + " --force");
    EXPECT_EQ(result.exitCode, 3);
    for (const std::string name : {"led_mark", "mount_ring"})
    {
        const std::string line = "jobx: warning: the user symbol \"" + name +
                                 "\" is not written without --step, but the job to be replaced has it\n";
        EXPECT_NE(result.err.find(line), std::string::npos) << result.err;
        EXPECT_TRUE(directory.Exists("out/blinker/" + name + "/features"));
    }
    EXPECT_EQ(RunShell(write + " --force --allow-incomplete").exitCode, 0);
    EXPECT_FALSE(directory.Exists("out/blinker/led_mark"));
}

TEST(MalformedJobs, PartsThatWouldBeEmptyOrSmallerThanBothJobsAreNotReplaced)
{
    struct Row
    {
        std::string file;
        std::string without; // lines that begin with this
        std::string line;
    };
    for (const Row& row : std::vector<Row>{
             {"layers/top/features", "", "0 features on layer \"top\", but has 123"},
             {"profile", "", "0 features in the profile, but has 1"},
             {"layers/comp_+_top/components", "#", "0 components on layer \"comp_+_top\", but has 18"},
             {"layers/comp_+_bot/components", "# CMP 1", "2 components on layer \"comp_+_bot\", but has 3"},
             {"eda/data", "PKG", "0 packages, but has 8"}})
    {
        SCOPED_TRACE(row.file);
        const TempDir directory;
        const std::string job = CopySample(directory);
        const std::string write =
            "\"$JOBX\" write " + ShellWord(job) + " --quiet -o " + ShellWord(directory.Path("out")) + " --steps pcb";
        ASSERT_EQ(RunShell(write).exitCode, 0);
        const std::string path = "blinker/steps/pcb/" + row.file;
        const std::string written = "out/blinker/steps/PCB/" + row.file;
        const std::string before = directory.Read(written);
        std::string rest = "#\n";
        for (const std::string& line : LinesOf(directory.Read(path)))
            rest += row.without.empty() || line.starts_with(row.without) ? "" : line + "\n";
        directory.Write(path, rest);
        const ProgramResult result = RunShell(write + " --force");
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(FirstLineOf(result.err),
                  "jobx: warning: step \"PCB\" would have " + row.line + " in the job to be replaced");
        EXPECT_EQ(directory.Read(written), before);
        EXPECT_EQ(RunShell(write + " --force --allow-incomplete").exitCode, 0);
    }
}

TEST(MalformedJobs, AReplacedJobThatCannotBeReadIsKept)
{
    const bool isRoot = RunShell("test \"$(id -u)\" = 0").exitCode == 0;
    const std::string jobx =
        (isRoot ? std::string("setpriv --reuid=65534 --regid=65534 --clear-groups ") : std::string()) + "\"$JOBX\" ";
    const TempDir directory;
    const std::string job = CopySample(directory);
    fs::create_directory(directory.Path("out"));
    fs::copy(job, directory.Path("out/blinker"), fs::copy_options::recursive);
    fs::remove_all(job + "/steps/pcb/eda");
    const std::string open = "chmod -R a+rwX " + ShellWord(directory.Path());
    ASSERT_EQ(RunShell(isRoot ? open + " && chown -R 65534:65534 " + ShellWord(directory.Path()) : open).exitCode, 0);
    const std::string write = jobx + "write " + ShellWord(job) + " --quiet --step pcb -o ";
    if (RunShell(write + ShellWord(directory.Path("new"))).exitCode != 0)
        GTEST_SKIP() << "cannot run the program as a user who may not read everything";
    fs::permissions(directory.Path("out/blinker/steps/pcb/eda/data"), fs::perms::none);
    const ProgramResult result = RunShell(write + ShellWord(directory.Path("out")) + " --force");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.err.find("not all of the job to be replaced is readable: "), std::string::npos) << result.err;
    EXPECT_TRUE(directory.Exists("out/blinker/steps/pcb/eda/data"));
}

TEST(MalformedJobs, ADirectoryWithAnEmptyMatrixIsNoJobToBeReplaced)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    directory.Write("out/blinker/matrix/matrix", "");
    directory.Write("out/blinker/thesis/text", "kept");
    const ProgramResult result = RunJobx({"write", job, "--quiet", "--force", "-o", directory.Path("out")});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(directory.Exists("out/blinker/thesis/text"));
}

TEST(MalformedJobs, PartsThatAreLeftOutOnPurposeOrThatNeitherJobHasAreNotMissing)
{
    const TempDir without;
    EXPECT_EQ(WriteWithout(without, "steps/pcb/eda", "--no-eda").exitCode, 0);
    const TempDir directory;
    const std::string job = MakeJob(directory, kLine);
    for (int i = 0; i < 2; ++i) // the first time, nothing is replaced
    {
        const ProgramResult result = RunJobx({"write", job, "-o", directory.Path("out"), "--force", "--quiet"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
    }
    const TempDir unused;
    const std::string sample = CopySample(unused);
    unused.MakeDir("out/blinker/steps");
    unused.Write("out/blinker/symbols/unused/features", kLine);
    EXPECT_EQ(RunJobx({"write", sample, "-o", unused.Path("out"), "--force", "--quiet"}).err, "");
}
