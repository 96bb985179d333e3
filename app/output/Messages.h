// Messages of the program on standard error.
#pragma once

#include <string>

// Prints "jobx: <line>".
void PrintError(const std::string& line);

// Prints "jobx: warning: <line>".
void PrintWarning(const std::string& line);
