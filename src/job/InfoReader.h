// Reading a job's information completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXmisc;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXmisc& misc);
