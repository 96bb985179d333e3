#pragma once

#include "foundation/JobxExport.h"

#include <cstddef>
#include <new>

// Base of the classes whose objects a host or the library makes with `new`: where there is no memory for one, the
// framework's memory exception is raised, as by everything else that needs memory. It has no members and takes no room.
// Results: exhausted memory raises CMemoryException; the form with std::nothrow answers null.
// Threads: any thread at any time.
class JOBX_API CRaisingNew
{
public:
    // As the global ones, but for the exception.
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
