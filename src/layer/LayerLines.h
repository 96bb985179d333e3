// The lines of a features file.
#pragma once

#include "saving/CRecordLines.h"

class CAttributeTypes;
class CJOBXlayer;

// The features file of a layer, a profile or a user symbol as the object has it. `types` are the definitions of the
// job's attributes.
void ListLines(const CJOBXlayer& layer, const CAttributeTypes& types, CRecordLines& lines);
