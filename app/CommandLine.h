#pragma once

#include "ExitError.h"

// Runs what the arguments ask for; prints help and version too. Answers what the program answers.
// Results: anything that goes wrong raises ExitError.
ExitCode RunCommandLine(int argc, const char* const* argv);
