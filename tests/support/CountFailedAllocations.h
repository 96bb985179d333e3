// Makes memory run out at every place of a piece of work.
#pragma once

#include "foundation/framework/CException.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

// Runs `work` again and again, with one more allocation succeeding each time, until it comes through. Answers how many
// runs failed; each of them must have left by CMemoryException.
template <class Work>
long CountFailedAllocations(Work work)
{
    constexpr long kMost = 100000;
    work(); // whatever is made once only
    for (long succeeding = 0; succeeding < kMost; ++succeeding)
    {
        bool raised = false;
        bool failed = false;
        {
            const FailingAllocation failing(succeeding);
            try
            {
                work();
            }
            catch (CMemoryException* exception)
            {
                exception->Delete();
                raised = true;
            }
            failed = failing.HasFailed();
        }
        EXPECT_EQ(raised, failed) << "after " << succeeding << " allocations";
        if (!failed)
            return succeeding;
    }
    ADD_FAILURE() << "never came through";
    return kMost;
}
