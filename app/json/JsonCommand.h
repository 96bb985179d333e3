#pragma once

namespace CLI
{
class App;
}

// jobx json: prints the whole job as one JSON document. A directory that is not a job is an error, but what was read is
// printed first.
void AddJsonCommand(CLI::App& app);
