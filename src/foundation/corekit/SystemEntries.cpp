#include "foundation/corekit/SystemEntries.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>

#if defined(_WIN32)

#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

namespace
{
EntryType TypeOf(fs::file_status status)
{
    switch (status.type())
    {
    case fs::file_type::none:
    case fs::file_type::not_found:
        return EntryType::None;
    case fs::file_type::regular:
        return EntryType::File;
    case fs::file_type::directory:
        return EntryType::Directory;
    case fs::file_type::symlink:
    case fs::file_type::junction:
        return EntryType::Link;
    default:
        return EntryType::Other;
    }
}

bool IsNotThere(const std::error_code& error)
{
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

int Answer(const std::error_code& error)
{
    return error ? error.default_error_condition().value() : 0;
}
} // namespace

int ExamineEntry(const CString& path, EntryType& type)
{
    std::error_code error;
    type = TypeOf(fs::status(path.View(), error));
    return IsNotThere(error) ? 0 : Answer(error);
}

int ExamineEntryItself(const CString& path, EntryType& type)
{
    std::error_code error;
    type = TypeOf(fs::symlink_status(path.View(), error));
    return IsNotThere(error) ? 0 : Answer(error);
}

int SizeOfFile(const CString& path, ULONGLONG& size)
{
    std::error_code error;
    size = static_cast<ULONGLONG>(fs::file_size(path.View(), error));
    return Answer(error);
}

int ResolveLinks(const CString& path, std::string& real)
{
    std::error_code error;
    real = fs::canonical(path.View(), error).string();
    return Answer(error);
}

int ListEntries(const std::string& path, const std::function<void(const ListedEntry&)>& visit)
{
    std::error_code error;
    const fs::directory_iterator end;
    for (fs::directory_iterator entry(path, error); !error && entry != end; entry.increment(error))
    {
        std::error_code typeError;
        const std::string name = entry->path().filename().string();
        const bool isLink = entry->is_symlink(typeError);
        const EntryType type = TypeOf(entry->status(typeError));
        visit({name.c_str(), type, isLink, IsNotThere(typeError) ? 0 : Answer(typeError)});
    }
    return Answer(error);
}

int MakeOneDirectory(const CString& path)
{
    std::error_code error;
    fs::create_directory(path.View(), error);
    return Answer(error);
}

int MakeNewDirectory(const CString& path)
{
    std::error_code error;
    if (fs::create_directory(path.View(), error))
        return 0;
    return error ? Answer(error) : EEXIST;
}

int RenameEntry(const CString& from, const CString& to)
{
    std::error_code error;
    fs::rename(from.View(), to.View(), error);
    return Answer(error);
}

int WriteNewFile(const CString& path, std::string_view bytes)
{
    std::FILE* const file = std::fopen(path, "wbx");
    if (file == nullptr)
        return errno;
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int error = isWritten ? 0 : errno;
    return std::fclose(file) != 0 && error == 0 ? errno : error;
}

#else

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace
{
struct CloseListing
{
    void operator()(DIR* directory) const noexcept { ::closedir(directory); }
};

EntryType TypeOf(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryType::File;
    if (S_ISDIR(mode))
        return EntryType::Directory;
    return S_ISLNK(mode) ? EntryType::Link : EntryType::Other;
}

// The result of fstatat for `name` in the open directory; AT_FDCWD for a path.
int Examine(int directory, const char* name, int flags, EntryType& type)
{
    type = EntryType::None;
    struct stat info = {};
    if (::fstatat(directory, name, &info, flags) == 0)
        type = TypeOf(info.st_mode);
    else if (errno != ENOENT && errno != ENOTDIR)
        return errno;
    return 0;
}

// Asks the system only for links and if the directory does not give the type.
ListedEntry Describe(int directory, const dirent& entry)
{
    const char* const name = static_cast<const char*>(entry.d_name);
    ListedEntry found{name, EntryType::Other, entry.d_type == DT_LNK, 0};
    if (entry.d_type == DT_REG)
        found.type = EntryType::File;
    else if (entry.d_type == DT_DIR)
        found.type = EntryType::Directory;
    else if (entry.d_type == DT_UNKNOWN)
    {
        found.error = Examine(directory, name, AT_SYMLINK_NOFOLLOW, found.type);
        found.isLink = found.type == EntryType::Link;
    }
    if (found.isLink)
        found.error = Examine(directory, name, 0, found.type);
    return found;
}
} // namespace

int ExamineEntry(const CString& path, EntryType& type)
{
    return Examine(AT_FDCWD, path, 0, type);
}

int ExamineEntryItself(const CString& path, EntryType& type)
{
    return Examine(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW, type);
}

int SizeOfFile(const CString& path, ULONGLONG& size)
{
    struct stat info = {};
    if (::stat(path, &info) != 0)
        return errno;
    size = static_cast<ULONGLONG>(info.st_size);
    return 0;
}

int ResolveLinks(const CString& path, std::string& real)
{
    std::array<char, PATH_MAX> full{};
    if (::realpath(path, full.data()) == nullptr)
        return errno;
    real = full.data();
    return 0;
}

int ListEntries(const std::string& path, const std::function<void(const ListedEntry&)>& visit)
{
    const std::unique_ptr<DIR, CloseListing> directory(::opendir(path.c_str()));
    if (!directory)
        return errno;
    for (;;)
    {
        errno = 0;
        const dirent* const entry = ::readdir(directory.get());
        if (entry == nullptr)
            return errno;
        const std::string_view name = static_cast<const char*>(entry->d_name);
        if (name != "." && name != "..")
            visit(Describe(::dirfd(directory.get()), *entry));
    }
}

int MakeNewDirectory(const CString& path)
{
    return ::mkdir(path, S_IRWXU | S_IRWXG | S_IRWXO) == 0 ? 0 : errno;
}

int MakeOneDirectory(const CString& path)
{
    const int reason = MakeNewDirectory(path);
    EntryType type = EntryType::None;
    if (reason == EEXIST && ExamineEntry(path, type) == 0 && type == EntryType::Directory)
        return 0;
    return reason;
}

int RenameEntry(const CString& from, const CString& to)
{
    return std::rename(from, to) == 0 ? 0 : errno;
}

int WriteNewFile(const CString& path, std::string_view bytes)
{
    const int file = ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY,
                            S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
    if (file < 0)
        return errno;
    int error = 0;
    while (!bytes.empty() && error == 0)
    {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            error = errno;
    }
    if (::close(file) != 0 && error == 0)
        error = errno;
    return error;
}

#endif

std::string SystemReason(int error)
{
#if defined(__GLIBC__) && defined(__GLIBC_PREREQ)
#if __GLIBC_PREREQ(2, 32)
    // The text in the C locale, whatever the locale of the process.
    if (const char* const text = strerrordesc_np(error))
        return text;
#endif
#endif
    return std::generic_category().message(error);
}
