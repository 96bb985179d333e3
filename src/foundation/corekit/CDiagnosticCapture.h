#pragma once

#include "foundation/corekit/CKDiagnostic.h"

#include <vector>

// While it lives, collects what the calling thread reports instead of sending it to the sink. So diagnostics from
// several threads can be reported in a defined order.
// Ownership: borrows the list.
class CDiagnosticCapture
{
public:
    explicit CDiagnosticCapture(std::vector<CKDiagnostic>& list) noexcept;
    CDiagnosticCapture(const CDiagnosticCapture&) = delete;
    CDiagnosticCapture& operator=(const CDiagnosticCapture&) = delete;
    ~CDiagnosticCapture();

    // Takes a diagnostic of the calling thread; false if nothing captures there.
    static bool Take(const char* sourceFile, int line, const char* operation, const CString& path, int systemError);

private:
    std::vector<CKDiagnostic>* m_pBefore;
};
