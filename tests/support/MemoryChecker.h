// JOBX_MEMORY_CHECKER: the build looks for memory errors or data races; that takes long, and the process ends when
// memory is refused.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define JOBX_MEMORY_CHECKER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define JOBX_MEMORY_CHECKER 1
#endif
#endif
