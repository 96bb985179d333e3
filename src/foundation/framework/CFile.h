#pragma once

#include "foundation/framework/CException.h"
#include "foundation/framework/CObject.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// The framework's binary file.
// Units:     positions, counts and lengths in bytes.
// Ownership: closes its file in the destructor; not copyable.
// Results:   Open answers FALSE; every other failure raises CFileException (deleted by who catches it), a null buffer
//            for a count above 0 raises CInvalidArgException. An operation on a closed file raises CFileException.
class JOBX_API CFile : public CObject
{
public:
    // How a file is opened: one access mode, and any of the others.
    enum OpenFlags : UINT
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,     // makes the file, and empties one that exists
        modeNoTruncate = 0x2000, // with modeCreate: keeps what an existing file holds
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    // What an offset counts from.
    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2
    };

    CFile();
    // Opens at once; a failure raises CFileException.
    CFile(LPCSTR fileName, UINT openFlags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    ~CFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Opens `fileName`; TRUE when done, else FALSE with the reason in `error` when that is given. An open file is
    // closed first. Only modeCreate makes or empties a file. A directory is refused. The share flags are accepted and
    // have no effect where the system has no such locks.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);
    // Whether a file is open.
    virtual BOOL IsOpen() const;
    // Reads up to `count` bytes and returns how many there were; fewer mean the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    // Writes exactly `count` bytes.
    virtual void Write(const void* buffer, UINT count);
    // Moves to `offset` bytes from the begin, the current position or the end; returns the new position. A position
    // past the end is kept, one before the begin raises CFileException.
    virtual ULONGLONG Seek(__int64 offset, UINT from);
    // The current position, and the length of the file.
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    // Cuts the file, or makes it longer with zero bytes, and moves to the new end.
    virtual void SetLength(ULONGLONG newLength);
    // Hands everything written to the system.
    virtual void Flush();
    // Closes; a failure to write the rest raises CFileException, the file is closed all the same. Nothing happens when
    // no file is open.
    virtual void Close();
    // Closes and drops every failure.
    virtual void Abort();

    // Moves to the first byte, or behind the last; the latter answers the length.
    void SeekToBegin();
    ULONGLONG SeekToEnd();
    virtual CString GetFilePath() const;  // as given to Open, "" when none is open
    virtual CString GetFileName() const;  // its last component
    virtual CString GetFileTitle() const; // its last component without the extension
    // Changes what the three above answer; renames nothing.
    virtual void SetFilePath(LPCSTR path);

    // Deletes a file; a directory is refused.
    static void Remove(LPCSTR fileName);
    // Renames a file or directory; an existing one is never replaced.
    static void Rename(LPCSTR oldName, LPCSTR newName);

protected:
    // What the stream was used for last: a switch needs a seek between.
    enum class LastUse
    {
        none,
        reading,
        writing
    };
    // Opens with the C library's buffer or without one; results as Open.
    BOOL OpenStream(LPCSTR fileName, UINT openFlags, CFileException* error, bool buffered);
    // To be called before each direct use of the stream: it is open for that use and was switched over to it.
    void BeginReading();
    void BeginWriting();
    // Raises CFileException with the cause that fits a system error number.
    [[noreturn]] void ThrowErrno(int error) const;

    std::FILE* m_pStream = nullptr;
    CString m_strFilePath;

private:
    void RequireOpen() const;

    CString m_strOpenedPath; // absolute: stays true when the current directory changes
    UINT m_nAccess = modeReadWrite;
    LastUse m_lastUse = LastUse::none;
};
