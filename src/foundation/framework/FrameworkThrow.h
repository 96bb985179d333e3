// Functions that raise the framework's exceptions; the classes are in CException.h.
// Each throws a pointer, as the framework does; the catcher calls Delete() on it.
#pragma once

#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

[[noreturn]] JOBX_API void AfxThrowMemoryException();
[[noreturn]] JOBX_API void AfxThrowInvalidArgException();
// `cause` is one of CFileException::Cause, `osError` the system's error number or -1.
[[noreturn]] JOBX_API void AfxThrowFileException(int cause, LONG osError = -1, LPCSTR fileName = nullptr);
// `cause` is one of CArchiveException::Cause.
[[noreturn]] JOBX_API void AfxThrowArchiveException(int cause, LPCSTR fileName = nullptr);
