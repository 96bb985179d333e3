#include "support/FailingAllocation.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace
{
constexpr long kUnlimited = std::numeric_limits<long>::max();
std::atomic<long> succeedingLeft{kUnlimited};
std::atomic<bool> refusesOnlyOne{false};
std::atomic<long> liveBlocks{0};
// Volatile, because an optimiser knows of malloc and free that they read no variable of ours; wrapped ones do.
thread_local volatile bool isInOperator = false;
} // namespace

FailingAllocation::FailingAllocation(long succeeding, Refused refused)
{
    refusesOnlyOne = refused == Refused::One;
    succeedingLeft = succeeding;
}

FailingAllocation::~FailingAllocation()
{
    succeedingLeft = kUnlimited;
}

bool FailingAllocation::HasFailed() const
{
    return succeedingLeft.load() < 0;
}

bool FailingAllocation::MayAllocate()
{
    if (succeedingLeft.load() == kUnlimited)
        return true;
    const long left = succeedingLeft.fetch_sub(1);
    return left > 0 || (left < 0 && refusesOnlyOne);
}

long FailingAllocation::LiveBlocks()
{
    return liveBlocks.load();
}

void FailingAllocation::CountLiveBlock(int change)
{
    liveBlocks.fetch_add(change, std::memory_order_relaxed);
}

bool FailingAllocation::IsInOperator()
{
    return isInOperator;
}

#if !defined(JOBX_RACE_DETECTOR)
void* operator new(std::size_t size)
{
    isInOperator = true;
    void* const block = FailingAllocation::MayAllocate() ? std::malloc(size != 0 ? size : 1) : nullptr;
    isInOperator = false;
    if (block == nullptr)
        throw std::bad_alloc();
    FailingAllocation::CountLiveBlock(1);
    return block;
}

// The standard library's calls the one above, a memory checker's does not.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    try
    {
        return operator new(size);
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

// As the ones for single objects, for the same reason.
void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void operator delete(void* block) noexcept
{
    if (block == nullptr)
        return;
    FailingAllocation::CountLiveBlock(-1);
    isInOperator = true;
    std::free(block);
    isInOperator = false;
}

void operator delete(void* block, std::size_t /*size*/) noexcept
{
    operator delete(block);
}

void operator delete[](void* block) noexcept
{
    operator delete(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept
{
    operator delete(block);
}
#endif
