#pragma once

#include "foundation/corekit/CKDiagnostic.h"

#include <vector>

// Keeps what the calling thread reports away from the sink while it lives, so that diagnostics of work done by several
// threads can be handed on in an order of their own.
// Ownership: borrows the list.
class CDiagnosticCapture
{
public:
    explicit CDiagnosticCapture(std::vector<CKDiagnostic>& list) noexcept;
    CDiagnosticCapture(const CDiagnosticCapture&) = delete;
    CDiagnosticCapture& operator=(const CDiagnosticCapture&) = delete;
    ~CDiagnosticCapture();

    // Takes a diagnostic of the calling thread; false when nobody captures there.
    static bool Take(const char* sourceFile, int line, const char* operation, const CString& path, int systemError);

private:
    std::vector<CKDiagnostic>* m_pBefore;
};
