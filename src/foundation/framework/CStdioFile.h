#pragma once

#include "foundation/framework/CFile.h"

// The framework's text file. When reading, LF and CRLF both end a line, a lone CR is data. "\n" is written unchanged.
// All other bytes, including NUL, are passed through.
class JOBX_API CStdioFile : public CFile
{
public:
    CStdioFile();
    // Opens the file; a failure raises CFileException.
    CStdioFile(LPCSTR fileName, UINT openFlags);
    explicit CStdioFile(std::FILE* stream); // owns the stream and closes it
    ~CStdioFile() override;

    static CRuntimeClass* GetThisClass();
    CRuntimeClass* GetRuntimeClass() const override;

    BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* error = nullptr) override;

    // The next line without its line end. At the end of the file, FALSE and an empty text.
    virtual BOOL ReadString(CString& line);
    // The next line with its line end, which is always "\n": at most `size` - 1 characters and a terminator. The next
    // call returns the rest of a longer line. Null at the end of the file. A `size` of 0 raises CInvalidArgException.
    virtual LPSTR ReadString(LPSTR buffer, UINT size);
    // Writes the text up to its terminator; adds no line end.
    virtual void WriteString(LPCSTR text);

    // The C library's stream, to print and read with it directly; null while no file is open.
    using CFile::m_pStream;
};
