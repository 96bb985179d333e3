#pragma once

#include "foundation/framework/CString.h"

#include <cstdio>
#include <string_view>

// A file that is written under another name beside its target and takes the target's place once it is complete.
// Ownership: owns the unfinished file; without a Commit that succeeded the destructor removes it.
// Results:   true, or false with the system's reason in Error(); after a failure everything else fails too.
class CReplacingFile
{
public:
    explicit CReplacingFile(const CString& target); // makes the unfinished file; IsGood() tells whether that worked
    CReplacingFile(const CReplacingFile&) = delete;
    CReplacingFile& operator=(const CReplacingFile&) = delete;
    ~CReplacingFile();

    bool IsGood() const noexcept { return m_nError == 0; }
    int Error() const noexcept { return m_nError; }

    bool Write(std::string_view bytes);
    // Closes the file and replaces the target: a file or a link itself, never what a link points to, nor a directory.
    bool Commit();

private:
    bool Close();

    CString m_sTarget;
    CString m_sUnfinished; // "" when there is none
    std::FILE* m_pFile = nullptr;
    int m_nError = 0;
};
