// Attribute lists: the file "attrlist" of a job, step, layer or user symbol.
#pragma once

#include "foundation/CJOBXattributeList.h"
#include "reading/CSourceFile.h"

// Reads the file in this folder, if there is one, into the list of `owner`.
void ReadAttributeList(const CReadingContext& context, const CSourceFolder& folder, CJOBXattributed& owner);
