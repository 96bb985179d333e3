#pragma once

#include "JOBXCLSDLL.h"
#include "Output.h"

// Prints what the compact model of every step holds, before and after its unit change, for a person or as one JSON
// document.
void PrintCompactInfo(Output& output, const CJOBX& job, bool asJson);
