// Finds the lines of a file that records do not know.
#pragma once

#include "saving/CRecordLines.h"
#include "saving/SourceLines.h"

#include <vector>

// The line of the source for each of the listed lines, -1 for those that it does not have. A record's line is where the
// record says. Other lines are between that of the record above them and the next record that is not below it: the
// next line with the same key, else the first such line there.
std::vector<int> FindLines(const CSourceLines& source, const CRecordLines& lines);

// For each listed line, the one that it is directly below; -1 for none.
std::vector<int> FindParents(const CRecordLines& lines);
