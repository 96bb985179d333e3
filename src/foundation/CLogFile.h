#pragma once

#include "foundation/framework/CFile.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstddef>

// A text log for hosts. Opening it creates or empties the file; every text is flushed.
// Results:   opening always returns 1; if it fails, writing does nothing. A write error raises CFileException, a clock
//            without local time CInvalidArgException.
// Ownership: closes its file in the destructor; not copyable.
class JOBX_API CLogFile : public CRaisingNew
{
public:
    // A log without a name, opened at once if `open` is not 0.
    explicit CLogFile(int open = 0);
    // Opens the log `name`. If `addTime` is not 0, appends "_" and the local date and time to the name. Then appends
    // ".TXT" unless the name ends with it, in any letter case. Does not turn on the time stamp of texts.
    CLogFile(const CString& name, int addTime);
    CLogFile(const CLogFile&) = delete;
    CLogFile& operator=(const CLogFile&) = delete;
    ~CLogFile();

    // Creates or empties the log file, after closing an open one. Without a name, it is "TESTLOGDEFAULTNAME_", the
    // local date and time, and ".TXT" in the current directory; that name is not stored.
    int OpenLogFile();
    // Closes the log if it is open. Returns 1.
    int CloseLogFile();

    // Appends the text that printf would print in the C locale for `format` and its arguments, cut at 16383 bytes,
    // without a line end. Conversions without an argument are printed literally. Does nothing if the log is not open or
    // writing is stopped.
    template <class... Args>
    void Write(const char* format, const Args&... args)
    {
        WriteFormatted(format, static_cast<int>(sizeof...(Args)), Passed(args)...);
    }

    // While `stop` is not 0, Write does nothing.
    void SetWriteStop(int stop) { m_nWriteStop = stop; }
    // Used the next time the log is opened.
    void SetFileName(const CString& name) { m_sFileName = name; }
    CString GetFileName() const { return m_sFileName; }

    CString m_sFileName;
    CFile m_file;
    int m_nWriteStop = 0;
    int m_nTimeStamp = 0; // if not 0, the local time precedes every text: "[09:05:07]"

private:
    static const char* Passed(const CString& text) { return text.GetString(); }
    template <class T, std::size_t N>
    static const T* Passed(const T (&elements)[N])
    {
        return elements;
    }
    template <class T>
    static T Passed(const T& value)
    {
        return value;
    }

    void WriteFormatted(const char* format, int argumentCount, ...);
};
