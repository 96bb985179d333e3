#pragma once

#include "foundation/framework/CString.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

// The bytes of a whole file in one buffer.
// Ownership: owns the buffer; what View gives is valid until the next Load or the end of the object.
// Threads:   different objects may be used at once; sharing one needs the caller's lock.
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

    struct Free
    {
        void operator()(char* block) const noexcept { std::free(block); }
    };

    void Clear() noexcept;
    void Allocate(std::size_t size);
    void Finish(std::size_t size) noexcept;
    int ReadAll(const CString& path); // 0 or the system's error number

    std::unique_ptr<char[], Free> m_buffer;
    std::size_t m_nSize = 0;
};
