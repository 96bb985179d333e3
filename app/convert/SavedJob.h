// Saves a job that was read completely.
#pragma once

#include "reading/JobReader.h"
#include "write/WriteTarget.h"

#include <filesystem>

// The target that -o names: the directory of the saved job itself. Raises wrong usage if the text names none.
WriteTarget TargetNamed(const std::string& output, bool replace);

// Saves the job beside the target and moves it there when it is complete and on the disk. `read` says how it was read.
// Messages about what is left out are printed.
// Results: raises ExitError if anything fails; then nothing has changed on the disk.
void SaveReadJob(ReadJob& source, const ReadOptions& read, const WriteTarget& target);

// Saves the job as that directory, which must not exist.
// Results: raises ExitError if anything fails.
void SaveReadJobAs(const std::filesystem::path& place, ReadJob& source, const ReadOptions& read);
