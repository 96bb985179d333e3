#pragma once

namespace CLI
{
class App;
}

// jobx edit.
void AddEditCommand(CLI::App& app);
