#pragma once

namespace CLI
{
class App;
}

// jobx info: prints a summary of a job, or its compact model.
void AddInfoCommand(CLI::App& app);
