#include "output/Terminal.h"

#include <algorithm>

#if defined(_WIN32)
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace
{
constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kLeastWidth = 40;
} // namespace

bool IsTerminal(std::FILE* stream)
{
#if defined(_WIN32)
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

std::size_t TerminalWidth(std::FILE* stream)
{
    if (!IsTerminal(stream))
        return 0;
#if !defined(_WIN32)
    ::winsize size = {};
    if (::ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
#endif
    return kUsualWidth;
}

std::size_t ScreenWidth(std::FILE* stream)
{
    const std::size_t width = TerminalWidth(stream);
    return width == 0 ? kUsualWidth : std::clamp(width, kLeastWidth, kUsualWidth);
}
