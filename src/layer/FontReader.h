// Complete reading of a job's font.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXfonts;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXfonts& fonts);
