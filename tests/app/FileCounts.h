// Counts lines of a job's files without the library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// How many lines of the file begin with the text; 0 when there is no such file.
std::int64_t CountLines(const std::string& path, std::string_view beginning);

// The same over every file of that name below a directory's subdirectories.
std::int64_t CountLinesBelow(const std::string& directory, std::string_view fileName, std::string_view beginning);
