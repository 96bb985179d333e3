// The changes of jobx convert that select, rename and anonymise.
#pragma once

#include "JOBXCLSDLL.h"

#include <string>
#include <utility>
#include <vector>

namespace CLI
{
class App;
}

struct ConvertChanges
{
    std::vector<std::string> steps;      // patterns of those to keep; empty for all
    std::vector<std::string> layers;     // likewise
    std::vector<std::string> dropLayers; // patterns
    std::vector<JOBXjobPart> parts;      // to drop
    bool anonymise = false;
    std::vector<std::pair<std::string, std::string>> renamedSteps; // old and new name
    std::vector<std::pair<std::string, std::string>> renamedLayers;
    std::string jobName;                // "" for the same
    std::vector<std::string> stepOrder; // the first steps; empty for the same order
};

// The options. `changes` has to live until the command line was parsed.
void AddConvertChanges(CLI::App& command, ConvertChanges& changes);

// Makes them in the order of the members.
// Results: raises ExitError, with the nearest name, for what the job does not have. Do not use the job then.
void MakeConvertChanges(CJOBX& job, const ConvertChanges& changes);
