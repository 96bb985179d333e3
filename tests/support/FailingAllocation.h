// Runs a piece of a test in which memory runs out.
#pragma once

#include "support/RaceDetector.h"

#include <gtest/gtest.h>

// Skips the test visibly where `operator new` cannot be replaced: the race detector brings its own.
#if defined(JOBX_RACE_DETECTOR)
#define JOBX_REQUIRE_FAILING_ALLOCATION() GTEST_SKIP() << "operator new cannot be replaced in this build"
#else
#define JOBX_REQUIRE_FAILING_ALLOCATION() static_cast<void>(0)
#endif

// While it lives, `operator new` succeeds a given number of times and then raises std::bad_alloc. Only the test
// programs that use it replace `operator new`; what allocates with malloc is not concerned.
// Threads: counts the whole process; make one at a time.
class FailingAllocation
{
public:
    explicit FailingAllocation(long succeeding);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // True once an allocation was refused.
    bool HasFailed() const;
};
