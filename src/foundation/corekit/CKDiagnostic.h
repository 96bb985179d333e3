#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// A failed call to the file system: the caller, the operation, and the system's reason.
// Ownership: a plain value.
struct JOBX_API CKDiagnostic
{
    CString sourceFile;  // of the caller; "" if unknown
    int line = 0;        // in that file
    CString operation;   // as in "cannot <operation> <path>"
    CString path;        // as given to the operation
    int systemError = 0; // the system's error number; 0 if there is none, EBADMSG for damaged data

    // One line with all of it, without a line end. Every control character of the path, and every character that is
    // invisible or changes the direction of text, becomes "?".
    CString Text() const;
};

// Receives the diagnostics of the file utility.
// Ownership: borrowed by the utility; it must live until another sink, or null, is set.
// Threads:   called on the thread of the failure, never on two threads at once.
class JOBX_API CKDiagnosticSink
{
public:
    CKDiagnosticSink() = default;
    CKDiagnosticSink(const CKDiagnosticSink&) = delete;
    CKDiagnosticSink& operator=(const CKDiagnosticSink&) = delete;
    virtual ~CKDiagnosticSink();
    // Failures inside this call are dropped. An exception passes to the caller of the failed operation.
    virtual void OnDiagnostic(const CKDiagnostic& diagnostic) = 0;
};
