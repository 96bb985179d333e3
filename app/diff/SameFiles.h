#pragma once

#include "JOBXCLSDLL.h"

#include <string>

// Whether a file of two jobs, given by their directories, has the same bytes. A file that cannot be opened, or that a
// link leads out of its job, is different from every other.
bool AreSameBytes(const std::string& jobA, const CJOBXcarriedFile& a, const std::string& jobB,
                  const CJOBXcarriedFile& b);
