// Checks the numbers by which the files of a step refer to each other.
#pragma once

#include "reading/CReadingContext.h"

class CJOBXstepObj;

// Reports each layer, feature, component, toeprint, package, pin, net and subnet number of the EDA data and the
// components that leads nowhere. `directory` is the step's. Numbers that refer to a file that the step does not have
// are not checked.
void CheckReferences(const CReadingContext& context, const CString& directory, const CJOBXstepObj& step);
