// Complete reading of a step's EDA data.
#pragma once

#include "reading/CSourceFile.h"

class CJOBXdata;
class CJOBXeda;

// Appends the contents of the file; that of an object of the whole folder is "shortf".
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXdata& data);
void ReadCompletely(const CReadingContext& context, CSourceFile& file, CJOBXeda& eda);
