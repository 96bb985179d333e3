// A file of a job in complete reading.
#pragma once

#include "foundation/CLineScanner.h"
#include "reading/CFileMessages.h"
#include "reading/CReadingContext.h"

#include <memory>
#include <string>
#include <vector>

// Whether a missing file is worth a message.
enum class Presence
{
    Needed,  // a missing one is an error
    Optional // many jobs have none
};

// A directory of a job, listed once for the files that are looked for in it.
class CSourceFolder
{
public:
    // One that cannot be listed is empty. A path is enough where one file is looked for.
    CSourceFolder(const CString& path);

    const CString& Path() const noexcept { return m_path; }
    const std::vector<std::string>& Names() const noexcept { return m_names; }

private:
    CString m_path;
    std::vector<std::string> m_names;
};

// A text file in a directory. Its name may be followed by ".Z" or ".gz"; letter case is ignored unless the exact
// spelling exists. If its contents are compressed by compress(1) or gzip, they are expanded in memory; nothing is ever
// written. A byte order mark of UTF-8 is left out, and lines may end with CR alone. What is wrong with the file as a
// whole goes to its messages, which the context keeps. Nothing goes to the diagnostics. If the context notes the files
// that are read, the destructor adds this one.
// Ownership: owns the text; borrows the messages. Views of lines are valid as CLineScanner says.
class CSourceFile
{
public:
    CSourceFile(const CReadingContext& context, const CSourceFolder& folder, const char* name, Presence presence);
    CSourceFile(const CSourceFile&) = delete;
    CSourceFile& operator=(const CSourceFile&) = delete;
    ~CSourceFile();

    // The path of the file that would be opened; "" if there is none.
    static CString Find(const CSourceFolder& folder, const char* name);
    // The same for the names in a folder.
    static std::string FindName(const std::vector<std::string>& names, const char* name);

    // The text of a file with these bytes, expanded if they are compressed; all of it, also a byte order mark. False if
    // it cannot be expanded.
    static bool ExpandBytes(const CJOBXreading& reading, std::string_view bytes, std::string& text);

    // Whether there is anything under one of the names, readable or not.
    bool IsThere() const noexcept { return m_isThere; }
    // Whether there is text to read.
    bool WasRead() const noexcept { return m_text != nullptr; }
    // The lines; only if WasRead.
    CLineScanner& Text() noexcept { return *m_text; }
    CFileMessages& Messages() noexcept { return *m_messages; }
    // Of the file found; of the plain name if there is none.
    const CString& Path() const noexcept { return m_path; }

private:
    class CLostText;

    void SetPath(const CReadingContext& context, const CString& path);
    void Open(const CJOBXreading& reading);
    void OpenUnusual(std::string_view text);
    bool Expand(const CJOBXreading& reading, std::string_view data, bool isGzip);
    bool IsSameAs(const CJOBXreading& reading, const CString& other) const;
    void SayUnreadable();
    void TakeText(std::unique_ptr<CLineScanner> text, std::string_view beginning);

    bool m_isThere = false;
    CString m_path;
    CFileMessages* m_messages = nullptr; // in the list of the context
    CTakenFiles* m_taken;                // gets the hash of the bytes at the end
    std::string m_below;                 // the path below the job
    CByteHash m_hash;
    std::string m_expanded;
    std::unique_ptr<CLostText> m_lost; // gets reports of m_text
    std::unique_ptr<CLineScanner> m_text;
};
