#pragma once

#include "reading/FailedOperations.h"
#include "reading/ReadingMessages.h"

#include <string>
#include <vector>

// One line for each part of the job that is missing, unreadable, empty or cut short: the matrix, the parts named in it,
// and the user symbols. The job at `jobPath` must have been read with the steps `names`, from inside its directory,
// which must still be the current one. After complete reading, `messages` are those of the reader, else null; what
// they say gets no line, and compressed files count as read. Parts among `failed` get no line; if a part gets a line, the failure to find it
// is removed from `failed`. Parts that jobs often lack get no line: layers of a step that repeats others, if another
// step has them; the features of a component layer; EDA data and netlists. A step without a header may repeat others.
std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          FailedOperations& failed, const ReadingMessages* messages);
