// The lines of the job's information file.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXmisc;

// The file "info" as the job's information has it.
void ListLines(const CJOBXmisc& misc, CRecordLines& lines);
