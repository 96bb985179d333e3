#pragma once

#include "info/JobSummary.h"
#include "output/Output.h"

// Which tables to print.
enum class InfoPart
{
    Layers,  // the matrix, and the layers and component files of every step
    Symbols, // the user symbols
    All,     // everything that the summary has
};

// Prints a summary as text and tables.
void PrintInfoTables(Output& output, const JobSummary& summary, InfoPart part);
