// How many records a job has of the kinds that have most.
#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>

// Features of layers and symbols.
std::int64_t CountFeatures(const CJOBX& job);

// References to features that the net has.
std::int64_t CountNetFeatures(const CJOBXdataNet& net);
// That all nets of the job have.
std::int64_t CountNetFeatures(const CJOBX& job);
