// A new, empty directory that is deleted with everything in it when the object goes.
#pragma once

#include <string>
#include <string_view>

// Results: every operation throws std::runtime_error or std::filesystem::filesystem_error when the disk refuses.
class TempDir
{
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The directory, or an entry below it (which need not exist).
    std::string Path() const { return m_sPath; }
    std::string Path(std::string_view relativePath) const;

    // Makes the file with exactly these bytes, and the directories above it; answers its full path.
    std::string Write(std::string_view relativePath, std::string_view bytes) const;

    // Makes the directory and those above it; answers its full path.
    std::string MakeDir(std::string_view relativePath) const;

    // The bytes of a file as they are.
    std::string Read(std::string_view relativePath) const;

    bool Exists(std::string_view relativePath) const;

private:
    std::string m_sPath;
};

// The bytes of any file as they are. Throws as above.
std::string FileBytes(const std::string& path);

// The text with CR before each LF.
std::string WithCrLf(std::string_view text);
