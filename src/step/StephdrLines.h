// The lines of a step header's file.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXstephdr;

// The file "stephdr" as the header has it.
void ListLines(const CJOBXstephdr& header, CRecordLines& lines);
