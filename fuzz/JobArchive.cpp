#include "JobArchive.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace
{
constexpr std::string_view kMark = ">>> ";
constexpr std::string_view kNextMark = "\n>>> ";
constexpr std::size_t kMostFiles = 64;
constexpr std::size_t kMostParts = 8;
constexpr std::size_t kLongestPart = 64;

// The name below the folder; empty when nothing is left of it.
std::string SafeName(std::string_view name)
{
    std::string safe;
    for (std::size_t parts = 0; !name.empty() && parts < kMostParts;)
    {
        const std::size_t end = std::min(name.find('/'), name.size());
        std::string part(name.substr(0, std::min(end, kLongestPart)));
        name.remove_prefix(std::min(end + 1, name.size()));
        std::erase(part, '\0');
#if defined(_WIN32)
        std::erase_if(part, [](char c) { return std::string_view("\\:*?\"<>|").find(c) != std::string_view::npos; });
#endif
        if (part.empty() || part == "." || part == "..")
            continue;
        safe += (safe.empty() ? "" : "/") + part;
        ++parts;
    }
    return safe;
}

void MakeFile(const fs::path& path, std::string_view bytes)
{
    std::error_code ignored;
    fs::create_directories(path.parent_path(), ignored);
    if (std::FILE* const file = std::fopen(path.string().c_str(), "wb"))
    {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
}
} // namespace

std::string PackFile(std::string_view name, std::string_view bytes)
{
    return std::string(kMark).append(name).append("\n").append(bytes).append("\n");
}

void UnpackFiles(std::string_view archive, const std::string& folder)
{
    for (std::size_t files = 0; files < kMostFiles && archive.starts_with(kMark); ++files)
    {
        archive.remove_prefix(kMark.size());
        const std::size_t nameEnd = std::min(archive.find('\n'), archive.size());
        const std::string_view name = archive.substr(0, nameEnd);
        // The line end of the name may also be the one before the next mark: an empty file.
        const std::size_t next = std::min(archive.find(kNextMark, nameEnd), archive.size());
        std::string_view bytes = archive.substr(nameEnd, next - nameEnd);
        bytes.remove_prefix(std::min<std::size_t>(1, bytes.size()));
        if (next == archive.size() && bytes.ends_with('\n'))
            bytes.remove_suffix(1);
        archive.remove_prefix(std::min(next + 1, archive.size()));
        const std::string safe = SafeName(name);
        if (safe.empty())
            continue;
        const fs::path path = fs::path(folder) / safe;
        std::error_code ignored;
        if (name.ends_with('/'))
            fs::create_directories(path, ignored);
        else
            MakeFile(path, bytes);
    }
}
