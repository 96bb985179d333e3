#pragma once

#include "foundation/framework/CString.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

// A regular file that is open for reading. Devices, pipes and sockets are never opened.
// Ownership: closes the file.
class CInputFile
{
public:
    CInputFile() = default;
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;
    ~CInputFile();

    // 0, or the system's error number. An object opens one file in its life.
    int Open(const CString& path);
    // What the file held when it was opened.
    std::size_t Size() const noexcept { return m_nSize; }
    // Reads until `size` bytes are read or the file ends: `got` says how many there were. 0, or the system's error
    // number.
    int Read(char* to, std::size_t size, std::size_t& got);

private:
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

// A file's bytes piece by piece through a buffer that stays small, so that they are still in the processor's cache when
// they are used and reading a large file takes no memory.
// Ownership: owns the buffer and the file; what View gives is valid until the next call of Next.
class CFilePieces
{
public:
    static constexpr std::size_t kPiece = 262144;

    // Opens the file at `path` as CFileBytes::Load does; View is empty then.
    bool Open(const CString& path, const char* sourceFile, int line);
    // Drops the first `used` bytes of the view and adds more of the file behind the rest; the buffer grows when the
    // rest fills it. False when nothing is left to add: at the end of what the file held when it was opened, or when it
    // cannot be read, of which a diagnostic tells. Exhausted memory raises CMemoryException.
    bool Next(std::size_t used);
    std::string_view View() const noexcept { return {m_buffer.get(), m_nSize}; }

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
};

// The bytes of a whole file in one buffer.
// Ownership: owns the buffer; what View gives is valid until the next Load or the end of the object.
class CFileBytes
{
public:
    static constexpr std::size_t kZeroBytes = 64; // always readable behind the file's bytes, and 0

    // Reads the file at `path`; only regular files, and links to them, are opened, never devices, pipes or sockets.
    // False when it cannot be opened or read: a diagnostic for `sourceFile` and `line` says why, and the object is
    // empty. A file that changes meanwhile gives what was read, at most its first size. Exhausted memory raises
    // CMemoryException.
    bool Load(const CString& path, const char* sourceFile, int line);

    // The file's bytes, kZeroBytes zeros behind them; never a null address, also before the first Load.
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
