// The lines of the matrix file.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXmatrix;

// The file as the matrix has it.
void ListLines(const CJOBXmatrix& matrix, CRecordLines& lines);
