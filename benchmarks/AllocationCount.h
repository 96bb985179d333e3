// Counts the blocks that a program which links this allocates with operator new.
#pragma once

#include <cstdint>

// Blocks that this thread allocated and did not free yet, less those of other threads that it freed.
std::int64_t LiveBlocks();
