// Where the C++ library may report exhausted memory in its own way.
#pragma once

#include "foundation/framework/FrameworkThrow.h"

#include <new>
#include <stdexcept>

// Calls `call` and gives its result; std::bad_alloc and std::length_error leave as the framework's memory exception.
template <class Call>
decltype(auto) WithMemoryException(Call&& call)
{
    try
    {
        return call();
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
