#pragma once

#include "diff/DiffCollector.h"
#include "diff/JobChanges.h"
#include "output/JsonOutput.h"
#include "output/Output.h"

// Prints what changed in a few lines, and an empty line below. Differences that are in none of the changes are counted by
// place. Prints nothing if there is no difference.
void PrintChanges(Output& output, const JobChanges& changes, const DiffCollector& collector);

// Writes the changes as the member "changes" into an open object.
void WriteChanges(JsonOutput& json, const JobChanges& changes);
