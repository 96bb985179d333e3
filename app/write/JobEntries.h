// The names of what is in a job's directory.
#pragma once

#include "JOBXCLSDLL.h"

#include <vector>

// Whether the writer makes a directory of that name in a job's directory. Letter case is ignored, because a job may be
// moved to a system that ignores it.
bool IsOwnDirectory(const CString& name);

// The components of a path without empty ones, "." and the root.
std::vector<CString> ComponentsOf(const CString& name);

// Whether the symbol's name is a path, as after a read of the whole job: the writer does not write such a symbol.
bool IsNamedByPath(const CJOBXSpecialSymbol& symbol);
