#pragma once

#include "foundation/framework/CObject.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkThrow.h"

// The framework's exceptions. They are thrown and caught as pointers; who catches one calls Delete() on it, which
// frees it when it was made for that throw and does nothing for the ones that always exist.
// Threads: an exception object is used by the thread that caught it.
class JOBX_API CException : public CObject
{
public:
    // `autoDelete`: Delete frees the object, which was made with new.
    explicit CException(BOOL autoDelete = TRUE);
    ~CException() override;
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Ends the life of a caught exception; the pointer must not be used afterwards.
    void Delete();
    // The reason in one line, without a line end; "" when the class gives none.
    virtual CString GetMessageText() const;
    // Writes the reason into `buffer`, cut at `size` bytes with its terminator. FALSE when there is no room at all, or
    // no reason. There is no help: its number is 0.
    virtual BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const;
    // Shows the reason in a message box and answers its button.
    virtual int ReportError(UINT style = 0, UINT textNumber = 0);

private:
    BOOL m_bAutoDelete;
};

// Memory is exhausted. The library throws one object that always exists.
class JOBX_API CMemoryException : public CException
{
public:
    // `autoDelete`: as for CException.
    explicit CMemoryException(BOOL autoDelete = TRUE);
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;
};

// An operation was given an argument that it cannot take, such as a bad index. The library throws one object that
// always exists.
class JOBX_API CInvalidArgException : public CException
{
public:
    // `autoDelete`: as for CException.
    explicit CInvalidArgException(BOOL autoDelete = TRUE);
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;
};

// A file operation failed.
class JOBX_API CFileException : public CException
{
public:
    // Why it failed.
    enum Cause
    {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };
    // `cause`: one of Cause; `osError`: the system's error number, -1 when unknown.
    explicit CFileException(int cause = none, LONG osError = -1, CString fileName = CString());
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;
    // The cause that fits a system error number.
    static int ErrnoToException(int error);

    int m_cause;           // one of Cause
    LONG m_lOsError;       // the system's error number, -1 when unknown
    CString m_strFileName; // as given to the operation
};

// An archive could not be stored or loaded.
class JOBX_API CArchiveException : public CException
{
public:
    // Why it failed.
    enum Cause
    {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema
    };
    // `cause`: one of Cause; `fileName`: the archive's file.
    explicit CArchiveException(int cause = none, CString fileName = CString());
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;

    int m_cause;           // one of Cause
    CString m_strFileName; // the archive's file, "" when it has none
};
