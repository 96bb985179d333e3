#pragma once

#include <utility>
#include <vector>

// While it lives, delays the signals that end the process unless handled, so that work that leaves files behind is
// finished or undone first. The destructor lets the last delayed signal take effect. Signals of a crash, such as
// SIGSEGV, and those that the process ignores are left alone.
// Threads:   only one at a time may exist, in the thread that made it.
class SignalHold
{
public:
    SignalHold();
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;
    ~SignalHold();

    // Whether a signal came.
    static bool Came();

private:
    using Handler = void (*)(int);

    std::vector<std::pair<int, Handler>> m_before; // each held signal with its former handler
};
