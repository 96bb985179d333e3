#include "support/TempDir.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

TempDir::TempDir()
{
    std::random_device random;
    fs::path path;
    do
    {
        path = fs::temp_directory_path() / ("jobx-test-" + std::to_string(random()));
    } while (!fs::create_directory(path)); // false for a name that is taken; throws when none can be made
    m_sPath = path.string();
}

TempDir::~TempDir()
{
    std::error_code ignored; // a destructor has nobody to tell
    fs::remove_all(m_sPath, ignored);
}

std::string TempDir::Path(std::string_view relativePath) const
{
    return (fs::path(m_sPath) / relativePath).string();
}

std::string TempDir::Write(std::string_view relativePath, std::string_view bytes) const
{
    const std::string path = Path(relativePath);
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
    return path;
}

std::string TempDir::MakeDir(std::string_view relativePath) const
{
    const std::string path = Path(relativePath);
    fs::create_directories(path);
    return path;
}

std::string TempDir::Read(std::string_view relativePath) const
{
    return FileBytes(Path(relativePath));
}

bool TempDir::Exists(std::string_view relativePath) const
{
    return fs::exists(Path(relativePath));
}

std::string FileBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string WithCrLf(std::string_view text)
{
    std::string lines;
    for (const char c : text)
        lines.append(c == '\n' ? "\r" : "").push_back(c);
    return lines;
}
