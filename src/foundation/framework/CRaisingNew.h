#pragma once

#include "foundation/framework/JobxExport.h"

#include <cstddef>
#include <new>

// Base of the classes whose objects a host or the library makes with `new`. Without memory, `new` raises the
// framework's memory exception, like everything else that needs memory. It has no members and adds no size.
// Results:   exhausted memory raises CMemoryException; the form with std::nothrow returns null.
// Threads:   any thread at any time.
class JOBX_API CRaisingNew
{
public:
    // Like the global operators, except for the exception.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, const std::nothrow_t& tag) noexcept;
    static void operator delete(void* /*memory*/, void* /*place*/) noexcept {}

protected:
    CRaisingNew() = default;
    CRaisingNew(const CRaisingNew&) = default;
    CRaisingNew(CRaisingNew&&) = default;
    CRaisingNew& operator=(const CRaisingNew&) = default;
    CRaisingNew& operator=(CRaisingNew&&) = default;
    ~CRaisingNew() = default;
};
