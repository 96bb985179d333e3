#pragma once

#include "foundation/framework/JobxExport.h"

class CJOBX;

// Replaces the names in a job that was read completely by numbered ones: NET1, COMP1, PART1. A name gets the same new
// name everywhere in the job: in the EDA data, netlists, components, intended shorts, texts and barcodes of layers, and
// values of text attributes and properties that are exactly the old name. A part number is also the value of a property whose
// name contains PART, MFR, MPN, MANUF, VENDOR or SUPPLIER, whatever the case. "$NONE$" stays.
// In the job's information, users and dates are emptied, and every value with a path; so is the header of the EDA data
// if it has one. Files that the library does not read are left out, because they may say anything.
// These stay: the names of the job, steps, layers, symbols, packages and pins, other attributes, properties such as
// VALUE or DESCRIPTION, other texts of layers, the program that saved the job, and comments in files.
// Results:   exhausted memory raises CMemoryException and may leave some of the old names.
// Threads:   one thread calls for each job.
JOBX_API void AnonymiseJob(CJOBX& job);
