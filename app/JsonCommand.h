#pragma once

#include "JobReader.h"
#include "JsonOutput.h"

// jobx json: streams everything that was read as one JSON document. A directory that the library takes for no job
// still gives the document, with the result 0, before the error is raised.
void RunJson(const ReadOptions& options, TextBytes textBytes);
