// Reading the steps of a job completely.
#pragma once

#include "reading/CReadingContext.h"

class CJOBXsteps;
class CStringArray;

// As CJOBXsteps::ParseODBOfMFC. The messages about a step are delivered before the next one is read.
void ReadCompletely(const CReadingContext& context, const CString& stepsDirectory, const CStringArray& stepNames,
                    CJOBXsteps& steps);
