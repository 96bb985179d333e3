#pragma once

#include "JobReader.h"
#include "Table.h"

// jobx packages: prints a table of the packages of every step read.
void RunPackages(const ReadOptions& options, TableForm form);
