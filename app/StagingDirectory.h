// A directory beside the place where a job goes: the job is written there first and moved into place as a whole.
#pragma once

#include <filesystem>
#include <string>

// A new directory ".jobx-<random>" in the output directory, which is made too when only its parent exists.
// Results: what fails raises ExitError that names the path and the system's reason; nothing stays changed then.
// Disk:    the destructor removes the directory with everything in it, and an output directory made for a job that
//          never came. A process that is killed leaves the directory; it holds a job only one level further down, so
//          nobody takes it for one.
class StagingDirectory
{
public:
    explicit StagingDirectory(const std::filesystem::path& outputDirectory);
    StagingDirectory(const StagingDirectory&) = delete;
    StagingDirectory& operator=(const StagingDirectory&) = delete;
    ~StagingDirectory();

    // Where to write the job, as a directory of the job's name.
    std::filesystem::path Inside() const { return m_path / "new"; }

    // Moves the job of that name into the output directory, once all of it is on the disk. With `replace` a directory
    // that is there gives way and is removed; at every moment the old or the new one stands there whole, but for two
    // renames in succession where the system cannot exchange directories. After a failure the old one stands there as
    // before, unless only the output directory itself could not be flushed.
    void MoveIntoPlace(const std::string& name, bool replace);

private:
    void MakeOutputDirectory();
    void MakeStaging();
    void Exchange(const std::string& name, bool replace);
    void Remove() noexcept;

    std::filesystem::path m_output;
    std::filesystem::path m_path;
    bool m_madeOutput = false;
    bool m_isKept = false;
};

// Puts the directory `fresh` in the place of `target`, which goes to `aside`: two renames. When the second fails the
// first is taken back.
// Results: failures raise ExitError; `isTargetAside` tells whether the old directory is still at `aside` then.
void ReplaceByRenames(const std::filesystem::path& fresh, const std::filesystem::path& target,
                      const std::filesystem::path& aside, bool& isTargetAside);
