// The fuzzers' inputs once more, without their engine: the seeds, the corpus that comes with the sources, and every
// input that once was a finding.
#include "FuzzSeeds.h"
#include "FuzzTargets.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{
// Both folders hold one folder for each target; a target without a folder has no inputs there.
std::vector<fs::path> InputsBelow(const fs::path& folder, const char* target)
{
    std::vector<fs::path> inputs;
    if (fs::is_directory(folder / target))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder / target))
            inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

// In a block of exactly that size, so that a read behind it is noticed.
void Feed(const FuzzTarget& target, const std::string& bytes)
{
    const std::vector<char> exact(bytes.begin(), bytes.end());
    target.run({exact.data(), exact.size()});
}

void RunAll(const FuzzTarget& target, const std::vector<fs::path>& inputs)
{
    for (const fs::path& input : inputs)
    {
        SCOPED_TRACE(input.string());
        Feed(target, FileBytes(input.string()));
    }
}

class Replay : public testing::TestWithParam<FuzzTarget>
{
};
} // namespace

TEST_P(Replay, EverySeedIsTakenAndSoIsEachHalfOfIt)
{
    const std::vector<FuzzSeed> seeds = FuzzSeeds(GetParam().name, SamplesDir() + "/blinker");
    ASSERT_FALSE(seeds.empty());
    for (const FuzzSeed& seed : seeds)
    {
        SCOPED_TRACE(seed.name);
        Feed(GetParam(), seed.bytes);
        Feed(GetParam(), seed.bytes.substr(0, seed.bytes.size() / 2));
        Feed(GetParam(), seed.bytes.substr(seed.bytes.size() / 2));
    }
}

TEST_P(Replay, NoInputAtAllDoesNotCrash)
{
    Feed(GetParam(), "");
}

TEST_P(Replay, TheCorpusOfTheSourcesDoesNotCrash)
{
    RunAll(GetParam(), InputsBelow(JOBX_FUZZ_CORPUS, GetParam().name));
}

TEST_P(Replay, WhatOnceWasAFindingDoesNotCrash)
{
    RunAll(GetParam(), InputsBelow(TestDataDir() + "/fuzz", GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(FuzzTargets().begin(), FuzzTargets().end()),
                         [](const testing::TestParamInfo<FuzzTarget>& target)
                         { return std::string(target.param.name); });

TEST(ReplayedInputs, EveryFolderOfInputsIsNamedAsATarget)
{
    for (const fs::path& folder : {fs::path(JOBX_FUZZ_CORPUS), fs::path(TestDataDir()) / "fuzz"})
    {
        if (!fs::is_directory(folder))
            continue;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            EXPECT_NE(FindFuzzTarget(entry.path().filename().string()), nullptr) << entry.path();
    }
}
