#pragma once

#include "foundation/framework/CFile.h"

#include <cstddef>

// A file in memory that grows by at least `growBytes`; offsets and sizes in bytes.
// Ownership: owns its block, unless it was attached. Detach gives the block to the caller, who frees it with std::free
//            if the file made it.
// Results:   as CFile; exhausted memory raises CMemoryException.
class JOBX_API CMemFile : public CFile
{
public:
    // An empty file that grows by at least that many bytes.
    explicit CMemFile(UINT growBytes = 1024);
    CMemFile(const BYTE* buffer, UINT size); // attached for reading; writing raises CFileException
    // Attaches the buffer, like Attach.
    CMemFile(BYTE* buffer, UINT size, UINT growBytes = 0);
    ~CMemFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    // Uses the caller's block; the caller still owns it. With a growth of 0, its bytes are the file, and writing past
    // them raises CFileException. Otherwise the file starts empty, and moves to its own block when it outgrows the
    // caller's.
    void Attach(BYTE* buffer, UINT size, UINT growBytes = 0);
    // Gives up the block and empties the file. The caller owns the result, null if there was no block.
    BYTE* Detach();
    // The bytes of the file, valid until the next operation that changes the file; null if there are none.
    const BYTE* GetBufferPtr() const;

    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override; // FALSE: it has no name
    BOOL IsOpen() const override;                                                         // always TRUE
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override; // a gap after the old end is filled with zero bytes
    ULONGLONG Seek(__int64 offset, UINT from) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG GetLength() const override;
    // Truncates the file, or extends it with zero bytes. A position past the new end moves to it.
    void SetLength(ULONGLONG newLength) override;
    void Flush() override;
    void Close() override; // empties the file and frees its own block
    void Abort() override; // same as Close

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
