// Reading the font of a job completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXfonts;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXfonts& fonts);
