// Reading a components file completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXcomponents;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXcomponents& components);
