#include "reading/JobReader.h"

#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/NearestName.h"
#include "output/Text.h"
#include "reading/GzipExpander.h"
#include "reading/InsideJob.h"
#include "reading/JobPath.h"
#include "reading/MissingParts.h"
#include "reading/Progress.h"

#include <fmt/core.h>

#include <algorithm>

namespace
{
// Drops the library's message, which would repeat the program's own line with less detail.
class SilentMessageBoxes
{
public:
    SilentMessageBoxes() : m_before(SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; })) {}
    SilentMessageBoxes(const SilentMessageBoxes&) = delete;
    SilentMessageBoxes& operator=(const SilentMessageBoxes&) = delete;
    ~SilentMessageBoxes() { SetMessageBoxHandler(m_before); }

private:
    JobxMessageBoxHandler m_before;
};

CStringArray StepNamesOf(const CJOBXmatrixStepArray& steps)
{
    CStringArray names;
    for (const CJOBXmatrixStep& step : steps.Records())
        names.Add(step.m_sName);
    return names;
}

[[noreturn]] void RaiseUnknownStep(const std::string& wanted, const CStringArray& known)
{
    std::vector<std::string> names;
    std::string list;
    for (INT_PTR i = 0; i < known.GetSize(); ++i)
    {
        if (known[i].IsEmpty())
            continue;
        names.emplace_back(known[i].View());
        list += (list.empty() ? "" : ", ") + Printable(names.back());
    }
    throw ExitError(ExitCode::WrongUsage,
                    fmt::format("the job has no step \"{}\"; its steps are: {}{}", Printable(wanted),
                                list.empty() ? "none" : list, DidYouMean(wanted, names)));
}

// The chosen names as spelled in the matrix, each once.
CStringArray ChosenNames(const std::vector<std::string>& wanted, const CStringArray& known)
{
    CStringArray chosen;
    const auto contains = [](const CStringArray& names, const CString& name) {
        return std::find(names.GetData(), names.GetData() + names.GetSize(), name) != names.GetData() + names.GetSize();
    };
    for (const std::string& name : wanted)
    {
        const CString* const end = known.GetData() + known.GetSize();
        const CString* found = std::find(known.GetData(), end, CString(name.c_str()));
        if (found == end)
            found = std::find_if(known.GetData(), end,
                                 [&](const CString& other) { return other.CompareNoCase(name.c_str()) == 0; });
        if (found == end)
            RaiseUnknownStep(name, known);
        if (!contains(chosen, *found))
            chosen.Add(*found);
    }
    return chosen;
}

// Prints the missing parts, up to a number of lines.
void PrintMissing(const std::vector<std::string>& missing)
{
    constexpr std::size_t kPrinted = 1000;
    for (std::size_t i = 0; i < std::min(missing.size(), kPrinted); ++i)
        PrintWarning(missing[i]);
    if (missing.size() > kPrinted)
        PrintWarning(fmt::format("{} further parts of the job are missing", missing.size() - kPrinted));
}

// Sets the job's name and paths to those outside its directory.
void NameAsOutside(CJOBX& job, const std::string& path)
{
    job.SetODBProjectName(CKUtility::GetInstance()->GetSegmntFromFilePath(path.c_str(), 2));
    for (CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
    {
        symbol.m_sPath = CString(PathOutside(path, std::string(symbol.m_sPath.View())).c_str());
        symbol.m_sName = CString(PathOutside(path, std::string(symbol.m_sName.View())).c_str());
    }
}

void ReadAttributeFile(CJOBX& job, const std::string& path)
{
    try
    {
        job.ParseODBsysAttrDataArray(path.c_str());
    }
    catch (CInvalidArgException* exception)
    {
        exception->Delete();
        throw ExitError(
            ExitCode::UnreadableInput,
            fmt::format("the attribute file \"{}\" has a NAME or OPTIONS line without a value", Printable(path)));
    }
    if (job.m_pSysAttrs->GetSize() == 0)
        throw ExitError(ExitCode::UnreadableInput,
                        fmt::format("the attribute file \"{}\" has no complete OPTION block: nothing was read from it",
                                    Printable(path)));
}

// Returns the library's result; `names` receives the names of the requested steps.
int Read(CJOBX& job, const std::vector<std::string>& wanted, CStringArray& names)
{
    const char* const path = ".";
    if (wanted.empty())
    {
        const int result = job.ParseODBOfMFC(path);
        names = StepNamesOf(job.m_pMatrix->m_arrSteps);
        return result;
    }
    CStringArray known;
    if (job.ParseMatrixInODBOfMFC(path, known) == 0)
        return 0;
    names = ChosenNames(wanted, known);
    return job.ParseODBOfMFC(path, names);
}

void ReadFromInside(ReadJob& read, const ReadOptions& options, const std::string& path, FailedOperations& failed,
                    ReadingMessages& messages)
{
    const InsideJob inside(path);
    CStringArray names;
    GzipExpander expander;
    CJOBXreading reading{options.way, &messages, &expander};
    if (options.messages == ShownMessages::All)
        reading.nMessagesPerCode = 0;
    const ProgressLine progress("reading " + Printable(path), options.quiet, ReadingMeasure(".", options.steps));
    read.job->SetReading(reading);
    read.result = Read(*read.job, options.steps, names);
    CJOBXreading afterwards; // without the sink, which does not live as long as the job
    afterwards.way = reading.way;
    read.job->SetReading(afterwards);
    if (read.result != 0)
        read.missing = FindMissingParts(*read.job, names, path, failed, reading.IsComplete() ? &messages : nullptr);
}
} // namespace

