#include "reading/InsideJob.h"

#include "JOBXCLSDLL.h"
#include "output/ExitError.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#if !defined(_WIN32)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace
{
#if defined(O_PATH)
constexpr int kHold = O_PATH; // works even if the current directory may not be listed
#elif !defined(_WIN32)
constexpr int kHold = O_RDONLY;
#endif

[[noreturn]] void RaiseClosed(const std::string& path, const std::error_code& error)
{
    throw ExitError(ExitCode::UnreadableInput,
                    fmt::format("cannot enter the directory \"{}\": {}", Printable(path), error.message()));
}
} // namespace

#if defined(_WIN32)

InsideJob::InsideJob(const std::string& path)
{
    std::error_code error;
    m_before = fs::current_path(error).string();
    fs::current_path(path, error);
    if (error)
        RaiseClosed(path, error);
}

InsideJob::~InsideJob()
{
    std::error_code ignored;
    fs::current_path(m_before, ignored);
}

#else

InsideJob::InsideJob(const std::string& path) : m_before(::open(".", kHold | O_DIRECTORY | O_CLOEXEC))
{
    std::error_code error;
    if (m_before < 0 && (errno == EMFILE || errno == ENFILE)) // there would be no way back
        RaiseClosed(path, {errno, std::generic_category()});
    fs::current_path(path, error);
    if (!error)
        return;
    if (m_before >= 0)
        ::close(m_before);
    RaiseClosed(path, error);
}

InsideJob::~InsideJob()
{
    // If there is no way back, relative paths did not work before either. They must not lead into the job now.
    if (m_before < 0 || ::fchdir(m_before) != 0)
    {
        std::error_code ignored;
        fs::current_path("/", ignored);
    }
    if (m_before >= 0)
        ::close(m_before);
}

#endif

std::string PathOutside(const std::string& jobPath, const std::string& path)
{
    if (path == ".")
        return jobPath;
    if (!path.starts_with("./"))
        return path;
    return std::string(CKUtility::GetInstance()->CKPathCombine(jobPath.c_str(), path.substr(2).c_str()).View());
}

ReadLimits::ReadLimits(const std::string& directory, bool followLinks, unsigned long long maxEntries)
    : m_maxEntriesBefore(CKUtility::GetInstance()->GetListingLimit())
{
    CKUtility::GetInstance()->SetListingLimit(maxEntries);
    if (!followLinks)
        CKUtility::GetInstance()->SetLinkBoundary(directory.c_str());
}

ReadLimits::~ReadLimits()
{
    CKUtility::GetInstance()->SetListingLimit(m_maxEntriesBefore);
    CKUtility::GetInstance()->SetLinkBoundary("");
}
