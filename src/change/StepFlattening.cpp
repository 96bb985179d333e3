#include "change/StepFlattening.h"

#include "change/FlatNets.h"
#include "change/References.h"
#include "change/StepPlacements.h"
#include "components/CJOBXcomponents.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "netlist/CJOBXnetlist.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr __int64 kMostFeatures = 20'000'000;

CJOBXresult Refused(const std::string& reason)
{
    return CJOBXresult(CString(std::string_view(reason)));
}

// The name of the first layer of the step that cannot be placed on the other side; "" if all can.
std::string LayerWithoutCounterpart(const CJOBXstepObj& step, const CFlippedLayers& flipped)
{
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        if (!flipped.Of(layer.m_sName.View()))
            return std::string(layer.m_sName.View());
    return {};
}

__int64 FeaturesOf(const CJOBXstepObj& step)
{
    __int64 count = 0;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        count += layer.GetFeatures()->GetSize();
    return count;
}

// Why the placements cannot be made; "" if they can.
std::string WhyNot(const CStepPlacements& placements, const CFlippedLayers& flipped)
{
    if (!placements.refusal.empty())
        return placements.refusal;
    __int64 features = 0;
    for (const CPlacedStep& placed : placements.all)
    {
        const std::string layer =
            placed.placement.isFlipped ? LayerWithoutCounterpart(*placed.step, flipped) : std::string();
        if (!layer.empty())
            return "layer \"" + layer + "\" of step \"" + std::string(placed.step->m_sName.View()) +
                   "\" is flipped but has no counterpart on the other side";
        features += FeaturesOf(*placed.step);
        if (features > kMostFeatures)
            return "it would have more than " + std::to_string(kMostFeatures) + " features";
    }
    return {};
}

CJOBXnetlist& FurtherNetlist(CJOBXstepObj& step, const CString& name)
{
    CJOBXnetlistArray& netlists = *step.pMakeFurtherNetlists();
    for (CJOBXnetlist& netlist : netlists.Records())
        if (netlist.GetName().CompareNoCase(name) == 0)
            return netlist;
    return *netlists.Own(std::make_unique<CJOBXnetlist>());
}

void AddNetlists(const CFlattening& flattening, const CStepCopy& copy)
{
    AddNetlist(flattening, copy, *copy.Step().GetNetlist(), *flattening.root.GetNetlist());
    if (copy.Step().pGetFurtherNetlists() == nullptr)
        return;
    for (const CJOBXnetlist& netlist : copy.Step().pGetFurtherNetlists()->Records())
        AddNetlist(flattening, copy, netlist, FurtherNetlist(flattening.root, netlist.GetName()));
}

// A job with components on one side need not have a row for those of the other.
void AddComponentRows(CJOBXmatrix& matrix, const CJOBXstepObj& step)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
    {
        int next = 1;
        bool isThere = false;
        for (const CJOBXmatrixLayer& row : matrix.m_arrLayers.Records())
        {
            next = std::max(next, row.m_nRow + 1);
            isThere = isThere || row.m_sName.CompareNoCase(file.m_sLayerName) == 0;
        }
        if (isThere || matrix.m_arrLayers.GetSize() == 0)
            continue;
        auto row = std::make_unique<CJOBXmatrixLayer>();
        row->m_nRow = next;
        row->m_sName = file.m_sLayerName;
        row->m_sName.MakeUpper();
        row->m_sContext = "BOARD";
        row->m_sType = "COMPONENT";
        row->m_sPolarity = "POSITIVE";
        matrix.m_arrLayers.Own(std::move(row));
    }
}

CJOBXresult Flatten(CJOBX& job, CJOBXstepObj& root)
{
    const CFlippedLayers flipped(*job.m_pMatrix);
    const CStepPlacements placements = FindPlacements(job, root);
    if (const std::string reason = WhyNot(placements, flipped); !reason.empty())
        return Refused("step \"" + std::string(root.m_sName.View()) + "\" cannot be flattened: " + reason);
    CFlattening flattening(job, root);
    CFlatLayers layers(flattening);
    CFlatNets nets(flattening);
    for (const CPlacedStep& placed : placements.all)
    {
        const CStepCopy copy{placed, flipped};
        nets.Add(copy, layers.Add(copy));
        AddNetlists(flattening, copy);
    }
    if (!placements.all.empty())
        AddComponentRows(*job.m_pMatrix, root);
    root.GetHeader()->m_arrStepRepeats.DeleteAll();
    return {};
}
} // namespace

CJOBXresult FlattenStep(CJOBX& job, const CString& stepName)
{
    if (!job.GetReading().IsComplete())
        return CJOBXresult("the job was not read completely");
    CJOBXstepObj* const root = FindStep(job, stepName.View());
    return Guarded(
        [&]
        {
            return root != nullptr ? Flatten(job, *root)
                                   : Refused("no step is called \"" + std::string(stepName.View()) + '"');
        });
}
