#pragma once

#include "DiffSinks.h"

// Tells the collector every difference between two jobs, model against model.
// Steps, layers and components files are paired by their names ignoring the case of ASCII letters, user symbols by the
// last component of their path. The jobs' own names, which are those of their directories, are not compared.
void CompareJobs(DiffCollector& collector, const CJOBX& a, const CJOBX& b, const DiffRules& rules);
