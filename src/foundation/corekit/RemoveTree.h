#pragma once

#include "foundation/framework/CString.h"

// Removes the directory at `path` with everything in it; a link, there or below, is removed itself and never followed,
// also when something else turns a directory into a link meanwhile. Depth costs neither stack nor open files. Returns
// 0, also when nothing is there, or the system's error number: the first failure ends it, and what was removed is gone.
// A file is not removed. The path ends without separator.
int RemoveTree(const CString& path);
