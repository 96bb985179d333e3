// Tells the tests that try very many cases that each of them takes long here.
#pragma once

#include "support/MemoryChecker.h"

#if defined(JOBX_MEMORY_CHECKER)
constexpr bool kIsSlowBuild = true;
#else
constexpr bool kIsSlowBuild = false;
#endif
