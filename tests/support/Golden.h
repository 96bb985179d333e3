// Compares what a test wrote with what it is known to have to write.
#pragma once

#include <string>

// Fails for every file that is missing from `actual`, extra in it or differs from the one in `golden`, byte by byte.
// With the environment variable JOBX_WRITE_GOLDEN set, the golden folder is replaced by the actual one, and the test
// fails to say so; a person reads that difference before committing it.
void ExpectSameFolder(const std::string& actual, const std::string& golden);
