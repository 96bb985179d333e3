// Reads the ".Z" form of the compress(1) program.
#pragma once

#include "foundation/framework/FrameworkTypes.h"

#include <functional>
#include <string_view>

enum class LzwResult
{
    Done,
    Damaged, // not the format, a code that cannot be, or an end inside a code
    TooLong, // more than the limit
    Refused, // the output did not take a block
};

// Decodes the whole file in `data` and hands the text to `write` in large blocks, at most `limit` bytes in all; `write`
// answers whether it took the block. What was handed over before another result than Done is to be thrown away.
//
// The method is T. A. Welch, "A Technique for High-Performance Data Compression", IEEE Computer 17 (6), 1984, in the
// file format of compress(1): the bytes 1F 9D; a byte with the largest code width, 9 to 16 bits, and in its top bit
// whether code 256 empties the table ("block mode"); then codes of growing width from 9 bits on, lowest bit first, in
// groups of eight. A group begins at a byte; where the width changes the rest of a group is left unused.
LzwResult DecodeLzw(std::string_view data, ULONGLONG limit, const std::function<bool(std::string_view)>& write);
