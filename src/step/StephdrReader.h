// Complete reading of a step's header.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXstephdr;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXstephdr& header);
