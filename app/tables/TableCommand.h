#pragma once

namespace CLI
{
class App;
}

// jobx nets, jobx components, jobx packages: each prints a table of such records of every step read.
void AddTableCommands(CLI::App& app);
