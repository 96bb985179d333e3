// What complete reading remembers of a job's files, so that the job can be saved.
#pragma once

#include "foundation/framework/CString.h"
#include "reading/CTakenFiles.h"

#include <map>
#include <string>
#include <vector>

// Paths are below the job, with "/" between their parts.
struct CJobSource
{
    CString directory; // with all links resolved, if possible
    CTakenFiles taken;
    std::map<std::string, ULONGLONG> carried; // the other files with their sizes
    bool hasMatrix = false;                   // the matrix was read
    bool hasParts = false;                    // all else was read
    bool isMixed = false;                     // more than one job was read into one object
    std::vector<CString> steps;               // the names of those that were to be read
    std::vector<std::string> folders;         // all of them, if the texts are kept
    std::map<std::string, std::string> texts; // the bytes of all files, if they are kept
};
