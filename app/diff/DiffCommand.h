#pragma once

#include "diff/DiffSinks.h"
#include "output/ExitError.h"
#include "reading/JobReader.h"

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
