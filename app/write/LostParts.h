#pragma once

#include "JOBXCLSDLL.h"

#include <string>
#include <vector>

// One line for each part that a job may lack but that the job to be replaced has: rows of the matrix for steps and
// layers that are there, EDA data and netlists of steps, unless they are left out on purpose, and user symbols used by
// layers, which may also be read but not written. `job` was read at `path`.
std::vector<std::string> FindLostParts(const CJOBX& job, const std::string& path, const std::string& replaced,
                                       bool withEda);

// One line for each part with records in the job to be replaced, but none in `job`, or fewer than complete reading finds
// at `path`; and one for each part of the job to be replaced that cannot be read.
std::vector<std::string> FindLostRecords(const CJOBX& job, const std::string& path, const std::string& replaced,
                                         bool withEda);
