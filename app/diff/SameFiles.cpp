#include "diff/SameFiles.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace
{
// Opens a file of a job unless links lead out of the job.
std::ifstream OpenInside(const std::string& job, const CString& path)
{
    std::error_code failed;
    const fs::path directory = fs::canonical(job, failed);
    const fs::path file = failed ? fs::path() : fs::canonical(fs::path(job) / std::string(path.View()), failed);
    const auto [end, rest] = std::mismatch(directory.begin(), directory.end(), file.begin(), file.end());
    if (failed || end != directory.end() || !fs::is_regular_file(file, failed))
        return {};
    return std::ifstream(file, std::ios::binary);
}
} // namespace

bool AreSameBytes(const std::string& jobA, const CJOBXcarriedFile& a, const std::string& jobB,
                  const CJOBXcarriedFile& b)
{
    if (a.GetSize() != b.GetSize())
        return false;
    std::ifstream fileA = OpenInside(jobA, a.GetPath());
    std::ifstream fileB = OpenInside(jobB, b.GetPath());
    if (!fileA.is_open() || !fileB.is_open())
        return false;
    std::array<char, 65536> bytesA{};
    std::array<char, 65536> bytesB{};
    do
    {
        fileA.read(bytesA.data(), bytesA.size());
        fileB.read(bytesB.data(), bytesB.size());
        if (fileA.gcount() != fileB.gcount() ||
            !std::equal(bytesA.begin(), bytesA.begin() + fileA.gcount(), bytesB.begin()))
            return false;
    } while (fileA && fileB);
    return true;
}
