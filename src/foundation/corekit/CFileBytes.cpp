#include "foundation/corekit/CFileBytes.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/LinkBoundary.h"
#include "foundation/framework/FrameworkThrow.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#if defined(_WIN32)
#include <filesystem>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

bool CFileBytes::Load(const CString& path, const char* sourceFile, int line)
{
    Clear();
    if (LeadsOut(path))
        return false;
    const int error = ReadAll(path);
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

int CFileBytes::ReadAll(const CString& path)
{
    CInputFile file;
    if (const int error = file.Open(path); error != 0)
        return error;
    Allocate(file.Size());
    std::size_t used = 0;
    if (const int error = file.Read(m_buffer.get(), file.Size(), used); error != 0)
        return error;
    Finish(used);
    return 0;
}

bool CFilePieces::Open(const CString& path, const char* sourceFile, int line)
{
    if (LeadsOut(path))
        return false;
    if (const int error = m_file.Open(path); error != 0)
    {
        CKUtility::GetInstance()->Report(sourceFile, line, "read", path, error);
        return false;
    }
    m_sPath = path;
    m_sourceFile = sourceFile;
    m_nLine = line;
    m_nLeft = m_file.Size();
    return true;
}

bool CFilePieces::Next(std::size_t used)
{
    const std::size_t rest = m_nSize - used;
    if (m_nLeft != 0 && rest == m_nCapacity)
        Grow(used);
    else if (rest != 0)
        std::memmove(m_buffer.get(), m_buffer.get() + used, rest);
    m_nSize = rest;
    if (m_nLeft == 0)
        return false;
    const std::size_t wanted = std::min(m_nCapacity - rest, m_nLeft);
    std::size_t got = 0;
    const int error = m_file.Read(m_buffer.get() + rest, wanted, got);
    if (m_hash != nullptr)
        m_hash->Add({m_buffer.get() + rest, got});
    m_nSize += got;
    m_nLeft = got == wanted ? m_nLeft - got : 0;
    m_hasFailed = m_hasFailed || error != 0;
    if (error != 0)
        CKUtility::GetInstance()->Report(m_sourceFile, m_nLine, "read", m_sPath, error);
    return got > 0;
}

// Doubles the buffer and moves what follows the first `used` bytes to its start.
void CFilePieces::Grow(std::size_t used)
{
    const std::size_t capacity = m_buffer == nullptr ? std::min(m_nLeft, kPiece) : 2 * m_nCapacity;
    std::unique_ptr<char[], CFreeBlock> larger(static_cast<char*>(std::malloc(capacity)));
    if (!larger)
        AfxThrowMemoryException();
    if (m_buffer != nullptr)
        std::memcpy(larger.get(), m_buffer.get() + used, m_nSize - used);
    m_buffer = std::move(larger);
    m_nCapacity = capacity;
}

#if defined(_WIN32)

CInputFile::~CInputFile()
{
    if (m_file != nullptr)
        std::fclose(m_file);
}

int CInputFile::Open(const CString& path)
{
    if (path.Find('\0') >= 0)
        return EINVAL; // the system would take the text before a NUL for the whole path
    std::error_code error;
    const std::filesystem::path place(path.View());
    if (std::filesystem::exists(place, error) && !std::filesystem::is_regular_file(place, error))
        return EINVAL;
    m_file = std::fopen(path, "rb");
    if (m_file == nullptr)
        return errno;
    m_nSize = static_cast<std::size_t>(std::filesystem::file_size(place, error));
    return error.value();
}

int CInputFile::Read(char* to, std::size_t size, std::size_t& got)
{
    got = 0;
    Count(got, std::fread(to, 1, size, m_file));
    return std::ferror(m_file) != 0 ? EIO : 0;
}

#else

CInputFile::~CInputFile()
{
    if (m_file >= 0)
        ::close(m_file);
}

int CInputFile::Open(const CString& path)
{
    if (path.Find('\0') >= 0)
        return EINVAL; // the system would take the text before a NUL for the whole path
    // Opening a pipe without a writer would block, and a terminal could become the controlling terminal of the process.
    // Neither is a regular file, but that is only certain after opening.
    m_file = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    struct stat info = {};
    if (m_file < 0 || ::fstat(m_file, &info) != 0)
        return errno;
    if (!S_ISREG(info.st_mode))
        return S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    m_nSize = static_cast<std::size_t>(info.st_size);
    return 0;
}

int CInputFile::Read(char* to, std::size_t size, std::size_t& got)
{
    got = 0;
    while (got < size)
    {
        const ssize_t read = ::read(m_file, to + got, size - got);
        if (read == 0)
            break;
        if (read > 0)
            Count(got, static_cast<std::size_t>(read));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

#endif

// In the total of the process, too.
void CInputFile::Count(std::size_t& got, std::size_t more)
{
    got += more;
    CKUtility::GetInstance()->m_nBytesRead.fetch_add(more, std::memory_order_relaxed);
}
