#pragma once

#include "JOBXCLSDLL.h"

#include <cstddef>
#include <string>
#include <vector>

// The system's reason for a failed file operation.
std::string ReasonOf(const CKDiagnostic& diagnostic);

// Collects the failed file operations of the library while it lives, and prints the first of them as warnings.
// Threads: one lives at a time.
class FailedOperations : public CKDiagnosticSink
{
public:
    FailedOperations();
    ~FailedOperations() override;

    // From now on, paths that begin with "." are shown as paths below the job at that path.
    void NameAsIn(const std::string& jobPath) { m_jobPath = jobPath; }
    void OnDiagnostic(const CKDiagnostic& diagnostic) override;
    // The collected failures as lines, and the number of those beyond the limit.
    std::vector<std::string> Lines() const;
    // Prints these lines.
    void PrintWarnings() const;
    // The system's reason for the first failure on exactly that path; "" if there was none, or if there is no
    // such entry.
    std::string ReasonFor(const CString& path) const;

private:
    static constexpr std::size_t kPrinted = 20;

    CKDiagnosticSink* m_pBefore;
    std::string m_jobPath;
    std::vector<CKDiagnostic> m_first;
    std::size_t m_nMore = 0;
};
