#pragma once

#include <stdexcept>
#include <string>

// What the program answers to the shell.
enum class ExitCode
{
    Done = 0,
    Different = 1, // of "diff" only
    WrongUsage = 2,
    UnreadableInput = 3,
    UnwritableOutput = 4,
    InternalError = 70,
};

// Ends a command with that exit code and one line on standard error.
// The text is shown as it is: pieces that come from a file or an argument are made printable before.
class ExitError : public std::runtime_error
{
public:
    ExitError(ExitCode code, const std::string& line) : std::runtime_error(line), m_code(code) {}

    ExitCode Code() const noexcept { return m_code; }

private:
    ExitCode m_code;
};
