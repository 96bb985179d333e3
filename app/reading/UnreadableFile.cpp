#include "reading/UnreadableFile.h"

#include "reading/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

std::string ReasonNotToRead(const CString& path)
{
    const std::string name(path.View());
    std::error_code error;
    const fs::file_type type = fs::status(name, error).type();
    if (type == fs::file_type::not_found)
        return "is a broken link";
    if (!error && type != fs::file_type::regular)
        return "is not a regular file";
    errno = 0;
    std::FILE* const file = error ? nullptr : std::fopen(name.c_str(), "rb");
    if (file == nullptr)
        return "cannot be read: " + (error ? error : std::error_code(errno, std::generic_category())).message();
    std::fclose(file);
    return "";
}

bool LeadsOutOfJob(const CString& path)
{
    const CString boundary = Files().GetLinkBoundary();
    std::error_code error;
    const fs::path real = fs::canonical(std::string(path.View()), error);
    if (error || boundary.IsEmpty())
        return false;
    const fs::path limit(std::string(boundary.View()));
    return std::mismatch(limit.begin(), limit.end(), real.begin(), real.end()).first != limit.end();
}
