#pragma once

namespace CLI
{
class App;
}

// jobx tree: prints the files of a job, what each is, and whether it was read.
void AddTreeCommand(CLI::App& app);
