#pragma once

#include "foundation/framework/CFile.h"

// The framework's text file. LF and CRLF both end a line when reading, a lone CR is data; "\n" is written as it is.
// All other bytes pass through, a NUL included.
class JOBX_API CStdioFile : public CFile
{
public:
    CStdioFile();
    // Opens at once; a failure raises CFileException.
    CStdioFile(LPCSTR fileName, UINT openFlags);
    explicit CStdioFile(std::FILE* stream); // takes the stream and closes it
    ~CStdioFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override;

    // The next line without its line end; FALSE and an empty text at the end of the file.
    virtual BOOL ReadString(CString& line);
    // The next line with its line end, which is always "\n", at most `size` - 1 characters and a terminator; the rest
    // of a longer line comes with the next call. Null at the end of the file. A `size` of 0 raises
    // CInvalidArgException.
    virtual LPSTR ReadString(LPSTR buffer, UINT size);
    // The text up to its terminator; no line end is added.
    virtual void WriteString(LPCSTR text);

    // The C library's stream, for its own printing and reading; null while no file is open.
    using CFile::m_pStream;
};
