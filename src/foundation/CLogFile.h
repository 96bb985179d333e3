#pragma once

#include "foundation/framework/CFile.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstddef>

// A text log that a host writes next to its work: made or emptied on opening, written through after every text.
// Results:   opening always answers 1; when it failed, writing does nothing. A write error raises CFileException, a
//            clock that gives no local time CInvalidArgException.
// Ownership: closes its file in the destructor; not copyable.
class JOBX_API CLogFile : public CRaisingNew
{
public:
    // Without a name; opens the log at once when `open` is not 0.
    explicit CLogFile(int open = 0);
    // Opens the log `name`, with "_" and the local date and time added when `addTime` is not 0, and then ".TXT" unless
    // it ends so in any letter case. The time stamp before each text stays off.
    CLogFile(const CString& name, int addTime);
    CLogFile(const CLogFile&) = delete;
    CLogFile& operator=(const CLogFile&) = delete;
    ~CLogFile();

    // Makes or empties the log file, closing one that is open. Without a name it is "TESTLOGDEFAULTNAME_", the local
    // date and time and ".TXT" in the current directory; that name is not kept.
    int OpenLogFile();
    // Closes the log when it is open; 1.
    int CloseLogFile();

    // Appends `format`, printed as printf does in the C locale with the arguments that follow; a text is cut at 16383
    // bytes and no line end is added. A conversion that has no argument left stands as it is written. Nothing happens
    // when the log is not open or writing is stopped.
    template <class... Args>
    void Write(const char* format, const Args&... args)
    {
        WriteFormatted(format, static_cast<int>(sizeof...(Args)), Passed(args)...);
    }

    // While `stop` is not 0, Write does nothing.
    void SetWriteStop(int stop) { m_nWriteStop = stop; }
    // For the next opening; an open log stays as it is.
    void SetFileName(const CString& name) { m_sFileName = name; }
    CString GetFileName() const { return m_sFileName; }

    CString m_sFileName;
    CFile m_file;
    int m_nWriteStop = 0;
    int m_nTimeStamp = 0; // not 0: every text is preceded by the local time as "[09:05:07]"

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
