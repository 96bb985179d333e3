// Exhausted memory leaves the library as the framework's exception.
#pragma once

#include "foundation/framework/FrameworkThrow.h"

#include <new>
#include <stdexcept>
#include <utility>

// Runs `work` and returns its result; when the standard library runs out of memory, or a size does not fit, raises
// CMemoryException instead. Every other exception passes.
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
