// How the compact model creates objects. Exhausted memory raises the framework's exception.
#pragma once

#include "foundation/framework/Guarded.h"

#include <memory>

// A copy of `source`, of exactly the class T; the caller owns it.
template <class T>
T* NewCopy(const T& source)
{
    return Guarded([&source] { return new T(source); });
}

// A new object in its initial state.
template <class T>
std::unique_ptr<T> MakeNew()
{
    return Guarded([] { return std::make_unique<T>(); });
}
