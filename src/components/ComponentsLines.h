// The lines of a components file, for saving it.
#pragma once

#include "reading/CAttributeTypes.h"
#include "saving/CMendedReferences.h"
#include "saving/CRecordLines.h"

class CJOBXcomponents;

// Each component has the comment with its position above it, whatever its number says. A component whose package is
// gone says -1, and so does a toeprint whose net is gone for its net and subnet.
void ListLines(const CJOBXcomponents& components, const CAttributeTypes& types, const CMendedReferences& references,
               CRecordLines& lines);
