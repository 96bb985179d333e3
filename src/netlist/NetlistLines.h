// The lines of a netlist, for saving it.
#pragma once

#include "saving/CMendedReferences.h"
#include "saving/CRecordLines.h"

class CJOBXnetlist;

// The nets, then the points in the order of their lines in the source; new ones follow the point before them, those of a
// net without any older point come last. A net that has points but a number of another net before it, or a new one
// without a number, gets a free number. Points of no net get a number that no net has.
void ListLines(const CJOBXnetlist& netlist, const CMendedReferences& references, CRecordLines& lines);
