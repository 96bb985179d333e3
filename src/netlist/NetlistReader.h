// Reading a netlist completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXnetlist;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXnetlist& netlist);
