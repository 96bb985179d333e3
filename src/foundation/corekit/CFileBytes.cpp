#include "foundation/corekit/CFileBytes.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/FrameworkThrow.h"

#include <cerrno>
#include <cstring>
#include <limits>

#if defined(_WIN32)
#include <cstdio>
#include <filesystem>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

bool CFileBytes::Load(const CString& path, const char* sourceFile, int line)
{
    Clear();
    // The system would take the text before a NUL for the whole path.
    const int error = path.Find('\0') >= 0 ? EINVAL : ReadAll(path);
    if (error == 0)
        return true;
    Clear();
    CKUtility::GetInstance()->Report(sourceFile, line, "read", path, error);
    return false;
}

void CFileBytes::Clear() noexcept
{
    m_buffer.reset();
    m_nSize = 0;
}

void CFileBytes::Allocate(std::size_t size)
{
    if (size > std::numeric_limits<std::ptrdiff_t>::max() - kZeroBytes)
        AfxThrowMemoryException();
    m_buffer.reset(static_cast<char*>(std::malloc(size + kZeroBytes)));
    if (!m_buffer)
        AfxThrowMemoryException();
}

void CFileBytes::Finish(std::size_t size) noexcept
{
    std::memset(m_buffer.get() + size, 0, kZeroBytes);
    m_nSize = size;
}

#if defined(_WIN32)

int CFileBytes::ReadAll(const CString& path)
{
    std::error_code error;
    const std::filesystem::path place(path.View());
    if (std::filesystem::exists(place, error) && !std::filesystem::is_regular_file(place, error))
        return EINVAL;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), &std::fclose);
    if (!file)
        return errno;
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(place, error));
    if (error)
        return error.value();
    Allocate(size);
    const std::size_t used = std::fread(m_buffer.get(), 1, size, file.get());
    if (std::ferror(file.get()) != 0)
        return EIO;
    Finish(used);
    return 0;
}

#else

namespace
{
class CDescriptor
{
public:
    explicit CDescriptor(int number) noexcept : m_number(number) {}
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;
    ~CDescriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    int Number() const noexcept { return m_number; }

private:
    int m_number;
};

// A pipe without a writer would block opening, a terminal could become the process's own; neither is regular, but that
// is known for certain only once it is open.
constexpr int kOpenFlags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
} // namespace

int CFileBytes::ReadAll(const CString& path)
{
    const CDescriptor file(::open(path, kOpenFlags));
    struct stat info = {};
    if (file.Number() < 0 || ::fstat(file.Number(), &info) != 0)
        return errno;
    if (!S_ISREG(info.st_mode))
        return S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    const auto size = static_cast<std::size_t>(info.st_size);
    Allocate(size);
    std::size_t used = 0;
    while (used < size)
    {
        const ssize_t got = ::read(file.Number(), m_buffer.get() + used, size - used);
        if (got == 0)
            break;
        if (got > 0)
            used += static_cast<std::size_t>(got);
        else if (errno != EINTR)
            return errno;
    }
    Finish(used);
    return 0;
}

#endif
