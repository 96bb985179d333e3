#pragma once

#include "output/Table.h"
#include "reading/JobReader.h"

// jobx nets: prints a table of the nets of every step read.
void RunNets(const ReadOptions& options, TableForm form);
