// What readers ask for the entries of a job's directories; diagnostics name the place of the call.
#pragma once

#include "foundation/corekit/CKUtility.h"

#include <source_location>

// The path of the entry below the directory, its name in any letter case.
inline CString FindEntry(const CString& directory, const char* name,
                         const std::source_location& caller = std::source_location::current())
{
    return CKUtility::GetInstance()->FindPath(directory, name, caller.file_name(), static_cast<int>(caller.line()));
}

// Whether a regular file or a directory is there.
inline bool IsEntryThere(const CString& path, const std::source_location& caller = std::source_location::current())
{
    return CKUtility::GetInstance()->DoesFileOrDirExist(path, caller.file_name(), static_cast<int>(caller.line()));
}
