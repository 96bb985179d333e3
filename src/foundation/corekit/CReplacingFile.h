#pragma once

#include "foundation/framework/CString.h"

#include <cstdio>
#include <string_view>

// A file that is written under another name beside its target and replaces the target when complete.
// Ownership: owns the unfinished file; the destructor removes it unless Commit succeeded.
// Results:   true, or false with the system's reason in Error(); after a failure everything else fails too.
class CReplacingFile
{
public:
    explicit CReplacingFile(const CString& target); // makes the unfinished file; IsGood() says whether that worked
    CReplacingFile(const CReplacingFile&) = delete;
    CReplacingFile& operator=(const CReplacingFile&) = delete;
    ~CReplacingFile();

    bool IsGood() const noexcept { return m_nError == 0; }
    int Error() const noexcept { return m_nError; }

    bool Write(std::string_view bytes);
    // Closes the file and replaces the target: a file, or a link itself but not what it points to, never a directory.
    bool Commit();

private:
    bool Close();

    CString m_sTarget;
    CString m_sUnfinished; // "" if there is none
    std::FILE* m_pFile = nullptr;
    int m_nError = 0;
};
