#pragma once

#include "JobSummary.h"
#include "Output.h"

// Prints a summary for a person.
void PrintInfoText(Output& output, const JobSummary& summary);
