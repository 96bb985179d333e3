// Looks things up in a job: the pins and features of a net, the package of a component, the board size, the drills.
// docs/hosts.md explains these functions.
//
//   cookbook JOB STEP NET COMPONENT      cookbook samples/blinker pcb RST U1
#include "JOBXCLSDLL.h"

#include <algorithm>
#include <cstdio>

namespace
{
// The components file of a side: "T" is the top, "B" the bottom. Null if the step has none.
const CJOBXcomponents* FindSide(const CJOBXstepObj& step, const CString& side)
{
    const char* const layer = side == "B" ? "comp_+_bot" : "comp_+_top";
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        if (file.m_sLayerName.CompareNoCase(layer) == 0)
            return &file;
    return nullptr;
}

// A "TOP" subnet is a pin: its side chooses the components file, and its two numbers are positions in lists.
void PrintPins(const CJOBXstepObj& step, const CJOBXdataNet& net)
{
    for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
    {
        const CJOBXcomponents* const file = subnet.m_sKind == "TOP" ? FindSide(step, subnet.m_sSide) : nullptr;
        const CJOBXcmp* const component = file != nullptr ? file->m_arrCmps.GetAt(subnet.m_nComponentNumber) : nullptr;
        const CJOBXcmpTop* const pin =
            component != nullptr ? component->m_arrTops.GetAt(subnet.m_nToeprintNumber) : nullptr;
        if (pin != nullptr)
            std::printf("  pin %s.%s at %g %g\n", component->m_sName.GetString(), pin->m_sName.GetString(),
                        pin->m_ptLocation.x, pin->m_ptLocation.y);
    }
}

// A feature of a net is identified by the position of its layer in the EDA data's layer names, and by its own position
// in that layer.
const CJOBXlayObj* FindFeature(const CJOBXstepObj& step, const CJOBXdataNetObj& reference)
{
    const CStringArray& names = step.GetEda()->m_pData->m_arrLayerNames;
    if (reference.m_nLayerIndex < 0 || reference.m_nLayerIndex >= names.GetSize())
        return nullptr;
    const CJOBXlayer* const layer = step.ScanLayerObjDataInLayer(names.GetAt(reference.m_nLayerIndex));
    return layer != nullptr ? layer->GetFeatures()->GetAt(reference.m_nFeatureIndex) : nullptr;
}

// The drilled hole of each "VIA" subnet, and how many features the whole net has.
void PrintVias(const CJOBXstepObj& step, const CJOBXdataNet& net)
{
    int features = 0;
    for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
        for (const CJOBXdataNetObj& reference : subnet.m_arrNetObjs.Records())
        {
            const CJOBXlayObj* const feature = FindFeature(step, reference);
            features += feature != nullptr ? 1 : 0;
            const auto* const hole = dynamic_cast<const CJOBXlayObjPad*>(feature);
            if (subnet.m_sKind == "VIA" && reference.m_sKind == "H" && hole != nullptr)
                std::printf("  via at %g %g\n", hole->GetCenterPoint().x, hole->GetCenterPoint().y);
        }
    std::printf("  %d features\n", features);
}

// A component's package and nets are positions in the EDA data, its pins are positions in the package.
void PrintComponent(const CJOBXdata& eda, const CJOBXcmp& component)
{
    const CJOBXdataPkg* const package = eda.m_arrPkgs.GetAt(component.m_nPkgRef);
    if (package == nullptr)
        return;
    std::printf("%s: package %s\n", component.m_sName.GetString(), package->m_sName.GetString());
    for (const CJOBXcmpTop& toeprint : component.m_arrTops.Records())
    {
        const CJOBXdataPkgPin* const pin = package->m_arrPins.GetAt(toeprint.m_nPin);
        const CJOBXdataNet* const net = eda.m_arrNets.GetAt(toeprint.m_nNet);
        if (pin != nullptr && net != nullptr)
            std::printf("  pin %s, type %s: net %s\n", pin->m_sName.GetString(), pin->m_sType.GetString(),
                        net->m_sName.GetString());
    }
}

// The first contour of the profile is the board's edge; holes follow. An arc counts with its two ends only.
void PrintBoardSize(const CJOBXlayer& profile)
{
    const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(profile.GetFeatures()->GetAt(0));
    const CJOBXlayObjSurfaceOB* const edge = surface != nullptr ? surface->GetContours()->GetAt(0) : nullptr;
    if (edge == nullptr || edge->GetODBlayObjOXArray()->GetSize() == 0)
        return;
    const CJOBXlayObjOXArray& elements = *edge->GetODBlayObjOXArray();
    CPointD low = elements.GetAt(0)->GetPoint();
    CPointD high = low;
    for (const CJOBXlayObjOX& element : elements.Records())
    {
        if (element.GetKind() == "OE")
            break; // the end has no point
        const CPointD point = element.GetPoint();
        low.SetData(std::min(low.x, point.x), std::min(low.y, point.y));
        high.SetData(std::max(high.x, point.x), std::max(high.y, point.y));
    }
    std::printf("board: %g x %g %s\n", high.x - low.x, high.y - low.y, profile.m_sUnits.GetString());
}

// The matrix says which layers are drill layers, and may say what they drill through. Each pad is a hole, and its symbol
// is the size. Lines and arcs are slots, which are not counted.
void PrintDrills(const CJOBXmatrix& matrix, const CJOBXstepObj& step)
{
    for (const CJOBXmatrixLayer& row : matrix.m_arrLayers.Records())
    {
        const CJOBXlayer* const layer = row.m_sType == "DRILL" ? step.ScanLayerObjDataInLayer(row.m_sName) : nullptr;
        if (layer == nullptr)
            continue;
        std::printf("%s", row.m_sName.GetString());
        if (!row.m_sStartName.IsEmpty() && !row.m_sEndName.IsEmpty())
            std::printf(", from %s to %s", row.m_sStartName.GetString(), row.m_sEndName.GetString());
        std::printf("\n");
        for (__int64 symbol = 0; symbol < layer->m_arrSymbolNames.GetSize(); ++symbol)
        {
            int holes = 0;
            for (const CJOBXlayObj& feature : layer->GetFeatures()->Records())
                if (dynamic_cast<const CJOBXlayObjPad*>(&feature) != nullptr &&
                    feature.GetSymbolNumber() == layer->m_arrSymbolNumbers.GetAt(symbol))
                    ++holes;
            std::printf("  %s: %d holes\n", layer->m_arrSymbolNames.GetAt(symbol).GetString(), holes);
        }
    }
}

// The component of that name, on either side.
const CJOBXcmp* FindComponent(const CJOBXstepObj& step, const CString& name)
{
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            if (component.m_sName == name)
                return &component;
    return nullptr;
}

// Reads the matrix and that step; null if the job has no such step.
const CJOBXstepObj* ReadStep(CJOBX& job, const char* path, const char* name)
{
    CStringArray names;
    if (job.ParseMatrixInODBOfMFC(path, names) == 0)
        return nullptr;
    CStringArray chosen;
    chosen.Add(name);
    job.ParseODBOfMFC(path, chosen);
    return job.m_pSteps->m_arrSteps.GetAt(0);
}
} // namespace

int main(int argc, char** argv)
{
    CJOBX job;
    const CJOBXstepObj* const step = argc == 5 ? ReadStep(job, argv[1], argv[2]) : nullptr;
    const CJOBXdata* const eda = step != nullptr ? step->GetEda()->m_pData : nullptr;
    const CJOBXdataNet* const net = eda != nullptr ? eda->m_arrNets.GetNetData(CString(argv[3])) : nullptr;
    const CJOBXcmp* const component = step != nullptr ? FindComponent(*step, argv[4]) : nullptr;
    if (net == nullptr || component == nullptr)
    {
        std::fprintf(stderr, "usage: cookbook JOB STEP NET COMPONENT, all of which must exist\n");
        return 2;
    }
    std::printf("net %s\n", net->m_sName.GetString());
    PrintPins(*step, *net);
    PrintVias(*step, *net);
    PrintComponent(*eda, *component);
    PrintBoardSize(*step->GetProfile());
    PrintDrills(*job.m_pMatrix, *step);
    return 0;
}
