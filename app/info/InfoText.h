#pragma once

#include "info/JobSummary.h"
#include "output/Output.h"

// Prints a summary as text.
void PrintInfoText(Output& output, const JobSummary& summary);
