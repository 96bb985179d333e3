#include "foundation/framework/CFile.h"

#include "foundation/framework/Guarded.h"
#include "foundation/framework/PathText.h"

#include <cerrno>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace
{
constexpr UINT kAccessMask = CFile::modeWrite | CFile::modeReadWrite;

// The C library's positions may have only 32 bits.
int SeekStream(std::FILE* stream, __int64 offset, int whence)
{
#if defined(_WIN32)
    return _fseeki64(stream, offset, whence);
#else
    static_assert(sizeof(long) == sizeof(__int64), "positions need 64 bits");
    return std::fseek(stream, offset, whence);
#endif
}

__int64 TellStream(std::FILE* stream)
{
#if defined(_WIN32)
    return _ftelli64(stream);
#else
    return std::ftell(stream);
#endif
}

bool IsDirectory(const char* path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

// Of the entry itself, even if it is a link.
fs::file_status EntryStatus(const char* path)
{
    std::error_code ignored;
    return fs::symlink_status(path, ignored);
}

// Creates the file if there is none; keeps the contents of an existing one on request.
bool CreateFileAt(const char* path, bool keep)
{
    std::FILE* const stream = std::fopen(path, keep ? "ab" : "wb");
    return stream != nullptr && std::fclose(stream) == 0;
}

// Null with the reason in errno.
std::FILE* OpenFile(const char* path, UINT openFlags)
{
    const UINT access = openFlags & kAccessMask;
    if (access == kAccessMask)
    {
        errno = EINVAL;
        return nullptr;
    }
    if (IsDirectory(path)) // some systems would open it for reading
    {
        errno = EISDIR;
        return nullptr;
    }
    const bool create = (openFlags & CFile::modeCreate) != 0;
    const bool keep = (openFlags & CFile::modeNoTruncate) != 0;
    if (create && !keep && access == CFile::modeWrite)
        return std::fopen(path, "wb");
    if (create && !CreateFileAt(path, keep))
        return nullptr;
    return std::fopen(path, access == CFile::modeRead ? "rb" : "r+b"); // neither empties the file
}

CString AbsolutePath(const char* path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return error ? CString(path) : CString(absolute.string().c_str());
}

std::string_view FileNameOf(std::string_view path)
{
    const std::size_t separator = path.find_last_of(kPathSeparators);
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

[[noreturn]] void ThrowWithName(int error, LPCSTR fileName)
{
    AfxThrowFileException(CFileException::ErrnoToException(error), error, fileName);
}
} // namespace

CFile::CFile() = default;

CFile::CFile(LPCSTR fileName, UINT openFlags)
{
    CFileException error;
    if (CFile::Open(fileName, openFlags, &error) == FALSE)
        AfxThrowFileException(error.m_cause, error.m_lOsError, fileName);
}

CFile::~CFile()
{
    if (m_pStream != nullptr)
        std::fclose(m_pStream);
}

CRuntimeClass* CFile::GetThisClass()
{
    static CRuntimeClass theClass{"CFile", static_cast<int>(sizeof(CFile)), 0xFFFF,
                                  []() -> CObject* { return new CFile; }, CObject::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CFile::GetRuntimeClass() const
{
    return GetThisClass();
}

BOOL CFile::Open(LPCSTR fileName, UINT openFlags, CFileException* error)
{
    return OpenStream(fileName, openFlags, error, false);
}

BOOL CFile::OpenStream(LPCSTR fileName, UINT openFlags, CFileException* error, bool buffered)
{
    CFile::Close();
    const CString path(fileName);
    // Before the file is open, because nothing may raise after that.
    CString opened = Guarded([&] { return AbsolutePath(path); });
    errno = 0;
    m_pStream = Guarded([&] { return OpenFile(path, openFlags); });
    if (m_pStream == nullptr)
    {
        const int reason = errno;
        if (error != nullptr)
        {
            error->m_cause = CFileException::ErrnoToException(reason);
            error->m_lOsError = reason;
            error->m_strFileName = path;
        }
        return FALSE;
    }
    if (!buffered) // like the system's own files: writes take effect at once, reads see the current contents
        std::setvbuf(m_pStream, nullptr, _IONBF, 0);
    m_strFilePath = path;
    m_strOpenedPath = std::move(opened);
    m_nAccess = openFlags & kAccessMask;
    m_lastUse = LastUse::none;
    return TRUE;
}

BOOL CFile::IsOpen() const
{
    return m_pStream != nullptr ? TRUE : FALSE;
}

void CFile::RequireOpen() const
{
    if (m_pStream == nullptr)
        AfxThrowFileException(CFileException::invalidFile, -1, m_strFilePath);
}

void CFile::BeginReading()
{
    RequireOpen();
    if (m_nAccess == modeWrite)
        ThrowErrno(EACCES);
    // The C library requires a flush between writing and reading.
    if (m_lastUse == LastUse::writing && std::fflush(m_pStream) != 0)
        ThrowErrno(errno);
    std::clearerr(m_pStream); // the file may have grown since its end was reached
    m_lastUse = LastUse::reading;
}

void CFile::BeginWriting()
{
    RequireOpen();
    if (m_nAccess == modeRead)
        ThrowErrno(EACCES);
    // The C library requires a seek between reading and writing.
    if (m_lastUse == LastUse::reading && SeekStream(m_pStream, 0, SEEK_CUR) != 0)
        ThrowErrno(errno);
    m_lastUse = LastUse::writing;
}

UINT CFile::Read(void* buffer, UINT count)
{
    BeginReading();
    if (count == 0)
        return 0;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    errno = 0;
    const std::size_t read = std::fread(buffer, 1, count, m_pStream);
    if (read < count && std::ferror(m_pStream) != 0)
        ThrowErrno(errno);
    return static_cast<UINT>(read);
}

void CFile::Write(const void* buffer, UINT count)
{
    BeginWriting();
    if (count == 0)
        return;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    errno = 0;
    if (std::fwrite(buffer, 1, count, m_pStream) != count)
        ThrowErrno(errno);
}

ULONGLONG CFile::Seek(__int64 offset, UINT from)
{
    RequireOpen();
    if (from > end)
        AfxThrowInvalidArgException();
    const int whence = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
    if (SeekStream(m_pStream, offset, whence) != 0)
        AfxThrowFileException(CFileException::badSeek, errno, m_strFilePath);
    m_lastUse = LastUse::none;
    return GetPosition();
}

ULONGLONG CFile::GetPosition() const
{
    RequireOpen();
    const __int64 position = TellStream(m_pStream);
    if (position < 0)
        ThrowErrno(errno);
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::GetLength() const
{
    const ULONGLONG position = GetPosition();
    if (SeekStream(m_pStream, 0, SEEK_END) != 0)
        ThrowErrno(errno);
    const ULONGLONG length = GetPosition();
    if (SeekStream(m_pStream, static_cast<__int64>(position), SEEK_SET) != 0)
        ThrowErrno(errno);
    return length;
}

void CFile::SetLength(ULONGLONG newLength)
{
    if (newLength > static_cast<ULONGLONG>(std::numeric_limits<__int64>::max()))
        AfxThrowInvalidArgException();
    BeginWriting();
    Flush();
    std::error_code error;
    Guarded([&] { fs::resize_file(m_strOpenedPath.GetString(), newLength, error); });
    if (error)
        ThrowErrno(error.value());
    Seek(static_cast<__int64>(newLength), begin);
}

void CFile::Flush()
{
    if (m_pStream != nullptr && m_lastUse == LastUse::writing && std::fflush(m_pStream) != 0)
        ThrowErrno(errno);
}

void CFile::Close()
{
    if (m_pStream == nullptr)
        return;
    const CString path = std::exchange(m_strFilePath, CString());
    if (std::fclose(std::exchange(m_pStream, nullptr)) != 0)
        ThrowWithName(errno, path);
}

void CFile::Abort()
{
    if (m_pStream != nullptr)
        std::fclose(std::exchange(m_pStream, nullptr));
    m_strFilePath.Empty();
}

void CFile::SeekToBegin()
{
    Seek(0, begin);
}

ULONGLONG CFile::SeekToEnd()
{
    return Seek(0, end);
}

CString CFile::GetFilePath() const
{
    return m_strFilePath;
}

CString CFile::GetFileName() const
{
    return CString(FileNameOf(m_strFilePath.View()));
}

CString CFile::GetFileTitle() const
{
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}

void CFile::SetFilePath(LPCSTR path)
{
    m_strFilePath = path;
}

void CFile::Remove(LPCSTR fileName)
{
    const CString path(fileName);
    if (Guarded([&] { return fs::is_directory(EntryStatus(path)); }))
        ThrowWithName(EISDIR, path);
    if (std::remove(path) != 0)
        ThrowWithName(errno, path);
}

void CFile::Rename(LPCSTR oldName, LPCSTR newName)
{
    const CString from(oldName);
    const CString to(newName);
    if (Guarded([&] { return fs::exists(EntryStatus(to)); }))
        ThrowWithName(EEXIST, to);
    if (std::rename(from, to) != 0)
        ThrowWithName(errno, from);
}

void CFile::ThrowErrno(int error) const
{
    ThrowWithName(error, m_strFilePath);
}
