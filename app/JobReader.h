#pragma once

#include "JOBXCLSDLL.h"

#include <memory>
#include <string>
#include <vector>

// Which job to read, and what of it.
struct ReadOptions
{
    std::string jobPath;
    std::vector<std::string> steps;            // in the order to read them; empty for all
    std::string sysAttrFile;                   // "" for none
    bool quiet = false;                        // no progress line
    bool followLinks = false;                  // also those to directories outside the job
    unsigned long long maxEntries = 1'000'000; // that one listing of a directory tree may meet
};

// A job as the library read it.
struct ReadJob
{
    std::unique_ptr<CJOBX> job;
    int result = 0;                   // the library's answer
    std::string problem;              // why the answer is 0, in one line
    std::vector<std::string> missing; // what of the job was not read, as it was printed
};

// Reads a job: shows progress, prints warnings for what the matrix names and is missing, and for failed
// file operations.
// Results: a path that is no readable directory, an attribute file that cannot be read and a step name that the job
//          does not have raise ExitError. A directory that the library takes for no job is answered with its problem.
ReadJob ReadJobDirectory(const ReadOptions& options);

// The same, with that problem raised as ExitError too.
ReadJob ReadGoodJobDirectory(const ReadOptions& options);
std::unique_ptr<CJOBX> ReadGoodJob(const ReadOptions& options);

// The step of that name among those that were read, ASCII letters of either case when no name is exactly so.
// Results: a name that none has raises ExitError.
const CJOBXstepObj& StepNamed(const CJOBX& job, const std::string& name);
