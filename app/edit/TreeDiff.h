// Differences of two directory trees, as `diff -ru` and git show them.
#pragma once

#include "output/Output.h"

#include <filesystem>

// Prints the files that differ, by their paths below the directories: text files with their lines, others only by name. A
// file that is elsewhere with the same bytes was renamed. Returns whether there is any difference.
// Results: raises ExitError for a file that cannot be read.
bool PrintTreeDiff(const std::filesystem::path& before, const std::filesystem::path& after, Output& out);
