#include "model/LayerNames.h"

#include <vector>

NameFilter LayersNamed(const CJOBX& job, const std::string& pattern)
{
    if (pattern.empty())
        return {};
    std::vector<std::string> names;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            names.emplace_back(layer.m_sName.View());
    return {pattern, "layer", names, LetterCase::Ignored};
}
