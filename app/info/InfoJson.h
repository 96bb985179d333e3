#pragma once

#include "info/JobSummary.h"
#include "output/Output.h"

// Prints a summary as one JSON document.
void PrintInfoJson(Output& output, const JobSummary& summary);
