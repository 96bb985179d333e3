// Jobs that the tests of this folder read.
#pragma once

#include "support/TempDir.h"

#include <string>

// A copy of the sample, below the directory; its path.
std::string CopySample(const TempDir& dir);

// A job of one step with a record of nearly every kind and little more, below the directory; its path.
std::string MakeSmallJob(const TempDir& dir);
