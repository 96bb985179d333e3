#include "write/StagingDirectory.h"

#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>
#include <vector>

#if !defined(_WIN32)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace
{
constexpr int kAttempts = 100; // to find a free name

[[noreturn]] void RaiseFailed(const char* operation, const fs::path& path, const std::error_code& error)
{
    throw ExitError(ExitCode::UnwritableOutput,
                    fmt::format("cannot {} \"{}\": {}", operation, Printable(path.string()), error.message()));
}

// Exchanges two directories in one step; false if the system cannot.
bool ExchangeNames(const fs::path& a, const fs::path& b, std::error_code& error)
{
#if defined(__linux__) && defined(RENAME_EXCHANGE)
    error.clear();
    if (::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0)
        return true;
    error = std::error_code(errno, std::generic_category());
    return errno != ENOSYS && errno != EINVAL && errno != ENOTSUP;
#else
    static_cast<void>(a);
    static_cast<void>(b);
    static_cast<void>(error);
    return false;
#endif
}

// A file or directory that can be flushed to the disk.
class OpenEntry
{
public:
    explicit OpenEntry(const fs::path& path) : m_path(path)
    {
#if !defined(_WIN32)
        m_file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (m_file < 0)
            RaiseFailed("flush", path, std::error_code(errno, std::generic_category()));
#endif
    }
    OpenEntry(const OpenEntry&) = delete;
    OpenEntry& operator=(const OpenEntry&) = delete;
    ~OpenEntry()
    {
#if !defined(_WIN32)
        ::close(m_file);
#endif
    }

    const fs::path& Path() const
    {
        return m_path;
    }
    std::error_code Flush() const
    {
#if !defined(_WIN32)
        // EINVAL: the file system cannot flush this kind of file.
        if (::fsync(m_file) != 0 && errno != EINVAL)
            return {errno, std::generic_category()};
#endif
        return {};
    }

private:
    fs::path m_path;
#if !defined(_WIN32)
    int m_file;
#endif
};

void Flush(const fs::path& path)
{
    if (const std::error_code error = OpenEntry(path).Flush())
        RaiseFailed("flush", path, error);
}

void FlushOrWarn(const OpenEntry& directory)
{
    if (const std::error_code error = directory.Flush())
        PrintWarning(fmt::format("cannot flush \"{}\": {}; the job is in its place, but a power failure could still "
                                 "undo that",
                                 Printable(directory.Path().string()), error.message()));
}

// Removes a directory with everything in it, keeping only one file open at a time.
void RemoveWithOneFile(const fs::path& top, std::error_code& error)
{
    std::vector<fs::path> left = {top};
    while (!left.empty())
    {
        const fs::path directory = left.back();
        std::vector<fs::path> entries;
        for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error))
            entries.push_back(entry->path());
        const std::size_t before = left.size();
        for (const fs::path& entry : entries)
            if (!error && fs::is_directory(fs::symlink_status(entry, error)))
                left.push_back(entry);
            else if (!error)
                fs::remove(entry, error);
        if (!error && left.size() == before)
        {
            fs::remove(directory, error);
            left.pop_back();
        }
        if (error)
            return;
    }
}

// The directory and everything in it.
void FlushTree(const fs::path& directory)
{
    std::error_code error;
    for (fs::recursive_directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error))
        if (!entry->is_symlink(error))
            Flush(entry->path());
    if (error)
        RaiseFailed("list", directory, error);
    Flush(directory);
}

// A bare name is in the current directory.
fs::path DirectoryOf(const fs::path& path)
{
    const fs::path parent = (path.has_filename() ? path : path.parent_path()).parent_path();
    return parent.empty() ? fs::path(".") : parent;
}
} // namespace

StagingDirectory::StagingDirectory(const fs::path& outputDirectory) : m_output(outputDirectory)
{
    MakeOutputDirectory();
    try
    {
        MakeStaging();
    }
    catch (...)
    {
        Remove();
        throw;
    }
}

StagingDirectory::~StagingDirectory()
{
    Remove();
}

void StagingDirectory::MakeOutputDirectory()
{
    std::error_code error;
    m_madeOutput = fs::create_directory(m_output, error);
    if (error)
        RaiseFailed("make the directory", m_output, error);
}

void StagingDirectory::MakeStaging()
{
    std::random_device random;
    std::error_code error;
    for (int attempt = 0; attempt < kAttempts; ++attempt)
    {
        const fs::path path = m_output / fmt::format(".jobx-{:08x}", random());
        if (fs::create_directory(path, error))
        {
            m_path = path;
            break;
        }
        if (error)
            RaiseFailed("make a directory in", m_output, error);
    }
    if (m_path.empty())
        RaiseFailed("make a directory in", m_output, std::make_error_code(std::errc::file_exists));
    fs::create_directory(Inside(), error);
    if (error)
        RaiseFailed("make a directory in", m_output, error);
}

void StagingDirectory::Remove() noexcept
{
    try
    {
        std::error_code error;
        if (!m_path.empty() && !m_isKept)
            fs::remove_all(m_path, error);
        if (error == std::errc::too_many_files_open || error == std::errc::too_many_files_open_in_system)
            RemoveWithOneFile(m_path, error);
        if (error)
            PrintWarning(fmt::format("cannot remove \"{}\": {}", Printable(m_path.string()), error.message()));
        if (m_madeOutput)
            fs::remove(m_output, error); // fails if it is not empty
    }
    catch (...) // leftovers do no harm
    {
    }
}

void StagingDirectory::MoveIntoPlace(const std::string& name, bool replace)
{
    // Data that a power failure could still destroy must not replace data that is safe.
    FlushTree(Inside() / name);
    // Opened first, because nothing may fail once the job is in its place.
    const OpenEntry output(m_output);
    const OpenEntry above(m_madeOutput ? DirectoryOf(m_output) : m_output);
    Exchange(name, replace);
    FlushOrWarn(output);
    if (m_madeOutput)
        FlushOrWarn(above);
}

void StagingDirectory::Exchange(const std::string& name, bool replace)
{
    const fs::path fresh = Inside() / name;
    const fs::path target = m_output / name;
    std::error_code error;
    if (!fs::exists(fs::symlink_status(target, error)))
    {
        fs::rename(fresh, target, error);
        if (error)
            RaiseFailed("make", target, error);
        return;
    }
    if (!replace)
        RaiseFailed("make", target, std::make_error_code(std::errc::file_exists));
    if (!ExchangeNames(fresh, target, error))
        return ReplaceByRenames(fresh, target, m_path / "old", m_isKept);
    if (error)
        RaiseFailed("replace", target, error);
}

void ReplaceByRenames(const fs::path& fresh, const fs::path& target, const fs::path& aside, bool& isTargetAside)
{
    isTargetAside = false;
    std::error_code error;
    fs::rename(target, aside, error);
    if (error)
        RaiseFailed("replace", target, error);
    fs::rename(fresh, target, error);
    if (!error)
        return;
    std::error_code backError;
    fs::rename(aside, target, backError);
    if (!backError)
        RaiseFailed("replace", target, error);
    isTargetAside = true;
    throw ExitError(ExitCode::UnwritableOutput,
                    fmt::format("cannot replace \"{}\": {}; its old contents are now in \"{}\"",
                                Printable(target.string()), error.message(), Printable(aside.string())));
}
