#include "reading/MissingParts.h"

#include "output/Text.h"
#include "reading/Files.h"
#include "reading/InsideJob.h"
#include "reading/UnreadableFile.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace fs = std::filesystem;

namespace
{
using Directories = std::unordered_map<CString, CString>; // paths by names in lower case

Directories DirectoriesIn(const CString& place)
{
    Directories found;
    CStringArray paths;
    if (Files().IsDir(place))
        Files().GetAllSubDirListIn(place, paths, 0);
    for (INT_PTR i = 0; i < paths.GetSize(); ++i)
        found.try_emplace(MakeLower(Files().GetSegmntFromFilePath(paths[i], 2)), paths[i]);
    return found;
}

bool IsThere(const CString& path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(std::string(path.View()), error));
}

bool IsBrokenLink(const CString& path)
{
    std::error_code error;
    return IsThere(path) && fs::status(std::string(path.View()), error).type() == fs::file_type::not_found;
}

// What is wrong with an existing file, "" if nothing is.
std::string ProblemOfFile(const CString& path)
{
    std::string reason = ReasonNotToRead(path);
    std::error_code error;
    if (reason.empty() && fs::file_size(std::string(path.View()), error) == 0 && !error)
        reason = "is empty";
    return reason;
}

// Whether a block of the file lacks its closing brace, as in a file that was cut short.
bool HasOpenBlock(const CString& path)
{
    std::ifstream file(std::string(path.View()), std::ios::binary);
    bool isOpen = false;
    for (std::string line; std::getline(file, line);)
    {
        const CString text = CString(line.c_str()).Trim();
        if (text.View().ends_with('{') && isOpen)
            return true;
        isOpen = text.View().ends_with('{') || (isOpen && !text.View().starts_with('}'));
    }
    return isOpen;
}

// Places, as seen from inside the job, that messages of complete reading are about.
class ToldPlaces
{
public:
    explicit ToldPlaces(const ReadingMessages* messages)
    {
        if (messages == nullptr)
            return;
        for (const CJOBXmessage& message : messages->List())
            Take(message.kind->code, message.kind->severity, Key(message.file));
    }

    // Whether a message says that this is missing or cannot be read.
    bool HasAbsence(const CString& path) const
    {
        return m_absent.contains(Key(path)) ||
               (!Files().IsDir(path) && m_incomplete.contains(Key(Files().GetSegmntFromFilePath(path, 1))));
    }
    // Whether a message says that the directory lacks one that the matrix names.
    bool HasIncomplete(const CString& directory) const { return m_incomplete.contains(Key(directory)); }
    // Whether a message says that something in the file is wrong.
    bool HasFault(const CString& path) const { return m_faulty.contains(Key(path)); }

private:
    static CString Key(const CString& path)
    {
        const CString below = path.View().starts_with("./") ? path.Mid(2) : path;
        return MakeLower(below);
    }

    void Take(std::string_view code, JOBXseverity severity, const CString& place)
    {
        if (severity != JOBXseverity::Error)
            return;
        if (code == "MAT001" || code == "MAT003") // a directory of the matrix is not in it
            m_incomplete.insert(place);
        else if (code.starts_with("FIL"))
            m_absent.insert(place);
        else
            m_faulty.insert(place);
    }

    std::unordered_set<CString> m_absent;
    std::unordered_set<CString> m_incomplete;
    std::unordered_set<CString> m_faulty;
};

// Collects the lines of one job.
class Search
{
public:
    Search(const CJOBX& job, const std::string& jobPath, FailedOperations& failed, const ReadingMessages* messages)
        : m_job(job), m_jobPath(jobPath), m_failed(failed), m_isComplete(messages != nullptr), m_told(messages)
    {
    }

    std::vector<std::string> Run(const CStringArray& names)
    {
        LookIntoMatrix();
        const CJOBXstepObjArray& steps = m_job.m_pSteps->m_arrSteps;
        __int64 next = 0; // the steps were read in the order of the names; those without a directory were skipped
        for (INT_PTR i = 0; i < names.GetSize(); ++i)
        {
            const CJOBXstepObj* const step = steps.GetAt(next);
            next += step != nullptr && step->m_sName == names[i] ? 1 : 0;
            if (step != nullptr && step->m_sName == names[i])
                LookInto(*step);
            else
                LookForStep(names[i]);
        }
        LookIntoSymbols();
        LookIntoOthers();
        return std::move(m_lines);
    }

private:
    static std::string Shown(const CString& text) { return Printable(text.View()); }

    void Add(const std::string& line)
    {
        if (m_added.insert(line).second) // a matrix may name a step or a layer twice
            m_lines.push_back(line);
    }

    CString Outside(const CString& path) const { return PathOutside(m_jobPath, std::string(path.View())).c_str(); }

    // Whether the reader has already reported a problem with `path`.
    bool IsTold(const CString& path) const
    {
        return !m_failed.ReasonFor(Outside(path)).empty() || m_told.HasAbsence(path);
    }

