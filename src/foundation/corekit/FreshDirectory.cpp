#include "foundation/corekit/FreshDirectory.h"

#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/PathText.h"

#include <cerrno>
#include <string_view>

namespace
{

// Whether a relative path leads strictly below its start.
bool LeadsBelow(std::string_view path)
{
    bool named = false;
    while (!path.empty())
    {
        const std::size_t separator = path.find_first_of(kPathSeparators);
        const std::string_view part = path.substr(0, separator);
        if (part == "..")
            return false;
        named = named || (!part.empty() && part != ".");
        path.remove_prefix(separator == std::string_view::npos ? path.size() : separator + 1);
    }
    return named;
}

// Makes a new directory with one system call. The result is never a link.
int MakeWhereNothingIs(const CString& path)
{
    return path.Find('\0') < 0 ? MakeNewDirectory(path) : EINVAL;
}

void ReportNotMade(const CString& path, int error)
{
    CKUtility::GetInstance()->Report("", 0, "make directory", path, error);
}

// Deletes the existing directory and makes a new one.
void MakeAgain(const CString& path)
{
    const CKUtility* const files = CKUtility::GetInstance();
    if (files->IsDir(path))
        files->DeleteDirectory(path);
    files->MakeDirectory(path);
}

// The path if it is now a real directory, not a link.
CString OnlyARealDirectory(const CString& path, const char* sourceFile, int line)
{
    EntryType type = EntryType::None;
    const int error = ExamineEntryItself(path, type);
    if (type == EntryType::Directory)
        return path;
    if (error != 0)
        CKUtility::GetInstance()->Report(sourceFile, line, "examine", path, error);
    else if (type != EntryType::None) // that failure was already reported
        CKUtility::GetInstance()->Report(sourceFile, line, "make", path, ENOTDIR);
    return {};
}
} // namespace

bool IsEntryName(const CString& name)
{
    return LeadsBelow(name.View()) && name.View().find_first_of(kPathSeparators) == std::string_view::npos;
}

CString MakeFreshDirectory(const CString& parent, const CString& name, const char* sourceFile, int line)
{
    if (!LeadsBelow(name.View()))
    {
        CKUtility::GetInstance()->Report(sourceFile, line, "make", name, EINVAL);
        return {};
    }
    return MakeFreshDirectory(CKUtility::GetInstance()->CKPathCombine(parent, name, sourceFile, line), sourceFile,
                              line);
}

CString MakeFreshDirectory(const CString& path, const char* sourceFile, int line)
{
    const int error = MakeWhereNothingIs(path);
    if (error == 0)
        return path;
    if (error != EEXIST)
    {
        ReportNotMade(path, error);
        return {};
    }
    MakeAgain(path);
    return OnlyARealDirectory(path, sourceFile, line);
}

void ReplaceDirectory(const CString& path)
{
    const int error = MakeWhereNothingIs(path);
    if (error == EEXIST)
        MakeAgain(path);
    else if (error != 0)
        ReportNotMade(path, error);
}

bool MakeDirectoryBelow(const CString& parent, const CString& name, CString& path)
{
    if (!LeadsBelow(name.View()))
        return false;
    path = CKUtility::GetInstance()->CKPathCombine(parent, name);
    const int error = MakeWhereNothingIs(path);
    if (error == EEXIST)
        return false;
    if (error != 0)
    {
        ReportNotMade(path, error);
        path.Empty();
    }
    return true;
}

CString MakeEntryDirectory(const CString& parent, const CString& name, const char* sourceFile, int line)
{
    if (!IsEntryName(name))
    {
        CKUtility::GetInstance()->Report(sourceFile, line, "make", name, EINVAL);
        return {};
    }
    const CString path = CKUtility::GetInstance()->CKPathCombine(parent, name, sourceFile, line);
    const int error = MakeWhereNothingIs(path);
    if (error == 0)
        return path;
    if (error == EEXIST)
        return OnlyARealDirectory(path, sourceFile, line);
    ReportNotMade(path, error);
    return {};
}
