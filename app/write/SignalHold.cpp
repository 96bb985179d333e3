#include "write/SignalHold.h"

#include <atomic>
#include <csignal>

namespace
{
// Worker threads get signals too.
std::atomic<int> came{0};
static_assert(std::atomic<int>::is_always_lock_free);

// The signals that end a process by default, without those of a crash.
std::vector<int> EndingSignals()
{
    std::vector<int> signals = {SIGINT, SIGTERM};
#if !defined(_WIN32)
    signals.insert(signals.end(),
                   {SIGHUP, SIGQUIT, SIGALRM, SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGXCPU, SIGPIPE, SIGXFSZ});
#endif
#if defined(SIGPOLL)
    signals.push_back(SIGPOLL);
#endif
#if defined(SIGPWR)
    signals.push_back(SIGPWR);
#endif
#if defined(SIGSTKFLT)
    signals.push_back(SIGSTKFLT);
#endif
#if defined(SIGRTMIN)
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal)
        signals.push_back(signal);
#endif
    return signals;
}

extern "C" void JobxOnSignal(int signal)
{
    came = signal;
#if defined(_WIN32)
    std::signal(signal, JobxOnSignal); // the system resets the handler when it calls it
#endif
}
} // namespace

SignalHold::SignalHold()
{
    came = 0;
    const std::vector<int> signals = EndingSignals();
    m_before.reserve(signals.size()); // no exception once a signal is held
    for (const int signal : signals)
    {
        const Handler before = std::signal(signal, JobxOnSignal);
        if (before == SIG_IGN)
            std::signal(signal, SIG_IGN); // by jobx itself, or by the process that started it
        else if (before != SIG_ERR)
            m_before.emplace_back(signal, before);
    }
}

SignalHold::~SignalHold()
{
    for (const auto& [signal, before] : m_before)
        std::signal(signal, before);
    if (came != 0)
        std::raise(came);
}

bool SignalHold::Came()
{
    return came != 0;
}
