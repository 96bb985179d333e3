#include "StagingDirectory.h"

#include "ExitError.h"
#include "Messages.h"
#include "Text.h"

#include <fmt/core.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>

#if defined(__linux__)
#include <fcntl.h>
#endif

namespace fs = std::filesystem;

namespace
{
constexpr int kAttempts = 100; // to find a name that is free

[[noreturn]] void RaiseFailed(const char* operation, const fs::path& path, const std::error_code& error)
{
    throw ExitError(ExitCode::UnwritableOutput,
                    fmt::format("cannot {} \"{}\": {}", operation, Printable(path.string()), error.message()));
}

// Lets two directories change places in one step; false when the system does not know how.
bool Exchange(const fs::path& a, const fs::path& b, std::error_code& error)
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
        if (error)
            PrintWarning(fmt::format("cannot remove \"{}\": {}", Printable(m_path.string()), error.message()));
        if (m_madeOutput)
            fs::remove(m_output, error); // stays when there is something in it
    }
    catch (...) // what is left over harms nobody
    {
    }
}

void StagingDirectory::MoveIntoPlace(const std::string& name, bool replace)
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
    if (!Exchange(fresh, target, error))
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
                    fmt::format("cannot replace \"{}\": {}; what was there is now \"{}\"", Printable(target.string()),
                                error.message(), Printable(aside.string())));
}
