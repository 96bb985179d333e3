#include "write/WriteFailures.h"

#include "output/Messages.h"
#include "output/Text.h"
#include "reading/FailedOperations.h"

#include <fmt/core.h>

WriteFailures::WriteFailures() : m_pBefore(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}

WriteFailures::~WriteFailures()
{
    CKUtility::GetInstance()->SetDiagnosticSink(m_pBefore);
}

void WriteFailures::OnDiagnostic(const CKDiagnostic& diagnostic)
{
    if (m_expected.contains(std::string(diagnostic.path.View())))
        return;
    ++m_nCount;
    if (m_first.size() < kPrinted)
        m_first.push_back(diagnostic);
}

void WriteFailures::Print(const std::string& written, const std::string& shown) const
{
    for (const CKDiagnostic& diagnostic : m_first)
    {
        std::string path(diagnostic.path.View());
        if (path.starts_with(written))
            path.replace(0, written.size(), shown);
        PrintError(fmt::format("cannot {} \"{}\": {}", Printable(diagnostic.operation.View()), Printable(path),
                               ReasonOf(diagnostic)));
    }
    if (m_nCount > m_first.size())
        PrintError(fmt::format("{} further file operations failed", m_nCount - m_first.size()));
}
