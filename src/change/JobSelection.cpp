#include "change/JobSelection.h"

#include "change/CarriedFiles.h"
#include "change/MatrixPlaces.h"
#include "change/NameSets.h"
#include "change/References.h"
#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>

namespace
{
NameSet NamesIn(const CStringArray& texts)
{
    NameSet names;
    for (INT_PTR i = 0; i < texts.GetSize(); ++i)
        names.insert(texts[i]);
    return names;
}

// Those of `all` that are in `chosen` or, if `isIn` is false, that are not.
NameSet NamesAmong(const NameSet& all, const NameSet& chosen, bool isIn)
{
    NameSet part;
    for (const CString& name : all)
        if (chosen.contains(name) == isIn)
            part.insert(name);
    return part;
}

// Why the choice cannot be made; done if it can.
CJOBXresult CheckChoice(const char* kind, const NameSet& all, const NameSet& chosen, const NameSet& left)
{
    CString reason;
    for (const CString& name : chosen)
        if (!all.contains(name))
        {
            reason.Format("the job has no %s \"%s\"", kind, name);
            return CJOBXresult(reason);
        }
    if (!left.empty())
        return {};
    reason.Format("no %s would be left", kind);
    return CJOBXresult(reason);
}

void RemoveSteps(CJOBX& job, const NameSet& unwanted)
{
    DropRows(job.m_pMatrix->m_arrSteps, &CJOBXmatrixStep::m_nColumn,
             [&](const CJOBXmatrixStep& row) { return unwanted.contains(row.m_sName); });
    DeleteWhere(job.m_pSteps->m_arrSteps,
                [&](const CJOBXstepObj& step, int) { return unwanted.contains(step.m_sName); });
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        DeleteWhere(step.GetHeader()->m_arrStepRepeats,
                    [&](const CJOBXstepRepeat& repeat, int) { return unwanted.contains(repeat.m_sName); });
    DropCarriedFiles(job,
                     [&](const PathParts& parts) {
                         return std::any_of(unwanted.begin(), unwanted.end(),
                                            [&](const CString& name) { return IsInStep(parts, name); });
                     });
}

void RemoveLayers(CJOBXstepObj& step, const NameSet& unwanted)
{
    CJOBXdata& data = *step.GetEda()->m_pData;
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        if (unwanted.contains(file.m_sLayerName))
            MoveComponentReferences(step, file, NewPlaces(static_cast<std::size_t>(file.m_arrCmps.GetSize()), kGone));
    DeleteWhere(step.m_arrComponents,
                [&](const CJOBXcomponents& file, int) { return unwanted.contains(file.m_sLayerName); });
    DeleteWhere(step.m_arrLayers, [&](const CJOBXlayer& layer, int) { return unwanted.contains(layer.m_sName); });
    NewPlaces places;
    int kept = 0;
    for (INT_PTR i = 0; i < data.m_arrLayerNames.GetSize(); ++i)
        places.push_back(unwanted.contains(data.m_arrLayerNames[i]) ? kGone : kept++);
    RemoveLayerReferences(step, places);
}

void RemoveLayers(CJOBX& job, const NameSet& unwanted)
{
    const auto isUnwanted = [&](const CString& name) { return unwanted.contains(name); };
    ShortenSpans(job.m_pMatrix->m_arrLayers, isUnwanted);
    DropRows(job.m_pMatrix->m_arrLayers, &CJOBXmatrixLayer::m_nRow,
             [&](const CJOBXmatrixLayer& row) { return isUnwanted(row.m_sName); });
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        RemoveLayers(step, unwanted);
    DropCarriedFiles(job,
                     [&](const PathParts& parts) {
                         return std::any_of(unwanted.begin(), unwanted.end(),
                                            [&](const CString& name) { return IsInLayer(parts, name); });
                     });
}

CJOBXresult ChooseLayers(CJOBX& job, const CStringArray& names, bool keeps)
{
    return Guarded(
        [&]
        {
            const NameSet all = LayersOf(job);
            const NameSet chosen = NamesIn(names);
            CJOBXresult result = CheckChoice("layer", all, chosen, NamesAmong(all, chosen, keeps));
            if (result.IsDone())
                RemoveLayers(job, NamesAmong(all, chosen, !keeps));
            return result;
        });
}
} // namespace

CJOBXresult KeepSteps(CJOBX& job, const CStringArray& names)
{
    return Guarded(
        [&]
        {
            const NameSet all = StepsOf(job);
            const NameSet chosen = NamesIn(names);
            CJOBXresult result = CheckChoice("step", all, chosen, NamesAmong(all, chosen, true));
            if (result.IsDone())
                RemoveSteps(job, NamesAmong(all, chosen, false));
            return result;
        });
}

CJOBXresult KeepLayers(CJOBX& job, const CStringArray& names)
{
    return ChooseLayers(job, names, true);
}

CJOBXresult DropLayers(CJOBX& job, const CStringArray& names)
{
    return ChooseLayers(job, names, false);
}