ReadJob ReadJobDirectory(const ReadOptions& options)
{
    CheckJobDirectory(options.jobPath);
    if (!options.sysAttrFile.empty())
        CheckAttributeFile(options.sysAttrFile);
    const std::string path = NamedJobPath(options.jobPath);
    const SilentMessageBoxes silence;
    FailedOperations failed;
    ReadJob read;
    read.job = std::make_unique<CJOBX>();
    if (!options.sysAttrFile.empty())
        ReadAttributeFile(*read.job, options.sysAttrFile);
    const ReadLimits limits(path, options.followLinks, options.maxEntries);
    failed.NameAsIn(path);
    ReadingMessages messages;
    ReadFromInside(read, options, path, failed, messages);
    NameAsOutside(*read.job, path);
    if (read.result == 0)
    {
        read.problem = ProblemOfJob(path, failed, options.way, messages.ReasonFor("matrix/matrix"));
        return read;
    }
    messages.Share(path, failed);
    messages.Print(path, options.messages, !options.quiet);
    read.errors = messages.ErrorCount();
    read.warnings = messages.WarningCount();
    read.firstMessage = messages.First();
    PrintMissing(read.missing);
    failed.PrintWarnings();
    const std::vector<std::string> lines = failed.Lines();
    read.missing.insert(read.missing.end(), lines.begin(), lines.end());
    return read;
}

ReadJob ReadJobSilently(const std::string& path)
{
    ReadOptions options;
    options.quiet = true;
    options.followLinks = true;
    options.way = JOBXway::Complete;
    const SilentMessageBoxes silence;
    FailedOperations failed;
    ReadJob read;
    read.job = std::make_unique<CJOBX>();
    const ReadLimits limits(path, options.followLinks, options.maxEntries);
    failed.NameAsIn(path);
    ReadingMessages messages;
    ReadFromInside(read, options, path, failed, messages);
    read.missing = failed.Lines();
    for (const CJOBXmessage& message : messages.List())
        if (std::string_view(message.kind->code) == "FIL002") // there, but cannot be read
            read.missing.push_back(fmt::format("{}: {}", Printable(message.file.View()), message.text.View()));
    return read;
}

ReadJob ReadGoodJobDirectory(const ReadOptions& options)
{
    ReadJob read = ReadJobDirectory(options);
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
    return read;
}

void CheckStrictly(const ReadOptions& options, const ReadJob& read)
{
    if (options.strict && read.errors > 0)
        throw ExitError(ExitCode::FaultyJob, fmt::format("{} has {} error{} (--strict)", Quoted(options.jobPath),
                                                         read.errors, read.errors == 1 ? "" : "s"));
}

std::vector<const CJOBXstepObj*> StepsNamed(const CJOBX& job, const std::vector<std::string>& names)
{
    std::vector<const CJOBXstepObj*> all;
    CStringArray known;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        all.push_back(&step);
        known.Add(step.m_sName);
    }
    if (names.empty())
        return all;
    std::vector<const CJOBXstepObj*> chosen;
    const CStringArray spelled = ChosenNames(names, known);
    for (INT_PTR i = 0; i < spelled.GetSize(); ++i)
        chosen.push_back(*std::find_if(all.begin(), all.end(),
                                       [&](const CJOBXstepObj* step) { return step->m_sName == spelled[i]; }));
    return chosen;
}
