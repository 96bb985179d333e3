#include "write/LostParts.h"

#include "output/Text.h"
#include "reading/Files.h"
#include "reading/JobReader.h"
#include "write/JobEntries.h"

#include <fmt/core.h>

#include <algorithm>
#include <map>
#include <set>

namespace
{
CString NameIn(const CString& path)
{
    return Files().GetSegmntFromFilePath(path, 2).MakeLower();
}

constexpr const char* kEda = "eda/data";
constexpr const char* kNetlist = "netlists/cadnet/netlist";

// A job written without EDA data has an empty file.
bool HasContents(const CJOBXdata& data)
{
    return data.m_arrNets.GetSize() > 0 || data.m_arrPkgs.GetSize() > 0;
}

bool HasContents(const CJOBXnetlist& netlist)
{
    return netlist.m_arrNets.GetSize() > 0;
}

// Whether a file of the step in that directory has contents. It may be absent.
template <class Model>
bool HasContentsIn(const CString& step, const char* file)
{
    const CString path = Files().FindPath(step, file);
    Model model;
    if (Files().DoesFileExist(path))
        model.ParseODBOfMFC(path);
    return HasContents(model);
}

// The names of the user symbols of the job at `path`, in lower case. In a written job they are beside "steps".
std::set<CString> SymbolsAt(const CString& path)
{
    std::set<CString> names;
    for (const CString& place : {Files().FindPath(path, "symbols"), path})
    {
        CStringArray directories;
        if (Files().IsDir(place))
            Files().GetAllSubDirListIn(place, directories, 0);
        for (INT_PTR i = 0; i < directories.GetSize(); ++i)
            if (Files().DoesFileExist(Files().FindPath(directories[i], "features")) ||
                Files().DoesFileExist(Files().FindPath(directories[i], "features.Z")))
                names.insert(NameIn(directories[i]));
    }
    return names;
}

// The user symbols that have features, in lower case, and whether they will be written.
std::map<CString, bool> SymbolsOf(const CJOBX& job)
{
    std::map<CString, bool> areWritten;
    for (const CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
        if (symbol.GetLayer()->GetFeatures()->GetSize() > 0)
            areWritten[NameIn(symbol.m_sName)] |= !IsNamedByPath(symbol);
    return areWritten;
}

// The symbols used by layers of the steps: names in lower case, and as spelled there.
std::map<CString, CString> SymbolsUsedIn(const CJOBXstepObjArray& steps)
{
    std::map<CString, CString> used;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        for (__int64 k = 0; steps.GetAt(i) != nullptr && k < steps.GetAt(i)->m_arrLayers.GetSize(); ++k)
        {
            const CJOBXlayer* const layer = steps.GetAt(i)->m_arrLayers.GetAt(k);
            const INT_PTR count = layer != nullptr ? layer->m_arrSymbolNames.GetSize() : 0;
            for (INT_PTR at = 0; at < count; ++at)
            {
                const CString name = layer->m_arrSymbolNames[at].SpanExcluding(" "); // a unit may follow
                used.try_emplace(CString(name).MakeLower(), name);
            }
        }
    return used;
}

void AddLostFiles(std::vector<std::string>& lines, const CJOBXstepObj& step, const CString& path,
                  const CString& replaced)
{
    const auto directoryIn = [&](const CString& job)
    { return Files().FindPath(Files().FindPath(job, "steps"), step.m_sName); };
    const auto add = [&](const char* file, const char* contents)
    {
        const std::string whose = fmt::format("step \"{}\"", Printable(step.m_sName.View()));
        lines.push_back(Files().DoesFileExist(Files().FindPath(directoryIn(path), file))
                            ? fmt::format("{}: the file \"{}\" holds no {}", whose, file, contents)
                            : fmt::format("{} has no file \"{}\"", whose, file));
    };
    if (!HasContents(*step.m_pEda->m_pData) && HasContentsIn<CJOBXdata>(directoryIn(replaced), kEda))
        add(kEda, "EDA data");
    if (!HasContents(*step.m_pNetlist) && HasContentsIn<CJOBXnetlist>(directoryIn(replaced), kNetlist))
        add(kNetlist, "netlist");
}

template <class Records>
std::set<CString> NamesOf(const Records& records)
{
    std::set<CString> names;
    for (const auto& record : records.Records())
        names.insert(MakeLower(record.m_sName));
    return names;
}

// The names of the layers that the steps have directories for, in lower case.
std::set<CString> LayersIn(const CJOBXstepObjArray& steps)
{
    std::set<CString> names;
    for (const CJOBXstepObj& step : steps.Records())
    {
        names.merge(NamesOf(step.m_arrLayers));
        for (const CJOBXcomponents& components : step.m_arrComponents.Records())
            names.insert(MakeLower(components.m_sLayerName));
    }
    return names;
}

// Steps and layers that are there but not in the matrix, as if it had been cut short, and that the replaced job names.
void AddUnnamed(std::vector<std::string>& lines, const CJOBX& job, const CString& path, const CString& replaced)
{
    const CString directory = Files().FindPath(replaced, "matrix");
    CJOBXmatrix before;
    if (Files().DoesFileExist(Files().FindPath(directory, "matrix")))
        before.ParseODBOfMFC(directory);
    const auto add = [&](const char* kind, const CString& name)
    { lines.push_back(fmt::format("the matrix does not name the {} \"{}\"", kind, Printable(name.View()))); };
    const std::set<CString> steps = NamesOf(job.m_pMatrix->m_arrSteps);
    const CString place = Files().FindPath(path, "steps");
    for (const CJOBXmatrixStep& step : before.m_arrSteps.Records())
        if (!steps.contains(MakeLower(step.m_sName)) && Files().IsDir(Files().FindPath(place, step.m_sName)))
            add("step", step.m_sName);
    const std::set<CString> layers = NamesOf(job.m_pMatrix->m_arrLayers);
    const std::set<CString> present = LayersIn(job.m_pSteps->m_arrSteps);
    for (const CJOBXmatrixLayer& layer : before.m_arrLayers.Records())
        if (const CString key = MakeLower(layer.m_sName); !layers.contains(key) && present.contains(key))
            add("layer", layer.m_sName);
}
// The number of records in each part of a step. The key says what is counted.
using PartCounts = std::map<std::string, INT_PTR>;

PartCounts CountsOf(const CJOBXstepObj& step, bool withEda)
{
    PartCounts counts;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        counts[fmt::format("features on layer \"{}\"", MakeLower(layer.m_sName).View())] =
            layer.GetFeatures()->GetSize();
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        counts[fmt::format("components on layer \"{}\"", MakeLower(file.m_sLayerName).View())] =
            file.m_arrCmps.GetSize();
    counts["features in the profile"] = step.GetProfile()->GetFeatures()->GetSize();
    if (withEda && HasContents(*step.m_pEda->m_pData))
    {
        counts["packages"] = step.m_pEda->m_pData->m_arrPkgs.GetSize();
        counts["nets"] = step.m_pEda->m_pData->m_arrNets.GetSize();
    }
    return counts;
}

PartCounts CountsOf(const CJOBX& job, const CString& step, bool withEda)
{
    for (const CJOBXstepObj& other : job.m_pSteps->m_arrSteps.Records())
        if (other.m_sName.CompareNoCase(step) == 0)
            return CountsOf(other, withEda);
    return {};
}

INT_PTR CountIn(const PartCounts& counts, const std::string& key)
{
    const auto found = counts.find(key);
    return found == counts.end() ? 0 : found->second;
}

// Records of the replaced job in place of which nothing would be written, or less than both jobs hold. A part that is
// not in `job` at all is left out on purpose.
void AddFewerRecords(std::vector<std::string>& lines, const CJOBX& job, const CJOBX& source, const CJOBX& before,
                     bool withEda)
{
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        const PartCounts present = CountsOf(source, step.m_sName, withEda);
        const PartCounts replaced = CountsOf(before, step.m_sName, withEda);
        for (const auto& [what, written] : CountsOf(step, withEda))
        {
            const INT_PTR old = CountIn(replaced, what);
            if (written < old && (written == 0 || written < CountIn(present, what)))
                lines.push_back(fmt::format("step \"{}\" would have {} {}, but has {} in the job to be replaced",
                                            Printable(step.m_sName.View()), written, Printable(what), old));
        }
    }
}
} // namespace

