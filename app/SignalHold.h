#pragma once

// Holds back the signals that ask the process to end while it lives: work that leaves something behind is finished or
// taken back first. The destructor lets the last one held back take its effect.
// Threads: one lives at a time, in the thread that made it.
class SignalHold
{
public:
    SignalHold();
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;
    ~SignalHold();

    // Whether one came.
    static bool Came();

private:
    using Handler = void (*)(int);

    static constexpr int kSignals = 3;

    Handler m_before[kSignals] = {};
};
