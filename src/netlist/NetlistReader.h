// Complete reading of a netlist.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXnetlist;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXnetlist& netlist);
