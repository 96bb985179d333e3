#include "JobReader.h"

#include "ExitError.h"
#include "JobPath.h"
#include "Messages.h"
#include "Progress.h"
#include "Text.h"

#include <fmt/core.h>

#include <algorithm>

namespace
{
// The library's message says less than the line that the program prints itself; it would only say it twice.
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

CStringArray NamesOf(const CJOBXmatrixStepArray& steps)
{
    CStringArray names;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXmatrixStep* const step = steps.GetAt(i))
            names.Add(step->m_sName);
    return names;
}

[[noreturn]] void RaiseUnknownStep(const std::string& wanted, const CStringArray& known)
{
    std::string list;
    for (INT_PTR i = 0; i < known.GetSize(); ++i)
        list += (i == 0 ? "" : ", ") + Printable(known[i].View());
    throw ExitError(ExitCode::WrongUsage, fmt::format("the job has no step \"{}\"; its steps are: {}",
                                                      Printable(wanted), list.empty() ? "none" : list));
}

// The chosen names as the matrix spells them, each once.
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

// The steps read stand in the order of the names, those without a directory left out.
void WarnOfMissingSteps(const CStringArray& names, const CJOBXstepObjArray& steps)
{
    __int64 next = 0;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
    {
        const CJOBXstepObj* const step = steps.GetAt(next);
        if (step == nullptr || step->m_sName != names[i])
        {
            PrintWarning(
                fmt::format("step \"{}\" of the matrix has no directory below \"steps\"", Printable(names[i].View())));
            continue;
        }
        ++next;
        if (step->GetProfile()->m_sName.IsEmpty())
            PrintWarning(
                fmt::format("step \"{}\" has no profile; nothing of it was read", Printable(step->m_sName.View())));
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
}

// The library's answer; `names` gets the names of the steps that were asked for.
int Read(CJOBX& job, const std::string& path, const std::vector<std::string>& wanted, CStringArray& names)
{
    if (wanted.empty())
    {
        const int result = job.ParseODBOfMFC(path.c_str());
        names = NamesOf(job.m_pMatrix->m_arrSteps);
        return result;
    }
    CStringArray known;
    if (job.ParseMatrixInODBOfMFC(path.c_str(), known) == 0)
        return 0;
    names = ChosenNames(wanted, known);
    return job.ParseODBOfMFC(path.c_str(), names);
}
} // namespace

ReadJob ReadJobDirectory(const ReadOptions& options)
{
    CheckJobDirectory(options.jobPath);
    if (!options.sysAttrFile.empty())
        CheckAttributeFile(options.sysAttrFile);
    const std::string path = NamedJobPath(options.jobPath);
    const SilentMessageBoxes silence;
    const FailedOperations failed;
    ReadJob read;
    read.job = std::make_unique<CJOBX>();
    if (!options.sysAttrFile.empty())
        ReadAttributeFile(*read.job, options.sysAttrFile);
    CStringArray names;
    {
        const ProgressReport progress(*read.job, options.quiet);
        read.result = Read(*read.job, path, options.steps, names);
    }
    if (read.result == 0)
    {
        read.problem = ProblemOfJob(path, failed);
        return read;
    }
    WarnOfMissingSteps(names, read.job->m_pSteps->m_arrSteps);
    failed.PrintWarnings();
    read.isWhole = failed.IsEmpty();
    return read;
}

ReadJob ReadGoodJobDirectory(const ReadOptions& options)
{
    ReadJob read = ReadJobDirectory(options);
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
    return read;
}

std::unique_ptr<CJOBX> ReadGoodJob(const ReadOptions& options)
{
    return std::move(ReadGoodJobDirectory(options).job);
}

const CJOBXstepObj& StepNamed(const CJOBX& job, const std::string& name)
{
    CStringArray known;
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        known.Add(steps.GetAt(i)->m_sName);
    const CString chosen = ChosenNames({name}, known)[0];
    const CString* const found = std::find(known.GetData(), known.GetData() + known.GetSize(), chosen);
    return *steps.GetAt(found - known.GetData());
}
