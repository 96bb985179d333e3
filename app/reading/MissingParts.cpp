#include "reading/MissingParts.h"

#include "output/Text.h"
#include "reading/InsideJob.h"

#include <fmt/core.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace fs = std::filesystem;

namespace
{
using Directories = std::unordered_map<CString, CString>; // paths by names in lower case

CString Lower(CString name)
{
    return name.MakeLower();
}

const CKUtility& Files()
{
    return *CKUtility::GetInstance();
}

Directories DirectoriesIn(const CString& place)
{
    Directories found;
    CStringArray paths;
    if (Files().IsDir(place))
        Files().GetAllSubDirListIn(place, paths, 0);
    for (INT_PTR i = 0; i < paths.GetSize(); ++i)
        found.try_emplace(Lower(Files().GetSegmntFromFilePath(paths[i], 2)), paths[i]);
    return found;
}

bool IsThere(const CString& path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(std::string(path.View()), error));
}

// What is wrong with an existing file, "" if nothing is.
std::string ProblemOfFile(const CString& path)
{
    const std::string name(path.View());
    std::error_code error;
    const fs::file_type type = fs::status(name, error).type();
    if (type == fs::file_type::not_found)
        return "is a broken link";
    if (!error && type != fs::file_type::regular)
        return "is not a regular file";
    errno = 0;
    std::FILE* const file = error ? nullptr : std::fopen(name.c_str(), "rb");
    if (file == nullptr)
        return "cannot be read: " + (error ? error : std::error_code(errno, std::generic_category())).message();
    std::fclose(file);
    return fs::file_size(name, error) == 0 && !error ? "is empty" : "";
}

// Collects the lines of one job.
class Search
{
public:
    Search(const CJOBX& job, const std::string& jobPath, const FailedOperations& failed)
        : m_job(job), m_jobPath(jobPath), m_failed(failed)
    {
    }

    std::vector<std::string> Run(const CStringArray& names)
    {
        if (m_job.m_pMatrix->m_arrSteps.GetSize() == 0)
            AddFile("the job", Files().FindPath(".", "matrix/matrix"), "matrix/matrix");
        if (m_job.m_pMatrix->m_arrSteps.GetSize() == 0 && m_lines.empty())
            Add("the matrix names no step");
        const CJOBXstepObjArray& steps = m_job.m_pSteps->m_arrSteps;
        __int64 next = 0; // the steps were read in the order of the names; those without a directory are left out
        for (INT_PTR i = 0; i < names.GetSize(); ++i)
        {
            const CJOBXstepObj* const step = steps.GetAt(next);
            next += step != nullptr && step->m_sName == names[i] ? 1 : 0;
            if (step != nullptr && step->m_sName == names[i])
                LookInto(*step);
            else
                Add(fmt::format("step \"{}\" of the matrix has no directory below \"steps\"", Shown(names[i])));
        }
        return std::move(m_lines);
    }

private:
    static std::string Shown(const CString& text) { return Printable(text.View()); }

    void Add(const std::string& line)
    {
        if (m_added.insert(line).second) // a matrix may name a step or a layer twice
            m_lines.push_back(line);
    }

    // Whether the reader has already reported a problem with `path`.
    bool IsTold(const CString& path) const
    {
        return !m_failed.ReasonFor(PathOutside(m_jobPath, std::string(path.View())).c_str()).empty();
    }

    // Adds a line for an existing file with a problem; true if one was added, or printed by the reader.
    bool AddFile(const std::string& whose, const CString& path, const char* name)
    {
        if (IsTold(path))
            return true;
        const std::string problem = IsThere(path) ? ProblemOfFile(path) : "";
        if (!problem.empty())
            Add(fmt::format("{}: the file \"{}\" {}", whose, name, problem));
        return !problem.empty();
    }

