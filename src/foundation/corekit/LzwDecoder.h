// Decodes the ".Z" format of the compress(1) program.
#pragma once

#include "foundation/framework/FrameworkTypes.h"

#include <functional>
#include <string_view>

enum class LzwResult
{
    Done,
    Damaged, // wrong format, an impossible code, or an end inside a code
    TooLong, // more than the limit
    Refused, // `write` did not take a block
};

// Decodes the whole file in `data` and passes the text to `write` in large blocks, at most `limit` bytes in total.
// `write` returns whether it took the block. If the result is not Done, discard what was passed before.
//
// The method is T. A. Welch, "A Technique for High-Performance Data Compression", IEEE Computer 17 (6), 1984, in the
// file format of compress(1): the bytes 1F 9D; a byte with the largest code width, 9 to 16 bits, whose top bit says
// whether code 256 clears the table ("block mode"); then codes of growing width from 9 bits on, lowest bit first, in
// groups of eight. A group begins at a byte boundary. Where the width changes, the rest of a group is unused.
LzwResult DecodeLzw(std::string_view data, ULONGLONG limit, const std::function<bool(std::string_view)>& write);
