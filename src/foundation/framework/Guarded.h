// Turns exhausted memory into the framework's exception.
#pragma once

#include "foundation/framework/FrameworkThrow.h"

#include <new>
#include <stdexcept>
#include <utility>

// Runs `work` and returns its result. If the standard library runs out of memory or refuses a size, raises
// CMemoryException instead. Passes on every other exception.
template <class Work>
auto Guarded(Work&& work)
{
    try
    {
        return std::forward<Work>(work)();
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowMemoryException();
    }
    catch (const std::length_error&)
    {
        AfxThrowMemoryException();
    }
}
