#pragma once

#include "JobReader.h"
#include "Table.h"

// jobx nets: prints a table of the nets of every step read.
void RunNets(const ReadOptions& options, TableForm form);
