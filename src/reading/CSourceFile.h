// A file of a job as complete reading sees it.
#pragma once

#include "foundation/CTextScanner.h"
#include "reading/CFileMessages.h"
#include "reading/CReadingContext.h"

#include <memory>
#include <string>

// Whether a file that is not there is worth a message.
enum class Presence
{
    Needed,  // its absence is an error
    Optional // many jobs have none
};

// A text file, found below a directory under its name, or that name with ".Z" or ".gz" behind it, in any letter case
// unless its exact spelling is there. What its content shows to be compressed, by compress(1) or gzip, is expanded in
// memory; nothing is ever written. What is wrong with the file as a whole is said in its messages, which the context
// keeps. Nothing goes to the diagnostics.
// Ownership: owns the text; borrows the messages. Views of lines are valid as CTextScanner says.
class CSourceFile
{
public:
    CSourceFile(const CReadingContext& context, const CString& directory, const char* name, Presence presence);

    // Whether something is there under one of the names, readable or not.
    bool IsThere() const noexcept { return m_isThere; }
    // Whether there is text to be read.
    bool WasRead() const noexcept { return m_text != nullptr; }
    // The lines; only when WasRead.
    CTextScanner& Text() noexcept { return *m_text; }
    CFileMessages& Messages() noexcept { return *m_messages; }
    // Of what was found; of the plain name when nothing was.
    const CString& Path() const noexcept { return m_path; }

private:
    void Open(const CJOBXreading& reading);
    bool Expand(const CJOBXreading& reading, std::string_view data, bool isGzip);
    void SayUnreadable();
    void TakeText(std::unique_ptr<CTextScanner> text, std::string_view begin);

    bool m_isThere = false;
    CString m_path;
    CFileMessages* m_messages; // in the list of the context
    std::string m_expanded;
    std::unique_ptr<CTextScanner> m_text;
};
