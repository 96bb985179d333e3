// JOBX_API marks everything that the shared library exports; all else is hidden. JOBX_LOCAL hides a member of an
// exported class.
#pragma once

#if defined(_WIN32)
#if defined(JOBX_BUILDING_LIBRARY)
#define JOBX_API __declspec(dllexport)
#else
#define JOBX_API __declspec(dllimport)
#endif
#define JOBX_LOCAL
#else
#define JOBX_API __attribute__((visibility("default")))
#define JOBX_LOCAL __attribute__((visibility("hidden")))
#endif
