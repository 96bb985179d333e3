// Complete reading of a step's EDA data.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXdata;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXdata& data);
