#pragma once

namespace CLI
{
class App;
}

// jobx panel: prints a table of all placements of steps in other steps, including nested ones.
void AddPanelCommand(CLI::App& app);
