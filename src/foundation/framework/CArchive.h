#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

#include <vector>

class CFile;

// A binary archive on a file: a sequence of values, little-endian, without names or padding.
// Ownership: borrows the file, which must outlive it; the destructor closes the archive (not the file).
// Units:     counts and sizes in bytes, unless stated otherwise.
// Results:   end of data, an invalid length, and loading from a storing archive or the reverse raise CArchiveException.
//            Errors of the file raise CFileException.
class JOBX_API CArchive
{
public:
    // The direction, and options.
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2 // the destructor neither flushes nor closes
    };
    // `bufferSize` is in bytes; less than 128 means 128. A caller's buffer is accepted and not used.
    CArchive(CFile* file, UINT mode, int bufferSize = 4096, void* buffer = nullptr);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    // Closes the archive and ignores a failure to write the rest. Call Close to see it.
    ~CArchive();

    // The direction of the archive.
    BOOL IsLoading() const;
    BOOL IsStoring() const;
    CFile* GetFile() const; // null after Close and Abort

    // Reads up to `size` bytes and returns how many there were.
    UINT Read(void* buffer, UINT size);
    // Reads exactly `size` bytes; fewer raise the end-of-file archive exception.
    void ReadExactly(void* buffer, std::size_t size);
    // Stores exactly `size` bytes.
    void Write(const void* buffer, UINT size);
    // Writes everything stored so far to the file. When loading, sets the file's position to the end of what was read.
    void Flush();
    // Flushes and releases the file.
    void Close();
    // Releases the file and drops what was not written yet.
    void Abort();

    // A count: 16 bits below 0xFFFF, else 0xFFFF and 32 bits below 0xFFFFFFFF, else that and 64 bits.
    void WriteCount(ULONGLONG count);
    ULONGLONG ReadCount();

    // Store one value, little-endian, in as many bytes as its type has.
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
    // 64 bits), then the characters without a terminator.
    CArchive& operator<<(const CString& value);
    CArchive& operator<<(const void*) = delete; // would be stored as a bool
    // Load one value, little-endian, of as many bytes as its type has.
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
    // One byte; anything but 0 is true.
    CArchive& operator>>(bool& value);
    // Also accepts the wide form (0xFF, 0xFFFE, another length, UTF-16 units) and converts it to UTF-8.
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
    std::vector<BYTE> m_buffer; // storing: not yet written to the file; loading: read ahead from it
    std::size_t m_nAt = 0;      // when loading, the next byte of the buffer to read
};
