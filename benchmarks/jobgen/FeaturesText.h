// The features files of a generated job.
#pragma once

#include "JobGenerator.h"

#include <cstdint>
#include <filesystem>

class Random;

// A layer's features file of about so many bytes. Adds to the counts.
void WriteLayerFeatures(const std::filesystem::path& path, std::uint64_t bytes, const JobPlan& plan, Random& random,
                        JobCounts& counts);

// A user symbol's features file. Adds to the counts.
void WriteSymbolFeatures(const std::filesystem::path& path, Random& random, JobCounts& counts);

// A step's profile.
void WriteProfile(const std::filesystem::path& path, JobCounts& counts);

// How many features a file of so many bytes has, about.
std::uint32_t FeaturesOf(std::uint64_t bytes);
