#include "write/WriteCommand.h"

#include "options/CommonOptions.h"
#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/Text.h"
#include "reading/JobPath.h"
#include "reading/Progress.h"
#include "write/JobEntries.h"
#include "write/LostParts.h"
#include "write/SignalHold.h"
#include "write/StagingDirectory.h"
#include "write/WriteFailures.h"
#include "write/WriteTarget.h"

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string_view>

namespace fs = std::filesystem;

namespace
{
bool IsStep(const CJOBXstepObjArray& steps, const CString& name)
{
    for (const CJOBXstepObj& step : steps.Records())
        if (step.m_sName.CompareNoCase(name) == 0)
            return true;
    return false;
}

// Whether a user symbol of that name would be written over another part of the job. Letter case is ignored, because the
// job may be moved to a system that ignores it. A path of several components is written if all but its last exist.
bool TakesPlaceOfOwn(const CString& name, const CJOBXstepObjArray& steps)
{
    const std::vector<CString> components = ComponentsOf(name);
    if (components.empty() || !IsOwnDirectory(components[0]))
        return false;
    if (std::find(components.begin(), components.end(), CString("..")) != components.end())
        return false; // never written
    return components.size() <= 2 || (components[0].CompareNoCase("steps") == 0 && IsStep(steps, components[1]));
}

template <class Visit>
void ForEachSymbol(const CJOBX& job, Visit visit)
{
    for (const CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
        visit(symbol);
}

void CheckSymbolNames(const CJOBX& job)
{
    ForEachSymbol(job,
                  [&](const CJOBXSpecialSymbol& symbol)
                  {
                      if (TakesPlaceOfOwn(symbol.m_sName, job.m_pSteps->m_arrSteps))
                          throw ExitError(ExitCode::UnwritableOutput,
                                          fmt::format("the user symbol \"{}\" would take the place of the job's own "
                                                      "directory of that name",
                                                      Printable(symbol.m_sName.View())));
                  });
}

// Steps of the matrix that were not chosen: the written matrix names them all the same.
void PrintStepsLeftOut(const CJOBX& job, const std::vector<std::string>& chosen)
{
    if (chosen.empty())
        return;
    std::string names;
    for (const CJOBXmatrixStep& row : job.m_pMatrix->m_arrSteps.Records())
    {
        const auto steps = job.m_pSteps->m_arrSteps.Records();
        const auto isRow = [&](const CJOBXstepObj& step) { return step.m_sName.CompareNoCase(row.m_sName) == 0; };
        if (!row.m_sName.IsEmpty() && std::none_of(steps.begin(), steps.end(), isRow))
            names += (names.empty() ? "" : ", ") + Printable(row.m_sName.View());
    }
    if (!names.empty())
        PrintNote("the matrix also names the steps that are not written: " + names);
}

void PrintNotes(const CJOBX& job, const std::string& jobPath, const std::vector<std::string>& chosen)
{
    PrintStepsLeftOut(job, chosen);
    int symbols = 0;
    ForEachSymbol(job, [&](const CJOBXSpecialSymbol& symbol) { symbols += IsNamedByPath(symbol) ? 1 : 0; });
    if (symbols > 0)
        PrintNote("the user symbols are not written: a read of the whole job names them by their paths; with --step "
                  "they are written");
    const CKUtility& files = *CKUtility::GetInstance();
    if (job.m_pFonts->m_arrCharacters.GetSize() > 0 && !files.DoesFileExist("standard"))
        PrintNote("the font is not written: no file named \"standard\" is in the current directory");
    CStringArray misc;
    const CString miscDirectory = files.FindPath(jobPath.c_str(), "misc");
    if (files.IsDir(miscDirectory))
        files.GetAllFileListIn(miscDirectory, misc, "*.*", 0);
    if (misc.GetSize() > 0)
        PrintNote("the job information and attributes in \"misc\" are not written");
}

// Writes the job below `directory`; raises ExitError if any part could not be written.
void WriteInto(const fs::path& directory, CJOBX& job, const WriteOptions& options, const std::string& target)
{
    const CKUtility& files = *CKUtility::GetInstance();
    const CString place = directory.string().c_str();
    const CString jobDirectory = files.CKPathCombine(place, job.m_sName);
    WriteFailures failures;
    ForEachSymbol(job,
                  [&](const CJOBXSpecialSymbol& symbol)
                  {
                      if (!IsNamedByPath(symbol))
                          return;
                      failures.Expect(symbol.m_sName);
                      failures.Expect(files.CKPathCombine(jobDirectory, symbol.m_sName));
                  });
    job.WriteODBData(place, options.withEda ? 1 : 0);
    if (failures.Count() == 0 && files.IsDir(jobDirectory))
        return;
    failures.Print(std::string(jobDirectory.View()), target);
    std::error_code ignored;
    const bool wasThere = fs::exists(fs::symlink_status(target, ignored));
    throw ExitError(ExitCode::UnwritableOutput,
                    fmt::format("the job could not be written; \"{}\" {}", Printable(target),
                                wasThere ? "is unchanged" : "was not made"));
}

// The job to be replaced may have the parts that could not be read.
void CheckReplacement(const ReadJob& source, const std::string& path, const WriteTarget& target, bool withEda)
{
    const fs::path place = fs::path(target.directory) / target.name;
    std::error_code ignored;
    if (!fs::exists(fs::symlink_status(place, ignored)))
        return;
    std::vector<std::string> missing = source.missing;
    std::vector<std::string> lost = FindLostParts(*source.job, path, place.string(), withEda);
    if (missing.empty() && lost.empty())
        lost = FindLostRecords(*source.job, path, place.string(), withEda);
    for (const std::string& line : lost)
    {
        missing.push_back(line);
        PrintWarning(line);
    }
    if (missing.empty())
        return;
    const std::size_t others = missing.size() - 1;
    throw ExitError(ExitCode::UnreadableInput,
                    fmt::format("{} ({}{}); \"{}\" is not replaced (--allow-incomplete replaces it)",
                                source.missing.empty() ? "parts of the job to be replaced would be lost"
                                                       : "not all of the job could be read",
                                missing.front(), others == 0 ? "" : fmt::format(", and {} more", others),
                                Printable(place.string())));
}

void Change(CJOBX& job, const WriteOptions& options, const std::string& name)
{
    if (options.scale)
        job.UnitConvert(*options.scale);
    if (options.rebuildSteps)
        job.RebuildStepObj();
    job.SetODBProjectName(name.c_str());
}

void WriteAndMove(CJOBX& job, const ReadOptions& read, const WriteOptions& options, const WriteTarget& target)
{
    const SignalHold hold;
    StagingDirectory staging(target.directory);
    const ProgressLine progress("writing " + Printable(target.name), read.quiet,
                                WritingMeasure(read.jobPath, staging.Inside().string(), read.steps));
    WriteInto(staging.Inside(), job, options, (fs::path(target.directory) / target.name).string());
    if (!SignalHold::Came())
        staging.MoveIntoPlace(target.name, target.replace);
}
struct WriteArguments
{
    ReadOptions read;
    WriteOptions write;
};

constexpr const char* kWriteFooter = R"(The job is written to DIR/NAME, where NAME is the name of the input directory.
DIR is created if its parent exists. The job is written beside that place first
and moved there when it is complete and on the disk, so a failure changes
nothing. It is scaled first, then its steps are reordered, then it gets its
name.

--force replaces a job or an empty directory, and nothing else. A directory is a
job if its matrix/matrix has rows, or if it has steps and nothing that is
foreign to jobs.

What is not written:
  user symbols  if the whole job is read; with --step they are written, beside
                "steps"
  the font      unless the current directory has a file named "standard"
  misc          neither the job information nor attributes
  other files   attribute lists, tools and everything else that jobx does not
                read

Exit codes and more examples: jobx --help)";

// Units differ by less. Beyond them, written coordinates are zeros or no numbers.
constexpr double kLeastScale = 1e-6;
constexpr double kMostScale = 1e6;

double ScaleOf(const std::string& text)
{
    const std::optional<double> scale = NumberIn(text);
    if (!scale || *scale < kLeastScale || *scale > kMostScale)
        RaiseWrongUsage(fmt::format("--scale needs a number from 0.000001 to 1000000, not \"{}\"", Printable(text)));
    return *scale;
}

// The options that change the written job.
void AddChanges(CLI::App& command, WriteOptions& options)
{
    command.add_flag_callback(
        "--no-eda", [&options] { options.withEda = false; }, "Leave out the EDA data and netlists of the steps");
    command
        .add_option_function<std::string>(
            "--scale", [&options](const std::string& factor) { options.scale = ScaleOf(factor); },
            "Multiply lengths by this number; unit names, symbol names and step headers do not change")
        ->type_name("FACTOR");
    command.add_flag("--rebuild-steps", options.rebuildSteps, "Put steps that repeat others before the plain ones");
    command.add_option("--name", options.name, "The name of the written job")->type_name("NAME");
}

void CheckArguments(const WriteOptions& options)
{
    if (options.directory.empty())
        RaiseWrongUsage("--output needs the name of a directory");
    if (options.allowIncomplete && !options.force)
        RaiseWrongUsage("--allow-incomplete needs --force");
}
} // namespace

