// Complete reading of a step.
#pragma once

#include "reading/CReadingContext.h"

class CJOBXstepObj;

// Appends the contents of the directory. The messages about its files are then in the context, in the order profile,
// header, layers by name, EDA data, netlists.
void ReadCompletely(const CReadingContext& context, const CString& stepDirectory, CJOBXstepObj& step);
