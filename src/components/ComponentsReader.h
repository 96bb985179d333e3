// Complete reading of a components file.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXcomponents;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXcomponents& components);
