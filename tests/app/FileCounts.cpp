#include "FileCounts.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

std::int64_t CountLines(const std::string& path, std::string_view beginning)
{
    std::ifstream file(path, std::ios::binary);
    std::int64_t count = 0;
    for (std::string line; std::getline(file, line);)
        count += line.starts_with(beginning) ? 1 : 0;
    return count;
}

std::int64_t CountLinesBelow(const std::string& directory, std::string_view fileName, std::string_view beginning)
{
    std::int64_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        count += CountLines((entry.path() / fileName).string(), beginning);
    return count;
}
