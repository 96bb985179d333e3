#include "foundation/corekit/CDiagnosticCapture.h"

#include "foundation/framework/Guarded.h"

#include <utility>

namespace
{
thread_local std::vector<CKDiagnostic>* t_pList = nullptr;
} // namespace

CDiagnosticCapture::CDiagnosticCapture(std::vector<CKDiagnostic>& list) noexcept
    : m_pBefore(std::exchange(t_pList, &list))
{
}

CDiagnosticCapture::~CDiagnosticCapture()
{
    t_pList = m_pBefore;
}

bool CDiagnosticCapture::Take(const char* sourceFile, int line, const char* operation, const CString& path,
                              int systemError)
{
    if (t_pList == nullptr)
        return false;
    Guarded([&] { t_pList->push_back({CString(sourceFile), line, CString(operation), path, systemError}); });
    return true;
}
