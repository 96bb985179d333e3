#pragma once

#include "JOBXCLSDLL.h"

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

// While it lives, collects the library's failures to write.
// Threads: one lives at a time.
class WriteFailures : public CKDiagnosticSink
{
public:
    WriteFailures();
    ~WriteFailures() override;

    // Failures on exactly that path are intended and not collected.
    void Expect(const CString& path) { m_expected.insert(std::string(path.View())); }
    void OnDiagnostic(const CKDiagnostic& diagnostic) override;
    std::size_t Count() const { return m_nCount; }
    // Prints the first of them, with `shown` instead of `written` at the front of their paths.
    void Print(const std::string& written, const std::string& shown) const;

private:
    static constexpr std::size_t kPrinted = 20;

    CKDiagnosticSink* m_pBefore;
    std::unordered_set<std::string> m_expected;
    std::vector<CKDiagnostic> m_first;
    std::size_t m_nCount = 0;
};
