#pragma once

#include "JOBXCLSDLL.h"

#include <optional>

// The width of a line or arc, or the diameter of a hole, that a layer draws with a symbol: the number of a round or
// square symbol, "r10" or "s10". Only for layers that were read completely.
// Units:     millimetres.
// Results:   nothing for any other symbol, and for a size of 0, which draws nothing.
std::optional<double> SizeOfSymbol(const CJOBXlayer& layer, int number);
