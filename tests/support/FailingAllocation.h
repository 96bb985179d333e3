// Runs a piece of a test in which memory runs out.
#pragma once

#include <gtest/gtest.h>

// The race detector brings an `operator new` of its own, which cannot be replaced.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define JOBX_NO_FAILING_ALLOCATION 1
#endif
#endif

// Skips the test visibly where `operator new` cannot be replaced.
#if defined(JOBX_NO_FAILING_ALLOCATION)
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
