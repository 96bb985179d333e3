// Checks the path that a user gives for a job.
#pragma once

#include "reading/FailedOperations.h"

#include <string>

// Raises ExitError unless there is a directory that can be listed.
void CheckJobDirectory(const std::string& path);

// Raises ExitError unless there is a file that can be opened.
void CheckAttributeFile(const std::string& path);

// The path of a job, with a name for the job: "." and the like are expanded.
std::string NamedJobPath(const std::string& path);

// Why the library did not accept a directory as a job, in one line. `toldOfMatrix` is what a message says about its
// matrix, or "".
std::string ProblemOfJob(const std::string& path, const FailedOperations& failed, JOBXway way,
                         const std::string& toldOfMatrix);
