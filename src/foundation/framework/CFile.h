#pragma once

#include "foundation/framework/CException.h"
#include "foundation/framework/CObject.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// The framework's binary file.
// Ownership: closes its file in the destructor; not copyable.
// Results:   Open answers FALSE; every other failure raises CFileException (deleted by who catches it).
// Threads:   one thread at a time.
class JOBX_API CFile : public CObject
{
public:
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

    static const CRuntimeClass* GetThisClass();
    const CRuntimeClass* GetRuntimeClass() const override;

    // Opens `fileName`; TRUE when done, else FALSE with the reason in `error` when that is given. An open file is closed
    // first. The share flags are accepted and have no effect where the system has no such locks.
    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr);
    virtual BOOL IsOpen() const;
    // Reads up to `count` bytes and returns how many there were; fewer mean the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    // Moves to `offset` bytes from the begin, the current position or the end; returns the new position.
    virtual ULONGLONG Seek(__int64 offset, UINT from);
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG newLength);
    // Hands everything written to the system.
    virtual void Flush();
    // Closes; a failure to write the rest raises CFileException, the file is closed all the same.
    virtual void Close();
    // Closes and drops every failure.
    virtual void Abort();

    void SeekToBegin();
    ULONGLONG SeekToEnd();
    CString GetFilePath() const; // as given to Open, "" when none is open
    CString GetFileName() const; // its last component
    void SetFilePath(LPCSTR path);

    static void Remove(LPCSTR fileName);
    static void Rename(LPCSTR oldName, LPCSTR newName);

protected:
    [[noreturn]] void ThrowErrno(int error) const;
    std::FILE* m_pStream = nullptr;
    CString m_strFilePath;
};

// A file in memory that grows by `growBytes`; offsets and sizes in bytes.
// Ownership: owns its block, unless one was attached; Detach hands the block to the caller, who frees it with std::free.
class JOBX_API CMemFile : public CFile
{
public:
    explicit CMemFile(UINT growBytes = 1024);
    CMemFile(const BYTE* buffer, UINT size); // attached for reading; not owned
    ~CMemFile() override;

    static const CRuntimeClass* GetThisClass();
    const CRuntimeClass* GetRuntimeClass() const override;

    // Uses the caller's block: with a growth of 0 it is never reallocated, and writing past it raises CFileException.
    void Attach(BYTE* buffer, UINT size, UINT growBytes = 0);
    // Gives up the block and empties the file; the caller owns what it gets (null when there was none).
    BYTE* Detach();
    // The file's bytes, valid until the next operation that changes the file.
    const BYTE* GetBufferPtr() const;

    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override; // FALSE: has no name
    BOOL IsOpen() const override;
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;
    ULONGLONG Seek(__int64 offset, UINT from) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG newLength) override;
    void Flush() override;
    void Close() override;
    void Abort() override;

private:
    void Reserve(std::size_t size);

    BYTE* m_pBuffer = nullptr;
    std::size_t m_nSize = 0;
    std::size_t m_nCapacity = 0;
    std::size_t m_nPosition = 0;
    std::size_t m_nGrowBytes;
    bool m_bOwned = true;
};

// The framework's text file. LF and CRLF both end a line when reading; "\n" is written as it is.
class JOBX_API CStdioFile : public CFile
{
public:
    CStdioFile();
    CStdioFile(LPCSTR fileName, UINT openFlags);
    explicit CStdioFile(std::FILE* stream); // takes the stream and closes it
    ~CStdioFile() override;

    static const CRuntimeClass* GetThisClass();
    const CRuntimeClass* GetRuntimeClass() const override;

    // The next line without its line end; FALSE at the end of the file.
    BOOL ReadString(CString& line);
    // The next line with its line end, at most `size` - 1 characters and a terminator; null at the end of the file.
    LPSTR ReadString(LPSTR buffer, UINT size);
    void WriteString(LPCSTR text);
};
