// Prints the pins, vias and features of a net, with places in millimetres: net_report JOB NET
#include "JOBXCLSDLL.h"

#include <cstdio>

namespace
{
class MessagePrinter : public CJOBXmessageSink
{
    void OnMessage(const CJOBXmessage& message) override { std::fprintf(stderr, "%s\n", message.Line().GetString()); }
};

// A "TOP" subnet is a pin: its side chooses the components file, and its two numbers are positions in lists.
void PrintPin(const CJOBXstepObj& step, const CJOBXSnt& subnet)
{
    const char* const layer = subnet.m_sSide == "B" ? "comp_+_bot" : "comp_+_top";
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        if (const CJOBXcmp* const part = file.m_arrCmps.GetAt(subnet.m_nComponentNumber);
            part != nullptr && file.m_sLayerName.CompareNoCase(layer) == 0)
            if (const CJOBXcmpTop* const pin = part->m_arrTops.GetAt(subnet.m_nToeprintNumber))
                std::printf("  pin %s.%s at %.3f %.3f\n", part->m_sName.GetString(), pin->m_sName.GetString(),
                            pin->m_ptLocation.x * file.dGetFactorToMM(), pin->m_ptLocation.y * file.dGetFactorToMM());
}

// A layer's number is a position in the names of the EDA data, a feature's number a position in its layer.
void PrintFeature(const CJOBXstepObj& step, const CJOBXSnt& subnet, const CJOBXdataNetObj& reference)
{
    const CStringArray& names = step.GetEda()->m_pData->m_arrLayerNames;
    if (reference.m_nLayerIndex < 0 || reference.m_nLayerIndex >= names.GetSize())
        return;
    const CJOBXlayer* const layer = step.ScanLayerObjDataInLayer(names[reference.m_nLayerIndex]);
    const CJOBXlayObj* const feature = layer ? layer->GetFeatures()->GetAt(reference.m_nFeatureIndex) : nullptr;
    const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(feature);
    const CPointD place = pad ? pad->GetCenterPoint() : CPointD();
    const double factor = layer ? layer->dGetFactorToMM() : 1.0;
    if (pad && subnet.m_sKind == "VIA" && reference.m_sKind == "H")
        std::printf("  via at %.3f %.3f\n", place.x * factor, place.y * factor);
    else if (feature)
        std::printf("  %s on %s\n", pad ? "pad" : "other feature", layer->m_sName.GetString());
}
} // namespace

int main(int argc, char** argv)
{
    MessagePrinter printer;
    CJOBX job;
    job.SetReading({.way = JOBXway::Complete, .pSink = &printer});
    if (argc != 3 || job.ParseODBOfMFC(argv[1]) == 0)
        return 2;
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        if (const CJOBXdataNet* const net = step.GetEda()->m_pData->m_arrNets.GetNetData(CString(argv[2])))
            for (const CJOBXSnt& subnet : net->m_arrSnts.Records())
            {
                if (subnet.m_sKind == "TOP")
                    PrintPin(step, subnet);
                for (const CJOBXdataNetObj& reference : subnet.m_arrNetObjs.Records())
                    PrintFeature(step, subnet, reference);
            }
}
