#pragma once

#include "output/JsonOutput.h"
#include "reading/JobReader.h"

// jobx json: streams everything that was read as one JSON document. For a directory that is not a job,
// it prints the document with the result 0 before it raises the error.
void RunJson(const ReadOptions& options, TextBytes textBytes);
