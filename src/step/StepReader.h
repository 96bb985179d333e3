// Reading a step completely.
#pragma once

#include "reading/CReadingContext.h"

class CJOBXstepObj;

// Appends what the directory holds. What is said about its files is in the context's messages afterwards, in the order
// profile, header, layers by name, EDA data, netlists.
void ReadCompletely(const CReadingContext& context, const CString& stepDirectory, CJOBXstepObj& step);
