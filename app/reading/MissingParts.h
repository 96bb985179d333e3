#pragma once

#include "reading/FailedOperations.h"

#include <string>
#include <vector>

// One line for each part of the job that is missing, unreadable, empty or cut short: the matrix, what it names, and the
// user symbols. The job at `jobPath` must have been read with the steps `names`, from inside its directory, which must
// still be the current one. Parts among `failed` get no line; a failure to find a part that gets a line is dropped
// there. No line is made for parts that jobs often lack: layers of a step that repeats others, if another step has them;
// the features of a component layer; EDA data and netlists. Without a step header, a step may repeat others.
std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          FailedOperations& failed);
