#pragma once

#include "foundation/framework/CFile.h"

#include <cstddef>

// A file in memory that grows by at least `growBytes`; offsets and sizes in bytes.
// Ownership: owns its block, unless one was attached; Detach hands the block to the caller, who frees one that the file
//            made with std::free.
// Results:   as CFile; exhausted memory raises CMemoryException.
class JOBX_API CMemFile : public CFile
{
public:
    // An empty file that grows by at least so many bytes.
    explicit CMemFile(UINT growBytes = 1024);
    CMemFile(const BYTE* buffer, UINT size); // attached for reading: writing raises CFileException
    // Attached, as by Attach.
    CMemFile(BYTE* buffer, UINT size, UINT growBytes = 0);
    ~CMemFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Uses the caller's block, which the caller keeps. With a growth of 0 its bytes are the file, and writing past them
    // raises CFileException. With another growth the file starts empty, and moves to a block of its own when it
    // outgrows the caller's.
    void Attach(BYTE* buffer, UINT size, UINT growBytes = 0);
    // Gives up the block and empties the file; the caller owns what it gets (null when there was none).
    BYTE* Detach();
    // The file's bytes, valid until the next operation that changes the file; null when there are none.
    const BYTE* GetBufferPtr() const;

    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override; // FALSE: has no name
    BOOL IsOpen() const override;                                                         // always TRUE
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override; // a gap behind the old end is filled with zero bytes
    ULONGLONG Seek(__int64 offset, UINT from) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    // Cuts the file, or makes it longer with zero bytes; a position past a nearer end moves to it.
    void SetLength(ULONGLONG newLength) override;
    void Flush() override;
    void Close() override; // empties the file and frees its own block
    void Abort() override; // as Close

private:
    void Resize(ULONGLONG size);
    void Reserve(ULONGLONG size);

    BYTE* m_pBuffer = nullptr;
    std::size_t m_nSize = 0;
    std::size_t m_nCapacity = 0;
    ULONGLONG m_nPosition = 0;
    std::size_t m_nGrowBytes;
    bool m_bOwned = true;
    bool m_bFixed = false; // never leaves its block
    bool m_bReadOnly = false;
};
