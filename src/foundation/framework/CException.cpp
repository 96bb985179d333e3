#include "foundation/framework/CException.h"

#include "foundation/framework/CWnd.h"
#include "foundation/framework/Guarded.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

CException::CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

CException::~CException() = default;

CRuntimeClass* CException::GetThisClass()
{
    static CRuntimeClass theClass{"CException", static_cast<int>(sizeof(CException)), 0xFFFF, nullptr,
                                  CObject::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CException::GetRuntimeClass() const
{
    return GetThisClass();
}

void CException::Delete()
{
    if (m_bAutoDelete != FALSE)
        delete this;
}

CString CException::GetMessageText() const
{
    return {};
}

BOOL CException::GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    if (buffer == nullptr || size == 0)
        return FALSE;
    const CString text = GetMessageText();
    const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(text.GetLength()), size - 1);
    std::memcpy(buffer, text.GetString(), length);
    buffer[length] = '\0';
    return text.IsEmpty() ? FALSE : TRUE;
}

int CException::ReportError(UINT style, UINT /*textNumber*/)
{
    char text[512];
    GetErrorMessage(text, sizeof(text));
    return MessageBoxA(nullptr, text, "Error", style);
}

CMemoryException::CMemoryException(BOOL autoDelete) : CException(autoDelete) {}

CRuntimeClass* CMemoryException::GetThisClass()
{
    static CRuntimeClass theClass{"CMemoryException", static_cast<int>(sizeof(CMemoryException)), 0xFFFF, nullptr,
                                  CException::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CMemoryException::GetRuntimeClass() const
{
    return GetThisClass();
}

CString CMemoryException::GetMessageText() const
{
    return "Out of memory.";
}

CInvalidArgException::CInvalidArgException(BOOL autoDelete) : CException(autoDelete) {}

CRuntimeClass* CInvalidArgException::GetThisClass()
{
    static CRuntimeClass theClass{"CInvalidArgException", static_cast<int>(sizeof(CInvalidArgException)), 0xFFFF,
                                  nullptr, CException::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CInvalidArgException::GetRuntimeClass() const
{
    return GetThisClass();
}

CString CInvalidArgException::GetMessageText() const
{
    return "An argument is not valid.";
}

CFileException::CFileException(int cause, LONG osError, CString fileName)
    : CException(TRUE), m_cause(cause), m_lOsError(osError), m_strFileName(std::move(fileName))
{
}

CRuntimeClass* CFileException::GetThisClass()
{
    static CRuntimeClass theClass{"CFileException", static_cast<int>(sizeof(CFileException)), 0xFFFF, nullptr,
                                  CException::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CFileException::GetRuntimeClass() const
{
    return GetThisClass();
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
    case EEXIST:
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

CRuntimeClass* CArchiveException::GetThisClass()
{
    static CRuntimeClass theClass{"CArchiveException", static_cast<int>(sizeof(CArchiveException)), 0xFFFF, nullptr,
                                  CException::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CArchiveException::GetRuntimeClass() const
{
    return GetThisClass();
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
    static CMemoryException the(FALSE);
    throw &the;
}

void AfxThrowInvalidArgException()
{
    static CInvalidArgException the(FALSE);
    throw &the;
}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName)
{
    throw Guarded([&] { return new CFileException(cause, osError, fileName); });
}

void AfxThrowArchiveException(int cause, LPCSTR fileName)
{
    throw Guarded([&] { return new CArchiveException(cause, fileName); });
}
