#pragma once

namespace CLI
{
class App;
}

// jobx nets, jobx components, jobx packages: each prints a table of these records for every step read.
void AddTableCommands(CLI::App& app);
