#pragma once

namespace CLI
{
class App;
}

// jobx convert.
void AddConvertCommand(CLI::App& app);
