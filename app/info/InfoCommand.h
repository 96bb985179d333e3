#pragma once

#include "reading/JobReader.h"

// jobx info: prints what is in a job, or in the compact models of its steps, as text or as one JSON document.
void RunInfo(const ReadOptions& options, bool asJson, bool ofCompactModel);
