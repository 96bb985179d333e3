// The EDA data, components files and netlist of a generated job's steps.
#pragma once

#include "JobGenerator.h"

#include <cstdint>
#include <filesystem>

class Random;

// How much one step has of everything.
struct StepPlan
{
    std::int64_t nets = 0;
    std::int64_t components = 0;
    int layers = 0;
    std::uint32_t featuresOfLayer = 0; // of the smallest, so that every net feature is one of them
};

// How many packages a step with so many components has.
std::int64_t PackagesOf(std::int64_t components);

// Each adds to the counts.
void WriteEda(const std::filesystem::path& path, const StepPlan& plan, Random& random, JobCounts& counts);
// The components from number `first` on, up to the one before `end`.
void WriteComponents(const std::filesystem::path& path, const StepPlan& plan, std::int64_t first, std::int64_t end,
                     Random& random, JobCounts& counts);
void WriteNetlist(const std::filesystem::path& path, const StepPlan& plan, Random& random, JobCounts& counts);
