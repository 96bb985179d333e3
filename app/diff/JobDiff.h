#pragma once

#include "diff/DiffSinks.h"

// Reports every difference between the models of two jobs to the collector.
// Steps, layers and components files are paired by their names ignoring the case of ASCII letters, user symbols by the
// last component of their path. The jobs' names, taken from their directories, are not compared.
void CompareJobs(DiffCollector& collector, const CJOBX& a, const CJOBX& b, const DiffRules& rules);
