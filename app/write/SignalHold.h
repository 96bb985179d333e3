#pragma once

// While it lives, delays the signals that ask the process to end, so that work that leaves files behind is finished or
// undone first. The destructor lets the last delayed signal take effect.
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

    static constexpr int kSignals = 3;

    Handler m_before[kSignals] = {};
};
