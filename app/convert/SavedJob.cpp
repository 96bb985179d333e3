#include "convert/SavedJob.h"

#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/Text.h"
#include "reading/GzipExpander.h"
#include "reading/InsideJob.h"
#include "reading/JobPath.h"
#include "reading/Progress.h"
#include "reading/ReadingMessages.h"
#include "write/SignalHold.h"
#include "write/StagingDirectory.h"

#include <fmt/core.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

WriteTarget TargetNamed(const std::string& output, bool replace)
{
    if (output.empty())
        RaiseWrongUsage("--output needs the name of a directory");
    fs::path path(output);
    if (!path.has_filename())
        path = path.parent_path(); // without the separator at the end
    const std::string name = path.filename().string();
    if (name.empty() || name == "." || name == "..")
        RaiseWrongUsage(fmt::format("--output needs the name of a directory to make, not {}", Quoted(output)));
    const fs::path parent = path.parent_path();
    return {parent.empty() ? "." : parent.string(), name, replace};
}

namespace
{
void SaveInto(const fs::path& place, ReadJob& source, const ReadOptions& read, const std::string& target)
{
    const std::string path = NamedJobPath(read.jobPath);
    const ReadLimits limits(path, read.followLinks, read.maxEntries);
    ReadingMessages messages;
    GzipExpander expander;
    source.job->SetReading({JOBXway::Complete, nullptr, &expander});
    const int result = source.job->SaveODBData(place.string().c_str(), &messages);
    source.job->SetReading({});
    messages.Print(path, read.messages, !read.quiet);
    if (result != 0)
        return;
    std::error_code ignored;
    const bool wasThere = fs::exists(fs::symlink_status(target, ignored));
    throw ExitError(
        ExitCode::UnwritableOutput,
        fmt::format(
            "the job could not be saved: {}{}", messages.First(),
            target.empty() ? "" : fmt::format("; {} {}", Quoted(target), wasThere ? "is unchanged" : "was not made")));
}
} // namespace

void SaveReadJobAs(const fs::path& place, ReadJob& source, const ReadOptions& read)
{
    const ProgressLine progress("comparing", read.quiet, WritingMeasure(read.jobPath, place.string(), {}));
    SaveInto(fs::absolute(place), source, read, "");
}

void SaveReadJob(ReadJob& source, const ReadOptions& read, const WriteTarget& target)
{
    const SignalHold hold;
    StagingDirectory staging(target.directory);
    const ProgressLine progress("saving " + Printable(target.name), read.quiet,
                                WritingMeasure(read.jobPath, staging.Inside().string(), {}));
    SaveInto(fs::absolute(staging.Inside()) / target.name, source, read,
             (fs::path(target.directory) / target.name).string());
    if (!SignalHold::Came())
        staging.MoveIntoPlace(target.name, target.replace);
}
