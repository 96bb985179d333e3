#include "AllocationCount.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace
{
// Each thread counts for itself, so that counting costs threads no shared cache line.
thread_local std::int64_t t_liveBlocks = 0;

void* Allocate(std::size_t size)
{
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr)
        throw std::bad_alloc();
    ++t_liveBlocks;
    return block;
}

void Free(void* block) noexcept
{
    if (block != nullptr)
        --t_liveBlocks;
    std::free(block);
}
} // namespace

std::int64_t LiveBlocks()
{
    return t_liveBlocks;
}

void* operator new(std::size_t size)
{
    return Allocate(size);
}
void* operator new[](std::size_t size)
{
    return Allocate(size);
}
void operator delete(void* block) noexcept
{
    Free(block);
}
void operator delete[](void* block) noexcept
{
    Free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    Free(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    Free(block);
}
