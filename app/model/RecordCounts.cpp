#include "model/RecordCounts.h"

std::int64_t CountFeatures(const CJOBX& job)
{
    std::int64_t features = 0;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            features += layer.GetFeatures()->GetSize();
    for (const CJOBXSpecialSymbol& symbol : job.m_pSpecialSymbols->Records())
        features += symbol.GetLayer()->GetFeatures()->GetSize();
    return features;
}

std::int64_t CountNetFeatures(const CJOBXdataNet& net)
{
    std::int64_t features = 0;
    for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
        features += subnet.m_arrNetObjs.GetSize();
    return features;
}

std::int64_t CountNetFeatures(const CJOBX& job)
{
    std::int64_t features = 0;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        for (const CJOBXdataNet& net : step.GetEda()->m_pData->m_arrNets.Records())
            features += CountNetFeatures(net);
    return features;
}