    // The file, or, after complete reading, its compressed form if there is no other.
    CString FindFile(const CString& place, const char* name) const
    {
        const CString path = Files().FindPath(place, name);
        if (!m_isComplete || IsThere(path))
            return path;
        for (const char* const ending : {".Z", ".gz"})
            if (const CString compressed = Files().FindPath(place, (std::string(name) + ending).c_str());
                IsThere(compressed))
                return compressed;
        return path;
    }

    // Adds a line for an existing file with a problem; true if one was added, or printed by the reader.
    bool AddFile(const std::string& whose, const CString& path, const char* name)
    {
        if (IsTold(path))
            return true;
        const std::string problem = IsThere(path) ? ProblemOfFile(path) : "";
        if (problem.empty())
            return false;
        m_failed.Forget(Outside(path));
        Add(fmt::format("{}: the file \"{}\" {}", whose, name, problem));
        return true;
    }

    // As above for a file of blocks, which may also be cut short.
    bool AddBlocks(const std::string& whose, const CString& path, const char* name)
    {
        if (AddFile(whose, path, name))
            return true;
        const bool isCut = !m_told.HasFault(path) && Files().IsFile(path) && HasOpenBlock(path);
        if (isCut)
            Add(fmt::format("{}: a block of the file \"{}\" has no closing brace", whose, name));
        return isCut;
    }

    // Adds a line for a directory that is absent or a broken link.
    void AddDirectory(const std::string& whose, const CString& path, const std::string& absent)
    {
        Add(IsBrokenLink(path) ? fmt::format("{}: the directory is a broken link", whose) : whose + absent);
    }

    // Adds a line for each of these directories that is something else; all may be absent.
    void AddNoDirectories(const std::string& whose, const CString& place, std::initializer_list<const char*> names)
    {
        for (const char* const name : names)
        {
            const CString path = Files().FindPath(place, name);
            if (m_isComplete && IsTold(Files().GetSegmntFromFilePath(path, 1)))
                continue;
            if (IsBrokenLink(path))
                Add(fmt::format("{}: \"{}\" is a broken link", whose, name));
            else if (IsThere(path) && !Files().IsDir(path) && !IsTold(path))
                Add(fmt::format("{}: \"{}\" is not a directory", whose, name));
        }
    }

    void LookForStep(const CString& name)
    {
        const CString path = Files().FindPath(m_steps, name);
        if (m_isComplete && (name.IsEmpty() || IsTold(m_steps)))
            return;
        if (!IsTold(path))
            AddDirectory(fmt::format("step \"{}\" of the matrix", Shown(name)), path,
                         " has no directory below \"steps\"");
    }

    // The font and the job information may be absent, and empty.
    void LookIntoOthers()
    {
        AddNoDirectories("the job", ".", {"fonts", "misc"});
        for (const char* const name : {"fonts/standard", "misc/info"})
        {
            const CString path = Files().FindPath(".", name);
            const std::string reason = IsThere(path) && !IsTold(path) ? ReasonNotToRead(path) : "";
            if (!reason.empty())
                Add(fmt::format("the job: the file \"{}\" {}", name, reason));
        }
    }

    void LookIntoMatrix()
    {
        const CJOBXmatrix& matrix = *m_job.m_pMatrix;
        if (AddBlocks("the job", FindFile(".", "matrix/matrix"), "matrix/matrix"))
            return;
        if (matrix.m_arrSteps.GetSize() == 0)
            Add("the matrix names no step");
        else if (matrix.m_arrLayers.GetSize() == 0)
            Add("the matrix names no layer");
    }

    // Everything in "symbols" except files and hidden directories should be a symbol.
    void LookIntoSymbols()
    {
        const CString place = Files().FindPath(".", "symbols");
        if (!IsThere(place) || IsTold(place))
            return;
        std::error_code error;
        if (fs::status(std::string(place.View()), error).type() != fs::file_type::directory)
            return Add(IsBrokenLink(place) ? "\"symbols\" is a broken link" : "\"symbols\" is not a directory");
        std::vector<fs::path> entries;
        for (fs::directory_iterator entry(std::string(place.View()), error), end; !error && entry != end;
             entry.increment(error))
            entries.push_back(entry->path());
        std::sort(entries.begin(), entries.end());
        for (const fs::path& entry : entries)
            if (const CString path = entry.string().c_str();
                !entry.filename().string().starts_with('.') && !IsTold(path))
                LookIntoSymbol(path, fs::status(entry, error).type());
    }

    void LookIntoSymbol(const CString& path, fs::file_type type)
    {
        const std::string whose = fmt::format("symbol \"{}\"", Shown(Files().GetSegmntFromFilePath(path, 2)));
        if (type == fs::file_type::not_found)
            Add(whose + " is a broken link");
        else if (type != fs::file_type::directory && type != fs::file_type::regular)
            Add(whose + " is not a directory");
        if (type != fs::file_type::directory)
            return;
        std::error_code error;
        if (!m_isComplete && fs::is_symlink(std::string(path.View()), error)) // listed, but nothing in it
            return Add(whose + " was not read, because its directory is a link");
        const CString features = FindFile(path, "features");
        const CString compressed = Files().FindPath(path, "features.Z");
        if (AddFile(whose, features, "features") || IsThere(features) || AddFile(whose, compressed, "features.Z"))
            return;
        if (!IsThere(compressed))
            Add(whose + " has no file \"features\"");
    }

