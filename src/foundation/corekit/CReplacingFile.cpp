#include "foundation/corekit/CReplacingFile.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/FrameworkTypes.h"

#include <atomic>
#include <cerrno>
#include <random>

namespace
{
#if defined(__GLIBC__)
constexpr const char* kNewFileMode = "wbxe"; // not inherited by programs that the host starts
#else
constexpr const char* kNewFileMode = "wbx";
#endif
constexpr int kMaxAttempts = 100;

// A name that no other thread uses, and hardly ever another process.
CString NewName()
{
    static const unsigned kProcess = std::random_device()();
    static std::atomic<unsigned> count{0};
    CString name;
    name.Format(".jobx-%08x-%08x.tmp", kProcess, count.fetch_add(1, std::memory_order_relaxed));
    return name;
}

int LastError()
{
    return errno != 0 ? errno : EIO; // every failure here needs a reason
}

CString DirectoryOf(const CString& path)
{
    const CString directory = CKUtility::GetInstance()->GetSegmntFromFilePath(path, 1);
    return directory.IsEmpty() ? CString(".") : directory;
}
} // namespace

CReplacingFile::CReplacingFile(const CString& target) : m_sTarget(target)
{
    const CString directory = DirectoryOf(target);
    for (int attempt = 0; attempt < kMaxAttempts && m_pFile == nullptr; ++attempt)
    {
        CString path = CKUtility::GetInstance()->CKPathCombine(directory, NewName());
        m_pFile = std::fopen(path, kNewFileMode);
        if (m_pFile != nullptr)
            m_sUnfinished = std::move(path);
        else if (errno != EEXIST)
            break;
    }
    if (m_pFile == nullptr)
        m_nError = LastError();
    else
        std::setvbuf(m_pFile, nullptr, _IONBF, 0); // writers pass large blocks
}

CReplacingFile::~CReplacingFile()
{
    Close();
    if (!m_sUnfinished.IsEmpty())
        std::remove(m_sUnfinished);
}

bool CReplacingFile::Write(std::string_view bytes)
{
    if (m_nError == 0 && std::fwrite(bytes.data(), 1, bytes.size(), m_pFile) != bytes.size())
        m_nError = LastError();
    return m_nError == 0;
}

bool CReplacingFile::Commit()
{
    if (!Close())
        return false;
    m_nError = RenameEntry(m_sUnfinished, m_sTarget);
    if (m_nError == 0)
        m_sUnfinished.Empty();
    return m_nError == 0;
}

bool CReplacingFile::Close()
{
    if (m_pFile != nullptr && std::fclose(m_pFile) != 0 && m_nError == 0)
        m_nError = LastError();
    m_pFile = nullptr;
    return m_nError == 0;
}
