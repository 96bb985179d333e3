#pragma once

#include <string>

// The schema of what `jobx json` prints, made from the lists of fields.
std::string JobSchema();
