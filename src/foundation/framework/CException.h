#pragma once

#include "foundation/framework/CObject.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkThrow.h"

// The framework's exceptions. They are thrown and caught as pointers. The catcher calls Delete(), which frees an
// exception that was made for that throw and does nothing to the permanent ones.
// Threads:   an exception object is used by the thread that caught it.
class JOBX_API CException : public CObject
{
public:
    // With `autoDelete`, Delete frees the object, which was made with new.
    explicit CException(BOOL autoDelete = TRUE);
    ~CException() override;
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Deletes a caught exception; the pointer must not be used afterwards.
    void Delete();
    // The reason in one line, without a line end; "" if the class has none.
    virtual CString GetMessageText() const;
    // Writes the reason into `buffer`, cut at `size` bytes including the terminator. FALSE if there is no room at all
    // or no reason. There is no help; its number is 0.
    virtual BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const;
    // Shows the reason in a message box and returns the button pressed.
    virtual int ReportError(UINT style = 0, UINT textNumber = 0);

private:
    BOOL m_bAutoDelete;
};

// Memory is exhausted. The library throws a permanent object.
class JOBX_API CMemoryException : public CException
{
public:
    // `autoDelete`: as for CException.
    explicit CMemoryException(BOOL autoDelete = TRUE);
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;
};

// An operation got an argument that it does not accept, such as a bad index. The library throws a permanent object.
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
    // The reason.
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
    // `cause`: one of Cause; `osError`: the system's error number, -1 if unknown.
    explicit CFileException(int cause = none, LONG osError = -1, CString fileName = CString());
    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;
    CString GetMessageText() const override;
    // The cause for a system error number.
    static int ErrnoToException(int error);

    int m_cause;           // one of Cause
    LONG m_lOsError;       // the system's error number, -1 if unknown
    CString m_strFileName; // as given to the operation
};

// An archive could not be stored or loaded.
class JOBX_API CArchiveException : public CException
{
public:
    // The reason.
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
    CString m_strFileName; // the archive's file, "" if it has none
};
