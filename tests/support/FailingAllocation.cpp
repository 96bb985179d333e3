#include "support/FailingAllocation.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace
{
constexpr long kUnlimited = std::numeric_limits<long>::max();
std::atomic<long> succeedingLeft{kUnlimited};

} // namespace

FailingAllocation::FailingAllocation(long succeeding)
{
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

#if !defined(JOBX_RACE_DETECTOR)
namespace
{
bool MayAllocate()
{
    return succeedingLeft.load() == kUnlimited || succeedingLeft.fetch_sub(1) > 0;
}
} // namespace

void* operator new(std::size_t size)
{
    void* const block = MayAllocate() ? std::malloc(size != 0 ? size : 1) : nullptr;
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept
{
    std::free(block);
}
#endif
