// Complete reading of a layer's drill tools. Classic reading leaves them out.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXtool;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXtool& tools);
