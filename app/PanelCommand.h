#pragma once

#include "JobReader.h"
#include "Table.h"

// jobx panel: prints a table of the placements in the step of that name, including nested ones; without a name, in
// every step.
void RunPanel(const ReadOptions& options, const std::string& stepName, TableForm form);
