#pragma once

#include "reading/FailedOperations.h"

#include <string>
#include <vector>

// One line for each part that the matrix names and that is missing, unreadable or empty. The job at `jobPath` must have
// been read with the steps `names`, from inside its directory, which must still be the current one. Parts among
// `failed` get no line. Neither do parts that jobs often lack: layers of a step that repeats others, if another step
// has them; the features of a component layer; EDA data, netlists and step headers.
std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          const FailedOperations& failed);
