// The changes of jobx convert: flattened steps, parts that are chosen, other names and another unit.
#pragma once

#include "JOBXCLSDLL.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI
{
class App;
}

struct ConvertChanges
{
    std::vector<std::string> flattened;  // steps, first, so that what they repeat may be left out
    std::vector<std::string> steps;      // patterns of those to keep; empty for all
    std::vector<std::string> layers;     // likewise
    std::vector<std::string> dropLayers; // patterns
    std::vector<JOBXjobPart> parts;      // to drop
    bool anonymise = false;
    std::vector<std::pair<std::string, std::string>> renamedSteps; // old and new name
    std::vector<std::pair<std::string, std::string>> renamedLayers;
    std::string jobName;                // "" for the same
    std::vector<std::string> stepOrder; // the first steps; empty for the same order
    std::optional<JOBXunit> unit;       // of the whole job; nothing for that of each file
};

// The options. `changes` has to live until the command line was parsed.
void AddConvertChanges(CLI::App& command, ConvertChanges& changes);

// Makes them in the order of the members.
// Results: raises ExitError, with the nearest name, for what the job does not have. Do not use the job then.
void MakeConvertChanges(CJOBX& job, const ConvertChanges& changes);
