// Starts the built jobx as a shell does, and copies of jobs for it to read.
#pragma once

#include "support/TempDir.h"

#include <string>
#include <string_view>
#include <vector>

struct ProgramResult
{
    int exitCode = -1; // 128 and the signal's number when one ended it
    std::string out;
    std::string err;
};

// Runs `jobx ARGUMENTS`; standard error is a file, never a terminal.
ProgramResult RunJobx(const std::vector<std::string>& arguments);

// The same with --legacy.
ProgramResult RunLegacy(std::vector<std::string> arguments);

// Runs a command line of the shell in which $JOBX is the program; its status is the exit code.
ProgramResult RunShell(const std::string& commandLine);

// A text as one word of the shell.
std::string ShellWord(std::string_view text);

// A copy of the sample job below the directory; answers its path.
std::string CopySample(const TempDir& directory);

// A job of one step PCB and one layer TOP with that features file; answers its path.
std::string MakeJob(const TempDir& directory, std::string_view features);

std::vector<std::string> LinesOf(std::string_view text);
std::vector<std::string> WordsOf(std::string_view line);
