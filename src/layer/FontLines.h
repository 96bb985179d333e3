// The lines of the font file.
#pragma once

#include "saving/CRecordLines.h"

class CJOBXfonts;

// The file "standard" as the font has it.
void ListLines(const CJOBXfonts& font, CRecordLines& lines);
