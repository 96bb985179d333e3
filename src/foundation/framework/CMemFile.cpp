#include "foundation/framework/CMemFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>

CMemFile::CMemFile(UINT growBytes) : m_nGrowBytes(growBytes) {}

CMemFile::CMemFile(const BYTE* buffer, UINT size) : m_nGrowBytes(0)
{
    Attach(const_cast<BYTE*>(buffer), size); // never written to
    m_bReadOnly = true;
}

CMemFile::CMemFile(BYTE* buffer, UINT size, UINT growBytes) : m_nGrowBytes(0)
{
    Attach(buffer, size, growBytes);
}

CMemFile::~CMemFile()
{
    CMemFile::Close();
}

CRuntimeClass* CMemFile::GetThisClass()
{
    static CRuntimeClass theClass{"CMemFile", static_cast<int>(sizeof(CMemFile)), 0xFFFF,
                                  []() -> CObject* { return new CMemFile; }, CFile::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CMemFile::GetRuntimeClass() const
{
    return GetThisClass();
}

void CMemFile::Attach(BYTE* buffer, UINT size, UINT growBytes)
{
    if (buffer == nullptr && size != 0)
        AfxThrowInvalidArgException();
    CMemFile::Close();
    m_pBuffer = buffer;
    m_nCapacity = size;
    m_nSize = growBytes == 0 ? size : 0;
    m_nGrowBytes = growBytes;
    m_bOwned = false;
    m_bFixed = growBytes == 0;
    m_bReadOnly = false;
}

BYTE* CMemFile::Detach()
{
    BYTE* const buffer = std::exchange(m_pBuffer, nullptr);
    CMemFile::Close();
    return buffer;
}

const BYTE* CMemFile::GetBufferPtr() const
{
    return m_pBuffer;
}

BOOL CMemFile::Open(LPCSTR fileName, UINT /*openFlags*/, CFileException* error)
{
    if (error != nullptr)
    {
        error->m_cause = CFileException::badPath;
        error->m_lOsError = -1;
        error->m_strFileName = fileName;
    }
    return FALSE;
}

BOOL CMemFile::IsOpen() const
{
    return TRUE;
}

UINT CMemFile::Read(void* buffer, UINT count)
{
    if (count == 0 || m_nPosition >= m_nSize)
        return 0;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    const auto at = static_cast<std::size_t>(m_nPosition);
    const std::size_t read = std::min<std::size_t>(count, m_nSize - at);
    std::memmove(buffer, m_pBuffer + at, read);
    m_nPosition += read;
    return static_cast<UINT>(read);
}

void CMemFile::Write(const void* buffer, UINT count)
{
    if (m_bReadOnly)
        AfxThrowFileException(CFileException::accessDenied);
    if (count == 0)
        return;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    const auto* source = static_cast<const BYTE*>(buffer);
    const bool ownBytes = m_pBuffer != nullptr && !std::less<>{}(source, static_cast<const BYTE*>(m_pBuffer)) &&
                          std::less<>{}(source, static_cast<const BYTE*>(m_pBuffer) + m_nSize);
    const std::ptrdiff_t ownAt = ownBytes ? source - m_pBuffer : 0;
    if (m_nPosition > std::numeric_limits<ULONGLONG>::max() - count)
        AfxThrowMemoryException();
    if (m_nPosition + count > m_nSize)
        Resize(m_nPosition + count);
    if (ownBytes)
        source = m_pBuffer + ownAt; // growing may have moved it
    std::memmove(m_pBuffer + m_nPosition, source, count);
    m_nPosition += count;
}

ULONGLONG CMemFile::Seek(__int64 offset, UINT from)
{
    if (from > end)
        AfxThrowInvalidArgException();
    const ULONGLONG base = from == begin ? 0 : from == current ? m_nPosition : m_nSize;
    const auto distance = static_cast<ULONGLONG>(offset);
    const ULONGLONG position = base + distance; // negative distances wrap around correctly
    const bool valid = offset < 0 ? base >= 0 - distance : position >= base;
    if (!valid)
        AfxThrowFileException(CFileException::badSeek);
    m_nPosition = position;
    return position;
}

ULONGLONG CMemFile::GetPosition() const
{
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const
{
    return m_nSize;
}

void CMemFile::SetLength(ULONGLONG newLength)
{
    if (m_bReadOnly)
        AfxThrowFileException(CFileException::accessDenied);
    Resize(newLength);
    m_nPosition = std::min(m_nPosition, newLength);
}

void CMemFile::Flush() {}

void CMemFile::Close()
{
    if (m_bOwned)
        std::free(m_pBuffer);
    m_pBuffer = nullptr;
    m_nSize = 0;
    m_nCapacity = 0;
    m_nPosition = 0;
    m_bOwned = true;
    m_bFixed = false;
    m_bReadOnly = false;
}

void CMemFile::Abort()
{
    CMemFile::Close();
}

void CMemFile::Resize(ULONGLONG size)
{
    Reserve(size);
    if (size > m_nSize)
        std::memset(m_pBuffer + m_nSize, 0, static_cast<std::size_t>(size) - m_nSize);
    m_nSize = static_cast<std::size_t>(size);
}

void CMemFile::Reserve(ULONGLONG size)
{
    if (size <= m_nCapacity)
        return;
    if (m_bFixed)
        AfxThrowFileException(CFileException::diskFull);
    if (size > static_cast<ULONGLONG>(std::numeric_limits<std::ptrdiff_t>::max()) / 2)
        AfxThrowMemoryException();
    // At least half as much again, so that many small writes take linear time.
    const std::size_t step = std::max(m_nGrowBytes, m_nCapacity / 2);
    const std::size_t capacity = std::max(static_cast<std::size_t>(size), m_nCapacity + step);
    auto* const block = static_cast<BYTE*>(m_bOwned ? std::realloc(m_pBuffer, capacity) : std::malloc(capacity));
    if (block == nullptr)
        AfxThrowMemoryException();
    if (!m_bOwned && m_nSize != 0)
        std::memcpy(block, m_pBuffer, m_nSize);
    m_pBuffer = block;
    m_nCapacity = capacity;
    m_bOwned = true;
}
