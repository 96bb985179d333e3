// A signal such as that of Ctrl-C ends the program at once. What was drawn on a terminal must not stay there.
#pragma once

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <string_view>

// From now on SIGINT and SIGTERM clear the progress line and switch colours off before they end the process, as they do
// by default. Signals that the process ignores stay ignored. Does nothing if no stream is a terminal.
void EndCleanlyBySignals();

// Colours are in use on this terminal.
void ResetColoursAtEnd(std::FILE* stream);

// While it lives, the calling thread and those that it starts get none of these signals.
class SignalsElsewhere
{
public:
    SignalsElsewhere();
    SignalsElsewhere(const SignalsElsewhere&) = delete;
    SignalsElsewhere& operator=(const SignalsElsewhere&) = delete;
    ~SignalsElsewhere();

#if !defined(_WIN32)
private:
    ::sigset_t m_before = {};
#endif
};

// Draws this text of `width` characters over the progress line on standard error. Does nothing once a signal has come.
void ReplaceProgressLine(std::string_view text, std::size_t width);
// Clears that line, if there is one, and moves the cursor to its start.
void ClearProgressLine();
