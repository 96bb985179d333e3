// The lines of a drill tools file.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXtool;

// The file "tools" as the object has it.
void ListLines(const CJOBXtool& tools, CRecordLines& lines);
