#pragma once

#include "JobReader.h"
#include "Table.h"

// jobx components: prints a table of the components of every step read.
void RunComponents(const ReadOptions& options, TableForm form);
