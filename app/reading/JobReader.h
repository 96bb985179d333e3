#pragma once

#include "JOBXCLSDLL.h"
#include "reading/ReadingMessages.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Which job to read, which parts, and how.
struct ReadOptions
{
    std::string jobPath;
    std::vector<std::string> steps;            // in the order to read them; empty for all
    std::string sysAttrFile;                   // "" for none
    bool quiet = false;                        // no progress line and no notes
    bool followLinks = false;                  // also those to files and directories outside the job
    unsigned long long maxEntries = 1'000'000; // in one listing of a directory tree
    JOBXway way = JOBXway::Classic;
    ShownMessages messages = ShownMessages::First; // of complete reading
    bool strict = false;                           // an error in the job makes the command fail
};

// A job as the library read it.
struct ReadJob
{
    std::unique_ptr<CJOBX> job;
    int result = 0;                   // of the library
    std::string problem;              // why the answer is 0, in one line
    std::vector<std::string> missing; // the parts that were not read, as printed
    std::int64_t errors = 0;          // messages of complete reading that are errors
    std::int64_t warnings = 0;        // and those that are warnings
    std::string firstMessage;         // the first of the most serious of both
};

// Reads a job: shows progress, and prints the messages of complete reading and warnings for failed file operations and
// for parts that are missing.
// Results: raises ExitError for a path that is not a readable directory, an attribute file that cannot be read, and a
//          step that the job does not have. For a directory that is not a job, the result has the problem.
ReadJob ReadJobDirectory(const ReadOptions& options);

// Reads a whole job completely and prints nothing: its `missing` are the failed file operations and the files that
// could not be read.
// Results: raises ExitError for a directory that cannot be entered.
ReadJob ReadJobSilently(const std::string& path);

// As ReadJobDirectory, but raises ExitError for that problem too.
ReadJob ReadGoodJobDirectory(const ReadOptions& options);

// Raises ExitError if strictness is asked for and the job has errors. Call it when everything is printed.
void CheckStrictly(const ReadOptions& options, const ReadJob& read);

// The steps of those names among those that were read, each once. If no name matches exactly, the case of ASCII letters
// is ignored. Without names, all steps.
// Results:   a name that no step has raises ExitError.
std::vector<const CJOBXstepObj*> StepsNamed(const CJOBX& job, const std::vector<std::string>& names);
