#pragma once

#include "info/JobSummary.h"
#include "output/Output.h"
#include "reading/JobReader.h"

// Prints a summary as one JSON document. `read` is null after classic reading; else the facts about the board and the
// numbers of messages are added.
void PrintInfoJson(Output& output, const JobSummary& summary, const ReadJob* read);
