// Makes memory run out at every place of a piece of work.
#pragma once

#include "foundation/framework/CException.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

// What happened to one run of a piece of work.
struct RunWithoutMemory
{
    bool raised; // the framework's memory exception
    bool failed; // an allocation was refused
    long lost;   // blocks that were not given back
};

// Runs `work` with that many allocations succeeding. Another exception than the framework's passes.
template <class Work>
RunWithoutMemory RunWithAllocations(Work& work, long succeeding, Refused refused)
{
    const long live = FailingAllocation::LiveBlocks();
    RunWithoutMemory run{false, false, 0};
    {
        const FailingAllocation failing(succeeding, refused);
        try
        {
            work();
        }
        catch (CMemoryException* exception)
        {
            exception->Delete();
            run.raised = true;
        }
        run.failed = failing.HasFailed();
    }
    run.lost = FailingAllocation::LiveBlocks() - live;
    return run;
}

// Runs `work` again and again, with `step` more allocations succeeding each time, until it comes through. Answers how
// many allocations succeeded then; none of the runs may keep a block. One in which an allocation was refused must have
// left by CMemoryException, or have done without it: `isWhole` says then whether the work is done nevertheless.
template <class Work, class IsWhole>
long CountFailedAllocations(Work work, Refused refused, long step, IsWhole isWhole)
{
    constexpr long kMost = 1'000'000;
    work(); // whatever is made once only
    for (long succeeding = 0; succeeding < kMost; succeeding += step)
    {
        const RunWithoutMemory run = RunWithAllocations(work, succeeding, refused);
        EXPECT_TRUE(run.raised == run.failed || (run.failed && isWhole())) << "after " << succeeding << " allocations";
        EXPECT_EQ(run.lost, 0) << "after " << succeeding << " allocations";
        if (!run.failed)
            return succeeding;
    }
    ADD_FAILURE() << "never came through";
    return kMost;
}

// The same for work that can do without no allocation.
template <class Work>
long CountFailedAllocations(Work work, Refused refused = Refused::Every, long step = 1)
{
    return CountFailedAllocations(work, refused, step, [] { return false; });
}
