// Complete reading of a job in the scratch folder.
#pragma once

#include <string_view>

// Reads the job in that folder completely, with messages, and scales it.
void ReadJobCompletely(const char* directory);

// Puts the input in the place of that file of a small job, and reads the job as above. Each file has a job of its own.
void ReadFileCompletely(const char* file, std::string_view input);
