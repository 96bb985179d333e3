// Where the tests find their input.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

// The folder of the sample jobs that come with the sources.
std::string SamplesDir();

// The folder of the tests' own data.
std::string TestDataDir();

// The folder that is looked at for real jobs: the environment variable JOBX_REAL_JOBS, else the one chosen at
// configuration. It need not exist.
std::string RealJobsPlace();

// The folder of the real jobs, nothing when it does not exist.
std::optional<std::string> RealJobsDir();

// Declares the text `var` that holds the folder of the real jobs, or skips the test visibly when there is none.
#define JOBX_REQUIRE_REAL_JOBS(var)                                                                                    \
    const std::optional<std::string> var##OrNone = RealJobsDir();                                                      \
    if (!var##OrNone)                                                                                                  \
        GTEST_SKIP() << "needs real jobs; none in \"" << RealJobsPlace() << "\", set JOBX_REAL_JOBS";                  \
    const std::string& var = *var##OrNone
