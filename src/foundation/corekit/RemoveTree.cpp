#include "foundation/corekit/RemoveTree.h"

#if defined(_WIN32)

#include <cerrno>
#include <filesystem>

int RemoveTree(const CString& path)
{
    std::error_code error;
    const std::filesystem::path place(path.View());
    const auto type = std::filesystem::symlink_status(place, error).type();
    if (type == std::filesystem::file_type::not_found)
        return 0;
    if (!error && type == std::filesystem::file_type::regular)
        return ENOTDIR;
    if (!error)
        std::filesystem::remove_all(place, error);
    return error.value();
}

#else

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
constexpr int kOpenFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

struct CloseDirectory
{
    void operator()(DIR* directory) const noexcept { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// Null, with the reason in errno, if there is no such directory; a link does not count as one.
Directory OpenDirectory(int parent, const char* name)
{
    const int number = ::openat(parent, name, kOpenFlags);
    DIR* const directory = number >= 0 ? ::fdopendir(number) : nullptr;
    if (directory == nullptr && number >= 0)
    {
        const int error = errno;
        ::close(number);
        errno = error;
    }
    return Directory(directory);
}

// A directory on the path from the top to the one being emptied.
struct Level
{
    std::string name;
    dev_t device;
    ino_t node;
    std::vector<std::string> directories; // in it, still to be removed
};

// Only the directory being emptied and the one that contains it are open. The way back up is checked, so a directory
// that was moved meanwhile does not lead out of the tree.
class CTreeRemover
{
public:
    int Run(const char* path)
    {
        int error = Remove(AT_FDCWD, path);
        while (error == 0 && !m_levels.empty())
        {
            if (m_levels.back().directories.empty())
            {
                error = Leave();
                continue;
            }
            const std::string name = std::move(m_levels.back().directories.back());
            m_levels.back().directories.pop_back();
            error = Remove(::dirfd(m_current.get()), name.c_str());
        }
        return error;
    }

private:
    // Removes a directory's files, and the directory itself if it is then empty; else enters it.
    int Remove(int parent, const char* name)
    {
        Directory directory = OpenDirectory(parent, name);
        if (!directory)
            return errno;
        std::vector<std::string> below;
        if (const int error = RemoveFiles(directory.get(), below); error != 0)
            return error;
        if (below.empty())
            return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? 0 : errno;
        struct stat info = {};
        if (::fstat(::dirfd(directory.get()), &info) != 0)
            return errno;
        m_current = std::move(directory);
        m_levels.push_back({name, info.st_dev, info.st_ino, std::move(below)});
        return 0;
    }

    // Removes everything in a directory except its subdirectories.
    static int RemoveFiles(DIR* directory, std::vector<std::string>& directories)
    {
        for (;;)
        {
            errno = 0;
            const dirent* const entry = ::readdir(directory);
            if (entry == nullptr)
                return errno;
            const std::string_view name = static_cast<const char*>(entry->d_name);
            if (name == "." || name == "..")
                continue;
            bool isDirectory = false;
            if (const int error = Examine(::dirfd(directory), *entry, isDirectory); error != 0)
                return error;
            if (isDirectory)
                directories.emplace_back(name);
            else if (::unlinkat(::dirfd(directory), name.data(), 0) != 0)
                return errno;
        }
    }

    // Most file systems return the type with the entry.
    static int Examine(int directory, const dirent& entry, bool& isDirectory)
    {
#if defined(DT_DIR) && defined(DT_UNKNOWN)
        isDirectory = entry.d_type == DT_DIR;
        if (entry.d_type != DT_UNKNOWN)
            return 0;
#endif
        struct stat info = {};
        if (::fstatat(directory, static_cast<const char*>(entry.d_name), &info, AT_SYMLINK_NOFOLLOW) != 0)
            return errno;
        isDirectory = S_ISDIR(info.st_mode);
        return 0;
    }

    // Removes the emptied directory and goes up one level.
    int Leave()
    {
        const Level left = std::move(m_levels.back());
        m_levels.pop_back();
        if (m_levels.empty())
            return ::rmdir(left.name.c_str()) == 0 ? 0 : errno;
        Directory parent = OpenDirectory(::dirfd(m_current.get()), "..");
        struct stat info = {};
        if (!parent || ::fstat(::dirfd(parent.get()), &info) != 0)
            return errno;
        if (info.st_dev != m_levels.back().device || info.st_ino != m_levels.back().node)
            return ESTALE;
        m_current = std::move(parent);
        return ::unlinkat(::dirfd(m_current.get()), left.name.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
    }

    Directory m_current;
    std::vector<Level> m_levels;
};
} // namespace

int RemoveTree(const CString& path)
{
    struct stat info = {};
    if (::lstat(path, &info) != 0)
        return errno == ENOENT || errno == ENOTDIR ? 0 : errno;
    if (S_ISLNK(info.st_mode))
        return ::unlink(path) == 0 ? 0 : errno;
    return S_ISDIR(info.st_mode) ? CTreeRemover().Run(path) : ENOTDIR;
}

#endif
