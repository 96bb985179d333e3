#include "foundation/corekit/LinkBoundary.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/PathText.h"

#include <cerrno>
#include <string>
#include <string_view>

namespace
{
// Whether `path` is `directory` or is below it; both are full paths without links.
bool IsBelow(std::string_view path, std::string_view directory)
{
    if (!path.starts_with(directory))
        return false;
    return path.size() == directory.size() || IsPathSeparator(directory.back()) ||
           IsPathSeparator(path[directory.size()]);
}

// Whether the entry at `path` is outside. One that cannot be reached does not count, because it cannot be opened
// either.
bool IsOutside(const CString& path, const CString& boundary)
{
    std::string real;
    const int error = ResolveLinks(path, real);
    if (error == 0)
        return !IsBelow(real, boundary.View());
    return error != ENOENT && error != ENOTDIR && error != EACCES && error != ELOOP;
}

// For a `path` that is outside, the first entry on it that is outside but whose directory is not.
CString LeadingEntry(const CString& path, const CString& boundary)
{
    const CKUtility& utility = *CKUtility::GetInstance();
    for (CString entry = path;;)
    {
        const CString above = utility.GetSegmntFromFilePath(entry, 1);
        const CString directory = above.IsEmpty() ? CString(".") : above;
        if (!IsOutside(directory, boundary))
            return entry;
        if (directory.GetLength() >= entry.GetLength()) // the root, or "."
            return path;
        entry = directory;
    }
}
} // namespace

bool LeadsOut(const CString& path)
{
    CKUtility* const utility = CKUtility::GetInstance();
    const CString boundary = utility->GetLinkBoundary();
    if (boundary.IsEmpty() || !IsOutside(path, boundary))
        return false;
    utility->Report("", 0, "follow", LeadingEntry(path, boundary), EXDEV);
    return true;
}
