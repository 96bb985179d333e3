#include "robustness/FailingCalls.h"

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/types.h>
#include <utility>

namespace
{
struct State
{
    std::mutex lock;
    bool active = false;
    long number = FailingCalls::kNone;
    int error = 0;
    CallFault always = CallFault::None;
    bool wasInterrupted = false;
    std::function<void()> meanwhile;
    std::vector<std::string> made;
    std::string failed;
};

State& TheState()
{
    static State state;
    return state;
}

// Counts a call; true when it has to fail, with the reason in errno.
bool Fails(const char* name)
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    if (!state.active)
        return false;
    state.made.emplace_back(name);
    if (static_cast<long>(state.made.size()) - 1 != state.number)
        return false;
    state.failed = name;
    if (state.meanwhile)
    {
        state.meanwhile();
        return false;
    }
    errno = state.error;
    return true;
}

bool IsInterrupted()
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    if (!state.active || state.always != CallFault::Interrupted)
        return false;
    state.wasInterrupted = !state.wasInterrupted;
    errno = EINTR;
    return state.wasInterrupted;
}

bool IsAlways(CallFault fault)
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    return state.active && state.always == fault;
}

void Begin(long number, int error, CallFault always)
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    state.number = number;
    state.error = error;
    state.always = always;
    state.wasInterrupted = false;
    state.made.clear();
    state.failed.clear();
    state.active = true;
}
} // namespace

FailingCalls::FailingCalls(long number, int error, CallFault always)
{
    Begin(number, error, always);
}

FailingCalls::FailingCalls(CallFault always)
{
    Begin(kNone, 0, always);
}

FailingCalls::FailingCalls(long number, std::function<void()> work)
{
    TheState().meanwhile = std::move(work);
    Begin(number, 0, CallFault::None);
}

FailingCalls::~FailingCalls()
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    state.active = false;
    state.made = {}; // no block stays
    state.failed = {};
    state.meanwhile = {};
}

std::vector<std::string> FailingCalls::Made() const
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    return state.made;
}

std::string FailingCalls::Failed() const
{
    State& state = TheState();
    const std::lock_guard lock(state.lock);
    return state.failed;
}

// What closes does its work also when it answers an error, as the system does.
#define JOBX_WRAP(result, failure, name, parameters, arguments)                                                        \
    result __real_##name parameters;                                                                                   \
    result __wrap_##name parameters;                                                                                   \
    result __wrap_##name parameters                                                                                    \
    {                                                                                                                  \
        return Fails(#name) ? failure : __real_##name arguments;                                                       \
    }

extern "C"
{
    JOBX_WRAP(int, -1, fstat, (int file, struct stat* info), (file, info))
    JOBX_WRAP(int, -1, lstat, (const char* path, struct stat* info), (path, info))
    JOBX_WRAP(int, -1, fstatat, (int directory, const char* path, struct stat* info, int flags),
              (directory, path, info, flags))
    JOBX_WRAP(DIR*, nullptr, opendir, (const char* path), (path))
    JOBX_WRAP(DIR*, nullptr, fdopendir, (int file), (file))
    JOBX_WRAP(int, -1, mkdir, (const char* path, mode_t mode), (path, mode))
    JOBX_WRAP(int, -1, rmdir, (const char* path), (path))
    JOBX_WRAP(int, -1, unlink, (const char* path), (path))
    JOBX_WRAP(int, -1, unlinkat, (int directory, const char* path, int flags), (directory, path, flags))
    JOBX_WRAP(int, -1, remove, (const char* path), (path))
    JOBX_WRAP(int, -1, rename, (const char* from, const char* to), (from, to))
    JOBX_WRAP(int, -1, renameat2,
              (int fromDirectory, const char* from, int toDirectory, const char* to, unsigned flags),
              (fromDirectory, from, toDirectory, to, flags))
    JOBX_WRAP(std::FILE*, nullptr, fopen, (const char* path, const char* mode), (path, mode))
    JOBX_WRAP(std::size_t, 0, fwrite, (const void* data, std::size_t size, std::size_t count, std::FILE* stream),
              (data, size, count, stream))

    dirent* __real_readdir(DIR* directory);
    dirent* __wrap_readdir(DIR* directory);
    dirent* __wrap_readdir(DIR* directory)
    {
        dirent* const entry = Fails("readdir") ? nullptr : __real_readdir(directory);
        if (entry != nullptr && IsAlways(CallFault::Untold))
            entry->d_type = DT_UNKNOWN;
        return entry;
    }

    int __real_open(const char* path, int flags, ...);
    int __wrap_open(const char* path, int flags, ...);
    int __wrap_open(const char* path, int flags, ...)
    {
        mode_t mode = 0;
        if ((flags & O_CREAT) != 0)
        {
            va_list arguments;
            va_start(arguments, flags);
            mode = va_arg(arguments, mode_t);
            va_end(arguments);
        }
        return Fails("open") ? -1 : __real_open(path, flags, mode);
    }

    int __real_openat(int directory, const char* path, int flags, ...);
    int __wrap_openat(int directory, const char* path, int flags, ...);
    int __wrap_openat(int directory, const char* path, int flags, ...)
    {
        mode_t mode = 0;
        if ((flags & O_CREAT) != 0)
        {
            va_list arguments;
            va_start(arguments, flags);
            mode = va_arg(arguments, mode_t);
            va_end(arguments);
        }
        return Fails("openat") ? -1 : __real_openat(directory, path, flags, mode);
    }

    ssize_t __real_read(int file, void* buffer, std::size_t size);
    ssize_t __wrap_read(int file, void* buffer, std::size_t size);
    ssize_t __wrap_read(int file, void* buffer, std::size_t size)
    {
        if (Fails("read") || IsInterrupted())
            return -1;
        return __real_read(file, buffer, IsAlways(CallFault::Short) && size > 0 ? 1 : size);
    }

    int __real_close(int file);
    int __wrap_close(int file);
    int __wrap_close(int file)
    {
        const int result = __real_close(file);
        return Fails("close") ? -1 : result;
    }

    int __real_fclose(std::FILE* stream);
    int __wrap_fclose(std::FILE* stream);
    int __wrap_fclose(std::FILE* stream)
    {
        const int result = __real_fclose(stream);
        return Fails("fclose") ? EOF : result;
    }
}
#undef JOBX_WRAP
