#include "AllocationCount.h"

#include <cstddef>

// The allocator of the GNU C library under the names it keeps for those who put their own before it.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
extern "C"
{
    void* __libc_malloc(std::size_t size);
    void* __libc_calloc(std::size_t count, std::size_t size);
    void* __libc_realloc(void* block, std::size_t size);
    void __libc_free(void* block);
}

namespace
{
// Each thread counts for itself, so that counting costs threads no shared cache line.
thread_local std::int64_t t_liveBlocks = 0;

void* Counted(void* block)
{
    if (block != nullptr)
        ++t_liveBlocks;
    return block;
}
} // namespace

std::int64_t LiveBlocks()
{
    return t_liveBlocks;
}

extern "C"
{
    void* malloc(std::size_t size)
    {
        return Counted(__libc_malloc(size));
    }
    void* calloc(std::size_t count, std::size_t size)
    {
        return Counted(__libc_calloc(count, size));
    }
    void* realloc(void* block, std::size_t size)
    {
        return block == nullptr ? malloc(size) : __libc_realloc(block, size);
    }
    void free(void* block)
    {
        if (block != nullptr)
            --t_liveBlocks;
        __libc_free(block);
    }
}
// NOLINTEND(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
