#pragma once

#include "output/ExitError.h"

namespace CLI
{
class App;
}

// jobx diff: prints what differs between two jobs, for a person or as one JSON document. Sets `answer` to whether
// anything does.
void AddDiffCommand(CLI::App& app, ExitCode& answer);
