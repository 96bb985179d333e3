#pragma once

namespace jobx
{
// Multiplies the lengths of an object and its lists; skips lists that cannot be rescaled. RescaleLengths.cpp has it for
// each class of the compact model, so that the sources of these classes need not include all lists of fields.
template <class Compact>
void RescaleLengths(Compact& record, double factor);
} // namespace jobx
