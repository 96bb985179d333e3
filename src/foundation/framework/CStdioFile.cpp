#include "foundation/framework/CStdioFile.h"

#include <cerrno>
#include <cstring>

namespace
{
constexpr std::size_t kLinePiece = 512;

// How many bytes of a line std::fgets read into a buffer that was filled with line feeds. If the terminator follows the
// first line feed, that belongs to the line. Otherwise it is an original one, and the terminator is right before it.
// This works even if the line contains NUL.
std::size_t LengthRead(const char* buffer, std::size_t size)
{
    const auto* const feed = static_cast<const char*>(std::memchr(buffer, '\n', size));
    if (feed == nullptr)
        return size - 1;
    const auto at = static_cast<std::size_t>(feed - buffer);
    return at + 1 < size && feed[1] == '\0' ? at + 1 : at - 1;
}
} // namespace

CStdioFile::CStdioFile() = default;

CStdioFile::CStdioFile(LPCSTR fileName, UINT openFlags)
{
    CFileException error;
    if (CStdioFile::Open(fileName, openFlags, &error) == FALSE)
        AfxThrowFileException(error.m_cause, error.m_lOsError, fileName);
}

CStdioFile::CStdioFile(std::FILE* stream)
{
    m_pStream = stream;
}

CStdioFile::~CStdioFile() = default;

CRuntimeClass* CStdioFile::GetThisClass()
{
    static CRuntimeClass theClass{"CStdioFile", static_cast<int>(sizeof(CStdioFile)), 0xFFFF,
                                  []() -> CObject* { return new CStdioFile; }, CFile::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CStdioFile::GetRuntimeClass() const
{
    return GetThisClass();
}

BOOL CStdioFile::Open(LPCSTR fileName, UINT openFlags, CFileException* error)
{
    return OpenStream(fileName, openFlags, error, true);
}

BOOL CStdioFile::ReadString(CString& line)
{
    BeginReading();
    line.Empty();
    char piece[kLinePiece];
    bool any = false;
    for (;;)
    {
        std::memset(piece, '\n', sizeof(piece));
        errno = 0;
        if (std::fgets(piece, sizeof(piece), m_pStream) == nullptr)
            break;
        any = true;
        const std::size_t length = LengthRead(piece, sizeof(piece));
        const bool ended = piece[length - 1] == '\n'; // never empty
        line.Append(piece, static_cast<int>(ended ? length - 1 : length));
        if (ended)
        {
            if (line.GetLength() > 0 && line[line.GetLength() - 1] == '\r')
                line.Truncate(line.GetLength() - 1);
            return TRUE;
        }
    }
    if (std::ferror(m_pStream) != 0)
        ThrowErrno(errno);
    return any ? TRUE : FALSE;
}

LPSTR CStdioFile::ReadString(LPSTR buffer, UINT size)
{
    if (buffer == nullptr || size == 0)
        AfxThrowInvalidArgException();
    BeginReading();
    errno = 0;
    UINT length = 0;
    while (length + 1 < size)
    {
        int character = std::getc(m_pStream);
        if (character == '\r')
        {
            const int next = std::getc(m_pStream);
            if (next == '\n')
                character = '\n';
            else
                std::ungetc(next, m_pStream); // does nothing at the end of the file
        }
        if (character == EOF)
            break;
        buffer[length++] = static_cast<char>(character);
        if (character == '\n')
            break;
    }
    if (std::ferror(m_pStream) != 0)
        ThrowErrno(errno);
    buffer[length] = '\0';
    return length > 0 || size == 1 ? buffer : nullptr;
}

void CStdioFile::WriteString(LPCSTR text)
{
    if (text == nullptr)
        AfxThrowInvalidArgException();
    BeginWriting();
    errno = 0;
    if (std::fputs(text, m_pStream) < 0)
        ThrowErrno(errno);
}