    void LookInto(const CJOBXstepObj& step)
    {
        const CString directory = Files().FindPath(m_steps, step.m_sName);
        const std::string whose = fmt::format("step \"{}\"", Shown(step.m_sName));
        const CString profile = Files().FindPath(directory, "profile");
        const bool isWrong = AddFile(whose, profile, "profile");
        if (step.GetProfile()->m_sName.IsEmpty())
        {
            if (!isWrong || !IsThere(profile))
                Add(fmt::format("{} has no profile and was not read", whose));
            return;
        }
        for (const char* const name : {"stephdr", "eda/data", "netlists/cadnet/netlist"})
        {
            const CString path = Files().FindPath(directory, name);
            if (IsThere(path) && !Files().IsFile(path))
                AddFile(whose, path, name);
        }
        const CString layers = Files().FindPath(directory, "layers");
        if (IsTold(layers))
            return;
        if (!Files().IsDir(layers) && step.GetHeader()->m_arrStepRepeats.GetSize() == 0)
            return Add(fmt::format("{} has no directory \"layers\"", whose));
        LookIntoLayers(step, whose, layers);
    }

    void LookIntoLayers(const CJOBXstepObj& step, const std::string& whose, const CString& place)
    {
        const Directories directories = DirectoriesIn(place);
        const bool repeats = step.GetHeader()->m_arrStepRepeats.GetSize() > 0;
        const CJOBXmatrixLayerArray& layers = m_job.m_pMatrix->m_arrLayers;
        for (__int64 i = 0; i < layers.GetSize(); ++i)
        {
            const CJOBXmatrixLayer* const layer = layers.GetAt(i);
            if (layer == nullptr || layer->m_sName.IsEmpty())
                continue;
            const CString name = Lower(layer->m_sName);
            const std::string both = fmt::format("{}, layer \"{}\"", whose, Shown(layer->m_sName));
            if (const auto found = directories.find(name); found != directories.end())
                LookInto(*layer, both, found->second);
            else if (!(repeats && IsInAnyStep(name)) && !IsTold(Files().CKPathCombine(place, name)) &&
                     !IsTold(Files().CKPathCombine(place, layer->m_sName)))
                Add(both + " has no directory");
        }
    }

    void LookInto(const CJOBXmatrixLayer& layer, const std::string& whose, const CString& directory)
    {
        const bool isOfComponents = layer.m_sType.CompareNoCase("COMPONENT") == 0;
        const char* const name = isOfComponents ? "components" : "features";
        if (const CString features = Files().FindPath(directory, "features");
            isOfComponents && IsThere(features) && !Files().IsFile(features))
            AddFile(whose, features, "features");
        const CString path = Files().FindPath(directory, name);
        if (AddFile(whose, path, name) || IsThere(path))
            return;
        const CString compressed = Files().FindPath(directory, (std::string(name) + ".Z").c_str());
        if (IsThere(compressed))
            Add(fmt::format("{0}: the file \"{1}\" exists only as \"{1}.Z\", which is not read", whose, name));
        else
            Add(fmt::format("{} has no file \"{}\"", whose, name));
    }

    // For all steps of the matrix, including those that were not read.
    bool IsInAnyStep(const CString& layer)
    {
        if (!m_inAnyStep)
        {
            m_inAnyStep.emplace();
            const CJOBXmatrixStepArray& steps = m_job.m_pMatrix->m_arrSteps;
            for (__int64 i = 0; i < steps.GetSize(); ++i)
                if (const CJOBXmatrixStep* const step = steps.GetAt(i))
                    m_inAnyStep->merge(
                        DirectoriesIn(Files().FindPath(Files().FindPath(m_steps, step->m_sName), "layers")));
        }
        return m_inAnyStep->contains(layer);
    }

    const CJOBX& m_job;
    const std::string& m_jobPath;
    const FailedOperations& m_failed;
    const CString m_steps = Files().FindPath(".", "steps");
    std::vector<std::string> m_lines;
    std::unordered_set<std::string> m_added;
    std::optional<Directories> m_inAnyStep;
};
} // namespace

std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          const FailedOperations& failed)
{
    return Search(job, jobPath, failed).Run(names);
}
