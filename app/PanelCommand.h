#pragma once

#include "JobReader.h"
#include "Table.h"

// jobx panel: prints a table of all that the step of that name repeats, nested steps too; without a name, of every
// step.
void RunPanel(const ReadOptions& options, const std::string& stepName, TableForm form);
