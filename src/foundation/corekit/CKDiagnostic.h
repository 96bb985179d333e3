#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CString.h"

// What went wrong in one call to the file system: who asked, for what, and the system's reason.
// Ownership: a plain value.
struct JOBX_API CKDiagnostic
{
    CString sourceFile;  // of the caller; "" when it did not say
    int line = 0;        // in that file
    CString operation;   // as in "cannot <operation> <path>"
    CString path;        // as given to the operation
    int systemError = 0; // the system's error number; 0 when the system has none, EBADMSG for damaged data

    // The whole of it in one line, without a line end; control characters of the path, and those that show nothing
    // or turn the direction of a text, become "?" each.
    CString Text() const;
};

// Receives the diagnostics of the file utility.
// Ownership: borrowed by the utility; it must live until another sink, or null, has been set.
// Threads:   called from whatever thread met the failure, never from two at once.
class JOBX_API CKDiagnosticSink
{
public:
    CKDiagnosticSink() = default;
    CKDiagnosticSink(const CKDiagnosticSink&) = delete;
    CKDiagnosticSink& operator=(const CKDiagnosticSink&) = delete;
    virtual ~CKDiagnosticSink();
    // Failures met inside this call are dropped. An exception goes on to whoever called the failing operation.
    virtual void OnDiagnostic(const CKDiagnostic& diagnostic) = 0;
};
