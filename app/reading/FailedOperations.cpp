#include "reading/FailedOperations.h"

#include "output/Messages.h"
#include "output/Text.h"
#include "reading/Files.h"
#include "reading/InsideJob.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace
{
constexpr const char* kLeadsOut = "it leads out of the job (--follow-links follows it)";

bool IsLinkOut(const CKDiagnostic& diagnostic)
{
    return diagnostic.operation == "follow" && diagnostic.systemError == EXDEV;
}
} // namespace

std::string ReasonOf(const CKDiagnostic& diagnostic)
{
    if (IsLinkOut(diagnostic))
        return kLeadsOut;
    if (diagnostic.operation == "list" && diagnostic.systemError == EOVERFLOW)
        return "it has more entries than --max-entries allows";
    return diagnostic.systemError == 0 ? "no reason given" : std::generic_category().message(diagnostic.systemError);
}

FailedOperations::FailedOperations() : m_pBefore(CKUtility::GetInstance()->SetDiagnosticSink(this)) {}

FailedOperations::~FailedOperations()
{
    CKUtility::GetInstance()->SetDiagnosticSink(m_pBefore);
}

void FailedOperations::OnDiagnostic(const CKDiagnostic& diagnostic)
{
    CKDiagnostic shown = diagnostic;
    if (!m_jobPath.empty())
        shown.path = PathOutside(m_jobPath, std::string(diagnostic.path.View())).c_str();
    if (!m_seen.emplace(shown.operation, shown.path, shown.systemError).second)
        return;
    const bool isLink = IsLinkOut(shown);
    if (isLink ? m_nLinks == kPrintedLinks : m_first.size() - m_nLinks == kPrinted)
    {
        ++m_nMore;
        if (isLink)
            m_moreLinks.insert(shown.path);
        return;
    }
    m_first.push_back(shown);
    m_nLinks += isLink ? 1 : 0;
}

std::vector<std::string> FailedOperations::Lines() const
{
    std::vector<std::string> lines;
    for (const CKDiagnostic& diagnostic : m_first)
        lines.push_back(fmt::format("cannot {} \"{}\": {}", Printable(diagnostic.operation.View()),
                                    Printable(diagnostic.path.View()), ReasonOf(diagnostic)));
    if (m_nMore > 0)
        lines.push_back(fmt::format("{} further file operations failed", m_nMore));
    return lines;
}

bool FailedOperations::HaveReported(const CString& directory, std::string_view text) const
{
    const CString lower = MakeLower(CString(text));
    return std::any_of(m_first.begin(), m_first.end(),
                       [&](const CKDiagnostic& diagnostic)
                       {
                           const CString above = Files().GetSegmntFromFilePath(diagnostic.path, 1);
                           const CString name = Files().GetSegmntFromFilePath(diagnostic.path, 2);
                           const std::string quoted = '"' + std::string(MakeLower(name).View()) + '"';
                           return diagnostic.systemError != ENOENT &&
                                  (diagnostic.path == directory ||
                                   (above == directory && lower.Find(quoted.c_str()) >= 0));
                       });
}

void FailedOperations::Forget(const CString& path)
{
    std::erase_if(m_first, [&](const CKDiagnostic& diagnostic)
                  { return diagnostic.path == path && diagnostic.systemError == ENOENT; });
}

void FailedOperations::ForgetAll(const CString& path)
{
    std::erase_if(m_first, [&](const CKDiagnostic& diagnostic) { return diagnostic.path == path; });
}

void FailedOperations::PrintWarnings() const
{
    for (const std::string& line : Lines())
        PrintWarning(line);
}

std::string FailedOperations::ReasonFor(const CString& path) const
{
    const auto found = std::find_if(m_first.begin(), m_first.end(),
                                    [&](const CKDiagnostic& diagnostic)
                                    { return diagnostic.path == path && diagnostic.systemError != ENOENT; });
    if (found != m_first.end())
        return ReasonOf(*found);
    return m_moreLinks.contains(path) ? kLeadsOut : std::string();
}
