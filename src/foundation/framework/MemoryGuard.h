// The guard against exhausted memory under the framework's own name.
#pragma once

#include "foundation/Guarded.h"

#include <utility>

// As Guarded.
template <class Call>
auto WithMemoryException(Call&& call)
{
    return Guarded(std::forward<Call>(call));
}
