#pragma once

// Runs what the arguments ask for; prints help and version too.
// Results: anything that goes wrong raises ExitError.
void RunCommandLine(int argc, const char* const* argv);
