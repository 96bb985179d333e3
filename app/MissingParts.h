#pragma once

#include "Messages.h"

#include <string>
#include <vector>

// What the matrix names and a read did not find, or not as a file or directory that can be read and holds something:
// one line each. The job at `jobPath`, whose steps `names` were asked for, must have been read from inside its
// directory, which still is the current one; what is among `failed` is left out. No line is made of what jobs often
// lack: layers of a step that repeats others as long as another step has them, the features of a component layer, EDA
// data, netlists and step headers.
std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          const FailedOperations& failed);
