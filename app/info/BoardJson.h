#pragma once

#include "info/BoardFacts.h"
#include "output/JsonOutput.h"
#include "reading/JobReader.h"

// Writes the members "board", "panels", "otherSteps" and "reading" into an open object. Lengths are in millimetres; what
// the job does not say is null or missing from its list.
void WriteBoardFacts(JsonOutput& json, const ReadJob& read, const BoardFacts& facts);
