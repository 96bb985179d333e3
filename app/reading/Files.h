#pragma once

#include "JOBXCLSDLL.h"

// The library's operations on files.
inline const CKUtility& Files()
{
    return *CKUtility::GetInstance();
}
