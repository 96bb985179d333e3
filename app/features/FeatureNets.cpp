#include "features/FeatureNets.h"

namespace
{
constexpr int kMostFeatures = 1 << 28; // an index above is none of a file
} // namespace

FeatureNets::FeatureNets(const CJOBXdata& eda)
{
    const CStringArray& layers = eda.m_arrLayerNames;
    for (const CJOBXdataNet& net : eda.m_arrNets.Records())
        for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
            for (const CJOBXdataNetObj& object : subnet.m_arrNetObjs.Records())
            {
                const int index = object.m_nFeatureIndex;
                if (object.m_nLayerIndex < 0 || object.m_nLayerIndex >= layers.GetSize() || index < 0 ||
                    index >= kMostFeatures)
                    continue;
                std::vector<const CJOBXdataNet*>& nets = m_nets[MakeLower(layers[object.m_nLayerIndex])];
                if (static_cast<std::size_t>(index) >= nets.size())
                    nets.resize(static_cast<std::size_t>(index) + 1);
                if (nets[static_cast<std::size_t>(index)] == nullptr)
                    nets[static_cast<std::size_t>(index)] = &net;
            }
}

std::span<const CJOBXdataNet* const> FeatureNets::Find(const CString& layer) const
{
    const auto found = m_nets.find(MakeLower(layer));
    if (found == m_nets.end())
        return {};
    return found->second;
}
