#pragma once

#include "DiffSinks.h"
#include "ExitError.h"

#include <string>

struct DiffOptions
{
    std::string jobA;
    std::string jobB;
    DiffRules rules;
    bool json = false;
    bool quiet = false; // no progress line
};

// jobx diff: prints what differs between two jobs, for a person or as one JSON document.
ExitCode RunDiff(const DiffOptions& options);
