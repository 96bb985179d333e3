#include "output/CleanEnd.h"

#include "output/Terminal.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <mutex>
#include <string>

#if !defined(_WIN32)
#include <ctime>
#include <pthread.h>
#include <unistd.h>
#endif

namespace
{
constexpr std::array<int, 2> kSignals = {SIGINT, SIGTERM};

// A handler may use only atomics and the calls of the system.
std::atomic<bool> hasEnded{false};
std::atomic<bool> isDrawing{false};
std::atomic<std::size_t> drawnWidth{0};
std::atomic<bool> isOutColoured{false};
std::atomic<bool> isErrColoured{false};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<std::size_t>::is_always_lock_free);

std::mutex& DrawingLock()
{
    static std::mutex lock;
    return lock;
}

constexpr std::string_view kReset = "\x1b[0m";

#if defined(_WIN32)

void WriteAll(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

void WaitForDrawing() {}

#else

void WriteAll(std::FILE* stream, std::string_view text)
{
    const int file = stream == stdout ? STDOUT_FILENO : STDERR_FILENO;
    while (!text.empty())
    {
        const ssize_t written = ::write(file, text.data(), text.size());
        if (written <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

// The drawing thread writes one line and then sees that the end has come. It may be held up by its terminal.
void WaitForDrawing()
{
    constexpr int kTries = 100;
    constexpr long kMillisecond = 1'000'000;
    for (int i = 0; i < kTries && isDrawing; ++i)
    {
        const ::timespec pause{0, kMillisecond};
        ::nanosleep(&pause, nullptr);
    }
}

#endif

// Blanks over the line, and the cursor at its start. In pieces, because a handler must not allocate.
void ClearLine(std::size_t width)
{
    constexpr std::string_view kBlanks = "                                ";
    WriteAll(stderr, "\r");
    for (std::size_t left = width; left > 0; left -= std::min(left, kBlanks.size()))
        WriteAll(stderr, kBlanks.substr(0, left));
    WriteAll(stderr, "\r");
}

extern "C" void JobxEndCleanly(int signal)
{
    hasEnded = true;
    WaitForDrawing();
    if (drawnWidth > 0)
        ClearLine(drawnWidth);
    if (isOutColoured)
        WriteAll(stdout, kReset);
    if (isErrColoured)
        WriteAll(stderr, kReset);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
} // namespace

void EndCleanlyBySignals()
{
    if (!IsTerminal(stdout) && !IsTerminal(stderr))
        return;
    for (const int signal : kSignals)
        if (std::signal(signal, JobxEndCleanly) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

void ResetColoursAtEnd(std::FILE* stream)
{
    (stream == stdout ? isOutColoured : isErrColoured) = true;
}

#if defined(_WIN32)

SignalsElsewhere::SignalsElsewhere() = default;
SignalsElsewhere::~SignalsElsewhere() = default;

#else

SignalsElsewhere::SignalsElsewhere()
{
    ::sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &m_before);
}

SignalsElsewhere::~SignalsElsewhere()
{
    ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

#endif

void ReplaceProgressLine(std::string_view text, std::size_t width)
{
    const SignalsElsewhere elsewhere; // the handler waits for this thread
    const std::lock_guard lock(DrawingLock());
    isDrawing = true;
    if (!hasEnded)
    {
        const std::size_t before = drawnWidth;
        drawnWidth = std::max(width, before);
        WriteAll(stderr, std::string("\r").append(text).append(before - std::min(width, before), ' '));
        if (width == 0)
            WriteAll(stderr, "\r");
        drawnWidth = width;
    }
    isDrawing = false;
}

void ClearProgressLine()
{
    if (drawnWidth > 0)
        ReplaceProgressLine({}, 0);
}
