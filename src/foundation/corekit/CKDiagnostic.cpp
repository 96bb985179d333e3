#include "foundation/corekit/CKDiagnostic.h"

#include <cerrno>
#include <cstring>
#include <system_error>

namespace
{
CString Reason(int systemError)
{
    if (systemError == EBADMSG)
        return "the data is damaged";
#if defined(__GLIBC__) && defined(__GLIBC_PREREQ)
#if __GLIBC_PREREQ(2, 32)
    // The text of the C locale, whatever the process has set.
    if (const char* const text = strerrordesc_np(systemError))
        return text;
#endif
#endif
    return CString(std::string_view(std::generic_category().message(systemError)));
}

CString WithoutControlCharacters(const CString& text)
{
    CString copy(text);
    for (int i = 0; i < copy.GetLength(); ++i)
        if (static_cast<unsigned char>(copy[i]) < ' ' || copy[i] == '\x7F')
            copy.SetAt(i, '?');
    return copy;
}
} // namespace

CString CKDiagnostic::Text() const
{
    CString text = "cannot " + operation + " " + WithoutControlCharacters(path);
    if (systemError != 0)
        text += ": " + Reason(systemError);
    if (!sourceFile.IsEmpty())
        text.AppendFormat(" (%s:%d)", WithoutControlCharacters(sourceFile), line);
    return text;
}

CKDiagnosticSink::~CKDiagnosticSink() = default;
