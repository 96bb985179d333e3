#include "Messages.h"

#include "Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace
{
bool AreEqual(const CKDiagnostic& a, const CKDiagnostic& b)
{
    return a.operation == b.operation && a.path == b.path && a.systemError == b.systemError;
}
} // namespace

std::string ReasonOf(const CKDiagnostic& diagnostic)
{
    return diagnostic.systemError == 0 ? "no reason given" : std::generic_category().message(diagnostic.systemError);
}

void PrintError(const std::string& line)
{
    const std::string text = fmt::format("jobx: {}\n", line);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void PrintWarning(const std::string& line)
{
    PrintError("warning: " + line);
}

FailedOperations::FailedOperations() : m_pBefore(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}

FailedOperations::~FailedOperations()
{
    CKUtility::GetInstance()->SetDiagnosticSink(m_pBefore);
}

void FailedOperations::OnDiagnostic(const CKDiagnostic& diagnostic)
{
    const auto isSame = [&](const CKDiagnostic& other) { return AreEqual(diagnostic, other); };
    if (std::any_of(m_first.begin(), m_first.end(), isSame))
        return;
    if (m_first.size() < kPrinted)
        m_first.push_back(diagnostic);
    else
        ++m_nMore;
}

void FailedOperations::PrintWarnings() const
{
    for (const CKDiagnostic& diagnostic : m_first)
        PrintWarning(fmt::format("cannot {} {}: {}", Printable(diagnostic.operation.View()),
                                 Printable(diagnostic.path.View()), ReasonOf(diagnostic)));
    if (m_nMore > 0)
        PrintWarning(fmt::format("{} further file operations failed", m_nMore));
}

std::string FailedOperations::ReasonFor(const CString& path) const
{
    const auto found = std::find_if(m_first.begin(), m_first.end(),
                                    [&](const CKDiagnostic& diagnostic)
                                    { return diagnostic.path == path && diagnostic.systemError != ENOENT; });
    return found == m_first.end() ? std::string() : ReasonOf(*found);
}
