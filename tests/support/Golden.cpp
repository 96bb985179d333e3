#include "support/Golden.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace
{
// The bytes of every file below the folder, by relative path.
std::map<std::string, std::string> FilesBelow(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    if (!fs::is_directory(folder))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder).generic_string()] = FileBytes(entry.path().string());
    return files;
}
} // namespace

void ExpectSameFolder(const std::string& actual, const std::string& golden)
{
    if (std::getenv("JOBX_WRITE_GOLDEN") != nullptr)
    {
        fs::remove_all(golden);
        fs::create_directories(fs::path(golden).parent_path());
        fs::copy(actual, golden, fs::copy_options::recursive);
        ADD_FAILURE() << "rewrote " << golden;
        return;
    }
    const auto actualFiles = FilesBelow(actual);
    const auto goldenFiles = FilesBelow(golden);
    EXPECT_FALSE(goldenFiles.empty()) << "nothing in " << golden;
    for (const auto& [name, bytes] : goldenFiles)
    {
        const auto found = actualFiles.find(name);
        if (found == actualFiles.end())
            ADD_FAILURE() << "missing: " << name;
        else
            EXPECT_EQ(found->second, bytes) << "differs: " << name;
    }
    for (const auto& [name, bytes] : actualFiles)
        EXPECT_TRUE(goldenFiles.contains(name)) << "extra: " << name;
}
