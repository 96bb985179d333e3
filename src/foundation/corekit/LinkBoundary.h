// Keeps links inside the boundary that a host has set.
#pragma once

#include "foundation/framework/CString.h"

// Whether a boundary is set and what is at `path`, links followed, lies outside it. That is reported, with the path of
// the link that leads out; with `path` itself where no link does.
bool LeadsOut(const CString& path);
