// The whole of a step as JSON.
#pragma once

#include "JsonOutput.h"

// One object.
void WriteStep(JsonOutput& json, const CJOBXstepObj& step);
