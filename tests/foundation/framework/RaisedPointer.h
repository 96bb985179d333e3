// The framework raises pointers, which who catches them deletes.
#pragma once

#include "foundation/framework/CException.h"

// True when `call` raises a pointer to `Exception`; any other exception passes on and fails the test.
template <class Exception, class Call>
bool Raises(const Call& call)
{
    try
    {
        call();
    }
    catch (Exception* error)
    {
        error->Delete();
        return true;
    }
    return false;
}

// The cause of the `Exception` that `call` raises, -1 when it raises none.
template <class Exception, class Call>
int CauseOf(const Call& call)
{
    try
    {
        call();
    }
    catch (Exception* error)
    {
        const int cause = error->m_cause;
        error->Delete();
        return cause;
    }
    return -1;
}
