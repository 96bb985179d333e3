// Runs a piece of a test in which memory runs out.
#pragma once

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
