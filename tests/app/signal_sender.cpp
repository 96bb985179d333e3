// Loaded before the C library: once a directory for an unfinished job was made, sends the process the signal of the number
// $JOBX_SIGNAL.
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>
#include <sys/stat.h>

extern "C" int mkdir(const char* path, mode_t mode)
{
    using Function = int (*)(const char*, mode_t);
    const int result = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "mkdir"))(path, mode);
    const char* const signal = std::getenv("JOBX_SIGNAL");
    if (signal != nullptr && result == 0 && std::string_view(path).find("/.jobx-") != std::string_view::npos)
        std::raise(std::atoi(signal));
    return result;
}
