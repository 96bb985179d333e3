// Loaded before the C library: writes the path of everything that is flushed, and each exchange of names, into the file
// $JOBX_FLUSHES, and lets the flush of what $JOBX_FLUSH_FAILS names fail.
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <unistd.h>

namespace
{
void Record(const std::string& line)
{
    const char* const name = std::getenv("JOBX_FLUSHES");
    std::FILE* const file = name == nullptr ? nullptr : std::fopen(name, "a");
    if (file == nullptr)
        return;
    std::fprintf(file, "%s\n", line.c_str());
    std::fclose(file);
}
} // namespace

extern "C" int fsync(int file)
{
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = ::readlink(link.c_str(), path.data(), path.size());
    const std::string flushed(path.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    Record("flush " + flushed);
    const char* const fails = std::getenv("JOBX_FLUSH_FAILS");
    if (fails != nullptr && flushed.ends_with(fails))
    {
        errno = EIO;
        return -1;
    }
    return 0;
}

extern "C" int renameat2(int fromDirectory, const char* from, int toDirectory, const char* to, unsigned int flags)
{
    Record(std::string("exchange ") + to);
    using Function = int (*)(int, const char*, int, const char*, unsigned int);
    const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "renameat2"));
    return next(fromDirectory, from, toDirectory, to, flags);
}
