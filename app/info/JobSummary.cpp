#include "info/JobSummary.h"

#include "model/Sorted.h"

#include <algorithm>
#include <unordered_map>

namespace
{
using RowByName = std::unordered_map<CString, std::size_t>;

// The places of the layers in the matrix by their names in lower case.
RowByName RowsOf(const CJOBXmatrixLayerArray& layers)
{
    RowByName rows;
    for (const CJOBXmatrixLayer& layer : layers.Records())
        rows.try_emplace(MakeLower(layer.m_sName), rows.size());
    return rows;
}

template <class Summary, class Name>
void SortByRow(std::vector<Summary>& summaries, const RowByName& rows, Name name)
{
    const auto row = [&](const Summary& summary)
    {
        const auto found = rows.find(MakeLower(name(summary)));
        return found == rows.end() ? rows.size() : found->second;
    };
    std::stable_sort(summaries.begin(), summaries.end(),
                     [&](const Summary& a, const Summary& b) { return row(a) < row(b); });
}

LayerSummary Summarize(const CJOBXlayer& layer, const CString& name)
{
    LayerSummary summary;
    summary.name = name;
    summary.units = layer.m_sUnits;
    summary.symbols = layer.m_arrSymbolNames.GetSize();
    summary.attributeNames = layer.m_arrAttributeNames;
    summary.attributeTexts = layer.m_arrAttributeTexts;
    const CJOBXlayObjArray& features = *layer.GetFeatures();
    summary.features = features.GetSize();
    for (const CJOBXlayObj& feature : features.Records())
    {
        const CString type = feature.GetType();
        for (std::size_t kind = 0; kind < kFeatureKinds.size(); ++kind)
            if (type.GetLength() == 1 && type[0] == kFeatureKinds[kind])
                ++summary.byKind[kind];
        if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&feature))
            summary.contours += surface->GetContours()->GetSize();
    }
    return summary;
}

ComponentsSummary Summarize(const CJOBXcomponents& file)
{
    ComponentsSummary summary;
    summary.layerName = file.m_sLayerName;
    summary.attributeNames = file.m_arrAttributeNames;
    summary.attributeTexts = file.m_arrAttributeTexts;
    summary.components = file.m_arrCmps.GetSize();
    for (const CJOBXcmp& component : file.m_arrCmps.Records())
    {
        summary.toeprints += component.m_arrTops.GetSize();
        summary.properties += component.m_arrProperties.GetSize();
        summary.attributes += component.m_arrAttributes.GetSize();
    }
    return summary;
}

void SummarizeEda(StepSummary& summary, const CJOBXdata& data)
{
    summary.edaHeader = data.m_sHeader;
    summary.edaLayers = data.m_arrLayerNames;
    summary.nets = data.m_arrNets.GetSize();
    for (const CJOBXdataNet& net : data.m_arrNets.Records())
        summary.subnets += CountSubnets(net);
    summary.packages = data.m_arrPkgs.GetSize();
    for (const CJOBXdataPkg& package : data.m_arrPkgs.Records())
        summary.pins += package.m_arrPins.GetSize();
}

void SummarizeNetlist(StepSummary& summary, const CJOBXnetArray& nets)
{
    summary.netlistNets = nets.GetSize();
    for (const CJOBXnet& net : nets.Records())
        summary.netlistPoints += net.m_arrPts.GetSize();
}

StepSummary Summarize(const CJOBXstepObj& step, const RowByName& rows)
{
    StepSummary summary;
    summary.name = step.m_sName;
    summary.header = step.GetHeader();
    summary.profile = Summarize(*step.GetProfile(), step.GetProfile()->m_sName);
    summary.extents.Add(*step.GetProfile());
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
        summary.layers.push_back(Summarize(layer, layer.m_sName));
    SortByRow(summary.layers, rows, [](const LayerSummary& layer) { return layer.name; });
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        summary.components.push_back(Summarize(file));
    SortByRow(summary.components, rows, [](const ComponentsSummary& file) { return file.layerName; });
    SummarizeEda(summary, *step.GetEda()->m_pData);
    SummarizeNetlist(summary, step.GetNetlist()->m_arrNets);
    return summary;
}
} // namespace

JobSummary::JobSummary(const CJOBX& theJob) : job(theJob)
{
    const RowByName rows = RowsOf(job.m_pMatrix->m_arrLayers);
    const CJOBXstepObjArray& read = job.m_pSteps->m_arrSteps;
    for (const CJOBXstepObj& step : read.Records())
        steps.push_back(Summarize(step, rows));
    for (const CJOBXSpecialSymbol* const symbol : SortedRecords<CJOBXSpecialSymbol>(
             *job.m_pSpecialSymbols, [](const CJOBXSpecialSymbol& each) { return each.m_sPath.View(); }))
        symbols.push_back(
            Summarize(*symbol->GetLayer(), CKUtility::GetInstance()->GetSegmntFromFilePath(symbol->m_sPath, 2)));
    const CJOBXfontsStandardArray& characters = job.m_pFonts->m_arrCharacters;
    for (const CJOBXfontsStandard& character : characters.Records())
        strokes += character.m_arrStrokes.GetSize();
}
