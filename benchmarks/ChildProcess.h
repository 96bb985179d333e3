// Runs programs and says what they took.
#pragma once

#include <string>
#include <vector>

struct Usage
{
    int exitCode = 0; // -1 when a signal ended it
    double processorSeconds = 0.0;
    double elapsedSeconds = 0.0;
    double peakBytes = 0.0; // of resident memory; at least what the caller had when it started the program
};

// Runs a program, given by its path, to its end. Its standard output goes to the file `output`. A program that cannot
// be started raises std::system_error.
Usage RunChild(const std::vector<std::string>& arguments, const std::string& output = "/dev/null");
