#pragma once

#include "DiffSinks.h"
#include "ExitError.h"
#include "JobReader.h"

#include <string>

struct DiffOptions
{
    std::string jobA;
    std::string jobB;
    DiffRules rules;
    bool json = false;
    bool quiet = false; // no progress line
};

// jobx diff: prints what differs between two jobs, as text or as one JSON document. `read` says how to read them.
ExitCode RunDiff(ReadOptions read, const DiffOptions& options);
