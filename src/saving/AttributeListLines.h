// The lines of an attribute list.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXattributeList;

// The file "attrlist" as the list has it.
void ListLines(const CJOBXattributeList& list, CRecordLines& lines);
