// The lines of the EDA files of a step, for saving them.
#pragma once

#include "reading/CAttributeTypes.h"
#include "saving/CMendedReferences.h"
#include "saving/CRecordLines.h"

class CJOBXdata;
class CJOBXeda;

// The file "data". Each net and package has the comment with its position above it, whatever its number says. Features
// whose layer or feature is gone are left out; a toeprint whose component is gone says -1. Outlines with geometry are
// printed from it, others as their keyword and parameters.
void ListLines(const CJOBXdata& data, const CAttributeTypes& types, const CMendedReferences& references,
               CRecordLines& lines);
// The file "shortf".
void ListLines(const CJOBXeda& eda, CRecordLines& lines);
