#pragma once

#include "JOBXCLSDLL.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

// The system's reason for a failed file operation.
std::string ReasonOf(const CKDiagnostic& diagnostic);

// Collects the failed file operations of the library while it lives, and prints the first of them as warnings. Links
// out of the job are counted separately: each of the first thousand gets a line.
// Threads:   one lives at a time.
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
    // Whether an operation failed on that directory, or on an entry of it whose name is quoted in the text.
    bool HaveReported(const CString& directory, std::string_view text) const;
    // Drops the failure to find an entry at exactly that path, because another message reports it.
    void Forget(const CString& path);
    // Drops every failure on exactly that path, for the same reason.
    void ForgetAll(const CString& path);
    // Prints these lines.
    void PrintWarnings() const;
    // The system's reason for the first failure on exactly that path; "" if there is none, or if no such entry exists.
    std::string ReasonFor(const CString& path) const;

private:
    static constexpr std::size_t kPrinted = 20;
    static constexpr std::size_t kPrintedLinks = 1000; // that lead out of the job

    CKDiagnosticSink* m_pBefore;
    std::string m_jobPath;
    std::vector<CKDiagnostic> m_first;
    std::set<std::tuple<CString, CString, int>> m_seen; // operation, path and error
    std::set<CString> m_moreLinks;                      // paths that have no line
    std::size_t m_nLinks = 0;                           // among the first
    std::size_t m_nMore = 0;
};
