#include "write/WriteTarget.h"

#include "JOBXCLSDLL.h"
#include "output/ExitError.h"
#include "output/Text.h"
#include "write/JobEntries.h"

#include <fmt/core.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace
{
#if defined(_WIN32)
constexpr const char* kSeparators = "/\\:";
#else
constexpr const char* kSeparators = "/";
#endif

[[noreturn]] void RaiseUnwritable(const std::string& line)
{
    throw ExitError(ExitCode::UnwritableOutput, line);
}

void CheckName(const std::string& name)
{
    if (name.empty() || name == "." || name == ".." || name.find_first_of(kSeparators) != std::string::npos)
        throw ExitError(
            ExitCode::WrongUsage,
            fmt::format("the job's name {} cannot name a directory: give another with --name", Quoted(name)));
}

fs::path WithoutLastSeparator(const fs::path& path)
{
    return path.has_filename() ? path : path.parent_path();
}

// The type of the entry, following links.
fs::file_type TypeOf(const fs::path& path)
{
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (error && type != fs::file_type::not_found)
        RaiseUnwritable(fmt::format("cannot write to {}: {}", Quoted(path.string()), error.message()));
    return type;
}

// What an entry that is no directory is.
const char* NoDirectory(const fs::path& path)
{
    std::error_code ignored;
    const bool isBroken = fs::is_symlink(path, ignored) && !fs::exists(path, ignored);
    return isBroken ? "is a broken link" : "is not a directory";
}

void CheckOutputDirectory(const fs::path& directory)
{
    const fs::file_type type = TypeOf(directory);
    if (type == fs::file_type::directory)
        return;
    const fs::path entry = WithoutLastSeparator(directory);
    std::error_code ignored;
    if (type != fs::file_type::not_found || fs::is_symlink(entry, ignored))
        RaiseUnwritable(fmt::format("{} {}", Quoted(directory.string()), NoDirectory(entry)));
    const fs::path parent = entry.has_parent_path() ? entry.parent_path() : fs::path(".");
    if (TypeOf(parent) != fs::file_type::directory)
        RaiseUnwritable(fmt::format("cannot make the directory {}: {} {}", Quoted(directory.string()),
                                    Quoted(parent.string()), NoDirectory(parent)));
}

// Whether `place`, or the part of it that exists, is that directory or inside it, even through links and mounts.
bool IsIn(const fs::path& place, const fs::path& directory)
{
    std::error_code error;
    fs::path at = fs::weakly_canonical(fs::absolute(place, error), error);
    if (error)
        return false;
    for (;;)
    {
        if (fs::equivalent(at, directory, error) && !error)
            return true;
        const fs::path above = at.parent_path();
        if (above == at)
            return false;
        at = above;
    }
}
bool HasForeignEntries(const std::string& directory)
{
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error))
        if (!IsOwnDirectory(entry->path().filename().string().c_str()))
            return true;
    return bool(error);
}

bool HasMatrixRows(const std::string& directory)
{
    const CKUtility& files = *CKUtility::GetInstance();
    const CString place = files.FindPath(directory.c_str(), "matrix");
    CJOBXmatrix matrix;
    if (files.DoesFileExist(files.FindPath(place, "matrix")))
        matrix.ParseODBOfMFC(place);
    return matrix.m_arrSteps.GetSize() > 0 || matrix.m_arrLayers.GetSize() > 0;
}

// Whether the directory has the matrix of a job, or else steps and nothing foreign. Letter case is ignored.
bool LooksLikeJob(const std::string& directory)
{
    const CKUtility& files = *CKUtility::GetInstance();
    return HasMatrixRows(directory) ||
           (files.IsDir(files.FindPath(directory.c_str(), "steps")) && !HasForeignEntries(directory));
}

// Refuses everything but jobs and empty directories: a mistyped name must not cost other files.
void CheckReplacedDirectory(const fs::path& path)
{
    std::error_code error;
    const bool isEmpty = fs::is_empty(path, error);
    if (error)
        RaiseUnwritable(fmt::format("cannot read the directory {}: {}", Quoted(path.string()), error.message()));
    if (!isEmpty && !LooksLikeJob(path.string()))
        RaiseUnwritable(fmt::format("{} is neither a job nor empty: it is not replaced", Quoted(path.string())));
}
} // namespace

void CheckLinks(const WriteTarget& target, const std::string& jobPath)
{
    const fs::path path = fs::path(target.directory) / target.name;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(jobPath, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_symlink(error) && IsIn(entry->path(), path))
            RaiseUnwritable(fmt::format("{} has a part of the input job, by the link {}: it cannot be replaced",
                                        Quoted(path.string()), Quoted(entry->path().string())));
}

void CheckTarget(const WriteTarget& target, const std::string& jobPath)
{
    CheckName(target.name);
    CheckOutputDirectory(target.directory);
    const fs::path path = fs::path(target.directory) / target.name;
    if (IsIn(jobPath, path))
        RaiseUnwritable(
            fmt::format("{} is the input job or contains it: it cannot be replaced", Quoted(path.string())));
    if (IsIn(target.directory, jobPath))
        RaiseUnwritable(fmt::format("{} is inside the input job: nothing is written there", Quoted(path.string())));
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path, error)))
        return;
    if (TypeOf(path) != fs::file_type::directory)
        RaiseUnwritable(fmt::format("{} exists and {}", Quoted(path.string()), NoDirectory(path)));
    CheckReplacedDirectory(path);
    if (!target.replace)
        RaiseUnwritable(fmt::format("{} exists: --force replaces it", Quoted(path.string())));
}
