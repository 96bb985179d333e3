#pragma once

#include "JobSummary.h"
#include "Output.h"

// Prints a summary as text.
void PrintInfoText(Output& output, const JobSummary& summary);
