#pragma once

#include <string>

// Where a job is to be written: a directory named as the job in the output directory.
struct WriteTarget
{
    std::string directory; // the output directory
    std::string name;      // the job's
    bool replace = false;  // a directory that is there may give way
};

// Raises ExitError when the name is none of a directory, when the output directory neither exists nor can be made in
// one step, when something is in the way, and when the job at `jobPath` would be replaced or written into.
void CheckTarget(const WriteTarget& target, const std::string& jobPath);
