#pragma once

#include "foundation/framework/CException.h"
#include "foundation/framework/CObject.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// The framework's binary file.
// Units:     positions, counts and lengths in bytes.
// Ownership: closes its file in the destructor; not copyable.
// Results:   Open returns FALSE. Every other failure, including any operation on a closed file, raises CFileException
//            (deleted by the catcher). A null buffer for a count above 0 raises CInvalidArgException.
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
        modeCreate = 0x1000,     // creates the file, or empties an existing one
        modeNoTruncate = 0x2000, // with modeCreate: keeps the contents of an existing file
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    // The origin of an offset.
    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2
    };

    CFile();
    // Opens the file; a failure raises CFileException.
    CFile(LPCSTR fileName, UINT openFlags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    ~CFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Opens `fileName`, after closing an open file. Returns TRUE, or FALSE with the reason in `error`, if given. Only
    // modeCreate creates or empties a file. A directory is refused. The share flags are accepted, but have no effect on
    // systems without such locks.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);
    // Whether a file is open.
    virtual BOOL IsOpen() const;
    // Reads up to `count` bytes and returns how many there were; fewer than `count` mean the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    // Writes exactly `count` bytes.
    virtual void Write(const void* buffer, UINT count);
    // Moves to `offset` bytes from the start, the current position or the end; returns the new position. A position
    // past the end is kept, one before the start raises CFileException.
    virtual ULONGLONG Seek(__int64 offset, UINT from);
    // The current position, and the length of the file.
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    // Truncates the file, or extends it with zero bytes, and moves to the new end.
    virtual void SetLength(ULONGLONG newLength);
    // Passes everything written to the system.
    virtual void Flush();
    // Closes the file. If writing the rest fails, raises CFileException, but closes it anyway. Does nothing if no file
    // is open.
    virtual void Close();
    // Closes the file and ignores every failure.
    virtual void Abort();

    // Moves to the first byte, or past the last; the latter returns the length.
    void SeekToBegin();
    ULONGLONG SeekToEnd();
    virtual CString GetFilePath() const;  // as given to Open, "" if no file is open
    virtual CString GetFileName() const;  // its last component
    virtual CString GetFileTitle() const; // its last component without the extension
    // Changes the results of the three above; renames nothing.
    virtual void SetFilePath(LPCSTR path);

    // Deletes a file; a directory is refused.
    static void Remove(LPCSTR fileName);
    // Renames a file or directory; an existing one is never replaced.
    static void Rename(LPCSTR oldName, LPCSTR newName);

protected:
    // The last use of the stream: a switch needs a seek in between.
    enum class LastUse
    {
        none,
        reading,
        writing
    };
    // Opens with or without the C library's buffer; results as Open.
    BOOL OpenStream(LPCSTR fileName, UINT openFlags, CFileException* error, bool buffered);
    // Call one before each direct use of the stream. Checks that it is open for that use and switches to it.
    void BeginReading();
    void BeginWriting();
    // Raises CFileException with the cause for a system error number.
    [[noreturn]] void ThrowErrno(int error) const;

    std::FILE* m_pStream = nullptr;
    CString m_strFilePath;

private:
    void RequireOpen() const;

    CString m_strOpenedPath; // absolute, so it is valid even after the current directory changes
    UINT m_nAccess = modeReadWrite;
    LastUse m_lastUse = LastUse::none;
};
