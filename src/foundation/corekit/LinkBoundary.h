// Keeps links inside the boundary that a host has set.
#pragma once

#include "foundation/framework/CString.h"

// Whether a boundary is set and the entry at `path`, following links, is outside it. Reports that with the path of the
// link that leads out, or with `path` itself if there is no such link.
bool LeadsOut(const CString& path);
