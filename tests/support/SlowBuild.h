// Tells the tests that try very many cases that each of them takes long here.
#pragma once

#include "support/RaceDetector.h"

#if defined(__SANITIZE_ADDRESS__)
#define JOBX_SLOW_BUILD 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define JOBX_SLOW_BUILD 1
#endif
#endif
#if defined(JOBX_RACE_DETECTOR)
#define JOBX_SLOW_BUILD 1
#endif

#if defined(JOBX_SLOW_BUILD)
constexpr bool kIsSlowBuild = true;
#else
constexpr bool kIsSlowBuild = false;
#endif
