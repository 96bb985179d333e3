#include "StepJson.h"

#include "LayerJson.h"
#include "Sorted.h"

namespace
{
void WriteStepRepeat(JsonOutput& json, const CJOBXstepRepeat& entry)
{
    json.Object(
        [&]
        {
            json.Member("name", entry.m_sName);
            json.Member("position", entry.m_ptPosition);
            json.Member("pitch", entry.m_ptPitch);
            json.Member("count", entry.m_ptCount);
            json.Member("angle", entry.m_dAngle);
            json.Member("mirror", entry.m_sMirror);
            json.Member("flip", entry.m_sFlip);
        });
}

void WriteHeader(JsonOutput& json, const CJOBXstephdr& header)
{
    json.Object(
        [&]
        {
            json.Member("datum", header.m_ptDatum);
            json.Member("origin", header.m_ptOrigin);
            json.Member("topActive", header.m_sTopActive);
            json.Member("bottomActive", header.m_sBottomActive);
            json.Member("rightActive", header.m_sRightActive);
            json.Member("leftActive", header.m_sLeftActive);
            json.Member("onlineDrcName", header.m_sOnlineDrcName);
            json.Member("onlineDrcMode", header.m_sOnlineDrcMode);
            json.Member("onlineDrcStat", header.m_sOnlineDrcStat);
            json.Member("onlineDrcTime", header.m_sOnlineDrcTime);
            json.Member("onlineDrcBeepVol", header.m_sOnlineDrcBeepVol);
            json.Member("onlineDrcBeepTone", header.m_sOnlineDrcBeepTone);
            json.Member("onlineNetMode", header.m_sOnlineNetMode);
            json.Member("onlineNetStat", header.m_sOnlineNetStat);
            json.Member("onlineNetTime", header.m_sOnlineNetTime);
            json.Member("onlineNetBeepVol", header.m_sOnlineNetBeepVol);
            json.Member("onlineNetBeepTone", header.m_sOnlineNetBeepTone);
            json.Member("affectingBom", header.m_sAffectingBom);
            json.Member("affectingBomChanged", header.m_sAffectingBomChanged);
            json.Records("stepRepeats", header.m_arrStepRepeats,
                         [&](const CJOBXstepRepeat& entry) { WriteStepRepeat(json, entry); });
        });
}

void WriteNetObject(JsonOutput& json, const CJOBXdataNetObj& object)
{
    json.Object(
        [&]
        {
            json.Member("feature", object.m_nFeatureIndex);
            json.Member("layer", object.m_nLayerIndex);
            json.Member("kind", object.m_sKind);
            json.Member("second", object.m_sText);
            json.Member("line", object.m_nLineNumber);
        });
}

void WriteSubnet(JsonOutput& json, const CJOBXSnt& subnet)
{
    json.Object(
        [&]
        {
            json.Member("line", subnet.m_nLineNumber);
            json.Member("kind", subnet.m_sKind);
            json.Member("side", subnet.m_sSide);
            json.Member("component", subnet.m_nComponentNumber);
            json.Member("toeprint", subnet.m_nToeprintNumber);
            json.Member("fillType", subnet.m_sFillType);
            json.Member("cutoutType", subnet.m_sCutoutType);
            json.Member("fillSize", subnet.m_dFillSize);
            json.Member("point", subnet.m_ptPosition);
            json.Member("text", subnet.m_sText);
            json.Records("objects", subnet.m_arrNetObjs,
                         [&](const CJOBXdataNetObj& object) { WriteNetObject(json, object); });
        });
}

void WriteNet(JsonOutput& json, const CJOBXdataNet& net)
{
    json.Object(
        [&]
        {
            json.Member("number", net.m_nNumber);
            json.Member("name", net.m_sName);
            json.Records("subnets", net.m_arrSnts, [&](const CJOBXSnt& subnet) { WriteSubnet(json, subnet); });
            WriteProperties(json, "properties", net.m_arrProperties);
        });
}

void WriteOutlines(JsonOutput& json, const CJOBXdataPkgObjArray& outlines)
{
    json.Records("outlines", outlines,
                 [&](const CJOBXdataPkgObj& outline)
                 {
                     json.Object(
                         [&]
                         {
                             json.Member("line", outline.m_nLineNumber);
                             json.Member("keyword", outline.m_sKeyword);
                             json.Member("params", outline.m_arrParameters);
                         });
                 });
}

void WritePin(JsonOutput& json, const CJOBXdataPkgPin& pin)
{
    json.Object(
        [&]
        {
            json.Member("name", pin.m_sName);
            json.Member("type", pin.m_sType);
            json.Member("centre", pin.m_ptCenter);
            json.Member("finishedHoleSize", pin.m_dHoleSize);
            json.Member("electricalType", pin.m_sElectricalType);
            json.Member("mountType", pin.m_sMountType);
            WriteOutlines(json, pin.m_arrOutlines);
        });
}

void WritePackage(JsonOutput& json, const CJOBXdataPkg& package)
{
    json.Object(
        [&]
        {
            json.Member("number", package.m_nNumber);
            json.Member("name", package.m_sName);
            json.Member("pitch", package.m_dPitch);
            json.Member("lowerLeft", package.m_ptLowerLeft);
            json.Member("upperRight", package.m_ptUpperRight);
            WriteOutlines(json, package.m_arrOutlines);
            json.Records("pins", package.m_arrPins, [&](const CJOBXdataPkgPin& pin) { WritePin(json, pin); });
            WriteProperties(json, "properties", package.m_arrProperties);
            WriteProperties(json, "attributes", package.m_arrAttributes);
        });
}

void WriteEda(JsonOutput& json, const CJOBXdata& data)
{
    json.Object(
        [&]
        {
            json.Member("header", data.m_sHeader);
            json.Member("layerNames", data.m_arrLayerNames);
            json.Records("nets", data.m_arrNets, [&](const CJOBXdataNet& net) { WriteNet(json, net); });
            json.Records("packages", data.m_arrPkgs, [&](const CJOBXdataPkg& package) { WritePackage(json, package); });
            WriteProperties(json, "properties", data.m_arrProperties);
            json.Member("units", data.m_sUnits);
            json.Member("attributeNames", data.m_arrAttributeNames);
            json.Member("attributeTexts", data.m_arrAttributeTexts);
        });
}

void WritePoints(JsonOutput& json, const CJOBXnetPtArray& points)
{
    json.Records("points", points,
                 [&](const CJOBXnetPt& point)
                 {
                     json.Object(
                         [&]
                         {
                             json.Member("side", point.m_sSide);
                             json.Member("staggeredMark", point.m_sStaggeredMark);
                             json.Member("staggeredRadius", point.m_dStaggeredRadius);
                             json.Member("exposure", point.m_sExposure);
                             json.Member("endPoint", point.m_sEndPoint);
                             json.Member("height", point.m_dHeight);
                             json.Member("width", point.m_dWidth);
                             json.Member("position", point.m_ptPosition);
                             json.Member("staggeredPosition", point.m_ptStaggeredPosition);
                             json.Member("radius", point.m_dRadius);
                             json.Member("flags", point.GetFlags());
                         });
                 });
}

void WriteNetlist(JsonOutput& json, const CJOBXnetlist& netlist)
{
    json.Object(
        [&]
        {
            json.Member("units", netlist.m_arrNets.m_sUnits);
            WritePoints(json, netlist.m_arrPts);
            json.Records("nets", netlist.m_arrNets,
                         [&](const CJOBXnet& net)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("number", net.m_nNumber);
                                     json.Member("name", net.m_sName);
                                     WritePoints(json, net.m_arrPts);
                                 });
                         });
        });
}
} // namespace

void WriteStep(JsonOutput& json, const CJOBXstepObj& step)
{
    json.Object(
        [&]
        {
            json.Member("name", step.m_sName);
            json.Key("profile");
            WriteLayer(json, *step.GetProfile());
            json.Key("header");
            WriteHeader(json, *step.GetHeader());
            json.ArrayMember("layers",
                             [&]
                             {
                                 for (const CJOBXlayer* const layer : SortedRecords<CJOBXlayer>(
                                          step.m_arrLayers, [](const CJOBXlayer& each) { return each.m_sName.View(); }))
                                     WriteLayer(json, *layer);
                             });
            WriteComponents(json, "components", step.m_arrComponents);
            json.Key("eda");
            WriteEda(json, *step.GetEda()->m_pData);
            json.Key("netlist");
            WriteNetlist(json, *step.GetNetlist());
        });
}
