#pragma once

#include "output/Table.h"
#include "reading/JobReader.h"

// jobx packages: prints a table of the packages of every step read.
void RunPackages(const ReadOptions& options, TableForm form);
