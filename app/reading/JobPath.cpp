#include "reading/JobPath.h"

#include "output/ExitError.h"
#include "output/Text.h"
#include "reading/UnreadableFile.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace
{
[[noreturn]] void RaiseUnreadable(const std::string& line)
{
    throw ExitError(ExitCode::UnreadableInput, line);
}

// The system's reason why the file cannot be opened, "" if it can.
std::string ReasonNotToOpen(const std::string& path)
{
    errno = 0;
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return std::generic_category().message(errno);
    std::fclose(file);
    return {};
}

bool HasArchiveBytes(const std::string& path)
{
    struct Signature
    {
        std::size_t offset;
        std::string_view bytes;
    };
    static constexpr std::array<Signature, 7> kSignatures = {{
        {0, "\x1F\x8B"}, // gzip
        {0, "\x1F\x9D"}, // compress
        {0, "BZh"},      // bzip2
        {0, "\xFD"
            "7zXZ"},       // xz
        {0, "PK\x03\x04"}, // zip
        {0, "7z\xBC\xAF"}, // 7-Zip
        {257, "ustar"},    // tar
    }};
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return false;
    std::array<char, 512> buffer{};
    const std::string_view head(buffer.data(), std::fread(buffer.data(), 1, buffer.size(), file));
    std::fclose(file);
    return std::any_of(kSignatures.begin(), kSignatures.end(),
                       [&](const Signature& signature)
                       {
                           return head.size() >= signature.offset &&
                                  head.substr(signature.offset).substr(0, signature.bytes.size()) == signature.bytes;
                       });
}

bool HasArchiveName(const std::string& path)
{
    CString name(path.c_str());
    name.MakeLower();
    static constexpr std::array<std::string_view, 11> kEndings = {".tgz", ".tar", ".gz", ".z",   ".zip", ".7z",
                                                                  ".bz2", ".tbz", ".xz", ".txz", ".rar"};
    return std::any_of(kEndings.begin(), kEndings.end(),
                       [&](std::string_view ending) { return name.View().ends_with(ending); });
}

void RaiseNoDirectory(const std::string& path, fs::file_type type)
{
    std::error_code error;
    if (type == fs::file_type::not_found && fs::is_symlink(fs::symlink_status(path, error)))
        RaiseUnreadable(fmt::format("{} is a broken link", Quoted(path)));
    if (type == fs::file_type::not_found)
        RaiseUnreadable(fmt::format("{} does not exist", Quoted(path)));
    if (type == fs::file_type::regular && (HasArchiveBytes(path) || HasArchiveName(path)))
        RaiseUnreadable(fmt::format("{} is an archive: unpack it and give the resulting directory", Quoted(path)));
    RaiseUnreadable(
        fmt::format("{} is not a directory: a job is a directory with \"steps\" and \"matrix\" in it", Quoted(path)));
}
} // namespace

void CheckJobDirectory(const std::string& path)
{
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (error && type != fs::file_type::not_found)
        RaiseUnreadable(fmt::format("cannot read {}: {}", Quoted(path), error.message()));
    if (type != fs::file_type::directory)
        RaiseNoDirectory(path, type);
    if (const fs::directory_iterator entries(path, error); error)
        RaiseUnreadable(fmt::format("cannot read the directory {}: {}", Quoted(path), error.message()));
    // The library takes a file of that name for the directory, and finds no step in it.
    if (const CKUtility& files = *CKUtility::GetInstance(); files.DoesFileExist(files.FindPath(path.c_str(), "steps")))
        RaiseUnreadable(fmt::format("{} is not a job: its \"steps\" is not a directory", Quoted(path)));
}

void CheckAttributeFile(const std::string& path)
{
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::not_found)
        RaiseUnreadable(fmt::format("the attribute file {} does not exist", Quoted(path)));
    if (!error && type != fs::file_type::regular)
        RaiseUnreadable(fmt::format("the attribute file {} is not a regular file", Quoted(path)));
    if (const std::string reason = error ? error.message() : ReasonNotToOpen(path); !reason.empty())
        RaiseUnreadable(fmt::format("cannot read the attribute file {}: {}", Quoted(path), reason));
}

std::string NamedJobPath(const std::string& path)
{
    const CString name = CKUtility::GetInstance()->GetSegmntFromFilePath(path.c_str(), 2);
    if (name != "" && name != "." && name != "..")
        return path;
    std::error_code error;
    const fs::path full = fs::canonical(path, error);
    return error ? path : full.string();
}

std::string ProblemOfJob(const std::string& path, const FailedOperations& failed, JOBXway way,
                         const std::string& toldOfMatrix)
{
    const CKUtility* const files = CKUtility::GetInstance();
    const auto missing = [&](const char* what, const CString& place)
    {
        const std::string reason = failed.ReasonFor(place);
        if (reason.empty())
            return fmt::format("{} is not a job: it has no {}", Quoted(path), what);
        return fmt::format("cannot read {}: {}", Quoted(place.View()), reason);
    };
    const CString steps = files->FindPath(path.c_str(), "steps");
    if (!files->DoesFileOrDirExist(steps))
        return missing("directory \"steps\"", steps);
    const CString matrix = files->FindPath(path.c_str(), "matrix");
    if (!files->DoesFileOrDirExist(matrix))
        return missing("directory \"matrix\"", matrix);
    const CString file = files->FindPath(matrix, "matrix");
    // Complete reading reports no failed operation for an entry that is no file.
    std::error_code ignored;
    if (way == JOBXway::Complete && !files->DoesFileExist(file) && failed.ReasonFor(file).empty() &&
        fs::exists(fs::symlink_status(std::string(file.View()), ignored)))
        return fmt::format("cannot read {}: it {}", Quoted(file.View()), ReasonNotToRead(file));
    if (!files->DoesFileExist(file))
        return missing("file \"matrix/matrix\"", file);
    const std::string told = failed.ReasonFor(file);
    std::string reason = told.empty() ? ReasonNotToOpen(std::string(file.View())) : told;
    if (reason.empty())
        reason = toldOfMatrix;
    return fmt::format("cannot read {}{}{}", Quoted(file.View()), reason.empty() ? "" : ": ", reason);
}
