#pragma once

namespace CLI
{
class App;
}

// jobx panel: prints a table of all that steps repeat, nested steps too.
void AddPanelCommand(CLI::App& app);
