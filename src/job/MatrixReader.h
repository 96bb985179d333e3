// Reading the matrix of a job completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXmatrix;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXmatrix& matrix);
