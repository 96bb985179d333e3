#include "change/JobNames.h"

#include "change/CarriedFiles.h"
#include "change/NameSets.h"
#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/corekit/TextTools.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXlayer.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr int kLongestName = 64;

bool IsLetterOrDigit(char c)
{
    const char lower = AsciiLower(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
}

bool IsLegal(const CString& name)
{
    const std::string_view text = name.View();
    const auto isAllowed = [](char c) { return IsLetterOrDigit(c) || c == '-' || c == '_' || c == '.' || c == '+'; };
    return !text.empty() && text.size() <= static_cast<std::size_t>(kLongestName) &&
           (IsLetterOrDigit(text.front()) || text.front() == '_') && text.back() != '.' &&
           std::all_of(text.begin(), text.end(), isAllowed);
}

template <class... Args>
CJOBXresult RefusedFor(LPCSTR format, const Args&... args)
{
    CString reason;
    reason.Format(format, args...);
    return CJOBXresult(reason);
}

CJOBXresult CheckLegal(const CString& name)
{
    if (IsLegal(name))
        return {};
    return RefusedFor(
        "\"%s\" is not a legal name: 1 to 64 letters, digits, \"-\", \"_\", \".\" or \"+\" are, but none of "
        "\"-\", \".\" and \"+\" at the start and no \".\" at the end",
        name);
}

CJOBXresult CheckRenaming(const char* kind, const NameSet& names, const CString& oldName, const CString& newName)
{
    if (!names.contains(oldName))
        return RefusedFor("the job has no %s \"%s\"", kind, oldName);
    if (names.contains(newName) && !AsciiEqualNoCase(oldName.View(), newName.View()))
        return RefusedFor("the job has another %s \"%s\"", kind, newName);
    return CheckLegal(newName);
}

bool HasCapital(const CString& text)
{
    const std::string_view view = text.View();
    return std::any_of(view.begin(), view.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}
bool HasSmall(const CString& text)
{
    const std::string_view view = text.View();
    return std::any_of(view.begin(), view.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

// Replaces a name in the letter case that the old one had; any other name stays. It has copies of both names, because the
// given ones may be among those that change.
class CRenaming
{
public:
    CRenaming(const CString& oldName, const CString& newName) : m_old(oldName), m_new(newName) {}

    bool IsOld(const CString& name) const { return AsciiEqualNoCase(name.View(), m_old.View()); }
    const CString& Old() const { return m_old; }
    CString Folder() const { return MakeLower(m_new); }
    void Apply(CString& name) const
    {
        if (!IsOld(name))
            return;
        const bool isCapital = HasCapital(name) && !HasSmall(name);
        const bool isSmall = HasSmall(name) && !HasCapital(name);
        CString made = m_new;
        if (isCapital)
            made.MakeUpper();
        else if (isSmall)
            made.MakeLower();
        name = made;
    }

private:
    CString m_old;
    CString m_new;
};

void RenameStepEverywhere(CJOBX& job, const CRenaming& renaming)
{
    for (CJOBXmatrixStep& row : job.m_pMatrix->m_arrSteps.Records())
        renaming.Apply(row.m_sName);
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        renaming.Apply(step.m_sName);
        for (CJOBXstepRepeat& repeat : step.GetHeader()->m_arrStepRepeats.Records())
            renaming.Apply(repeat.m_sName);
    }
}

void RenameLayerFolder(CJOBXcomponents& file, const CRenaming& renaming)
{
    if (!renaming.IsOld(file.m_sLayerName))
        return;
    const CString rest = file.m_sRelativePath.Mid(file.m_sLayerName.GetLength());
    file.m_sLayerName = renaming.Folder();
    file.m_sRelativePath = renaming.Folder() + rest;
}

void RenameLayerInStep(CJOBXstepObj& step, const CRenaming& renaming)
{
    for (CJOBXlayer& layer : step.m_arrLayers.Records())
        if (renaming.IsOld(layer.m_sName))
            layer.m_sName = renaming.Folder();
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        RenameLayerFolder(file, renaming);
    CStringArray& names = step.GetEda()->m_pData->m_arrLayerNames;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        renaming.Apply(names[i]);
}

void RenameLayerEverywhere(CJOBX& job, const CRenaming& renaming)
{
    for (CJOBXmatrixLayer& row : job.m_pMatrix->m_arrLayers.Records())
    {
        renaming.Apply(row.m_sName);
        renaming.Apply(row.m_sStartName);
        renaming.Apply(row.m_sEndName);
    }
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        RenameLayerInStep(step, renaming);
}

void RenameInNetlist(CJOBXnetlist& netlist, const CString& oldName, const CString& newName)
{
    for (CJOBXnet& net : netlist.m_arrNets.Records())
        if (net.m_sName == oldName)
            net.m_sName = newName;
}

bool HasNet(const CJOBXstepObj& step, const CString& name)
{
    const auto nets = step.GetEda()->m_pData->m_arrNets.Records();
    const auto points = step.GetNetlist()->m_arrNets.Records();
    const auto isIt = [&](const auto& net) { return net.m_sName == name; };
    return std::any_of(nets.begin(), nets.end(), isIt) || std::any_of(points.begin(), points.end(), isIt);
}

void RenameNetEverywhere(CJOBXstepObj& step, CString oldName, CString newName)
{
    for (CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
        if (net.m_sName == oldName)
            net.m_sName = newName;
    RenameInNetlist(*step.GetNetlist(), oldName, newName);
    if (step.pGetFurtherNetlists() != nullptr)
        for (CJOBXnetlist& netlist : step.pMakeFurtherNetlists()->Records())
            RenameInNetlist(netlist, oldName, newName);
}

// Without memory of its own, for short lists.
template <class T, class IsBefore>
void SortStably(COwningPtrArray<T>& list, IsBefore isBefore)
{
    T** const begin = list.GetData();
    for (T** next = begin; next != begin + list.GetSize(); ++next)
        std::rotate(std::upper_bound(begin, next, *next, isBefore), next, next + 1);
}

// The place of each name, the wanted ones first; behind them all the same one.
class COrder
{
public:
    explicit COrder(const CStringArray& names) : m_names(names) {}
    int PlaceOf(const CString& name) const
    {
        int place = 0;
        while (place < m_names.GetSize() && !AsciiEqualNoCase(m_names[place].View(), name.View()))
            ++place;
        return place;
    }
    template <class Step>
    void Apply(COwningPtrArray<Step>& steps) const
    {
        SortStably(steps, [this](const Step* a, const Step* b) { return PlaceOf(a->m_sName) < PlaceOf(b->m_sName); });
    }

private:
    const CStringArray& m_names;
};

CJOBXresult CheckOrder(const CJOBX& job, const CStringArray& names)
{
    const NameSet steps = StepsOf(job);
    NameSet seen;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
    {
        if (!steps.contains(names[i]))
            return RefusedFor("the job has no step \"%s\"", names[i]);
        if (!seen.insert(names[i]).second)
            return RefusedFor("the step \"%s\" is named twice", names[i]);
    }
    return {};
}

void PutStepsInOrder(CJOBX& job, const COrder& order)
{
    CJOBXmatrixStepArray& rows = job.m_pMatrix->m_arrSteps;
    rows.RemoveNullElement();
    job.m_pSteps->m_arrSteps.RemoveNullElement();
    std::vector<int> columns;
    for (const CJOBXmatrixStep& row : rows.Records())
        columns.push_back(row.m_nColumn);
    std::sort(columns.begin(), columns.end());
    SortStably(rows, [](const auto* a, const auto* b) { return a->m_nColumn < b->m_nColumn; });
    order.Apply(rows);
    auto column = columns.begin();
    for (CJOBXmatrixStep& row : rows.Records())
        row.m_nColumn = *column++;
    order.Apply(job.m_pSteps->m_arrSteps);
}
} // namespace

CJOBXresult RenameJob(CJOBX& job, const CString& name)
{
    return Guarded(
        [&]
        {
            CJOBXresult result = CheckLegal(name);
            if (result.IsDone())
            {
                job.m_sName = MakeLower(name);
                job.m_pMisc->m_sJobName = job.m_sName;
            }
            return result;
        });
}

CJOBXresult RenameStep(CJOBX& job, const CString& oldName, const CString& newName)
{
    return Guarded(
        [&]
        {
            CJOBXresult result = CheckRenaming("step", StepsOf(job), oldName, newName);
            if (!result.IsDone())
                return result;
            const CRenaming renaming(oldName, newName);
            RenameStepEverywhere(job, renaming);
            RenameInCarriedFiles(job, kStepInPath, renaming.Folder(),
                                 [&](const PathParts& parts) { return IsInStep(parts, renaming.Old()); });
            return result;
        });
}

CJOBXresult RenameLayer(CJOBX& job, const CString& oldName, const CString& newName)
{
    return Guarded(
        [&]
        {
            CJOBXresult result = CheckRenaming("layer", LayersOf(job), oldName, newName);
            if (!result.IsDone())
                return result;
            const CRenaming renaming(oldName, newName);
            RenameLayerEverywhere(job, renaming);
            RenameInCarriedFiles(job, kLayerInPath, renaming.Folder(),
                                 [&](const PathParts& parts) { return IsInLayer(parts, renaming.Old()); });
            return result;
        });
}

CJOBXresult OrderSteps(CJOBX& job, const CStringArray& names)
{
    return Guarded(
        [&]
        {
            CJOBXresult result = CheckOrder(job, names);
            if (result.IsDone())
                PutStepsInOrder(job, COrder(names));
            return result;
        });
}

CJOBXresult RenameNet(CJOBXstepObj& step, const CString& oldName, const CString& newName)
{
    return Guarded(
        [&]
        {
            if (!HasNet(step, oldName))
                return RefusedFor("the step has no net \"%s\"", oldName);
            if (newName.IsEmpty() || newName.FindOneOf(" \t;") >= 0)
                return RefusedFor("\"%s\" is not a legal name of a net", newName);
            if (newName != oldName && HasNet(step, newName))
                return RefusedFor("the step has another net \"%s\"", newName);
            RenameNetEverywhere(step, oldName, newName);
            return CJOBXresult();
        });
}
