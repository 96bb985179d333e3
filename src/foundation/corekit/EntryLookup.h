// How readers look for the entries of a job's directories; diagnostics name the place of the call.
#pragma once

#include "foundation/corekit/CKUtility.h"

// The path of the entry below the directory, ignoring the case of its name.
inline CString FindEntry(const CString& directory, const char* name, const char* sourceFile = __builtin_FILE(),
                         int line = __builtin_LINE())
{
    return CKUtility::GetInstance()->FindPath(directory, name, sourceFile, line);
}

// Whether there is a regular file or a directory.
inline bool IsEntryThere(const CString& path, const char* sourceFile = __builtin_FILE(), int line = __builtin_LINE())
{
    return CKUtility::GetInstance()->DoesFileOrDirExist(path, sourceFile, line);
}
