#include "foundation/framework/CRaisingNew.h"

#include "foundation/framework/FrameworkThrow.h"

// In the library, not in the header: a compiler that inlines only one of a pair warns about a mismatch.

void* CRaisingNew::operator new(std::size_t size)
{
    try
    {
        return ::operator new(size);
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowMemoryException();
    }
}

void* CRaisingNew::operator new(std::size_t size, const std::nothrow_t& tag) noexcept
{
    return ::operator new(size, tag);
}

void CRaisingNew::operator delete(void* memory) noexcept
{
    ::operator delete(memory);
}

void CRaisingNew::operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    ::operator delete(memory);
}
