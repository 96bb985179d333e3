// Complete reading of a job's steps.
#pragma once

#include "reading/CReadingContext.h"

class CJOBXsteps;
class CStringArray;

// Like CJOBXsteps::ParseODBOfMFC. The messages about a step are delivered before the next one is read.
void ReadCompletely(const CReadingContext& context, const CString& stepsDirectory, const CStringArray& stepNames,
                    CJOBXsteps& steps);
