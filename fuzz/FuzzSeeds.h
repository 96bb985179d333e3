// What the fuzzers begin with: inputs made from the sample job.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct FuzzSeed
{
    std::string name; // of a file
    std::string bytes;
};

// The seeds of that target; none for an unknown one. `sample` is the folder of the sample job.
std::vector<FuzzSeed> FuzzSeeds(std::string_view target, const std::string& sample);
