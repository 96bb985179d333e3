// The linker sends the calls of the library and of the tests to malloc here, so that memory also runs out where
// `operator new` has no part in it.
#include "support/FailingAllocation.h"

#include <cstddef>

extern "C"
{
    void* __real_malloc(std::size_t size);
    void* __real_realloc(void* block, std::size_t size);
    void __real_free(void* block);
    void* __wrap_malloc(std::size_t size);
    void* __wrap_realloc(void* block, std::size_t size);
    void __wrap_free(void* block);

    void* __wrap_malloc(std::size_t size)
    {
        if (FailingAllocation::IsInOperator())
            return __real_malloc(size);
        void* const block = FailingAllocation::MayAllocate() ? __real_malloc(size) : nullptr;
        if (block != nullptr)
            FailingAllocation::CountLiveBlock(1);
        return block;
    }

    void* __wrap_realloc(void* block, std::size_t size)
    {
        void* const moved = FailingAllocation::MayAllocate() ? __real_realloc(block, size) : nullptr;
        if (moved != nullptr && block == nullptr)
            FailingAllocation::CountLiveBlock(1);
        return moved;
    }

    void __wrap_free(void* block)
    {
        if (block != nullptr && !FailingAllocation::IsInOperator())
            FailingAllocation::CountLiveBlock(-1);
        __real_free(block);
    }
}
