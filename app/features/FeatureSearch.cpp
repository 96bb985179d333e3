#include "features/FeatureSearch.h"

#include "features/FeatureNets.h"
#include "model/Glob.h"
#include "model/LayerNames.h"

#include <algorithm>
#include <climits>
#include <map>
#include <span>
#include <vector>

namespace
{
NameFilter FilterOfNets(const CJOBX& job, const std::string& pattern)
{
    if (pattern.empty())
        return {};
    std::vector<std::string> names;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
            names.emplace_back(net.m_sName.View());
    return {pattern, "net", names, LetterCase::Respected};
}

// The step's layers in the order of the matrix; those that it does not have come last.
std::vector<const CJOBXlayer*> LayersOf(const CJOBXstepObj& step, const CJOBXmatrix& matrix)
{
    std::vector<const CJOBXlayer*> layers;
    std::map<const CJOBXlayer*, int> rows;
    for (const CJOBXlayer& layer : step.m_arrLayers.Records())
    {
        const CJOBXmatrixLayer* const row = matrix.m_arrLayers.GetMatrixLayer(layer.m_sName);
        rows[&layer] = row == nullptr ? INT_MAX : row->m_nRow;
        layers.push_back(&layer);
    }
    std::stable_sort(layers.begin(), layers.end(),
                     [&](const CJOBXlayer* a, const CJOBXlayer* b) { return rows[a] < rows[b]; });
    return layers;
}

bool HasAttribute(const CJOBXlayObj& feature, const FeatureAttribute& wanted)
{
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
    {
        const CJOBXProperty* const property = feature.pGetProperty(i);
        if (property != nullptr && MatchesGlob(wanted.name, property->m_sName.View(), LetterCase::Ignored) &&
            (!wanted.value || MatchesGlob(*wanted.value, property->m_sValue.View(), LetterCase::Ignored)))
            return true;
    }
    return false;
}

bool Fits(const CJOBXlayObj& feature, const CJOBXlayer& layer, const FeatureQuery& query)
{
    if (!query.symbol.empty() &&
        (feature.GetSymbolNumber() < 0 ||
         !MatchesGlob(query.symbol, layer.GetSymbolName(feature.GetSymbolNumber()).View(), LetterCase::Ignored)))
        return false;
    if (query.attribute && !HasAttribute(feature, *query.attribute))
        return false;
    return !query.place || DistanceFrom(query.place->point, feature, layer) <= query.place->radius;
}
} // namespace

void FindFeatures(const CJOBX& job, const FeatureQuery& query, CountedProgress& progress,
                  const std::function<void(const FoundFeature&)>& take)
{
    const NameFilter layers = LayersNamed(job, query.layer);
    const NameFilter netNames = FilterOfNets(job, query.net);
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        const FeatureNets nets(*step.GetEda()->m_pData);
        for (const CJOBXlayer* const layer : LayersOf(step, *job.m_pMatrix))
        {
            if (!layers.Passes(layer->m_sName.View()))
                continue;
            const std::span<const CJOBXdataNet* const> netsOfLayer = nets.Find(layer->m_sName);
            for (const CJOBXlayObj& feature : layer->GetFeatures()->Records())
            {
                progress.Did(1);
                const auto index = static_cast<std::size_t>(feature.GetFeatureIndex());
                const CJOBXdataNet* const net = index < netsOfLayer.size() ? netsOfLayer[index] : nullptr;
                if (netNames.IsSet() && (net == nullptr || !netNames.Passes(net->m_sName.View())))
                    continue;
                if (Fits(feature, *layer, query))
                    take({step, *layer, feature, net});
            }
        }
    }
}