std::vector<std::string> FindLostParts(const CJOBX& job, const std::string& path, const std::string& replaced,
                                       bool withEda)
{
    std::vector<std::string> lines;
    AddUnnamed(lines, job, path.c_str(), replaced.c_str());
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; withEda && i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            AddLostFiles(lines, *step, path.c_str(), replaced.c_str());
    const std::map<CString, bool> areWritten = SymbolsOf(job);
    const std::set<CString> before = SymbolsAt(replaced.c_str());
    for (const auto& [key, name] : SymbolsUsedIn(steps))
        if (const auto found = areWritten.find(key);
            before.contains(key) && (found == areWritten.end() || !found->second))
            lines.push_back(fmt::format("the user symbol \"{}\" is {}", Printable(name.View()),
                                        found == areWritten.end() ? "missing" : "not written without --step"));
    for (std::string& line : lines)
        line += ", but the job to be replaced has it";
    return lines;
}

std::vector<std::string> FindLostRecords(const CJOBX& job, const std::string& path, const std::string& replaced,
                                         bool withEda)
{
    const ReadJob before = ReadJobSilently(replaced);
    std::vector<std::string> lines;
    for (const std::string& line : before.missing)
        lines.push_back("not all of the job to be replaced is readable: " + line);
    AddFewerRecords(lines, job, *ReadJobSilently(path).job, *before.job, withEda);
    return lines;
}
