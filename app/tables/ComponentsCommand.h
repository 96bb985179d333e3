#pragma once

#include "output/Table.h"
#include "reading/JobReader.h"

// jobx components: prints a table of the components of every step read.
void RunComponents(const ReadOptions& options, TableForm form);