    // Whether the step may repeat others and so may lack layers that they have.
    bool LookIntoHeader(const CJOBXstepObj& step, const std::string& whose, const CString& directory)
    {
        const CString header = FindFile(directory, "stephdr");
        const bool isThere = IsThere(header);
        if (!isThere)
            Add(whose + " has no file \"stephdr\"");
        return !isThere || AddBlocks(whose, header, "stephdr") || step.GetHeader()->m_arrStepRepeats.GetSize() > 0;
    }

    void LookInto(const CJOBXstepObj& step)
    {
        const CString directory = Files().FindPath(m_steps, step.m_sName);
        const std::string whose = fmt::format("step \"{}\"", Shown(step.m_sName));
        const CString profile = FindFile(directory, "profile");
        const bool isWrong = AddFile(whose, profile, "profile");
        if (step.GetProfile()->m_sName.IsEmpty())
        {
            if (!isWrong)
                Add(fmt::format("{} has no profile and was not read", whose));
            return;
        }
        const bool mayRepeat = LookIntoHeader(step, whose, directory);
        AddNoDirectories(whose, directory, {"eda", "netlists", "netlists/cadnet"});
        for (const char* const name : {"eda/data", "netlists/cadnet/netlist"})
            AddFile(whose, Files().FindPath(directory, name), name);
        const CString layers = Files().FindPath(directory, "layers");
        if (m_told.HasIncomplete(layers) && !Files().IsDir(layers))
            return;
        if (IsBrokenLink(layers))
            Add(fmt::format("{}: \"layers\" is a broken link", whose));
        else if (!Files().IsDir(layers) && !IsTold(layers) && !mayRepeat)
            Add(fmt::format("{} has no directory \"layers\"", whose));
        else if (!IsTold(layers))
            LookIntoLayers(mayRepeat, whose, layers);
    }

    void LookIntoLayers(bool mayRepeat, const std::string& whose, const CString& place)
    {
        const Directories directories = DirectoriesIn(place);
        for (const CJOBXmatrixLayer& layer : m_job.m_pMatrix->m_arrLayers.Records())
        {
            if (layer.m_sName.IsEmpty())
                continue;
            const CString name = MakeLower(layer.m_sName);
            const std::string both = fmt::format("{}, layer \"{}\"", whose, Shown(layer.m_sName));
            if (const auto found = directories.find(name); found != directories.end())
                LookInto(layer, both, found->second);
            else if (!(mayRepeat && IsInAnyStep(name)) && !IsTold(Files().CKPathCombine(place, name)) &&
                     !IsTold(Files().CKPathCombine(place, layer.m_sName)))
                AddDirectory(both, Files().FindPath(place, layer.m_sName), " has no directory");
        }
    }

    void LookInto(const CJOBXmatrixLayer& layer, const std::string& whose, const CString& directory)
    {
        const bool isOfComponents = layer.m_sType.CompareNoCase("COMPONENT") == 0;
        const char* const name = isOfComponents ? "components" : "features";
        if (const CString features = Files().FindPath(directory, "features");
            isOfComponents && IsThere(features) && !Files().IsFile(features))
            AddFile(whose, features, "features");
        const CString path = FindFile(directory, name);
        if (AddFile(whose, path, name) || IsThere(path))
            return;
        const CString compressed = Files().FindPath(directory, (std::string(name) + ".Z").c_str());
        if (IsThere(compressed))
            Add(fmt::format("{0}: the file \"{1}\" exists only as \"{1}.Z\", which is not read", whose, name));
        else
            Add(fmt::format("{} has no file \"{}\"", whose, name));
    }

    // Searches all steps of the matrix, including those that were not read. A step whose layers could not be listed may
    // have any layer.
    bool IsInAnyStep(const CString& layer)
    {
        if (!m_inAnyStep)
        {
            m_inAnyStep.emplace();
            for (const CJOBXmatrixStep& step : m_job.m_pMatrix->m_arrSteps.Records())
            {
                const CString directory = Files().FindPath(m_steps, step.m_sName);
                const CString layers = Files().FindPath(directory, "layers");
                m_inAnyStep->merge(DirectoriesIn(layers));
                m_isAnyUnknown = m_isAnyUnknown || IsTold(directory) || IsTold(layers);
            }
        }
        return m_isAnyUnknown || m_inAnyStep->contains(layer);
    }

    const CJOBX& m_job;
    const std::string& m_jobPath;
    FailedOperations& m_failed;
    bool m_isComplete;
    ToldPlaces m_told;
    const CString m_steps = Files().FindPath(".", "steps");
    std::vector<std::string> m_lines;
    std::unordered_set<std::string> m_added;
    std::optional<Directories> m_inAnyStep;
    bool m_isAnyUnknown = false;
};
} // namespace

std::vector<std::string> FindMissingParts(const CJOBX& job, const CStringArray& names, const std::string& jobPath,
                                          FailedOperations& failed, const ReadingMessages* messages)
{
    return Search(job, jobPath, failed, messages).Run(names);
}
