#include "change/References.h"

#include "components/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/EdaFormat.h"
#include "foundation/framework/AsciiText.h"

namespace
{
constexpr std::string_view kLayerOfTopSide = "comp_+_top";
constexpr std::string_view kLayerOfBottomSide = "comp_+_bot";

// The side of the subnets that refer to the components of that layer; "" if none do.
std::string_view SideWithComponentsOf(const CString& layer)
{
    if (AsciiEqualNoCase(layer.View(), kLayerOfTopSide))
        return eda_format::kTopSide;
    return AsciiEqualNoCase(layer.View(), kLayerOfBottomSide) ? eda_format::kBottomSide : std::string_view();
}

void MakeTrace(CJOBXSnt& subnet)
{
    subnet.m_sKind = eda_format::kTrace;
    subnet.m_sSide.Empty();
    subnet.m_nComponentNumber = -1;
    subnet.m_nToeprintNumber = -1;
}

bool IsOfLayer(const CJOBXdata& data, const CJOBXdataNetObj& object, const CString& layer)
{
    return object.m_nLayerIndex >= 0 && object.m_nLayerIndex < data.m_arrLayerNames.GetSize() &&
           AsciiEqualNoCase(data.m_arrLayerNames[object.m_nLayerIndex].View(), layer.View());
}
} // namespace

void MoveFeatureReferences(CJOBXstepObj& step, const CString& layer, const NewPlaces& places)
{
    CJOBXdata& data = DataOf(step);
    ForEachFeatureList(data,
                       [&](CJOBXdataNetObjArray& objects)
                       {
                           DeleteWhere(
                               objects, [&](const CJOBXdataNetObj& object, int)
                               { return IsOfLayer(data, object, layer) && IsGone(places, object.m_nFeatureIndex); });
                           for (CJOBXdataNetObj& object : objects.Records())
                               if (IsOfLayer(data, object, layer))
                                   object.m_nFeatureIndex = PlaceNow(places, object.m_nFeatureIndex);
                       });
}

void MoveComponentReferences(CJOBXstepObj& step, const CJOBXcomponents& file, const NewPlaces& places)
{
    const std::string_view side = SideWithComponentsOf(file.m_sLayerName);
    if (side.empty())
        return;
    for (CJOBXdataNet& net : DataOf(step).m_arrNets.Records())
        for (CJOBXSnt& subnet : net.m_arrSnts.Records())
        {
            if (subnet.m_sKind.View() != eda_format::kToeprint || subnet.m_sSide.View() != side)
                continue;
            if (IsGone(places, subnet.m_nComponentNumber))
                MakeTrace(subnet);
            else
                subnet.m_nComponentNumber = PlaceNow(places, subnet.m_nComponentNumber);
        }
}

void MoveNetReferences(CJOBXstepObj& step, const NewPlaces& places)
{
    for (CJOBXcomponents& file : step.m_arrComponents.Records())
        for (CJOBXcmp& component : file.m_arrCmps.Records())
            for (CJOBXcmpTop& top : component.m_arrTops.Records())
            {
                if (IsGone(places, top.m_nNet))
                    top.m_nSubnet = -1;
                top.m_nNet = PlaceNow(places, top.m_nNet);
            }
}

void RemoveLayerReferences(CJOBXstepObj& step, const NewPlaces& places)
{
    CJOBXdata& data = DataOf(step);
    ForEachFeatureList(data,
                       [&](CJOBXdataNetObjArray& objects)
                       {
                           DeleteWhere(objects, [&](const CJOBXdataNetObj& object, int)
                                       { return IsGone(places, object.m_nLayerIndex); });
                           for (CJOBXdataNetObj& object : objects.Records())
                               object.m_nLayerIndex = PlaceNow(places, object.m_nLayerIndex);
                       });
    for (std::size_t i = places.size(); i-- > 0;)
        if (places[i] == kGone)
            data.m_arrLayerNames.RemoveAt(static_cast<INT_PTR>(i));
}
