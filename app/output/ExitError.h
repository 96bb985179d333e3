#pragma once

#include <exception>
#include <stdexcept>
#include <string>

// The exit codes of the program.
enum class ExitCode
{
    Done = 0,
    Different = 1, // of "diff" only
    WrongUsage = 2,
    UnreadableInput = 3,
    UnwritableOutput = 4,
    FaultyJob = 5, // with --strict only
    InternalError = 70,
    OutOfMemory = 71,
};

// Ends a command with that exit code and one line on standard error.
// The text is printed unchanged: make pieces from files and arguments printable first.
class ExitError : public std::runtime_error
{
public:
    ExitError(ExitCode code, const std::string& line) : std::runtime_error(line), m_code(code) {}

    ExitCode Code() const noexcept { return m_code; }

private:
    ExitCode m_code;
};

// Ends the program without a message: the reader of its output has closed the pipe.
class ClosedPipe : public std::exception
{
};
