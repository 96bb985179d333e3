// Tells the tests that they run under the race detector, which takes some things for itself.
#pragma once

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define JOBX_RACE_DETECTOR 1
#endif
#endif
