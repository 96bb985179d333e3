#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkTypes.h"

#include <vector>

class CFile;

// A binary archive over a file: values one after the other, little-endian, without names or padding.
// Ownership: borrows the file, which must outlive it; the destructor closes the archive (not the file).
// Units:     counts and sizes in bytes, unless said otherwise.
// Results:   end of data, a length that cannot be read, loading from a storing archive (and the reverse) raise
//            CArchiveException; the file's own errors raise CFileException.
class JOBX_API CArchive
{
public:
    // What the archive is for.
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2 // the destructor neither flushes nor closes
    };
    // `bufferSize` in bytes; less than 128 is taken as 128. A buffer of the caller's is accepted and stays unused.
    CArchive(CFile* file, UINT mode, int bufferSize = 4096, void* buffer = nullptr);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    // Closes the archive; a failure to write the rest is dropped here (call Close to see it).
    ~CArchive();

    // Which way values go.
    BOOL IsLoading() const;
    BOOL IsStoring() const;
    CFile* GetFile() const; // null after Close and Abort

    // Reads up to `size` bytes and returns how many there were.
    UINT Read(void* buffer, UINT size);
    // Reads exactly `size` bytes; fewer raise the end-of-file archive exception.
    void ReadExactly(void* buffer, std::size_t size);
    // Stores exactly `size` bytes.
    void Write(const void* buffer, UINT size);
    // Hands everything stored so far to the file; when loading, puts the file's position behind what was read.
    void Flush();
    // Flushes and lets go of the file.
    void Close();
    // Lets go of the file and drops what was not handed to it yet.
    void Abort();

    // A count: 16 bits below 0xFFFF, else 0xFFFF and 32 bits below 0xFFFFFFFF, else that and 64 bits.
    void WriteCount(ULONGLONG count);
    ULONGLONG ReadCount();

    // Store one value in as many bytes as its type has, little-endian.
    CArchive& operator<<(BYTE value);
    CArchive& operator<<(WORD value);
    CArchive& operator<<(short value);
    CArchive& operator<<(int value);
    CArchive& operator<<(UINT value);
    CArchive& operator<<(__int64 value);
    CArchive& operator<<(ULONGLONG value);
    CArchive& operator<<(float value);
    CArchive& operator<<(double value);
    CArchive& operator<<(char value);
#if defined(_WIN32)
    CArchive& operator<<(LONG value);
    CArchive& operator<<(DWORD value);
#endif
    // One byte, 0 or 1.
    CArchive& operator<<(bool value);
    // The length (one byte below 0xFF; 0xFF and 16 bits below 0xFFFE; 0xFF, 0xFFFF and 32 bits below 0xFFFFFFFF; then
    // 64 bits), then the characters without terminator.
    CArchive& operator<<(const CString& value);
    CArchive& operator<<(const void*) = delete; // would be stored as a bool
    // Load one value of as many bytes as its type has, little-endian.
    CArchive& operator>>(BYTE& value);
    CArchive& operator>>(WORD& value);
    CArchive& operator>>(short& value);
    CArchive& operator>>(int& value);
    CArchive& operator>>(UINT& value);
    CArchive& operator>>(__int64& value);
    CArchive& operator>>(ULONGLONG& value);
    CArchive& operator>>(float& value);
    CArchive& operator>>(double& value);
    CArchive& operator>>(char& value);
#if defined(_WIN32)
    CArchive& operator>>(LONG& value);
    CArchive& operator>>(DWORD& value);
#endif
    // One byte; any but 0 is true.
    CArchive& operator>>(bool& value);
    // Also takes the wide form (0xFF, 0xFFFE, the length again, UTF-16 units), which becomes UTF-8.
    CArchive& operator>>(CString& value);

private:
    template <class T>
    JOBX_LOCAL void StoreValue(T value);
    template <class T>
    JOBX_LOCAL void LoadValue(T& value);
    void RequireStoring() const;
    void RequireLoading() const;
    void FlushStored();
    bool Refill();
    ULONGLONG LoadLength(bool& wide);
    [[noreturn]] void Throw(int cause) const;

    CFile* m_pFile;
    UINT m_nMode;
    std::size_t m_nBufferSize;
    std::vector<BYTE> m_buffer; // storing: not handed to the file yet; loading: read from it ahead
    std::size_t m_nAt = 0;      // next byte of the buffer to read, when loading
};
