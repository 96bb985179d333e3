#pragma once

#include "foundation/corekit/CByteHash.h"
#include "foundation/framework/CString.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

// A regular file opened for reading. Devices, pipes and sockets are never opened.
// Ownership: closes the file.
class CInputFile
{
public:
    CInputFile() = default;
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;
    ~CInputFile();

    // Returns 0 or the system's error number. An object opens only one file.
    int Open(const CString& path);
    // The size of the file when it was opened.
    std::size_t Size() const noexcept { return m_nSize; }
    // Reads until `size` bytes are read or the file ends; `got` is the number of bytes. Returns 0 or the system's error
    // number.
    int Read(char* to, std::size_t size, std::size_t& got);

private:
    static void Count(std::size_t& got, std::size_t more);

#if defined(_WIN32)
    std::FILE* m_file = nullptr;
#else
    int m_file = -1;
#endif
    std::size_t m_nSize = 0;
};

struct CFreeBlock
{
    void operator()(char* block) const noexcept { std::free(block); }
};

// The bytes of a file, piece by piece through a small buffer. So they are still in the processor's cache when they are
// used, and a large file needs no more memory than a small one.
// Ownership: owns the buffer and the file; the result of View is valid until the next call of Next.
class CFilePieces
{
public:
    static constexpr std::size_t kPiece = 262144;

    // Opens the file at `path` like CFileBytes::Load; View is then empty.
    bool Open(const CString& path, const char* sourceFile, int line);
    // Drops the first `used` bytes of the view and reads more of the file behind the rest. The buffer grows if the rest
    // fills it. False if there is nothing to add: at the end of the file, as long as it was when opened, or if it
    // cannot be read, which is reported to the diagnostics. Exhausted memory raises CMemoryException.
    bool Next(std::size_t used);
    std::string_view View() const noexcept { return {m_buffer.get(), m_nSize}; }
    // From now on, adds what is read to the hash, borrowed.
    void HashInto(CByteHash& hash) noexcept { m_hash = &hash; }
    // Whether the system could not read a part of the file.
    bool HasFailed() const noexcept { return m_hasFailed; }

private:
    void Grow(std::size_t used);

    CInputFile m_file;
    CString m_sPath;
    const char* m_sourceFile = "";
    int m_nLine = 0;
    std::unique_ptr<char[], CFreeBlock> m_buffer;
    std::size_t m_nCapacity = 0;
    std::size_t m_nSize = 0;
    std::size_t m_nLeft = 0; // in the file
    bool m_hasFailed = false;
    CByteHash* m_hash = nullptr;
};

// The bytes of a whole file in one buffer.
// Ownership: owns the buffer; the result of View is valid until the next Load or the end of the object.
class CFileBytes
{
public:
    static constexpr std::size_t kZeroBytes = 64; // always readable after the file's bytes

    // Reads the file at `path`, a regular file or a link to one. Devices, pipes and sockets are never opened. False if
    // it cannot be opened or read; then a diagnostic for `sourceFile` and `line` says why, and the object is empty. If
    // the file changes meanwhile, the result is what was read, at most its first size. Exhausted memory raises
    // CMemoryException.
    bool Load(const CString& path, const char* sourceFile, int line);

    // The bytes of the file, followed by kZeroBytes zeros; never a null address, even before the first Load.
    std::string_view View() const noexcept { return {m_buffer ? m_buffer.get() : kNothing, m_nSize}; }

private:
    static constexpr char kNothing[kZeroBytes] = {};

    void Clear() noexcept;
    void Allocate(std::size_t size);
    void Finish(std::size_t size) noexcept;
    int ReadAll(const CString& path); // 0 or the system's error number

    std::unique_ptr<char[], CFreeBlock> m_buffer;
    std::size_t m_nSize = 0;
};