void RunWrite(const ReadOptions& read, const WriteOptions& options)
{
    CheckJobDirectory(read.jobPath);
    const std::string path = NamedJobPath(read.jobPath);
    const CString readName = CKUtility::GetInstance()->GetSegmntFromFilePath(path.c_str(), 2);
    const WriteTarget target{options.directory, options.name.value_or(std::string(readName.View())), options.force};
    CheckTarget(target, path);
    if (read.followLinks)
        CheckLinks(target, path);
    const ReadJob source = ReadGoodJobDirectory(read);
    if (!options.allowIncomplete)
        CheckReplacement(source, path, target, options.withEda);
    CJOBX& job = *source.job;
    CheckSymbolNames(job);
    Change(job, options, target.name);
    WriteAndMove(job, read, options, target);
    if (!read.quiet)
        PrintNotes(job, path, read.steps);
}

void AddWriteCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<WriteArguments>();
    WriteOptions& options = arguments->write;
    CLI::App& command = AddJobCommand(app, "write", "Writes the job as a new directory tree", arguments->read);
    command.add_option("-o,--output", options.directory, "The directory to write the job's directory to")
        ->required()
        ->type_name("DIR");
    AddSteps(command, arguments->read.steps);
    AddChanges(command, options);
    command.add_flag("--force", options.force, "Replace an existing directory if it is a job or empty");
    command.add_flag("--allow-incomplete", options.allowIncomplete,
                     "With --force: replace the directory even if parts of the job are missing");
    SetExample(command, "the job as the library writes it, in out/blinker", "jobx write samples/blinker -o out");
    command.footer(kWriteFooter);
    command.callback(
        [arguments]
        {
            CheckArguments(arguments->write);
            RunWrite(arguments->read, arguments->write);
        });
}
