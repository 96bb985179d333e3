#pragma once

#include "JOBXCLSDLL.h"

#include <string>

// The schema of what `jobx json` prints after reading in that way, made from the lists of fields.
std::string JobSchema(JOBXway way);
