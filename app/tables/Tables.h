// Tables of the records of a job's steps: one row each, step by step in the order they were read.
#pragma once

#include "JOBXCLSDLL.h"
#include "output/Table.h"

Table NetsTable(const CJOBX& job);
Table ComponentsTable(const CJOBX& job);
Table PackagesTable(const CJOBX& job);
