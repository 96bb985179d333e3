// A directory beside the target of a job: the job is written there first and moved into place as a whole.
#pragma once

#include <filesystem>
#include <string>

// A new directory ".jobx-<random>" in the output directory, which is made too if its parent exists.
// Results: failures raise ExitError, which names the path and the system's reason, and leave nothing changed.
// Disk:    the destructor removes the directory with everything in it, and an output directory that was made for
//          nothing. A process that crashes or is killed by SIGKILL leaves it. The job is one level further down, so the directory does not
//          look like a job.
class StagingDirectory
{
public:
    explicit StagingDirectory(const std::filesystem::path& outputDirectory);
    StagingDirectory(const StagingDirectory&) = delete;
    StagingDirectory& operator=(const StagingDirectory&) = delete;
    ~StagingDirectory();

    // The directory in which to write the job, as a directory of its name.
    std::filesystem::path Inside() const { return m_path / "new"; }

    // Flushes the job of that name to the disk and moves it into the output directory. With `replace`, it replaces an
    // existing directory, which is removed. At every moment either the old or the new directory is there, complete,
    // except between two renames if the system cannot exchange directories. After a failure the old one is unchanged.
    // If only the output directory cannot be flushed, the job is in its place and a warning is printed.
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

// Renames `target` to `aside` and `fresh` to `target`. If the second rename fails, the first is undone.
// Results: failures raise ExitError; `isTargetAside` then says whether the old directory is still at `aside`.
void ReplaceByRenames(const std::filesystem::path& fresh, const std::filesystem::path& target,
                      const std::filesystem::path& aside, bool& isTargetAside);
