// Counts the blocks of memory that a program which links this allocates, whatever with.
#pragma once

#include <cstdint>

// Blocks that this thread allocated and did not free yet, less those of other threads that it freed.
std::int64_t LiveBlocks();
