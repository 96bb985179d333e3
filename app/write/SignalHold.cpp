#include "write/SignalHold.h"

#include <csignal>

namespace
{
#if defined(SIGHUP)
constexpr int kHeld[] = {SIGINT, SIGTERM, SIGHUP};
#else
constexpr int kHeld[] = {SIGINT, SIGTERM};
#endif

volatile std::sig_atomic_t came = 0;

extern "C" void JobxOnSignal(int signal)
{
    came = signal;
    std::signal(signal, JobxOnSignal); // some systems reset the handler when they call it
}
} // namespace

SignalHold::SignalHold()
{
    came = 0;
    int at = 0;
    for (const int signal : kHeld)
    {
        Handler& before = m_before[at++];
        before = std::signal(signal, JobxOnSignal);
        if (before == SIG_IGN)
            std::signal(signal, SIG_IGN); // the parent process has it ignored
    }
}

SignalHold::~SignalHold()
{
    int at = 0;
    for (const int signal : kHeld)
    {
        const Handler before = m_before[at++];
        if (before != SIG_ERR)
            std::signal(signal, before);
    }
    if (came != 0)
        std::raise(came);
}

bool SignalHold::Came()
{
    return came != 0;
}
