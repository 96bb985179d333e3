#pragma once

#include "JobReader.h"

// jobx info: prints what there is in a job, or in the compact models of its steps, for a person or as one JSON
// document.
void RunInfo(const ReadOptions& options, bool asJson, bool ofCompactModel);
