// Reading the EDA data of a step completely.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXdata;

// Appends what the file holds.
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXdata& data);
