#include "foundation/corekit/CKUtility.h"

#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CFileBytes.h"
#include "foundation/corekit/CReplacingFile.h"
#include "foundation/corekit/LinkBoundary.h"
#include "foundation/corekit/LzwDecoder.h"
#include "foundation/corekit/RemoveTree.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"
#include "foundation/framework/PathText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{
constexpr std::string_view kCompressedSuffix = ".Z";
constexpr std::string_view kEveryFile = "*.*";

std::string_view WithoutTrailingSeparators(std::string_view path)
{
    return path.substr(0, path.find_last_not_of(kPathSeparators) + 1);
}

// As above, but a root is kept.
std::string_view DirectoryText(std::string_view path)
{
    const std::string_view trimmed = WithoutTrailingSeparators(path);
    return trimmed.empty() ? path.substr(0, 1) : trimmed;
}

std::string_view LastComponent(std::string_view path)
{
    const std::string_view trimmed = WithoutTrailingSeparators(path);
    return trimmed.substr(trimmed.find_last_of(kPathSeparators) + 1);
}

// The system would take the text before a NUL for the whole path.
bool IsPossible(const CString& path)
{
    return path.Find('\0') < 0;
}

// Whether the name matches the pattern: "*" any characters, "?" any one character, ignoring letter case. On a mismatch
// only the last "*" has to match more, so the time is at most the product of both lengths.
bool Matches(std::string_view name, std::string_view pattern)
{
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starTook = 0;
    while (n < name.size())
    {
        if (p < pattern.size() && pattern[p] == '*')
        {
            star = p++;
            starTook = n;
        }
        else if (p < pattern.size() && (pattern[p] == '?' || AsciiLower(pattern[p]) == AsciiLower(name[n])))
        {
            ++n;
            ++p;
        }
        else if (star != std::string_view::npos)
        {
            n = ++starTook;
            p = star + 1;
        }
        else
        {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

// `name` below `directory`, which is not empty and ends with a separator only if it is the root.
std::string EntryPath(const std::string& directory, const char* name)
{
    std::string path = directory;
    if (!IsPathSeparator(path.back()))
        path += '/';
    return path += name;
}

// Raised in a listing with more entries than allowed.
struct TooManyEntries
{
};

// The paths of all entries of `directory`, and of its subdirectories on request, for which `isWanted(entry)` is true.
// Pending directories are kept in a list, so depth costs no stack. False if there are too many entries.
template <class IsWanted>
bool ListTree(const std::string& directory, bool recurse, std::vector<std::string>& found, IsWanted isWanted)
{
    ULONGLONG left = CKUtility::GetInstance()->GetListingLimit();
    std::vector<std::string> pending;
    if (!LeadsOut(CString(directory)))
        pending.push_back(directory);
    while (!pending.empty())
    {
        const std::string current = std::move(pending.back());
        pending.pop_back();
        const auto visit = [&](const ListedEntry& entry)
        {
            if (left-- == 0)
                throw TooManyEntries();
            if (entry.error != 0)
                CKUtility::GetInstance()->Report("", 0, "examine", CString(EntryPath(current, entry.name)),
                                                 entry.error);
            if (entry.isLink && entry.type != EntryType::None && LeadsOut(CString(EntryPath(current, entry.name))))
                return;
            if (isWanted(entry))
                found.push_back(EntryPath(current, entry.name));
            if (recurse && entry.type == EntryType::Directory && !entry.isLink)
                pending.push_back(EntryPath(current, entry.name));
        };
        try
        {
            if (const int error = ListEntries(current, visit); error != 0)
                CKUtility::GetInstance()->Report("", 0, "list", CString(current), error);
        }
        catch (const TooManyEntries&)
        {
            return false;
        }
    }
    return true;
}

// Appends the results of ListTree to `list`, sorted.
template <class IsWanted>
void AppendEntries(const CString& directory, bool recurse, CStringArray& list, IsWanted isWanted)
{
    if (!IsPossible(directory))
    {
        CKUtility::GetInstance()->Report("", 0, "list", directory, EINVAL);
        return;
    }
    std::vector<std::string> found;
    if (!ListTree(std::string(DirectoryText(directory.View())), recurse, found, isWanted))
    {
        CKUtility::GetInstance()->Report("", 0, "list", directory, EOVERFLOW);
        return;
    }
    std::sort(found.begin(), found.end());
    INT_PTR at = list.GetSize();
    list.SetSize(at + static_cast<INT_PTR>(found.size()));
    for (const std::string& path : found)
        list[at++] = std::string_view(path);
}

// The entry of a directory that matches `name` ignoring letter case, the first in byte order.
std::optional<std::string> FindIgnoringCase(const CString& directory, std::string_view name, const CString& sourceFile,
                                            int line)
{
    std::optional<std::string> best;
    const int error = ListEntries(directory.IsEmpty() ? std::string(".") : std::string(DirectoryText(directory.View())),
                                  [&](const ListedEntry& entry)
                                  {
                                      const std::string_view candidate = entry.name;
                                      if (AsciiEqualNoCase(candidate, name) && (!best || candidate < *best))
                                          best = candidate;
                                  });
    if (error != 0 && error != ENOENT && error != ENOTDIR)
        CKUtility::GetInstance()->Report(sourceFile, line, "list", directory, error);
    return best;
}

// The type of the entry at `path`, following links; None also if it cannot be determined.
EntryType Examine(const CString& path, const CString& sourceFile, int line)
{
    EntryType type = EntryType::None;
    const int error = IsPossible(path) ? ExamineEntry(path, type) : EINVAL;
    if (error != 0)
        CKUtility::GetInstance()->Report(sourceFile, line, "examine", path, error);
    return type != EntryType::None && LeadsOut(path) ? EntryType::None : type;
}

bool IsFileOrDirectory(EntryType type)
{
    return type == EntryType::File || type == EntryType::Directory;
}

// Why decoding failed.
int SystemError(LzwResult result, int outputError)
{
    if (result == LzwResult::Damaged)
        return EBADMSG;
    return result == LzwResult::TooLong ? EFBIG : outputError;
}

// For hosts that set no sink; without it, failed writes would go unnoticed.
class StandardErrorSink : public CKDiagnosticSink
{
public:
    void OnDiagnostic(const CKDiagnostic& diagnostic) override
    {
        std::fprintf(stderr, "JOBXCLSDLL: %s\n", diagnostic.Text().GetString());
    }
    // Never deleted, like CKUtility itself.
    static CKDiagnosticSink* GetInstance()
    {
        static StandardErrorSink* const kInstance = new StandardErrorSink;
        return kInstance;
    }
};

// Returns 0 or the system's error number.
int DecompressTo(const CString& target, std::string_view compressed, ULONGLONG limit)
{
    CReplacingFile file(target);
    if (!file.IsGood())
        return file.Error();
    const LzwResult result =
        DecodeLzw(compressed, limit, [&file](std::string_view block) { return file.Write(block); });
    if (result != LzwResult::Done)
        return SystemError(result, file.Error());
    file.Commit();
    return file.Error();
}
} // namespace

CKUtility::CKUtility() : m_pSink(StandardErrorSink::GetInstance()) {}

CKUtility* CKUtility::GetInstance()
{
    static CKUtility* const kInstance =
        Guarded([] { return new CKUtility; }); // never deleted: threads may use it until the process ends
    return kInstance;
}

CString CKUtility::CKPathCombine(const CString& path, const CString& segment, const CString& /*sourceFile*/,
                                 int /*line*/) const
{
    std::string_view tail = segment.View();
    tail.remove_prefix(std::min(tail.find_first_not_of(kPathSeparators), tail.size()));
    if (tail.empty())
        return path;
    if (path.IsEmpty())
        return CString(tail);
    const std::string_view head = WithoutTrailingSeparators(path.View());
    CString combined;
    combined.Preallocate(static_cast<int>(head.size() + 1 + tail.size()));
    combined += head;
    combined += '/';
    combined += tail;
    return combined;
}

CString CKUtility::GetSegmntFromFilePath(const CString& path, int which) const
{
    const std::string_view last = LastComponent(path.View());
    if (which == 2)
        return CString(last);
    if (which != 1)
        return {};
    return CString(DirectoryText(path.View().substr(0, WithoutTrailingSeparators(path.View()).size() - last.size())));
}

bool CKUtility::DoesFileExist(const CString& path, const CString& sourceFile, int line) const
{
    return Guarded([&] { return Examine(path, sourceFile, line) == EntryType::File; });
}

bool CKUtility::DoesFileOrDirExist(const CString& path, const CString& sourceFile, int line) const
{
    return Guarded([&] { return IsFileOrDirectory(Examine(path, sourceFile, line)); });
}

bool CKUtility::IsFile(const CString& path) const
{
    return DoesFileExist(path);
}

bool CKUtility::IsDir(const CString& path) const
{
    return Guarded([&] { return Examine(path, CString(), 0) == EntryType::Directory; });
}

CString CKUtility::FindPath(const CString& dir, const CString& name, const CString& sourceFile, int line) const
{
    return Guarded(
        [&]
        {
            CString exact = CKPathCombine(dir, name);
            if (Examine(exact, sourceFile, line) != EntryType::None || !IsPossible(exact))
                return exact;
            CString path = dir;
            std::string_view rest = WithoutTrailingSeparators(name.View());
            while (!rest.empty())
            {
                const std::size_t length = std::min(rest.find_first_of(kPathSeparators), rest.size());
                const CString component(rest.substr(0, length));
                rest.remove_prefix(std::min(rest.find_first_not_of(kPathSeparators, length), rest.size()));
                if (component.IsEmpty())
                    continue;
                CString next = CKPathCombine(path, component);
                if (Examine(next, sourceFile, line) == EntryType::None)
                {
                    const auto found = FindIgnoringCase(path, component.View(), sourceFile, line);
                    if (!found)
                        return exact;
                    next = CKPathCombine(path, CString(std::string_view(*found)));
                }
                path = next;
            }
            return path;
        });
}

void CKUtility::GetAllFileListIn(const CString& dir, CStringArray& list, const CString& pattern, int recurse) const
{
    const bool every = pattern.View() == kEveryFile;
    Guarded(
        [&]
        {
            AppendEntries(dir, recurse != 0, list,
                          [&](const ListedEntry& entry)
                          { return entry.type == EntryType::File && (every || Matches(entry.name, pattern.View())); });
        });
}

void CKUtility::GetAllSubDirListIn(const CString& dir, CStringArray& list, int recurse) const
{
    Guarded(
        [&]
        {
            AppendEntries(dir, recurse != 0, list,
                          [](const ListedEntry& entry) { return entry.type == EntryType::Directory; });
        });
}

void CKUtility::MakeDirectory(const CString& path) const
{
    Guarded(
        [&]
        {
            const int error = IsPossible(path) ? MakeOneDirectory(path) : EINVAL;
            if (error != 0)
                Report("", 0, "make directory", path, error);
        });
}

void CKUtility::DeleteDirectory(const CString& path) const
{
    Guarded(
        [&]
        {
            const std::string_view last = LastComponent(path.View());
            const bool isEntry = IsPossible(path) && !last.empty() && last != "." && last != "..";
            // With a separator at the end, the system would follow a link.
            const int error = isEntry ? RemoveTree(CString(WithoutTrailingSeparators(path.View()))) : EINVAL;
            if (error != 0)
                Report("", 0, "delete directory", path, error);
        });
}

int CKUtility::GDecompress(const CString& path) const
{
    return Guarded(
        [&]
        {
            const std::string_view name = LastComponent(path.View());
            CFileBytes file;
            int error = EINVAL; // no such suffix, or nothing before it
            if (name.size() > kCompressedSuffix.size() && path.View().ends_with(name) &&
                AsciiEqualNoCase(name.substr(name.size() - kCompressedSuffix.size()), kCompressedSuffix))
            {
                if (!file.Load(path, "", 0))
                    return 0;
                const auto suffix = static_cast<int>(kCompressedSuffix.size());
                error = DecompressTo(path.Left(path.GetLength() - suffix), file.View(), m_nDecompressionLimit);
            }
            if (error != 0)
                Report("", 0, "decompress", path, error);
            return error == 0 ? 1 : 0;
        });
}

void CKUtility::SetDecompressionLimit(ULONGLONG bytes)
{
    m_nDecompressionLimit = bytes;
}

ULONGLONG CKUtility::GetDecompressionLimit() const
{
    return m_nDecompressionLimit;
}

void CKUtility::SetListingLimit(ULONGLONG entries)
{
    m_nListingLimit = entries;
}

ULONGLONG CKUtility::GetListingLimit() const
{
    return m_nListingLimit;
}

void CKUtility::SetLinkBoundary(const CString& directory)
{
    Guarded(
        [&]
        {
            std::string real;
            // Nothing is below a directory that does not exist, even if it is created later.
            if (!directory.IsEmpty() && ResolveLinks(directory, real) != 0)
                real = std::string(1, '\0');
            const std::lock_guard lock(m_boundaryLock);
            m_sLinkBoundary = CString(std::string_view(real));
            m_hasLinkBoundary = !real.empty();
        });
}

CString CKUtility::GetLinkBoundary() const
{
    if (!m_hasLinkBoundary)
        return {};
    const std::lock_guard lock(m_boundaryLock);
    return m_sLinkBoundary;
}

ULONGLONG CKUtility::GetBytesRead() const
{
    return m_nBytesRead;
}

CKDiagnosticSink* CKUtility::SetDiagnosticSink(CKDiagnosticSink* sink)
{
    const std::lock_guard lock(m_sinkLock);
    return std::exchange(m_pSink, sink);
}

void CKUtility::Report(const char* sourceFile, int line, const char* operation, const CString& path,
                       int systemError) const
{
    thread_local bool isReporting = false;
    if (isReporting || CDiagnosticCapture::Take(sourceFile, line, operation, path, systemError))
        return;
    const std::lock_guard lock(m_sinkLock);
    if (m_pSink == nullptr)
        return;
    const CKDiagnostic diagnostic{CString(sourceFile), line, CString(operation), path, systemError};
    struct Mark
    {
        Mark() { isReporting = true; }
        ~Mark() { isReporting = false; }
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;
    };
    const Mark mark;
    m_pSink->OnDiagnostic(diagnostic);
}
