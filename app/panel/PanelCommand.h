#pragma once

#include "output/Table.h"
#include "reading/JobReader.h"

// jobx panel: prints a table of the placements in the step of that name, including nested ones; without a name, in
// every step.
void RunPanel(const ReadOptions& options, const std::string& stepName, TableForm form);
