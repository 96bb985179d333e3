// What a person may give for a job, and what is wrong with it.
#pragma once

#include "Messages.h"

#include <string>

// Raises ExitError unless there is a directory that can be listed.
void CheckJobDirectory(const std::string& path);

// Raises ExitError unless there is a file that can be opened.
void CheckAttributeFile(const std::string& path);

// The path to read a job from, with a name to call the job by: "." and the like in full.
std::string NamedJobPath(const std::string& path);

// Why the library took a directory for no job, in one line.
std::string ProblemOfJob(const std::string& path, const FailedOperations& failed);
