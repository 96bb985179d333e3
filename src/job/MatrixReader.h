// Complete reading of a job's matrix.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXmatrix;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXmatrix& matrix);
