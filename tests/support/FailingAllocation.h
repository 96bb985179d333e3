// Runs a piece of a test in which memory runs out.
#pragma once

#include "support/RaceDetector.h"

#include <gtest/gtest.h>

#include <cstddef>

// Skips the test visibly where `operator new` cannot be replaced: the race detector brings its own.
#if defined(JOBX_RACE_DETECTOR)
#define JOBX_REQUIRE_FAILING_ALLOCATION() GTEST_SKIP() << "operator new cannot be replaced in this build"
#else
#define JOBX_REQUIRE_FAILING_ALLOCATION() static_cast<void>(0)
#endif

// Whether every record has a block of its own, so that each can be refused. Elsewhere they lie in larger blocks, of
// which a short test may not need a new one.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kRecordsHaveOwnBlocks = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool kRecordsHaveOwnBlocks = true;
#else
inline constexpr bool kRecordsHaveOwnBlocks = false;
#endif
#else
inline constexpr bool kRecordsHaveOwnBlocks = false;
#endif

// Which allocations are refused once the given number succeeded.
enum class Refused
{
    Every, // of those that follow
    One    // the next
};

// While it lives, `operator new` succeeds a given number of times and then raises std::bad_alloc. Only the test
// programs that use it replace `operator new`; what allocates with malloc is concerned where a program wraps that too.
// Threads: counts the whole process; make one at a time.
class FailingAllocation
{
public:
    explicit FailingAllocation(long succeeding, Refused refused = Refused::Every);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // True once an allocation was refused.
    bool HasFailed() const;

    // Counts an allocation that is about to be made: false when it has to be refused.
    static bool MayAllocate();
    // How many blocks are in use now; only differences mean something.
    static long LiveBlocks();
    static void CountLiveBlock(int change);
    // Whether this thread is inside the replaced `operator new` or `operator delete`, which count for themselves.
    static bool IsInOperator();
};
