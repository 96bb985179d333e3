#pragma once

#include "foundation/framework/CString.h"

// Removes the directory at `path` with everything in it. Links, `path` itself or below it, are removed and never
// followed, even if a directory is replaced by a link meanwhile. Depth costs neither stack nor open files. Returns 0,
// also if nothing is there, or the system's error number. It stops at the first failure; what was removed before is
// gone. Does not remove a file. The path must not end with a separator.
int RemoveTree(const CString& path);
