// What jobx tree prints of the files of a job.
#include "JsonCounts.h"
#include "RunProgram.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;

namespace fs = std::filesystem;

namespace
{
std::int64_t FilesBelow(const std::string& directory)
{
    std::int64_t count = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        count += entry.is_regular_file() ? 1 : 0;
    return count;
}
} // namespace

TEST(JobxTree, ShowsFilesBelowTheirDirectories)
{
    const TempDir directory;
    const std::string job = MakeJob(directory, "P 1 2 -1 P 0 0\n");
    directory.Write("job/input/board.brd", "raw");
    directory.Write("job/what", "");
    const ProgramResult result = RunJobx({"tree", job, "--messages", "none"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Name              Kind                 Size  Status\n"
                          "----------------  -------------------  ----  -------\n"
                          "input/\n"
                          "  board.brd       input of the job        3  carried\n"
                          "matrix/\n"
                          "  matrix          steps and layers       75  read\n"
                          "steps/\n"
                          "  pcb/\n"
                          "    layers/\n"
                          "      top/\n"
                          "        features  features               15  read\n"
                          "    profile       outline of the step    35  read\n"
                          "    stephdr       step header            10  read\n"
                          "what                                      0  unknown\n");
}

TEST(JobxTree, JsonHasEveryFileOfTheSample)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    directory.Write("blinker/steps/pcb/mystery", "?");
    const ProgramResult result = RunJobx({"tree", job, "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(CountJson(result.out).Objects(""), FilesBelow(job));
    EXPECT_THAT(result.out, HasSubstr(R"({"path":"steps/pcb/mystery","kind":null,"size":1,"status":"unknown"})"));
    EXPECT_THAT(result.out, HasSubstr(R"({"path":"misc/info","kind":"job information","size":)" +
                                      std::to_string(fs::file_size(job + "/misc/info")) + R"(,"status":"read"})"));
    EXPECT_THAT(result.out, HasSubstr(R"("path":"symbols/mount_ring/features.Z","kind":"user symbol, compressed")"));
}

TEST(JobxTree, WhatIsNotReadOfTheRealJobIsNamed)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    const std::string tree = RunJobx({"tree", jobs + "/beagleboneblack", "--messages", "none"}).out;
    std::vector<std::string> notRead;
    std::ptrdiff_t checksums = 0;
    for (const std::string& line : LinesOf(tree))
        if (line.ends_with("carried") && WordsOf(line).at(1) == "checksum")
            ++checksums;
        else if (line.ends_with("carried") || line.ends_with("unknown"))
            notRead.push_back(WordsOf(line).front() + " " + WordsOf(line).back());
    const fs::recursive_directory_iterator files(jobs + "/beagleboneblack");
    EXPECT_EQ(checksums,
              std::count_if(begin(files), end(files),
                            [](const fs::directory_entry& entry) { return entry.path().extension() == ".sum"; }));
    EXPECT_THAT(notRead,
                ElementsAre("job_name carried", "last_read carried", "last_save carried", "wizard.state.xml unknown"));
}
