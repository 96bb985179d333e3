#include "info/BoardFacts.h"

#include "model/PackageIndex.h"
#include "model/SymbolSize.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <tuple>

namespace
{
constexpr const char* kNoNet = "$NONE$";

// The number of an attribute, if it has one above 0: exporters write 0 for what they do not know.
std::optional<double> NumberOf(const CJOBXattributeList* list, const char* name)
{
    const CJOBXProperty* const attribute = list == nullptr ? nullptr : list->pGetAttribute(name);
    if (attribute == nullptr)
        return std::nullopt;
    const std::string_view text = attribute->m_sValue.View();
    double number = 0.0;
    const auto [rest, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc() || rest != text.data() + text.size() || !std::isfinite(number) || !(number > 0.0))
        return std::nullopt;
    return number;
}

// The number of records that the choice of the board compares.
std::tuple<bool, std::int64_t, std::int64_t> Weight(const CJOBXstepObj& step)
{
    std::int64_t components = 0;
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        components += file.m_arrCmps.GetSize();
    std::int64_t features = 0;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        features += layer.GetFeatures()->GetSize();
    return {step.GetHeader()->m_arrStepRepeats.GetSize() == 0, components, features};
}

const CJOBXstepObj* FindBoard(const CJOBX& job)
{
    const CJOBXstepObj* board = nullptr;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        if (board == nullptr || Weight(step) > Weight(*board))
            board = &step;
    return board;
}

std::optional<double> ThicknessOf(const CJOBX& job, const CJOBXstepObj& step)
{
    for (const CJOBXattributeList* const list : {step.pGetAttributeList(), job.m_pMisc->pGetAttributeList()})
        if (const std::optional<double> thickness = NumberOf(list, ".board_thickness"))
            return *thickness * list->dGetFactorToMM();
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        if (const CJOBXtool* const tools = layer.GetTool(); tools != nullptr && tools->m_dThickness > 0.0)
            return tools->m_dThickness * tools->dGetFactorToMM();
    return std::nullopt;
}

std::vector<CopperLayer> CopperOf(const CJOBX& job, const CJOBXstepObj& step)
{
    std::vector<CopperLayer> copper;
    for (const CJOBXmatrixLayer* const row : CopperLayers(*job.m_pMatrix))
    {
        CopperLayer& layer = copper.emplace_back();
        layer.name = row->m_sName;
        const CJOBXlayer* const read = step.m_arrLayers.GetODBlayerFromName(row->m_sName);
        const CJOBXattributeList* const list = read == nullptr ? nullptr : read->pGetAttributeList();
        layer.weight = NumberOf(list, ".copper_weight");
        if (layer.weight)
            layer.unit = list->GetUnit();
    }
    return copper;
}

void CountPins(SideFacts& side, const CJOBXcmp& component, const CJOBXdataPkg* package)
{
    for (const CJOBXcmpTop& toeprint : component.m_arrTops.Records())
    {
        const bool hasPin =
            package != nullptr && toeprint.m_nPin >= 0 && toeprint.m_nPin < package->m_arrPins.GetSize();
        const CJOBXdataPkgPin* const pin = hasPin ? package->m_arrPins.GetAt(toeprint.m_nPin) : nullptr;
        if (pin != nullptr && pin->m_sType == "S")
            ++side.surfacePins;
        else if (pin != nullptr && pin->m_sType == "T")
            ++side.throughPins;
        else
            ++side.otherPins;
    }
}

void CountComponents(std::array<SideFacts, 2>& sides, const CJOBX& job, const CJOBXstepObj& step)
{
    const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
    {
        const std::optional<BoardSide> where = SideOf(file, *job.m_pMatrix);
        if (!where)
            continue;
        SideFacts& side = sides.at(static_cast<std::size_t>(*where));
        side.components += file.m_arrCmps.GetSize();
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            CountPins(side, component, packages.Find(component.m_nPkgRef));
    }
}

void CountNets(BoardFacts& facts, const CJOBXstepObj& step)
{
    for (const CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
        if (net.m_sName != kNoNet)
        {
            ++facts.nets;
            facts.netPins += std::count_if(net.m_arrSnts.Records().begin(), net.m_arrSnts.Records().end(),
                                           [](const CJOBXSnt& subnet) { return subnet.m_sKind == "TOP"; });
        }
    if (facts.nets > 0)
        return;
    for (const CJOBXnet& net : step.GetNetlist()->m_arrNets.Records())
        if (net.m_sName != kNoNet)
            ++facts.nets;
}

// The value of a feature's attribute ".drill", else the type that all tools of that diameter have; in lower case.
CString PlatingOf(const CJOBXlayer& layer, const CJOBXlayObj& feature, double diameter)
{
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
        if (const CJOBXProperty& property = *feature.pGetProperty(i); property.m_sName.CompareNoCase(".drill") == 0)
            return MakeLower(property.m_sValue);
    constexpr double kTenthOfMicron = 1e-4;
    CString type;
    if (layer.GetTool() == nullptr)
        return type;
    for (const CJOBXtoolData& tool : layer.GetTool()->GetToolDataArray()->Records())
    {
        const double factor = layer.GetTool()->dGetFactorToMM();
        if (std::abs(tool.m_dFinishSize * factor - diameter) > kTenthOfMicron &&
            std::abs(tool.m_dDrillSize * factor - diameter) > kTenthOfMicron)
            continue;
        if (!type.IsEmpty() && type.CompareNoCase(tool.m_sType) != 0)
            return {};
        type = tool.m_sType;
    }
    return MakeLower(type);
}

void CountHole(DrillFacts& drills, DrillLayer& drill, const CJOBXlayer& layer, const CJOBXlayObj& feature)
{
    const CString kind = feature.GetType();
    const bool isHole = kind == "P";
    if (!isHole && kind != "L" && kind != "A")
        return;
    ++(isHole ? drill.holes : drill.slots);
    const std::optional<double> diameter = SizeOfSymbol(layer, feature.GetSymbolNumber());
    if (diameter)
        ++drills.sizes[std::round(*diameter * 1e6) / 1e6];
    const CString plating = PlatingOf(layer, feature, diameter.value_or(0.0));
    if (plating == "via")
        ++drills.vias;
    else if (plating == "plated")
        ++drills.plated;
    else if (plating == "non_plated")
        ++drills.nonPlated;
}

DrillFacts DrillsOf(const CJOBX& job, const CJOBXstepObj& step)
{
    DrillFacts drills;
    const std::vector<const CJOBXmatrixLayer*> copper = CopperLayers(*job.m_pMatrix);
    for (const CJOBXmatrixLayer& row : job.m_pMatrix->m_arrLayers.Records())
    {
        const CJOBXlayer* const layer = IsDrill(row) ? step.m_arrLayers.GetODBlayerFromName(row.m_sName) : nullptr;
        if (layer == nullptr)
            continue;
        DrillLayer drill{row.m_sName, row.m_sStartName, row.m_sEndName, SpanOf(row, copper)};
        for (const CJOBXlayObj& feature : layer->GetFeatures()->Records())
            CountHole(drills, drill, *layer, feature);
        drills.holes += drill.holes;
        drills.slots += drill.slots;
        drills.layers.push_back(drill);
    }
    return drills;
}

std::optional<SmallestLine> SmallestLineOf(const CJOBX& job, const CJOBXstepObj& step)
{
    std::optional<SmallestLine> smallest;
    for (const CJOBXmatrixLayer* const row : CopperLayers(*job.m_pMatrix))
    {
        const CJOBXlayer* const layer = step.m_arrLayers.GetODBlayerFromName(row->m_sName);
        if (layer == nullptr)
            continue;
        std::map<int, std::optional<double>> widths; // by the symbol's number
        for (const CJOBXlayObj& feature : layer->GetFeatures()->Records())
        {
            const CString kind = feature.GetType();
            if (kind != "L" && kind != "A")
                continue;
            const auto [width, isNew] = widths.try_emplace(feature.GetSymbolNumber());
            if (!isNew)
                continue;
            width->second = SizeOfSymbol(*layer, feature.GetSymbolNumber());
            if (width->second && (!smallest || *width->second < smallest->width))
                smallest = {*width->second, row->m_sName};
        }
    }
    return smallest;
}

PanelFacts PanelOf(const CJOBXstepObj& step)
{
    PanelFacts panel{step.m_sName, SizeOf(step), {}};
    for (const CJOBXstepRepeat& entry : step.GetHeader()->m_arrStepRepeats.Records())
    {
        const std::int64_t copies =
            std::max<std::int64_t>(entry.m_ptCount.x, 0) * std::max<std::int64_t>(entry.m_ptCount.y, 0);
        const auto found = std::find_if(panel.repeats.begin(), panel.repeats.end(),
                                        [&](const auto& each) { return each.first.CompareNoCase(entry.m_sName) == 0; });
        if (found == panel.repeats.end())
            panel.repeats.emplace_back(entry.m_sName, copies);
        else
            found->second += copies;
    }
    return panel;
}
} // namespace

std::optional<BoardSize> SizeOf(const CJOBXstepObj& step)
{
    Extents extents;
    extents.Add(*step.GetProfile());
    if (extents.IsEmpty())
        return std::nullopt;
    const double factor = step.GetProfile()->dGetFactorToMM();
    return BoardSize{(extents.UpperRight().x - extents.LowerLeft().x) * factor,
                     (extents.UpperRight().y - extents.LowerLeft().y) * factor};
}

BoardFacts::BoardFacts(const CJOBX& job) : step(FindBoard(job))
{
    for (const CJOBXstepObj& each : job.m_pSteps->m_arrSteps.Records())
        if (each.GetHeader()->m_arrStepRepeats.GetSize() > 0)
            panels.push_back(PanelOf(each));
        else if (&each != step)
            otherSteps.emplace_back(each.m_sName, SizeOf(each));
    if (step == nullptr)
        return;
    size = SizeOf(*step);
    thickness = ThicknessOf(job, *step);
    copper = CopperOf(job, *step);
    CountComponents(sides, job, *step);
    CountNets(*this, *step);
    drills = DrillsOf(job, *step);
    smallestLine = SmallestLineOf(job, *step);
}
