#pragma once

#include "JOBXCLSDLL.h"
#include "output/Output.h"

// Prints the contents of the compact model of every step, before and after its unit change, as text or as one JSON
// document.
void PrintCompactInfo(Output& output, const CJOBX& job, bool asJson);
