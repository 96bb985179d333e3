#pragma once

#include <string>

// The target of a written job: a directory of the job's name in the output directory.
struct WriteTarget
{
    std::string directory; // the output directory
    std::string name;      // the job's
    bool replace = false;  // an existing directory may be replaced
};

// Raises ExitError if the name cannot name a directory, if the output directory neither exists nor has a parent, if
// something is in the way that is neither a job nor an empty directory, or if the job at `jobPath` would be replaced or
// written into.
void CheckTarget(const WriteTarget& target, const std::string& jobPath);

// Raises ExitError if a link in the job at `jobPath` leads into the directory that would be replaced.
void CheckLinks(const WriteTarget& target, const std::string& jobPath);
