#pragma once

#include "output/ExitError.h"

// Runs the command that the arguments name, or prints help or version. Returns the exit code of the program.
// Results: any failure raises ExitError.
ExitCode RunCommandLine(int argc, const char* const* argv);
