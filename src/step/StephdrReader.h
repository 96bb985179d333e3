// Reading the header of a step completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXstephdr;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXstephdr& header);
