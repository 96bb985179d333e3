#include "model/SubnetCounts.h"

SubnetCounts& SubnetCounts::operator+=(const SubnetCounts& other)
{
    toeprints += other.toeprints;
    vias += other.vias;
    traces += other.traces;
    planes += other.planes;
    others += other.others;
    features += other.features;
    return *this;
}

SubnetCounts CountSubnets(const CJOBXdataNet& net)
{
    SubnetCounts counts;
    for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
    {
        if (subnet.m_sKind == "TOP")
            ++counts.toeprints;
        else if (subnet.m_sKind == "VIA")
            ++counts.vias;
        else if (subnet.m_sKind == "TRC")
            ++counts.traces;
        else if (subnet.m_sKind == "PLN")
            ++counts.planes;
        else
            ++counts.others;
        counts.features += subnet.m_arrNetObjs.GetSize();
    }
    return counts;
}
