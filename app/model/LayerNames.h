#pragma once

#include "JOBXCLSDLL.h"
#include "model/Glob.h"

#include <string>

// Chooses among the layers of the steps that were read; letter case is ignored.
// Results: lets every layer pass for "", and raises ExitError if no layer matches.
NameFilter LayersNamed(const CJOBX& job, const std::string& pattern);
