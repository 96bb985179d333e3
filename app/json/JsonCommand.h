#pragma once

namespace CLI
{
class App;
}

// jobx json: prints everything that is in a job as one JSON document. A directory that the library takes for no job is
// printed as far as it was read before it is an error.
void AddJsonCommand(CLI::App& app);
