#pragma once

#include "JobSummary.h"
#include "Output.h"

// Prints a summary as one JSON document.
void PrintInfoJson(Output& output, const JobSummary& summary);
