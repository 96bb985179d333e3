// Complete reading of a job's information.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXmisc;

// Appends the contents of the file.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXmisc& misc);
