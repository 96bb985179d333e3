#include "foundation/framework/CException.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

CException::CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete != FALSE)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR buffer, UINT size) const
{
    if (buffer == nullptr || size == 0)
        return FALSE;
    const CString text = GetMessageText();
    const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(text.GetLength()), size - 1);
    std::memcpy(buffer, text.GetString(), length);
    buffer[length] = '\0';
    return TRUE;
}

CMemoryException::CMemoryException() : CException(FALSE) {}

CString CMemoryException::GetMessageText() const
{
    return "Out of memory.";
}

CInvalidArgException::CInvalidArgException() : CException(FALSE) {}

CString CInvalidArgException::GetMessageText() const
{
    return "An argument is not valid.";
}

CFileException::CFileException(int cause, LONG osError, CString fileName)
    : CException(TRUE), m_cause(cause), m_lOsError(osError), m_strFileName(std::move(fileName))
{
}

CString CFileException::GetMessageText() const
{
    static constexpr LPCSTR kReasons[] = {"no error",
                                          "an error occurred",
                                          "the file does not exist",
                                          "the path is not valid",
                                          "too many files are open",
                                          "access is denied",
                                          "the file is not open",
                                          "the current directory cannot be removed",
                                          "the directory is full",
                                          "the position is not valid",
                                          "a hardware error occurred",
                                          "the file is in use",
                                          "the file is locked",
                                          "the disk is full",
                                          "the end of the file was passed"};
    const bool known = m_cause >= none && m_cause <= endOfFile;
    const CString reason = kReasons[known ? m_cause : static_cast<int>(genericException)];
    return m_strFileName.IsEmpty() ? reason : m_strFileName + ": " + reason;
}

int CFileException::ErrnoToException(int error)
{
    switch (error)
    {
    case 0:
        return none;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
    case EINVAL:
    case ENAMETOOLONG:
        return badPath;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case ENOSPC:
    case EFBIG:
        return diskFull;
    case ESPIPE:
        return badSeek;
    case EIO:
        return hardIO;
    case EBUSY:
        return sharingViolation;
    default:
        return genericException;
    }
}

CArchiveException::CArchiveException(int cause, CString fileName)
    : CException(TRUE), m_cause(cause), m_strFileName(std::move(fileName))
{
}

CString CArchiveException::GetMessageText() const
{
    static constexpr LPCSTR kReasons[] = {"no error",
                                          "an error occurred",
                                          "the archive is open for loading only",
                                          "the archive ended too early",
                                          "the archive is open for storing only",
                                          "the archive holds a length that cannot be",
                                          "the archive holds another class",
                                          "the archive has an unknown version"};
    const bool known = m_cause >= none && m_cause <= badSchema;
    const CString reason = kReasons[known ? m_cause : static_cast<int>(genericException)];
    return m_strFileName.IsEmpty() ? reason : m_strFileName + ": " + reason;
}

void AfxThrowMemoryException()
{
    static CMemoryException the;
    throw &the;
}

void AfxThrowInvalidArgException()
{
    static CInvalidArgException the;
    throw &the;
}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName)
{
    throw new CFileException(cause, osError, fileName);
}

void AfxThrowArchiveException(int cause, LPCSTR fileName)
{
    throw new CArchiveException(cause, fileName);
}
