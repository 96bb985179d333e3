// JOBX_API marks what the shared library exports; everything else stays hidden.
#pragma once

#if defined(_WIN32)
#if defined(JOBX_BUILDING_LIBRARY)
#define JOBX_API __declspec(dllexport)
#else
#define JOBX_API __declspec(dllimport)
#endif
#else
#define JOBX_API __attribute__((visibility("default")))
#endif
